// Prints the balance sheet at one of the four levels.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmBalanceImpresos;
}

class FrmBalanceImpresos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmBalanceImpresos(Contexto& contexto);
  ~FrmBalanceImpresos() override;

  void Form_Activate() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmBalanceImpresos> ui_;
};
