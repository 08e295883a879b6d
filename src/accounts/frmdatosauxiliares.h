// The address card of a subcuenta: it lives in the subcuenta's own row.
//
// Opened over the subcuenta's dialog, whose code and name it shows.
#pragma once

#include <array>
#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmDatosAuxiliares;
}

class FrmDatosAuxiliares : public Formulario {
  Q_OBJECT
 public:
  explicit FrmDatosAuxiliares(Contexto& contexto);
  ~FrmDatosAuxiliares() override;
  void Form_Load() override;

 private:
  void CmdAceptar_Click();
  void lee();
  void graba();

  static constexpr int kPrimerCampo = 3;  // ordinal of Direccion; the card's nine stand in a row
  std::unique_ptr<Ui::FrmDatosAuxiliares> ui_;
  std::array<QLineEdit*, 9> campos_;
  DataControl DtaSubcuenta_;
};
