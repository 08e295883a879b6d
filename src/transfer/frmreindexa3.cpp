#include "transfer/frmreindexa3.h"

#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "transfer/mantenimiento.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmreindexa3.h"

FrmReindexa3::FrmReindexa3(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmReindexa3>()) {
  ui_->setupUi(this);
  setBotonDeCierre(ui_->CmdAceptar);
  alPulsar(ui_->CmdAceptar, [this] { vuelveAlMenu(ctx); });
}

FrmReindexa3::~FrmReindexa3() = default;

void FrmReindexa3::Form_Activate() {
  const QString empresa = sesion().EmpresaActual;
  diceEntero(*ui_->LblEmpresa, QStringLiteral("La empresa -%1- queda como estaba.").arg(empresa));
  ignorando([&] { ctx.motor.DeleteDatabase(rutaDeTrabajo(sesion().DirDatos, empresa)); });
}
