// The end of a rebuilding that was given up: nothing of it is left.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmReindexa3;
}

class FrmReindexa3 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmReindexa3(Contexto& contexto);
  ~FrmReindexa3() override;

  void Form_Activate() override;

 private:
  std::unique_ptr<Ui::FrmReindexa3> ui_;
};
