#include "yearend/frmcierre.h"

#include "engine/dbengine.h"
#include "ui_frmcierre.h"
#include "yearend/ejercicio.h"
#include "yearend/widgets/pasoanual.h"

FrmCierre::FrmCierre(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCierre>()) {
  ui_->setupUi(this);
  ui_->TxtDescripcion->setMaxLength(kLargoDeDescripcion);
  conectaFechaDeAsiento(*this, ctx, *ui_->TxtFecha);
  soloNumero(ui_->TxtAsiento);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCierre::~FrmCierre() = default;

void FrmCierre::Form_Activate() {
  ui_->TxtFecha->setText("31/12/" + QString::number(sesion().AnoActual));
}

void FrmCierre::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaPasoAnual(ctx, {ui_->CmdAceptar, ui_->CmdCancelar}, [&](const Avance& avance) {
    cierraEjercicio(*empresa, sesion().AnoActual,
                    {.asiento = ui_->TxtAsiento->text(),
                     .fecha = ui_->TxtFecha->text(),
                     .descripcion = ui_->TxtDescripcion->text(),
                     .mascara = sesion().MascaraImporte},
                    avance);
  });
  descargar();
}
