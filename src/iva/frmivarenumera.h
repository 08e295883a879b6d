// Numbers the registers of IVA anew.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmIVARenumera;
}

class FrmIVARenumera : public Formulario {
  Q_OBJECT
 public:
  explicit FrmIVARenumera(Contexto& contexto);
  ~FrmIVARenumera() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmIVARenumera> ui_;
};
