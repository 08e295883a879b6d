#include "transfer/frmreindexa2.h"

#include <utility>

#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/cajas.h"
#include "transfer/mantenimiento.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmreindexa2.h"

FrmReindexa2::FrmReindexa2(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmReindexa2>()) {
  ui_->setupUi(this);
  setBotonDeCierre(ui_->CmdAceptar);
  alPulsar(ui_->CmdAceptar, [this] { vuelveAlMenu(ctx); });
}

FrmReindexa2::~FrmReindexa2() = default;

// The state of the company's file when its rows were read comes with the call: lines that another
// station has written since aren't in the new one.
void FrmReindexa2::Form_Activate() {
  const QString empresa = sesion().EmpresaActual;
  const QString nuevo = rutaDeTrabajo(sesion().DirDatos, empresa);
  const qint64 leida = std::exchange(sesion().ValorElegido, QString()).toLongLong();
  diceEntero(*ui_->LblEmpresa,
             QStringLiteral("La empresa -%1- , ha sido reindexada.").arg(empresa));
  try {
    ctx.motor.ReplaceDatabase(nuevo, sesion().rutaEmpresa(), leida);
  } catch (const ErrorEjecucion& e) {
    anota(e, QStringLiteral("Form_Activate - FrmReindexa2"));
    diceEntero(*ui_->LblEmpresa,
               QStringLiteral("La empresa -%1- ,no ha sido reindexada. porque alguien "
                              "esta accediendo a ella desde otro terminal.")
                   .arg(empresa));
    ui_->LblProceso->hide();
  }
  ignorando([&] { ctx.motor.DeleteDatabase(nuevo); });
}
