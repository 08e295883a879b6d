#include "iva/frmivaacumulados.h"

#include "ui_frmivaacumulados.h"

FrmIVAAcumulados::FrmIVAAcumulados(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmIVAAcumulados>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVAAcumulados::~FrmIVAAcumulados() = default;

void FrmIVAAcumulados::Form_Load() {
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
}

Listado FrmIVAAcumulados::listado() const {
  return listadoMensual("Acumulados de IVA", "IVAAcumulados", "@Mes", ui_->TxtDesde->currentText(),
                        ui_->TxtHasta->currentText());
}
