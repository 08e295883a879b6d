// Prints the ledger between two subcuentas, after working out the balances of each.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "reports/frmlistado.h"

namespace Ui {
class FrmExtractoEntraCtas;
}

class FrmExtractoEntraCtas : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmExtractoEntraCtas(Contexto& contexto);
  ~FrmExtractoEntraCtas() override;

  void Form_Activate() override;

 private:
  void expande(QLineEdit* campo);
  void CmdAceptar_Click();
  void calculaSaldos();
  Listado listado() const;

  std::unique_ptr<Ui::FrmExtractoEntraCtas> ui_;
  DataControl DtaSubcuentas_;
};
