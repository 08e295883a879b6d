#include "journal/frmrenumera.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "journal/integridad.h"
#include "journal/widgets/trabajoendiario.h"
#include "ui_frmrenumera.h"

FrmRenumera::FrmRenumera(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmRenumera>()) {
  ui_->setupUi(this);
  alSalir(ui_->TxtRenumeraAsientoDesde, [this] { TxtRenumeraAsientoDesde_LostFocus(); });
  alSalir(ui_->TxtRenumeraDesdeNumero, [this] { TxtRenumeraDesdeNumero_LostFocus(); });
  alPulsar(ui_->CmdRevisarFechas, [this] { mostrar("FrmCompruebaFechasAsientos"); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmRenumera::~FrmRenumera() = default;

void FrmRenumera::Form_Load() {
  ui_->TxtRenumeraAsientoDesde->setText("1");
  ui_->TxtRenumeraDesdeNumero->setText("1");
}

void FrmRenumera::TxtRenumeraAsientoDesde_LostFocus() {
  if (!EsNumerico(ui_->TxtRenumeraAsientoDesde->text())) ui_->TxtRenumeraAsientoDesde->setText("1");
  igualaNumeros();
}

void FrmRenumera::TxtRenumeraDesdeNumero_LostFocus() {
  const QString numero = ui_->TxtRenumeraDesdeNumero->text();
  if (numero == "0" || !EsNumerico(numero)) ui_->TxtRenumeraDesdeNumero->setText("1");
  igualaNumeros();
}

// The two are compared as texts: "9" is not less than "10" here.
void FrmRenumera::igualaNumeros() {
  if (ui_->TxtRenumeraDesdeNumero->text() < ui_->TxtRenumeraAsientoDesde->text())
    ui_->TxtRenumeraDesdeNumero->setText(ui_->TxtRenumeraAsientoDesde->text());
}

// Numbering always starts at the asiento from which it works; the second field only keeps its
// rules.
void FrmRenumera::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const int desde = static_cast<int>(Val(ui_->TxtRenumeraAsientoDesde->text()));
  const QString falta = avisoSinRegistro(*empresa, ">= " + QString::number(desde));
  if (!falta.isEmpty()) return mensaje(falta, "Error");
  trabajaEnDiario(ctx, *ui_->Bar,
                  [&](const Avance& avance) { renumeraDiario(*empresa, desde, avance); });
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}
