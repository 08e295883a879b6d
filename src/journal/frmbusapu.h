// Locates the lines that bear a mark.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusApu;
}

class FrmBusApu : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusApu(Contexto& contexto);
  ~FrmBusApu() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmBusApu> ui_;
};
