#include "reports/frmperdidasygananciasimpresos.h"

#include "ui_frmperdidasygananciasimpresos.h"

FrmPerdidasYGananciasImpresos::FrmPerdidasYGananciasImpresos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmPerdidasYGananciasImpresos>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmPerdidasYGananciasImpresos::~FrmPerdidasYGananciasImpresos() = default;

void FrmPerdidasYGananciasImpresos::Form_Activate() {
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
}

// The title of the window is that of another book, and stays so.
Listado FrmPerdidasYGananciasImpresos::listado() const {
  return listadoMensual("Acumulados de IVA", "PerdGanN" + QString::number(opcion("OptTipo") + 1),
                        "SqlPerdidasyGanancias.Mes", ui_->TxtDesde->currentText(),
                        ui_->TxtHasta->currentText());
}
