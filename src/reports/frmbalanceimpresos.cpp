#include "reports/frmbalanceimpresos.h"

#include "toolkit/registro.h"
#include "ui_frmbalanceimpresos.h"

FrmBalanceImpresos::FrmBalanceImpresos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmBalanceImpresos>()) {
  ui_->setupUi(this);
  ui_->CmdPG->setEnabled(contexto.formularios->existe("FrmPerdidasyGanacias"));
  alPulsar(ui_->CmdPG, [this] { mostrar("FrmPerdidasyGanacias"); });
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBalanceImpresos::~FrmBalanceImpresos() = default;

void FrmBalanceImpresos::Form_Activate() {
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
}

Listado FrmBalanceImpresos::listado() const {
  return listadoMensual("Balance de situación", "BalSitN" + QString::number(opcion("OptTipo") + 1),
                        "SqlBalance.Mes", ui_->TxtDesde->currentText(),
                        ui_->TxtHasta->currentText());
}
