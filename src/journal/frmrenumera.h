// Renumbers the asientos in order of date.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmRenumera;
}

class FrmRenumera : public Formulario {
  Q_OBJECT
 public:
  explicit FrmRenumera(Contexto& contexto);
  ~FrmRenumera() override;

  void Form_Load() override;

 private:
  void TxtRenumeraAsientoDesde_LostFocus();
  void TxtRenumeraDesdeNumero_LostFocus();
  void igualaNumeros();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmRenumera> ui_;
};
