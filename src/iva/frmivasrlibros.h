// Prints the books of IVA: soportado, repercutido, or both.
#pragma once

#include <memory>

#include "reports/frmlistado.h"

namespace Ui {
class FrmIVASRLibros;
}

class FrmIVASRLibros : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmIVASRLibros(Contexto& contexto);
  ~FrmIVASRLibros() override;

  void Form_Load() override;

 private:
  Listado listado() const;

  std::unique_ptr<Ui::FrmIVASRLibros> ui_;
};
