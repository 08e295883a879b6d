#include "transfer/copiaseguridad.h"

#include <atomic>
#include <chrono>
#include <future>
#include <QDir>
#include <QFileInfo>

#include "common/errorejecucion.h"
#include "common/ficherotemporal.h"
#include "common/rutas.h"
#include "engine/dbengine.h"
#include "engine/foreign.h"
#include "engine/store.h"
#include "transfer/archivozip.h"
#include "transfer/tramos.h"

namespace {

const QString kFichero = QStringLiteral("Conta.Mdb");  // in the archive
constexpr int kNombreEmpresa = 1;

// An archive of other books, even sound ones, isn't a company's.
void compruebaEmpresa(Database& base) {
  const QStringList tablas = base.TableDefs();
  for (const char* tabla : {"Empresa", "Diario", "Subcuentas"})
    if (!tablas.contains(QLatin1String(tabla), Qt::CaseInsensitive))
      throw ErrorEjecucion(err::kArchivoNoSirve, QStringLiteral("no contiene una empresa"));
}

void ponNombre(Database& base, const QString& empresa) {
  const auto fila = base.OpenRecordset(QStringLiteral("Select * from Empresa"));
  if (fila->Eof())
    throw ErrorEjecucion(err::kArchivoNoSirve, QStringLiteral("no contiene una empresa"));
  fila->Edit();
  fila->Fields(kNombreEmpresa) = empresa;
  fila->Update();
}

}  // namespace

// The packing is done beside the thread of the windows, which looks meanwhile whether what is
// packed can be read at all: a damaged file must not take the place of its last sound copy.
void guardaCopia(DBEngine& motor, const QString& rutaEmpresa, const QString& archivo,
                 const Advance& avance) {
  const QString destino = rutaSistema(archivo);
  if (!QFileInfo(QFileInfo(destino).path()).isDir())
    throw ErrorEjecucion(err::kRutaNoEncontrada, rutaPrograma(QFileInfo(destino).path()));
  const auto libros = motor.snapshot(rutaEmpresa, tramo(avance, 0, 4));
  const FicheroTemporal copia(destino);
  std::atomic<int> parte = 0;
  std::atomic<bool> sigue = true;
  const auto comprimiendo = [&](int hecho, int total) {
    parte = 1000 * hecho / total;
    return sigue.load();
  };
  auto trabajo = std::async(
      std::launch::async, [&] { comprime(libros->file(), copia.ruta(), kFichero, comprimiendo); });
  try {
    libros->verify();
  } catch (...) {
    sigue = false;
    trabajo.wait();
    throw;
  }
  using std::chrono_literals::operator""ms;
  while (trabajo.wait_for(20ms) != std::future_status::ready)
    if (avance) avance(1000 + 3 * parte, 4000);
  trabajo.get();
  if (!copia.ocupaSuSitio()) throw ErrorEjecucion(err::kErrorDeRuta, archivo);
}

void restauraCopia(DBEngine& motor, const QString& archivo, const QString& rutaEmpresa,
                   const QString& empresa, const Advance& avance) {
  const QString carpeta = QFileInfo(rutaSistema(rutaEmpresa)).path();
  if (!QDir().mkpath(carpeta)) throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(carpeta));
  const FicheroTemporal sacado(carpeta + QStringLiteral("/Restaurada.MDB"));
  descomprime(
      rutaSistema(archivo), kFichero, sacado.ruta(),
      avance ? tramo(avance, 0, 2) : [](int, int) {});
  {
    const auto base = motor.Workspaces(0).OpenDatabase(sacado.ruta());
    compruebaEmpresa(*base);
    dropForeignTriggers(*base);
    ponNombre(*base, empresa);
    motor.flush();
  }
  motor.CopyDatabase(sacado.ruta(), rutaEmpresa, tramo(avance, 1, 2));
}
