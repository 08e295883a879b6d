#include "transfer/widgets/vuelta.h"

#include <algorithm>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

#include "toolkit/cajas.h"
#include "toolkit/formulario.h"
#include "toolkit/progreso.h"
#include "toolkit/registro.h"

void vuelveAlMenu(const Contexto& contexto) {
  contexto.formularios->cambiarA(QStringLiteral("FrmMenu"));
}

void diceEntero(QLabel& rotulo, const QString& texto) {
  rotulo.setText(texto);
  const int ancho = std::max(rotulo.width(), rotulo.minimumWidth());
  rotulo.setMinimumHeight(rotulo.heightForWidth(ancho));
}

void trabajaConFichero(Formulario& forma, Contexto& contexto, QProgressBar& barra,
                       const std::function<void(const Advance&)>& trabajo) {
  contexto.cajas->guardaPendiente(&forma);
  const auto acaba = qScopeGuard([&] { barra.hide(); });
  Progreso progreso(contexto, barra);
  trabajo(progreso.avance());
}
