// Prints the declaration of operations with third parties above a limit.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class Frm347;
}

class Frm347 : public FrmListado {
  Q_OBJECT
 public:
  explicit Frm347(Contexto& contexto);
  ~Frm347() override;

  void Form_Load() override;

 private:
  Listado listado();

  std::unique_ptr<Ui::Frm347> ui_;
};
