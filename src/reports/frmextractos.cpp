#include "reports/frmextractos.h"

#include "toolkit/registro.h"
#include "ui_frmextractos.h"

FrmExtractos::FrmExtractos(Contexto& contexto)
    : FrmListado(contexto), ui(std::make_unique<Ui::FrmExtractos>()) {
  ui->setupUi(this);
  fecha(ui->TxtDesde);
  fecha(ui->TxtHasta);
  alPulsar(ui->CmdSeleccion, [this] { CmdSeleccion_Click(); });
  alPulsar(ui->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmExtractos::~FrmExtractos() = default;

void FrmExtractos::Form_Activate() {
  ui->TxtSubcuenta->setText(sesion().ValorElegido);
  ponAnoEntero(ui->TxtDesde, ui->TxtHasta);
  ui->TxtDesde->setFocus();
}

void FrmExtractos::CmdSeleccion_Click() {
  descargar();
  ctx.formularios->mostrar("FrmExtractoEntraCtas");
}

Listado FrmExtractos::listado() const {
  return {.titulo = "Listado de libro Mayor",
          .plantilla = "Impresos\\May1.rpt",
          .seleccion = "{SqlDiarioPrincipal.Subcuenta}='" + ui->TxtSubcuenta->text() + "' and " +
                       seleccionFechas("SqlDiarioPrincipal.Fecha", ui->TxtDesde->text(),
                                       ui->TxtHasta->text()),
          .limites = textoLimites(ui->TxtDesde->text(), ui->TxtHasta->text())};
}
