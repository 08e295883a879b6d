#include "journal/frmcompruebafechasasientos.h"

#include "engine/dbengine.h"
#include "journal/integridad.h"
#include "toolkit/progreso.h"
#include "ui_frmcompruebafechasasientos.h"

FrmCompruebaFechasAsientos::FrmCompruebaFechasAsientos(Contexto& contexto)
    : Formulario(contexto), ui(std::make_unique<Ui::FrmCompruebaFechasAsientos>()) {
  ui->setupUi(this);
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmCompruebaFechasAsientos::~FrmCompruebaFechasAsientos() = default;

void FrmCompruebaFechasAsientos::CmdAceptar_Click() {
  {
    Progreso progreso(ctx, *ui->Bar);
    const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
    unificaFechas(*empresa, sesion().AnoActual, ctx.reloj->hoy(), progreso.avance());
    progreso.oculta();
  }
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}
