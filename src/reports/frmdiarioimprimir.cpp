#include "reports/frmdiarioimprimir.h"

#include <cmath>

#include "common/formato.h"
#include "ui_frmdiarioimprimir.h"

namespace {

// A formula would read the point of a thousand as a decimal one. What is no whole number goes as it
// stands, for the formula to refuse.
QString asientoEnFormula(const QString& texto, const QString& mascara) {
  const auto numero = ImporteDe(texto, mascara);
  if (texto.isEmpty() || !numero || std::floor(*numero) != *numero) return texto;
  return QString::number(*numero, 'f', 0);
}

}  // namespace

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
  const QString& mascara = ctx.sesion.MascaraImporte;
  return {.titulo = "Listado de diario",
          .plantilla = "Impresos\\Diario.rpt",
          .seleccion = seleccionFechas("SqlDiarioPrincipal.Fecha", ui_->TxtDesde->text(),
                                       ui_->TxtHasta->text()) +
                       " and {SqlDiarioPrincipal.NAsiento}>=" +
                       asientoEnFormula(ui_->TxtAsientoDesde->text(), mascara) +
                       " and {SqlDiarioPrincipal.NAsiento}<=" +
                       asientoEnFormula(ui_->TxtAsientoHasta->text(), mascara),
          .limites = textoLimites(ui_->TxtDesde->text(), ui_->TxtHasta->text())};
}
