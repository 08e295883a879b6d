#include "transfer/frmguardarempresa.h"

#include "company/alta.h"
#include "transfer/otraempresa.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmguardarempresa.h"

FrmGuardarEmpresa::FrmGuardarEmpresa(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmGuardarEmpresa>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { vuelveAlMenu(ctx); });
}

FrmGuardarEmpresa::~FrmGuardarEmpresa() = default;

void FrmGuardarEmpresa::CmdAceptar_Click() {
  // A name's blanks at its ends would be lost from its folder's.
  const QString nombre = ui_->TxtEmpresa->text().trimmed();
  if (nombre.isEmpty()) return;
  const QString reparo = reparoDelNombre(ctx.motor, sesion().DirDatos, nombre);
  if (!reparo.isEmpty()) {
    mensaje(reparo, QStringLiteral("Error"));
    return enfocar(ui_->TxtEmpresa);
  }
  trabajaConFichero(*this, ctx, *ui_->Bar, [&](const Advance& avance) {
    clonaEmpresa(ctx.motor, sesion().DirDatos, sesion().rutaEmpresa(), nombre, avance);
  });
  if (ui_->ChkAbrir->isChecked()) sesion().EmpresaActual = nombre;
  vuelveAlMenu(ctx);
}
