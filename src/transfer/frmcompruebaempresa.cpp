#include "transfer/frmcompruebaempresa.h"

#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "toolkit/progreso.h"
#include "transfer/mantenimiento.h"
#include "ui_frmcompruebaempresa.h"

FrmCompruebaEmpresa::FrmCompruebaEmpresa(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCompruebaEmpresa>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCompruebaEmpresa::~FrmCompruebaEmpresa() = default;

void FrmCompruebaEmpresa::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  try {
    trabajaEnDiario(ctx, [&] {
      Progreso progreso(ctx, *ui_->Bar);
      compruebaImportes(*empresa, sesion().MascaraImporte, progreso.avance());
    });
  } catch (...) {
    ui_->Bar->hide();
    throw;
  }
  // Kept: it is the main window's bar that goes, in case another tool has left it; this one stands
  // as it is, full, behind the box.
  ctx.principal->Bar().hide();
  mensaje(QStringLiteral("Proceso terminado con exito"), QStringLiteral("Fín"));
  descargar();
}
