// Changes the date before which no line may be changed: another one opens a closed year again.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmInvertirCierre;
}

class FrmInvertirCierre : public Formulario {
  Q_OBJECT
 public:
  explicit FrmInvertirCierre(Contexto& contexto);
  ~FrmInvertirCierre() override;

  void Form_Activate() override;

 private:
  void TxtNoModifica_LostFocus();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmInvertirCierre> ui_;
};
