#include "transfer/frmexportaempresa.h"

#include "engine/dbengine.h"
#include "transfer/otraempresa.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmexportaempresa.h"

FrmExportaEmpresa::FrmExportaEmpresa(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmExportaEmpresa>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdExportar, [this] { CmdExportar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { vuelveAlMenu(ctx); });
}

FrmExportaEmpresa::~FrmExportaEmpresa() = default;

// Kept: the file is told as soon as it is written, before what wasn't chosen goes from it.
void FrmExportaEmpresa::CmdExportar_Click() {
  const auto fichero =
      ctx.cajas->guardarFichero(this, windowTitle(), sesion().EmpresaActual + ".mdb",
                                QStringLiteral("Base de datos (*.mdb)"));
  if (!fichero || fichero->isEmpty()) return;
  if (esDelPrograma(sesion().DirDatos, *fichero)) {
    mensaje(QStringLiteral("Ese fichero es de los datos de Librano y se perdería lo que contiene, "
                           "elija otro"),
            QStringLiteral("Error"));
    return;
  }
  trabajaConFichero(*this, ctx, *ui_->Bar, [&](const Advance& avance) {
    ctx.motor.CopyDatabase(sesion().rutaEmpresa(), *fichero, avance);
  });
  mensaje(QStringLiteral("Archivo exportado a ") + *fichero, windowTitle());
  trabajaConFichero(*this, ctx, *ui_->Bar, [&](const Advance& avance) {
    dejaLoElegido(ctx.motor, *fichero,
                  {.plan = ui_->ChkPlan->isChecked(),
                   .diario = ui_->ChkDiario->isChecked(),
                   .iva = ui_->ChkIva->isChecked(),
                   .recibos = ui_->ChkRecibos->isChecked()},
                  avance);
  });
  vuelveAlMenu(ctx);
}
