// Prints the trial balance at one of the four levels.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmSumasSaldosImpresos;
}

class FrmSumasSaldosImpresos : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmSumasSaldosImpresos(Contexto& contexto);
  ~FrmSumasSaldosImpresos() override;

  void Form_Activate() override;

 private:
  void OptNivel_Click(int nivel);
  Listado listado();

  std::unique_ptr<Ui::FrmSumasSaldosImpresos> ui_;
  int Nivel = 2;
};
