#include "iva/frmivarevisarbases.h"

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/protocolo.h"
#include "ui_frmivarevisarbases.h"

FrmIVARevisarBases::FrmIVARevisarBases(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmIVARevisarBases>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVARevisarBases::~FrmIVARevisarBases() = default;

void FrmIVARevisarBases::ponBotones(bool activos) {
  ui_->CmdAceptar->setEnabled(activos);
  ui_->CmdCancelar->setEnabled(activos);
}

void FrmIVARevisarBases::CmdAceptar_Click() {
  mensaje("Tenga paciencia, este proceso puede ser costoso", "Atención");
  ponBotones(false);
  QString fallo;
  try {
    trabajaEnDiario(ctx, [&] {
      if (!recorre()) fallo = "No existe ningún registro de IVA";
    });
  } catch (const ErrorEjecucion& e) {
    fallo = e.descripcion();
  }
  ui_->Bar->hide();
  if (!fallo.isEmpty()) {
    ponBotones(true);
    return mensaje(fallo, "Error");
  }
  mensaje("Proceso terminado", "Proceso finalizado");
  descargar();
}

// The bar moves from one dialog to the next; the dialogs themselves must take input.
bool FrmIVARevisarBases::recorre() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const auto registro = empresa->OpenRecordset("Select * from RSIVA order by Fecha");
  if (registro->Eof()) return false;
  registro->MoveLast();
  ui_->Bar->setRange(0, registro->RecordCount());
  ui_->Bar->show();
  for (registro->MoveFirst(); !registro->Eof(); registro->MoveNext()) {
    ui_->Bar->setValue(registro->AbsolutePosition());
    const QString asiento = registro->Fields("Asiento").display();
    if (!asiento.isEmpty()) mostrar("FrmIVASR", llamada::kIVARevision, asiento);
  }
  return true;
}
