// Locates the lines of one subcuenta.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusSub;
}

class FrmBusSub : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusSub(Contexto& contexto);
  ~FrmBusSub() override;

  void Form_Activate() override;

 private:
  void TxtSubcuenta_LostFocus();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmBusSub> ui_;
};
