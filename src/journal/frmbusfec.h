// Locates the lines from a date on.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusFec;
}

class FrmBusFec : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusFec(Contexto& contexto);
  ~FrmBusFec() override;

  void Form_Load() override;

 private:
  void CmdAceptar_Click();
  void CmdCal_Click();

  std::unique_ptr<Ui::FrmBusFec> ui_;
};
