#include "journal/frmasiento.h"

#include <QLineEdit>

#include "common/formato.h"
#include "engine/dbengine.h"
#include "toolkit/principal.h"
#include "toolkit/registro.h"
#include "ui_frmasiento.h"

FrmAsiento::FrmAsiento(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmAsiento>()), DtaDiario_(contexto.motor) {
  ui_->setupUi(this);
  using enum Columna::Tipo;
  ui_->GridAsiento->enlazar(DtaDiario_, {{"Subcuenta", "Subcuenta", 10},
                                         {"Fecha", "Fecha", 11, Fecha},
                                         {"Debe", "Debe", 14, Importe},
                                         {"Haber", "Haber", 14, Importe},
                                         {"Descripcion", "Descripción", 34}});
  teclaDecimal(ui_->GridAsiento);
  alPulsar(ui_->CmdVerAsiento, [this] { CmdVerAsiento_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmAsiento::~FrmAsiento() = default;

void FrmAsiento::Form_Activate() {
  ui_->GridAsiento->setMascara(sesion().MascaraImporte);
  DtaDiario_.bind(sesion().rutaEmpresa(),
                  "Select * from SqlDiarioPrincipalBlanco where NAsiento=" + sesion().ValorElegido);
  ui_->TxtAsiento->setText(sesion().ValorElegido);
  setWindowTitle(Format(DtaDiario_.Fields("Fecha").Value(), "dd/mm/yyyy"));
}

// The user lands on the asiento in the main window.
void FrmAsiento::CmdVerAsiento_Click() {
  const QString asiento = sesion().ValorElegido;
  ctx.principal->TxtAsiento().setText(asiento);
  ctx.principal->DtaDiarioLista().bind(
      sesion().rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco where nasiento=" + asiento);
  if (Formulario* extracto = ctx.formularios->abierto("FrmExtractosPantalla"))
    extracto->descargar();
  descargar();
}
