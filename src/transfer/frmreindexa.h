// Makes the file of the open company anew, row by row: what a damaged index or an old layout did to
// it is gone with the old file. The one that stands is only replaced once the new one is whole.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmReindexa;
}

class FrmReindexa : public Formulario {
  Q_OBJECT
 public:
  explicit FrmReindexa(Contexto& contexto);
  ~FrmReindexa() override;

  void Form_Load() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmReindexa> ui_;
};
