#include "reports/frmbalanceimpresos.h"

#include "toolkit/registro.h"
#include "ui_frmbalanceimpresos.h"

FrmBalanceImpresos::FrmBalanceImpresos(Contexto& contexto)
    : FrmListado(contexto), ui(std::make_unique<Ui::FrmBalanceImpresos>()) {
  ui->setupUi(this);
  ui->CmdPG->setEnabled(contexto.formularios->existe("FrmPerdidasyGanacias"));
  alPulsar(ui->CmdPG, [this] { mostrar("FrmPerdidasyGanacias"); });
  alPulsar(ui->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBalanceImpresos::~FrmBalanceImpresos() = default;

void FrmBalanceImpresos::Form_Activate() {
  ponMeses(ui->TxtDesde, ui->TxtHasta);
}

Listado FrmBalanceImpresos::listado() const {
  return listadoMensual("Balance de situación", "BalSitN" + QString::number(opcion("OptTipo") + 1),
                        "SqlBalance.Mes", ui->TxtDesde->currentText(), ui->TxtHasta->currentText());
}
