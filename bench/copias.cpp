// A company's file rebuilt, saved and restored whole, each next to the libraries alone.
#include <benchmark/benchmark.h>

#include <zip.h>
#include <QFile>

#include "engine/recordset.h"
#include "libros.h"
#include "transfer/copiaseguridad.h"
#include "transfer/mantenimiento.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::unaVez;

// --- rebuilding
// -----------------------------------------------------------------------------------

// With the bar's breath, and until the new file stands in the place of the old one.
void reindexa_librano(benchmark::State& estado) {
  const QString ruta = libros(estado).copia("Reindexa.MDB");
  const QString nuevo = libros(estado).carpeta() + "Reindexa2.MDB";
  for (auto _ : estado) {
    DBEngine motor;
    const MarchaReindexado marcha{[](int) {}, [&](int, int) { motor.breathe(); },
                                  [](const ErrorEjecucion&) { return false; }};
    const auto leida = reindexa(motor, {ruta, nuevo, 3, 8}, marcha);
    motor.ReplaceDatabase(nuevo, ruta, *leida);
    motor.DeleteDatabase(nuevo);
  }
}

// The same tables, with the indexes and sums that the program's have, filled by one statement each.
void copia_directo(benchmark::State& estado) {
  const QString ruta = libros(estado).copia("Copia.MDB");
  const QString nueva = libros(estado).carpeta() + "Copia2.MDB";
  for (auto _ : estado) {
    QFile::remove(nueva);
    estado.PauseTiming();
    DBEngine motor;
    banco::creaFichero(motor, nueva);
    motor.flush();
    Directo directo(nueva);
    directo.ejecuta(
        "DELETE FROM Subcuentas; DELETE FROM Conceptos; DELETE FROM TiposIVA; "
        "DELETE FROM Empresa");
    directo.ejecuta(("ATTACH '" + ruta + "' AS vieja").toUtf8().constData());
    estado.ResumeTiming();
    directo.ejecuta("BEGIN");
    for (const char* tabla : {"Conceptos", "Cuentas", "Diario", "Empresa", "RSIVA", "Subcuentas",
                              "TiposIVA", "Recibos"}) {
      const QByteArray orden = QByteArray("INSERT INTO ") + tabla + " SELECT * FROM vieja." + tabla;
      directo.ejecuta(orden.constData());
    }
    directo.ejecuta("COMMIT");
  }
}

// The bare rows of the journal, without an index.
void copia_desnuda(benchmark::State& estado) {
  Directo directo(libros(estado).copia("Copia.MDB"));
  for (auto _ : estado) directo.ejecuta("CREATE TABLE D2 AS SELECT * FROM Diario");
}

// --- saving and restoring
// -------------------------------------------------------------------------

void guarda_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    guardaCopia(motor, l.ruta(), l.carpeta() + "Banco.Zip");
  }
}

void guarda_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  const QByteArray archivo = QFile::encodeName(l.carpeta() + "Directo.Zip");
  const QByteArray fichero = QFile::encodeName(l.rutaSistema());
  for (auto _ : estado) {
    int error = 0;
    zip_t* z = zip_open(archivo.constData(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    zip_file_add(z, "Conta.Mdb", zip_source_file(z, fichero.constData(), 0, -1), 0);
    zip_close(z);
  }
}

void restaura_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  const QString ruta = l.copia("Restaura.MDB");
  DBEngine motor;
  guardaCopia(motor, l.ruta(), l.carpeta() + "Banco.Zip");
  for (auto _ : estado) restauraCopia(motor, l.carpeta() + "Banco.Zip", ruta, "Banco");
}

BENCHMARK(reindexa_librano)->Name("reindexar/librano")->Apply(unaVez);
BENCHMARK(copia_directo)->Name("reindexar/directo")->Apply(unaVez);
BENCHMARK(copia_desnuda)->Name("reindexar, lineas desnudas/directo")->Apply(unaVez);
BENCHMARK(guarda_librano)->Name("copia de seguridad/librano")->Apply(unaVez);
BENCHMARK(guarda_directo)->Name("copia de seguridad/directo")->Apply(unaVez);
BENCHMARK(restaura_librano)->Name("restaurar/librano")->Apply(unaVez);

}  // namespace
