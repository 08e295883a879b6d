#include "transfer/widgets/vuelta.h"

#include <QProgressBar>
#include <QScopeGuard>

#include "toolkit/cajas.h"
#include "toolkit/formulario.h"
#include "toolkit/progreso.h"
#include "toolkit/registro.h"

void vuelveAlMenu(const Contexto& contexto) {
  contexto.formularios->cambiarA(QStringLiteral("FrmMenu"));
}

void trabajaConFichero(Formulario& forma, Contexto& contexto, QProgressBar& barra,
                       const std::function<void(const Advance&)>& trabajo) {
  contexto.cajas->guardaPendiente(&forma);
  const auto acaba = qScopeGuard([&] { barra.hide(); });
  Progreso progreso(contexto, barra);
  trabajo(progreso.avance());
}
