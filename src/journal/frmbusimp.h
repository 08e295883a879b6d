// Locates an amount on either side.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusImp;
}

class FrmBusImp : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusImp(Contexto& contexto);
  ~FrmBusImp() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmBusImp> ui_;
};
