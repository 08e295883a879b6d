// Locates the asientos from a number on.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusAsi;
}

class FrmBusAsi : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusAsi(Contexto& contexto);
  ~FrmBusAsi() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmBusAsi> ui_;
};
