// Prints the plan: its subcuentas alone or under their cuentas, reduced, extended or with balances.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

class CampoSubcuenta;

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
  Listado listado() const;

  std::unique_ptr<Ui::FrmSubcuentasImpresos> ui_;
  std::unique_ptr<CampoSubcuenta> desde_;
  std::unique_ptr<CampoSubcuenta> hasta_;
};
