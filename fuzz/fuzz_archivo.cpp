// Archives of a company that others made or damaged: whatever stands in one, the file is taken out
// of it whole, or it is refused with a number, and nothing else is written anywhere.
#include <cstdlib>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "common/errorejecucion.h"
#include "transfer/archivozip.h"

namespace {

QByteArray lee(const QString& ruta) {
  QFile fichero(ruta);
  return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

void escribe(const QString& ruta, const QByteArray& bytes) {
  QFile fichero(ruta);
  if (!fichero.open(QIODevice::WriteOnly)) std::abort();
  fichero.write(bytes);
}

// A sound archive, into which the bytes at hand are put by pairs: where, and what.
QByteArray archivoTocado(const QByteArray& sano, const QByteArray& cambios) {
  QByteArray tocado = sano;
  for (qsizetype i = 0; i + 2 < cambios.size(); i += 3) {
    const auto sitio = static_cast<uchar>(cambios[i]) * 256 + static_cast<uchar>(cambios[i + 1]);
    tocado[sitio % tocado.size()] = cambios[i + 2];
  }
  return tocado;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const QTemporaryDir carpeta;
  static const QString archivo = carpeta.filePath("copia.zip");
  static const QByteArray sano = [] {
    const QString original = carpeta.filePath("original");
    escribe(original, QByteArray("SQLite format 3\0", 16) + QByteArray(5000, 'x'));
    comprime(original, archivo, "Conta.Mdb", [](int, int) { return true; });
    QFile::remove(original);
    return lee(archivo);
  }();
  if (size == 0) return 0;
  const QByteArray bytes(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
  escribe(archivo, data[0] % 2 ? archivoTocado(sano, bytes) : bytes);
  const QString destino = carpeta.filePath("sacado");
  try {
    descomprime(archivo, "Conta.Mdb", destino, [](int, int) {});
    if (!lee(destino).startsWith("SQLite format 3")) std::abort();
  } catch (const ErrorEjecucion&) {
  }
  QFile::remove(destino);
  const QStringList quedan =
      QDir(carpeta.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
  if (quedan != QStringList("copia.zip")) std::abort();
  return 0;
}
