#include "transfer/frmreindexa.h"

#include "engine/dbengine.h"
#include "toolkit/fallo.h"
#include "toolkit/progreso.h"
#include "toolkit/registro.h"
#include "transfer/mantenimiento.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmreindexa.h"

FrmReindexa::FrmReindexa(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmReindexa>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { vuelveAlMenu(ctx); });
}

FrmReindexa::~FrmReindexa() = default;

void FrmReindexa::Form_Load() {
  setWindowTitle(QStringLiteral("Reindexado de -%1-").arg(sesion().EmpresaActual));
  mensaje(QStringLiteral("Atención el proceso que va a efectuar puede ser lento dependiendo de la "
                         "velocidad de su ordenador"),
          QStringLiteral("Atención"));
}

void FrmReindexa::CmdAceptar_Click() {
  ctx.cajas->guardaPendiente(this);
  ui_->Bar2->setRange(0, kTablasReindexadas);
  const Sesion& s = sesion();
  std::optional<qint64> leida;
  try {
    Progreso progreso(ctx, *ui_->Bar1);
    const MarchaReindexado marcha{
        .tabla = [this](int tabla) { ui_->Bar2->setValue(tabla); },
        .fila = progreso.avance(),
        .omite =
            [this](const ErrorEjecucion& e) {
              anota(e, QStringLiteral("CmdAceptar_Click - FrmReindexa"));
              return pregunta(QStringLiteral("Atención se ha producido un error en el reindexado "
                                             "de datos ¿desea seguir reindexando y omitir este "
                                             "error?"),
                              QStringLiteral("Error"));
            }};
    leida = reindexa(ctx.motor,
                     {s.rutaEmpresa(), rutaDeTrabajo(s.DirDatos, s.EmpresaActual), s.DigitosCuenta,
                      s.DigitosSubcuenta},
                     marcha);
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kBaseYaExiste) throw;
    // What a rebuilding that was broken off has left; it goes with the next form.
    avisa(ctx, this, {e, QStringLiteral("CmdAceptar_Click - FrmReindexa")});
  }
  sesion().ValorElegido = leida ? QString::number(*leida) : QString();
  ctx.formularios->cambiarA(leida ? QStringLiteral("FrmReindexa2")
                                  : QStringLiteral("FrmReindexa3"));
}
