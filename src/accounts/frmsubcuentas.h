// Creates a subcuenta or changes the one chosen.
//
// The session's CodigoLlamada is the mode (1 creates, 2 changes) and ValorElegido the code to start
// from. The cuenta of a subcuenta is never chosen: it is the first digits of its code, and one that
// isn't in the plan may be created on the way.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmSubCuentas;
}

class FrmSubCuentas : public Formulario {
  Q_OBJECT
 public:
  explicit FrmSubCuentas(Contexto& contexto);
  ~FrmSubCuentas() override;
  void Form_Activate() override;

 private:
  void TxtSubcuenta_Change();
  void TxtSubcuenta_LostFocus();
  void CmdDesplega_Click();
  void CmdAceptar_Click();

  void abreModificacion();
  void creaCuenta(const QString& cuenta);
  void graba();
  void despliega(bool si);
  bool tieneFicha() const;
  QString cuentaEscrita() const;

  std::unique_ptr<Ui::FrmSubCuentas> ui_;
  DataControl DtaCuentas_;    // the cuenta of the code on show
  DataControl DtaCuentas2_;   // the list that unfolds
  DataControl DtaSubcuenta_;  // the row being written
};
