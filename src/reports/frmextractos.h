// Prints the ledger of one subcuenta, with the balances that its last extract left.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmExtractos;
}

class FrmExtractos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmExtractos(Contexto& contexto);
  ~FrmExtractos() override;

  void Form_Activate() override;

 private:
  void CmdSeleccion_Click();
  Listado listado() const;

  std::unique_ptr<Ui::FrmExtractos> ui_;
};
