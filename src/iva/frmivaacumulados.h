// Prints the accumulators of IVA: each register month by month and rate by rate.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmIVAAcumulados;
}

class FrmIVAAcumulados : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmIVAAcumulados(Contexto& contexto);
  ~FrmIVAAcumulados() override;

  void Form_Load() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmIVAAcumulados> ui_;
};
