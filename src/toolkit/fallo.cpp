#include "toolkit/fallo.h"

#include "common/errorejecucion.h"
#include "common/funciones.h"
#include "toolkit/cajas.h"
#include "toolkit/contexto.h"

Fallo::Fallo(int numero, const QString& descripcion, const QString& lugar)
    : numero(numero), descripcion(descripcion), lugar(lugar) {}

Fallo::Fallo(const ErrorEjecucion& error, const QString& lugar)
    : Fallo(error.numero(), error.descripcion(), lugar) {}

void anota(const Contexto& contexto, const Fallo& fallo) {
  try {
    RegistraError(contexto.carpetaPrograma, fallo.numero, fallo.descripcion, fallo.lugar);
  } catch (const ErrorEjecucion&) {
    // Whoever needs to know of the failure itself is told by the box.
  }
}

void avisa(const Contexto& contexto, QWidget* padre, const Fallo& fallo, const QString& texto,
           const QString& titulo) {
  anota(contexto, fallo);
  if (fallo.numero == err::kOperacionCancelada) return;
  const QString propio = QStringLiteral("Error %1: %2").arg(fallo.numero).arg(fallo.descripcion);
  contexto.cajas->aviso(padre, texto.isEmpty() ? propio : texto,
                        titulo.isEmpty() ? QStringLiteral("Librano") : titulo);
}
