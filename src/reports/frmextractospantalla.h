// The ledger of one subcuenta on screen, over the whole year, with its running balance.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmExtractosPantalla;
}

class FrmExtractosPantalla : public Formulario {
  Q_OBJECT
 public:
  explicit FrmExtractosPantalla(Contexto& contexto);
  ~FrmExtractosPantalla() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void creaMenu();
  void puntea();
  void GridExtracto_DblClick();
  void MnuBuscarDesde_Click();
  void MnuImprimir_Click();
  void MnuVisualizarApunte_Click();

  std::unique_ptr<Ui::FrmExtractosPantalla> ui_;
  DataControl DtaExtracto_;
  QString Subcuenta;
};
