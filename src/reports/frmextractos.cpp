#include "reports/frmextractos.h"

#include "toolkit/registro.h"
#include "ui_frmextractos.h"

FrmExtractos::FrmExtractos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmExtractos>()) {
  ui_->setupUi(this);
  fecha(ui_->TxtDesde);
  fecha(ui_->TxtHasta);
  alPulsar(ui_->CmdSeleccion, [this] { CmdSeleccion_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmExtractos::~FrmExtractos() = default;

void FrmExtractos::Form_Activate() {
  ui_->TxtSubcuenta->setText(sesion().ValorElegido);
  ponAnoEntero(ui_->TxtDesde, ui_->TxtHasta);
  ui_->TxtDesde->setFocus();
}

void FrmExtractos::CmdSeleccion_Click() {
  descargar();
  ctx.formularios->mostrar("FrmExtractoEntraCtas");
}

Listado FrmExtractos::listado() const {
  return {.titulo = "Listado de libro Mayor",
          .plantilla = "Impresos\\May1.rpt",
          .seleccion = "{SqlDiarioPrincipal.Subcuenta}='" + ui_->TxtSubcuenta->text() + "' and " +
                       seleccionFechas("SqlDiarioPrincipal.Fecha", ui_->TxtDesde->text(),
                                       ui_->TxtHasta->text()),
          .limites = textoLimites(ui_->TxtDesde->text(), ui_->TxtHasta->text())};
}
