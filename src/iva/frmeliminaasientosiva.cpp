#include "iva/frmeliminaasientosiva.h"

#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "ui_frmeliminaasientosiva.h"

FrmEliminaAsientosIVA::FrmEliminaAsientosIVA(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmEliminaAsientosIVA>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmEliminaAsientosIVA::~FrmEliminaAsientosIVA() = default;

void FrmEliminaAsientosIVA::Form_Load() {
  const DataControl& empresa = ctx.principal->DtaEmpresaActual();
  ui_->TxtCompras->setText(empresa.Fields("IVASCom").display());
  ui_->TxtVentas->setText(empresa.Fields("IVARVen").display());
}

TareaIVA FrmEliminaAsientosIVA::tarea() const {
  if (ui_->OptRevisa->isChecked()) return TareaIVA::EliminaIVASinAsiento;
  if (ui_->OptEliminaAsientosSinIVA->isChecked()) return TareaIVA::EliminaLineasSinIVA;
  if (ui_->OptCreaAsientosIVADeDiario->isChecked()) return TareaIVA::CreaIVADeDiario;
  return TareaIVA::EliminaPorCuenta;
}

void FrmEliminaAsientosIVA::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const QString cuenta =
      (ui_->OptRepercutido->isChecked() ? ui_->TxtVentas : ui_->TxtCompras)->text();
  bool hubo = false;
  trabajaEnDiario(ctx, *ui_->Bar, [&](const Avance& avance) {
    hubo = mantieneIVA(*empresa, tarea(), cuenta, sesion().MascaraImporte, avance);
  });
  if (!hubo) return mensaje("No existen ningun registro en ese rango", "Error");
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}
