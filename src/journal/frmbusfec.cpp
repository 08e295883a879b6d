#include "journal/frmbusfec.h"

#include "common/formato.h"
#include "ui_frmbusfec.h"

FrmBusFec::FrmBusFec(Contexto& contexto)
    : FrmBusca(contexto), ui(std::make_unique<Ui::FrmBusFec>()) {
  ui->setupUi(this);
  fecha(ui->TxtFecha);
  alPulsar(ui->CmdCal, [this] { CmdCal_Click(); });
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBusFec::~FrmBusFec() = default;

void FrmBusFec::Form_Load() {
  ui->TxtFecha->setText(Format(ctx.reloj->hoy(), "dd/mm/yyyy"));
  ui->TxtFecha->selectAll();
}

void FrmBusFec::CmdCal_Click() {
  mostrar("FrmCalendario", 21);
  enfocar(ui->TxtFecha);
}

// The date stands in the statement as typed, and is read there month first where that is possible.
void FrmBusFec::CmdAceptar_Click() {
  const QString desde = ui->TxtFecha->text();
  if (desde.isEmpty()) return error("No tiene ninguna fecha introducida");
  if (!EsFecha(desde)) return;
  localiza("Select * from SqlDiarioPrincipalBlanco where Fecha >=#" + desde + "# order by Fecha",
           QString());
}
