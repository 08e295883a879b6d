#include "reports/frmdiarioimprimir.h"

#include "ui_frmdiarioimprimir.h"

FrmDiarioImprimir::FrmDiarioImprimir(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmDiarioImprimir>()) {
  ui_->setupUi(this);
  fecha(ui_->TxtDesde);
  fecha(ui_->TxtHasta);
  numeroConSigno(ui_->TxtAsientoDesde);
  numeroConSigno(ui_->TxtAsientoHasta);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmDiarioImprimir::~FrmDiarioImprimir() = default;

void FrmDiarioImprimir::Form_Activate() {
  ponAnoEntero(ui_->TxtDesde, ui_->TxtHasta);
}

// The range told on the pages is that of the dates, not of the asientos.
Listado FrmDiarioImprimir::listado() const {
  return {.titulo = "Listado de diario",
          .plantilla = "Impresos\\Diario.rpt",
          .seleccion = seleccionFechas("SqlDiarioPrincipal.Fecha", ui_->TxtDesde->text(),
                                       ui_->TxtHasta->text()) +
                       " and {SqlDiarioPrincipal.NAsiento}>=" + ui_->TxtAsientoDesde->text() +
                       " and {SqlDiarioPrincipal.NAsiento}<=" + ui_->TxtAsientoHasta->text(),
          .limites = textoLimites(ui_->TxtDesde->text(), ui_->TxtHasta->text())};
}
