#include "iva/frmivarenumera.h"

#include "engine/dbengine.h"
#include "iva/mantenimientoiva.h"
#include "journal/widgets/trabajoendiario.h"
#include "ui_frmivarenumera.h"

FrmIVARenumera::FrmIVARenumera(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmIVARenumera>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVARenumera::~FrmIVARenumera() = default;

void FrmIVARenumera::CmdAceptar_Click() {
  mensaje("Tenga paciencia, este proceso puede ser costoso", "Atención");
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const RegistrosElegidos elegidos{.repercutido = ui_->ChkRepercutido->isChecked(),
                                   .soportado = ui_->ChkSoportado->isChecked()};
  trabajaEnDiario(ctx, *ui_->Bar,
                  [&](const Avance& avance) { renumeraIVA(*empresa, elegidos, avance); });
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}
