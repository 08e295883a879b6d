// Posts a balancing line on the asientos that don't square.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmCuadrarAsientos;
}
class CampoSubcuenta;

class FrmCuadrarAsientos : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCuadrarAsientos(Contexto& contexto);
  ~FrmCuadrarAsientos() override;

  void Form_Activate() override;

 private:
  void CmdAceptar_Click();
  void cuadra(int asiento, const QString& resto);

  std::unique_ptr<Ui::FrmCuadrarAsientos> ui_;
  DataControl DtaDescuadres_;
  std::unique_ptr<CampoSubcuenta> subcuenta_;
};
