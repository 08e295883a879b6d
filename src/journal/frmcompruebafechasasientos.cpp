#include "journal/frmcompruebafechasasientos.h"

#include "engine/dbengine.h"
#include "journal/integridad.h"
#include "journal/widgets/trabajoendiario.h"
#include "ui_frmcompruebafechasasientos.h"

FrmCompruebaFechasAsientos::FrmCompruebaFechasAsientos(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCompruebaFechasAsientos>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCompruebaFechasAsientos::~FrmCompruebaFechasAsientos() = default;

void FrmCompruebaFechasAsientos::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaEnDiario(ctx, *ui_->Bar, [&](const Avance& avance) {
    unificaFechas(*empresa, sesion().AnoActual, ctx.reloj->hoy(), avance);
  });
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}
