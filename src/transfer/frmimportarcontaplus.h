// Brings the plan, the journal and the register of a ContaPlus company into the open one.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmImportarContaplus;
}

class FrmImportarContaplus : public Formulario {
  Q_OBJECT
 public:
  explicit FrmImportarContaplus(Contexto& contexto);
  ~FrmImportarContaplus() override;

  void Form_Load() override;

 private:
  void CmdLocalizaContaplus_Click();
  void TxtDirectorioContaplus_LostFocus();
  void ConectarEmpresas();
  void CmdAceptar_Click();
  void importa();

  std::unique_ptr<Ui::FrmImportarContaplus> ui_;
  QString conectado_;  // the path whose companies are on the list
};
