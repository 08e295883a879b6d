#include "journal/frmbusasi.h"

#include "common/formato.h"
#include "ui_frmbusasi.h"

FrmBusAsi::FrmBusAsi(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusAsi>()) {
  ui_->setupUi(this);
  soloNumero(ui_->TxtAsiento);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusAsi::~FrmBusAsi() = default;

void FrmBusAsi::CmdAceptar_Click() {
  const QString numero = ui_->TxtAsiento->text();
  if (numero.isEmpty()) return error("No tiene ningun asiento introducido");
  if (!EsNumerico(numero)) return;
  localiza(
      "Select * from SqlDiarioPrincipalBlanco where Nasiento >=" + numero + " order by Nasiento",
      "El asiento introducido no existe");
}
