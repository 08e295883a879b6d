#include "journal/frmeliminaasiento.h"

#include "engine/dbengine.h"
#include "journal/masivos.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "ui_frmeliminaasiento.h"

FrmEliminaAsiento::FrmEliminaAsiento(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmEliminaAsiento>()),
      DtaDiarioLista_(contexto.motor) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmEliminaAsiento::~FrmEliminaAsiento() = default;

void FrmEliminaAsiento::Form_Load() {
  ui_->LblAsiento->setText(sesion().ValorElegido);
}

// What goes with the asiento, and what stays behind elsewhere; the deletion goes on either way.
void FrmEliminaAsiento::avisa() {
  if (DtaDiarioLista_.Eof()) return;
  if (!DtaDiarioLista_.Fields("FacturaZuri").display().isEmpty())
    mensaje(
        "Atención este apunte se ha creado con Almirel, si lo elimina desde aquí, no eliminara la "
        "factura relaccionada",
        "Almirel", Icono::Alto);
  if (!DtaDiarioLista_.Fields("ApunteIVA").isNull())
    mensaje(
        "La partida que va a eliminar es un apunte de IVA, si la elimina se eliminara el apunte de "
        "IVA asociado",
        "ATENCION!!!", Icono::Aviso);
}

void FrmEliminaAsiento::CmdAceptar_Click() {
  const QString asiento = ui_->LblAsiento->text();
  DtaDiarioLista_.bind(sesion().rutaEmpresa(),
                       "Select * from SqlDiarioPrincipalBlanco where NAsiento=" + asiento);
  avisa();
  DtaDiarioLista_.unbind();
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaEnDiario(ctx, *ui_->Bar,
                  [&](const Avance& avance) { eliminaAsiento(*empresa, asiento.toInt(), avance); });
  DataControl& diario = ctx.principal->DtaDiarioLista();
  diario.bind(sesion().rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco Order by NAsiento");
  if (!diario.Eof()) diario.MoveLast();
  descargar();
}
