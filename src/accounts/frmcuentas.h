// Creates a cuenta or changes the one chosen, with its place in the two upper levels.
//
// The session's CodigoLlamada is the mode (1 creates, 2 changes) and ValorElegido the code. The
// code of a cuenta never changes: its subcuentas begin with it.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

class ComboEnlazado;
namespace Ui {
class FrmCuentas;
}

class FrmCuentas : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCuentas(Contexto& contexto);
  ~FrmCuentas() override;
  void Form_Load() override;

 private:
  void TxtN01N_Change();
  void TxtN01N_LostFocus();
  void TxtN01T_Click();
  void TxtN02N_LostFocus();
  void TxtN02T_Click();
  void CmdAceptar_Click();

  void abreModificacion();
  void abreAlta();
  bool muestraNivel(DataControl& niveles, const QString& nivel, ComboEnlazado& nombre);
  void ofreceNivel2(const QString& grupo);
  void nivelDesconocido();

  std::unique_ptr<Ui::FrmCuentas> ui_;
  DataControl DtaCuentas_;
  DataControl DtaNivel1_;
  DataControl DtaNivel2_;
  QString grupoElegido_;  // the group picked by its name, which the second levels are held to
};
