// Locates the lines whose concept holds a text.
#pragma once

#include <memory>

#include "journal/frmbusca.h"

namespace Ui {
class FrmBusDes;
}

class FrmBusDes : public FrmBusca {
  Q_OBJECT
 public:
  explicit FrmBusDes(Contexto& contexto);
  ~FrmBusDes() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmBusDes> ui_;
};
