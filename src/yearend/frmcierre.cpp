#include "yearend/frmcierre.h"

#include "engine/dbengine.h"
#include "ui_frmcierre.h"
#include "yearend/ejercicio.h"

FrmCierre::FrmCierre(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCierre>()) {
  ui_->setupUi(this);
  conectaAsientoAnual(*this, ctx, campos());
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCierre::~FrmCierre() = default;

AsientoAnual FrmCierre::campos() const {
  return {*ui_->TxtFecha, *ui_->TxtDescripcion, *ui_->TxtAsiento};
}

void FrmCierre::Form_Activate() {
  ui_->TxtFecha->setText("31/12/" + QString::number(sesion().AnoActual));
}

void FrmCierre::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaPasoAnual(ctx, {ui_->CmdAceptar, ui_->CmdCancelar}, [&](const Avance& avance) {
    cierraEjercicio(*empresa, sesion().AnoActual, pasoTecleado(ctx, campos()), avance);
  });
  descargar();
}
