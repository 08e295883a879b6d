// Takes out of the books, or puts back into its register, what journal and registers of IVA don't
// have in common.
#pragma once

#include <memory>

#include "iva/mantenimientoiva.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmEliminaAsientosIVA;
}

class FrmEliminaAsientosIVA : public Formulario {
  Q_OBJECT
 public:
  explicit FrmEliminaAsientosIVA(Contexto& contexto);
  ~FrmEliminaAsientosIVA() override;

  void Form_Load() override;

 private:
  TareaIVA tarea() const;
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmEliminaAsientosIVA> ui_;
};
