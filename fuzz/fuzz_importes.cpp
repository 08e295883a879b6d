// Tables and texts of other packages: whatever stands in one, it is refused with a number or read
// to an end.
#include <cstdlib>
#include <QFile>
#include <QTemporaryDir>

#include "common/errorejecucion.h"
#include "transfer/lectorcampos.h"
#include "transfer/lectordbf.h"

namespace {

const QTemporaryDir& carpeta() {
  static const QTemporaryDir una;
  return una;
}

void escribe(const char* nombre, const uint8_t* data, size_t size) {
  QFile fichero(carpeta().filePath(QLatin1String(nombre)));
  if (!fichero.open(QIODevice::WriteOnly)) std::abort();
  fichero.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
}

// No more records than there is room for.
void leeTabla(size_t size) {
  TablaDbf tabla(carpeta().path(), QStringLiteral("Tabla.dbf"));
  if (static_cast<size_t>(tabla.total()) > size) std::abort();
  while (tabla.siguiente()) {
    for (int columna = 0; columna < 64; ++columna) {
      try {
        if (tabla.valor(columna).display().size() > 255) std::abort();
      } catch (const ErrorEjecucion&) {
      }
    }
  }
}

void leeCampos(size_t size) {
  LectorCampos lector(carpeta().filePath(QStringLiteral("campos.csv")));
  size_t campos = 0;
  while (!lector.fin()) campos += static_cast<size_t>(lector.lee(3).size());
  if (campos > size + 3 || lector.leido() > lector.total()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  escribe("Tabla.dbf", data, size);
  escribe("campos.csv", data, size);
  for (void (*lee)(size_t) : {leeTabla, leeCampos}) {
    try {
      lee(size);
    } catch (const ErrorEjecucion&) {
    }
  }
  return 0;
}
