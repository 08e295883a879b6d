#include "yearend/frmapertura.h"

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "ui_frmapertura.h"
#include "yearend/ejercicio.h"

FrmApertura::FrmApertura(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmApertura>()), DtaEmpresa_(contexto.motor) {
  ui_->setupUi(this);
  ui_->TxtEmpresaCerrada->enlazar(DtaEmpresa_, "NombreEmpresa");
  conectaAsientoAnual(*this, ctx, campos());
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmApertura::~FrmApertura() = default;

AsientoAnual FrmApertura::campos() const {
  return {*ui_->TxtFecha, *ui_->TxtDescripcion, *ui_->TxtAsiento};
}

void FrmApertura::Form_Activate() {
  DtaEmpresa_.bind(sesion().rutaCatalogo(), "Select * from Empresas order by NombreEmpresa");
  ui_->TxtFecha->setText("01/01/" + QString::number(sesion().AnoActual));
}

void FrmApertura::CmdAceptar_Click() {
  const QString nombre = ui_->TxtEmpresaCerrada->texto();
  if (nombre.isEmpty()) return mensaje("Seleccione una empresa de la lista", "Error");
  if (nombre.compare(sesion().EmpresaActual, Qt::CaseInsensitive) == 0) {
    return mensaje("Usted no puede crear un asiento de apertura sobre la misma empresa", "Error");
  }
  Workspace& area = ctx.motor.Workspaces(0);
  const auto cerrada = area.OpenDatabase(sesion().rutaEmpresa(nombre));
  const auto empresa = area.OpenDatabase(sesion().rutaEmpresa());
  AsientoGrabado grabado;
  try {
    trabajaPasoAnual(ctx, {ui_->CmdAceptar, ui_->CmdCancelar}, [&](const Avance& avance) {
      abreEjercicio(*cerrada, *empresa, pasoTecleado(ctx, campos()), avance, grabado);
    });
  } catch (const ErrorEjecucion& error) {
    return avisarError(error.numero(),
                       textoDeFallo(error, *empresa, grabado, "La apertura no está entera"),
                       "CmdAceptar_Click");
  }
  descargar();
}
