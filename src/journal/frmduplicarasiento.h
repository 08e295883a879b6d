// Copies the asiento of the grid's row into this or another company, under its next numbers.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

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

  std::unique_ptr<Ui::FrmDuplicarAsiento> ui_;
  DataControl DtaEmpresa_;
};
