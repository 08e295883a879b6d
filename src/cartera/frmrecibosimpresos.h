// Prints the recibos that are due between two dates.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmRecibosImpresos;
}

class FrmRecibosImpresos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmRecibosImpresos(Contexto& contexto);
  ~FrmRecibosImpresos() override;

  void Form_Load() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmRecibosImpresos> ui_;
};
