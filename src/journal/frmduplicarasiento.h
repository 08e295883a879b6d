// Copies the asiento of the grid's row into this or another company, under its next numbers.
#pragma once

#include <memory>

#include "foundation/data/datacontrol.h"
#include "foundation/toolkit/formulario.h"

namespace Ui {
class FrmDuplicarAsiento;
}

class FrmDuplicarAsiento : public Formulario {
  Q_OBJECT
 public:
  explicit FrmDuplicarAsiento(Contexto& contexto);
  ~FrmDuplicarAsiento() override;

  void Form_Activate() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmDuplicarAsiento> ui;
  DataControl DtaEmpresa;
};
