#include "yearend/frminvertircierre.h"

#include "common/funciones.h"
#include "engine/dbengine.h"
#include "ui_frminvertircierre.h"
#include "yearend/ejercicio.h"

FrmInvertirCierre::FrmInvertirCierre(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmInvertirCierre>()) {
  ui_->setupUi(this);
  alSalir(ui_->TxtNoModifica, [this] { TxtNoModifica_LostFocus(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmInvertirCierre::~FrmInvertirCierre() = default;

void FrmInvertirCierre::Form_Activate() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  ui_->TxtNoModifica->setText(fechaDeCierre(*empresa));
}

// Emptied, nothing is closed.
void FrmInvertirCierre::TxtNoModifica_LostFocus() {
  const QString escrita = ui_->TxtNoModifica->text();
  if (escrita.isEmpty()) return;
  ui_->TxtNoModifica->setText(NormalizaFecha(escrita, sesion().AnoActual, ctx.reloj->hoy()));
}

void FrmInvertirCierre::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  ponFechaDeCierre(*empresa, ui_->TxtNoModifica->text());
  ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  descargar();
}
