#include "journal/frmbusfec.h"

#include "common/formato.h"
#include "toolkit/protocolo.h"
#include "ui_frmbusfec.h"

FrmBusFec::FrmBusFec(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusFec>()) {
  ui_->setupUi(this);
  fecha(ui_->TxtFecha);
  alPulsar(ui_->CmdCal, [this] { CmdCal_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusFec::~FrmBusFec() = default;

void FrmBusFec::Form_Load() {
  ui_->TxtFecha->setText(Format(ctx.reloj->hoy(), "dd/mm/yyyy"));
  ui_->TxtFecha->selectAll();
}

void FrmBusFec::CmdCal_Click() {
  mostrar("FrmCalendario", llamada::kFechaDeBusqueda);
  enfocar(ui_->TxtFecha);
}

// Kept: the date stands in the statement as typed, and is read there month first where that is
// possible, as in every statement of the program.
void FrmBusFec::CmdAceptar_Click() {
  const QString desde = ui_->TxtFecha->text();
  if (desde.isEmpty()) return error("No tiene ninguna fecha introducida");
  if (!EsFecha(desde)) return;
  localiza("Select * from SqlDiarioPrincipalBlanco where Fecha >=#" + desde + "# order by Fecha",
           QString());
}
