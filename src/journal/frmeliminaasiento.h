// Deletes one asiento, with the register rows of its invoices, after telling what goes with it.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmEliminaAsiento;
}

class FrmEliminaAsiento : public Formulario {
  Q_OBJECT
 public:
  explicit FrmEliminaAsiento(Contexto& contexto);
  ~FrmEliminaAsiento() override;

  void Form_Load() override;

 private:
  void CmdAceptar_Click();
  void avisa();

  std::unique_ptr<Ui::FrmEliminaAsiento> ui_;
  DataControl DtaDiarioLista_;
};
