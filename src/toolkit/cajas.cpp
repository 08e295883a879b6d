#include "toolkit/cajas.h"

#include <QScopedValueRollback>

#include "common/errorejecucion.h"
#include "engine/dbengine.h"

namespace {

const QString kTitulo = QStringLiteral("Librano");

QString textoDeError(const ErrorEjecucion& e) {
  return QStringLiteral("Error %1: %2").arg(e.numero()).arg(e.descripcion());
}

QString textoDePendiente(const ErrorEjecucion& e) {
  return e.descripcion() +
         QStringLiteral(
             "\n\nLo último que ha anotado está pendiente y se sigue intentando guardar: este "
             "aviso "
             "se cierra solo en cuanto se consiga.\n\n\"Descartar\" deshace lo que no se ha "
             "guardado.");
}

}  // namespace

void Cajas::guardaPendiente(QWidget* padre) {
  for (;;) {
    QString texto;
    try {
      return motor_.flush();
    } catch (const ErrorEjecucion& e) {
      if (e.numero() != err::kNoSePuedeGuardar || eligiendo_) throw;
      texto = textoDePendiente(e);
    }
    const QScopedValueRollback<bool> guarda(eligiendo_, true);
    if (ensenaEleccion(padre, texto) == Eleccion::Reintentar) continue;
    motor_.discard();
    throw ErrorEjecucion(err::kOperacionCancelada);
  }
}

void Cajas::aviso(QWidget* padre, const QString& texto, const QString& titulo) {
  try {
    guardaPendiente(padre);
  } catch (const ErrorEjecucion& e) {
    // Shown while the choice stands, nothing is settled yet; given up, the user knows.
    const bool sabido = eligiendo_ || e.numero() == err::kOperacionCancelada;
    if (!sabido) ensenaMensaje(padre, textoDeError(e), kTitulo, Icono::Alto);
  }
  ensenaMensaje(padre, texto, titulo, Icono::Alto);
}

void Cajas::mensaje(QWidget* padre, const QString& texto, const QString& titulo, Icono icono) {
  guardaPendiente(padre);
  ensenaMensaje(padre, texto, titulo, icono);
}

bool Cajas::pregunta(QWidget* padre, const QString& texto, const QString& titulo, Icono icono) {
  guardaPendiente(padre);
  return ensenaPregunta(padre, texto, titulo, icono);
}

std::optional<QString> Cajas::entrada(QWidget* padre, const QString& texto, const QString& titulo,
                                      const QString& inicial) {
  guardaPendiente(padre);
  return ensenaEntrada(padre, texto, titulo, inicial);
}

std::optional<QString> Cajas::abrirFichero(QWidget* padre, const QString& titulo,
                                           const QString& carpeta, const QString& filtro) {
  guardaPendiente(padre);
  return ensenaAbrir(padre, titulo, carpeta, filtro);
}

std::optional<QString> Cajas::guardarFichero(QWidget* padre, const QString& titulo,
                                             const QString& propuesto, const QString& filtro) {
  guardaPendiente(padre);
  return ensenaGuardar(padre, titulo, propuesto, filtro);
}

void Cajas::modal(QDialog& dialogo) {
  guardaPendiente(nullptr);
  ensenaModal(dialogo);
}
