#include "reports/frmdiarioimprimir.h"

#include "ui_frmdiarioimprimir.h"

FrmDiarioImprimir::FrmDiarioImprimir(Contexto& contexto)
    : FrmListado(contexto), ui(std::make_unique<Ui::FrmDiarioImprimir>()) {
  ui->setupUi(this);
  fecha(ui->TxtDesde);
  fecha(ui->TxtHasta);
  numeroConSigno(ui->TxtAsientoDesde);
  numeroConSigno(ui->TxtAsientoHasta);
  alPulsar(ui->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmDiarioImprimir::~FrmDiarioImprimir() = default;

void FrmDiarioImprimir::Form_Activate() {
  ponAnoEntero(ui->TxtDesde, ui->TxtHasta);
}

// The range told on the pages is that of the dates, not of the asientos.
Listado FrmDiarioImprimir::listado() const {
  return {.titulo = "Listado de diario",
          .plantilla = "Impresos\\Diario.rpt",
          .seleccion = seleccionFechas("SqlDiarioPrincipal.Fecha", ui->TxtDesde->text(),
                                       ui->TxtHasta->text()) +
                       " and {SqlDiarioPrincipal.NAsiento}>=" + ui->TxtAsientoDesde->text() +
                       " and {SqlDiarioPrincipal.NAsiento}<=" + ui->TxtAsientoHasta->text(),
          .limites = textoLimites(ui->TxtDesde->text(), ui->TxtHasta->text())};
}
