// The end of a rebuilding: puts the new file in the place of the old one, and tells whether it
// could.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmReindexa2;
}

class FrmReindexa2 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmReindexa2(Contexto& contexto);
  ~FrmReindexa2() override;

  void Form_Activate() override;

 private:
  std::unique_ptr<Ui::FrmReindexa2> ui_;
};
