// Prints the plan: its subcuentas alone or under their cuentas, reduced, extended or with balances.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "reports/frmlistado.h"

class QLabel;

namespace Ui {
class FrmSubcuentasImpresos;
}

class FrmSubcuentasImpresos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmSubcuentasImpresos(Contexto& contexto);
  ~FrmSubcuentasImpresos() override;

  void Form_Load() override;

 private:
  void TxtSubcuentasDesde_KeyPress(Tecla& tecla);
  // Completes the code and shows its name; an unknown one is looked for in the plan. False then.
  bool busca(QLineEdit* campo, QLabel* nombre, int codigoAccion);
  Listado listado() const;

  std::unique_ptr<Ui::FrmSubcuentasImpresos> ui_;
  DataControl DtaSubcuentas_;
};
