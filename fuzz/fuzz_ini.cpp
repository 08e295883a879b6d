// The settings file, which people edit by hand and older versions wrote: whatever it holds, a value
// that is written must be read back.
#include <cstdlib>
#include <QFile>
#include <QTemporaryDir>

#include "common/cini.h"
#include "common/rutas.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const QTemporaryDir carpeta;
  const QString archivo = rutaPrograma(carpeta.filePath(QStringLiteral("Config.ini")));
  QFile fichero(rutaSistema(archivo));
  if (!fichero.open(QIODevice::WriteOnly)) std::abort();
  fichero.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  fichero.close();

  const QString seccion = QStringLiteral("Directorios"), clave = QStringLiteral("Datos");
  QString valor;
  CIni().Leer(archivo, seccion, clave, valor);
  const QString nuevo = QStringLiteral("C:\\Señores\\");
  CIni().Grabar(archivo, seccion, clave, nuevo);
  CIni().Leer(archivo, seccion, clave, valor);
  if (valor != nuevo) std::abort();
  return 0;
}
