#include "journal/frmbusasi.h"

#include "common/formato.h"
#include "ui_frmbusasi.h"

FrmBusAsi::FrmBusAsi(Contexto& contexto)
    : FrmBusca(contexto), ui(std::make_unique<Ui::FrmBusAsi>()) {
  ui->setupUi(this);
  soloNumero(ui->TxtAsiento);
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBusAsi::~FrmBusAsi() = default;

void FrmBusAsi::CmdAceptar_Click() {
  const QString numero = ui->TxtAsiento->text();
  if (numero.isEmpty()) return error("No tiene ningun asiento introducido");
  if (!EsNumerico(numero)) return;
  localiza(
      "Select * from SqlDiarioPrincipalBlanco where Nasiento >=" + numero + " order by Nasiento",
      "El asiento introducido no existe");
}
