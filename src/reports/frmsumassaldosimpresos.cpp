#include "reports/frmsumassaldosimpresos.h"

#include "ui_frmsumassaldosimpresos.h"

FrmSumasSaldosImpresos::FrmSumasSaldosImpresos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmSumasSaldosImpresos>()) {
  ui_->setupUi(this);
  alElegirOpcion("OptNivel", [this](int nivel) { OptNivel_Click(nivel); });
  // The one dialog of its kind whose launch isn't trapped.
  alPulsar(ui_->CmdAceptar, [this] { lanzaSinTrampa(listado()); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSumasSaldosImpresos::~FrmSumasSaldosImpresos() = default;

void FrmSumasSaldosImpresos::Form_Activate() {
  ponMeses(ui_->TxtDesdef, ui_->TxtHastaf);
  setOpcion("OptNivel", 2);
  OptNivel_Click(2);
  ui_->OptNivel_2->setFocus();
}

// The two upper levels leave the boxes as the last one left them: a level code is typed there.
void FrmSumasSaldosImpresos::OptNivel_Click(int nivel) {
  Nivel = nivel;
  if (nivel < 2) return;
  const int digitos = nivel == 2 ? sesion().DigitosCuenta : sesion().DigitosSubcuenta;
  for (QLineEdit* campo : {ui_->TxtDesde, ui_->TxtHasta}) campo->setMaxLength(digitos);
  ui_->TxtDesde->setText(QString(digitos, '0'));
  ui_->TxtHasta->setText(QString(digitos, '9'));
}

// Months reach the selection of cuentas and subcuentas only; at the upper levels they are just
// told.
Listado FrmSumasSaldosImpresos::listado() {
  const QString desde = ui_->TxtDesde->text();
  const QString hasta = ui_->TxtHasta->text();
  const QString meses = " and {@mes} >= " + ui_->TxtDesdef->currentText().left(2) +
                        " and {@Mes} <= " + ui_->TxtHastaf->currentText().left(2);
  Listado l{.titulo = "Listado de sumas y saldos ",
            .plantilla = "Impresos\\SumSalN3.rpt",
            .seleccion = {},
            .limites = textoLimites(ui_->TxtDesdef->currentText(), ui_->TxtHastaf->currentText())};
  if (Nivel < 2) {
    const QString n = QString::number(Nivel + 1);
    l.titulo += "Nivel " + n;
    l.seleccion = "{SqlSumasSaldosN" + n + ".NNivel} >= '" + desde + "' and {SqlSumasSaldosN" + n +
                  ".NNivel} <= '" + hasta + "'";
  } else if (Nivel == 2) {
    const QString digitos = QString::number(sesion().DigitosCuenta);
    l.titulo += "Cuentas";
    l.seleccion = "Left({Diario.Subcuenta}," + digitos + ") >= '" + desde +
                  "' and left({Diario.Subcuenta}," + digitos + ") <= '" + hasta + "'" + meses;
  } else {
    l.titulo += "Subcuentas";
    l.plantilla = "Impresos\\SumSalN4.rpt";
    l.seleccion =
        "{Diario.Subcuenta} >= '" + desde + "' and {Diario.Subcuenta} <= '" + hasta + "'" + meses;
  }
  return l;
}
