#include "transfer/frmreparaempresa.h"

#include "engine/dbengine.h"
#include "toolkit/progreso.h"
#include "transfer/mantenimiento.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmreparaempresa.h"

FrmReparaEmpresa::FrmReparaEmpresa(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmReparaEmpresa>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { vuelveAlMenu(ctx); });
}

FrmReparaEmpresa::~FrmReparaEmpresa() = default;

void FrmReparaEmpresa::CmdAceptar_Click() {
  const QString nuevo = rutaDeTrabajo(sesion().DirDatos, sesion().EmpresaActual);
  trabajaConFichero(*this, ctx, *ui_->Bar, [&](const Advance& avance) {
    reparaEmpresa(ctx.motor, sesion().rutaEmpresa(), nuevo, avance);
  });
  mensaje(QStringLiteral("Empresa reparada y compactada con exíto"), QStringLiteral("Librano"));
  vuelveAlMenu(ctx);
}
