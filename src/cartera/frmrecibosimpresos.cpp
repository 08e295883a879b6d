#include "cartera/frmrecibosimpresos.h"

#include "ui_frmrecibosimpresos.h"

FrmRecibosImpresos::FrmRecibosImpresos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmRecibosImpresos>()) {
  ui_->setupUi(this);
  fecha(ui_->TxtDesde);
  fecha(ui_->TxtHasta);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmRecibosImpresos::~FrmRecibosImpresos() = default;

void FrmRecibosImpresos::Form_Load() {
  ponAnoEntero(ui_->TxtDesde, ui_->TxtHasta);
}

// Kept: the window bears the diary's title, by which all listings by dates are told apart from the
// books by code.
Listado FrmRecibosImpresos::listado() const {
  return {.titulo = "Listado de diario",
          .plantilla = "Impresos\\RecLta.rpt",
          .seleccion = seleccionFechas("SqlRecibos.Vencimiento", ui_->TxtDesde->text(),
                                       ui_->TxtHasta->text()),
          .limites = textoLimites(ui_->TxtDesde->text(), ui_->TxtHasta->text())};
}
