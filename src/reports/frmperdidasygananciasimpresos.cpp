#include "reports/frmperdidasygananciasimpresos.h"

#include "ui_frmperdidasygananciasimpresos.h"

FrmPerdidasYGananciasImpresos::FrmPerdidasYGananciasImpresos(Contexto& contexto)
    : FrmListado(contexto), ui(std::make_unique<Ui::FrmPerdidasYGananciasImpresos>()) {
  ui->setupUi(this);
  alPulsar(ui->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmPerdidasYGananciasImpresos::~FrmPerdidasYGananciasImpresos() = default;

void FrmPerdidasYGananciasImpresos::Form_Activate() {
  ponMeses(ui->TxtDesde, ui->TxtHasta);
}

// The title of the window is that of another book, and stays so.
Listado FrmPerdidasYGananciasImpresos::listado() const {
  return listadoMensual("Acumulados de IVA", "PerdGanN" + QString::number(opcion("OptTipo") + 1),
                        "SqlPerdidasyGanancias.Mes", ui->TxtDesde->currentText(),
                        ui->TxtHasta->currentText());
}
