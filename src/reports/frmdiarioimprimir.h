// Prints the diary between two dates and two numbers of asiento.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmDiarioImprimir;
}

class FrmDiarioImprimir : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmDiarioImprimir(Contexto& contexto);
  ~FrmDiarioImprimir() override;

  void Form_Activate() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmDiarioImprimir> ui_;
};
