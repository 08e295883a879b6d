// Saves the open company as another company of the catalogue.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmGuardarEmpresa;
}

class FrmGuardarEmpresa : public Formulario {
  Q_OBJECT
 public:
  explicit FrmGuardarEmpresa(Contexto& contexto);
  ~FrmGuardarEmpresa() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmGuardarEmpresa> ui_;
};
