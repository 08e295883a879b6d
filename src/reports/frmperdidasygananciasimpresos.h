// Prints the results account at one of the four levels.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmPerdidasYGananciasImpresos;
}

class FrmPerdidasYGananciasImpresos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmPerdidasYGananciasImpresos(Contexto& contexto);
  ~FrmPerdidasYGananciasImpresos() override;

  void Form_Activate() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmPerdidasYGananciasImpresos> ui_;
};
