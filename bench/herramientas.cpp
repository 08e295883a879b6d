// The journal's tools over whole journals, each next to one loop of prepared statements.
#include <benchmark/benchmark.h>

#include <cmath>

#include "engine/datacontrol.h"
#include "engine/recordset.h"
#include "journal/descuadres.h"
#include "journal/integridad.h"
#include "journal/masivos.h"
#include "libros.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::unaVez;

// A journal in which every asiento has to move: number 1 is gone.
QString copiaDesordenada(const Libros& l, const QString& nombre) {
  const QString ruta = l.copia(nombre);
  Directo(ruta).ejecuta("DELETE FROM Diario WHERE NAsiento=1");
  return ruta;
}

// The same lines in a table with its key alone: no sums, no other index.
void creaTablaDesnuda(Directo& directo) {
  directo.ejecuta(
      "CREATE TABLE D2(NLinea INTEGER PRIMARY KEY, NAsiento INTEGER, Fecha TEXT, Subcuenta TEXT,"
      " Descripcion TEXT, DH TEXT, Importe REAL, Punteo TEXT);"
      "INSERT INTO D2 SELECT NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe,Punteo"
      " FROM Diario");
}

// What the bar of a tool does: it lets the engine write every so often.
Avance aliento(DBEngine& motor) {
  return [&motor](int, int) { motor.breathe(); };
}

// Runs a tool over a copy of the journal, until its last line is on the disk.
template <class Herramienta>
void herramienta(benchmark::State& estado, const QString& copia, const Herramienta& hace) {
  DBEngine motor;
  const auto empresa = motor.Workspaces(0).OpenDatabase(copia);
  const Avance avance = aliento(motor);
  for (auto _ : estado) {
    hace(*empresa, avance);
    motor.flush();
  }
}

// The two sides that a loop done directly may work on: the journal as it is, with its indexes and
// its running sums, and its bare lines.
constexpr const char* kDiario = "Diario";
constexpr const char* kDesnuda = "D2";

// The loop done directly: for each row of `filas`, its first column and what `valor` makes of the
// row go into `cambio`, all in one commit. %1 is the table.
template <class Valor>
void bucle(benchmark::State& estado, const QString& copia, const char* tabla, const QString& filas,
           const QString& cambio, const Valor& valor) {
  Directo directo(copia);
  directo.ejecuta("PRAGMA temp_store=MEMORY");  // as the motor does
  if (tabla == kDesnuda) creaTablaDesnuda(directo);
  sqlite3_stmt* lee = directo.prepara(filas.arg(tabla).toUtf8().constData());
  sqlite3_stmt* escribe = directo.prepara(cambio.arg(tabla).toUtf8().constData());
  for (auto _ : estado) {
    directo.ejecuta("BEGIN IMMEDIATE");
    while (sqlite3_step(lee) == SQLITE_ROW) {
      sqlite3_bind_int64(escribe, 1, sqlite3_column_int64(lee, 0));
      valor(lee, escribe);
      Directo::recorre(escribe);
    }
    sqlite3_reset(lee);
    directo.ejecuta("COMMIT");
  }
}

// --- renumbering --------------------------------------------------------------------------------

void renumera_librano(benchmark::State& estado) {
  herramienta(estado, copiaDesordenada(libros(estado), "Renumera.MDB"),
              [](Database& empresa, const Avance& avance) { renumeraDiario(empresa, 1, avance); });
}

void renumera_directo(benchmark::State& estado, const char* tabla) {
  sqlite3_int64 ultimo = 0;
  sqlite3_int64 siguiente = 1;
  bucle(estado, copiaDesordenada(libros(estado), "RenumeraDirecto.MDB"), tabla,
        "SELECT NLinea, NAsiento FROM %1 ORDER BY Fecha, NAsiento",
        "UPDATE %1 SET NAsiento=?2 WHERE NLinea=?1", [&](sqlite3_stmt* lee, sqlite3_stmt* escribe) {
          const sqlite3_int64 asiento = sqlite3_column_int64(lee, 1);
          if (asiento != ultimo) ++siguiente;
          ultimo = asiento;
          sqlite3_bind_int64(escribe, 2, siguiente - 1);
        });
}

// --- the date check -----------------------------------------------------------------------------

void fechas_librano(benchmark::State& estado) {
  herramienta(estado, libros(estado).copia("Fechas.MDB"),
              [](Database& empresa, const Avance& avance) {
                unificaFechas(empresa, 2025, QDate(2025, 6, 15), avance);
              });
}

void fechas_directo(benchmark::State& estado, const char* tabla) {
  sqlite3_int64 ultimo = 0;
  QByteArray fecha;
  bucle(estado, libros(estado).copia("FechasDirecto.MDB"), tabla,
        "SELECT NLinea, NAsiento, Fecha FROM %1 ORDER BY NAsiento, Fecha",
        "UPDATE %1 SET Fecha=?2 WHERE NLinea=?1", [&](sqlite3_stmt* lee, sqlite3_stmt* escribe) {
          const sqlite3_int64 asiento = sqlite3_column_int64(lee, 1);
          if (asiento != ultimo) {
            fecha = "2025" +
                    QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(lee, 2))).mid(4);
          }
          ultimo = asiento;
          sqlite3_bind_text(escribe, 2, fecha.constData(), -1, SQLITE_STATIC);
        });
}

// --- a mass change of a tenth of the lines ------------------------------------------------------

void cambia_librano(benchmark::State& estado) {
  // The limits are read month first.
  const CambioMasivo cambio{CampoCambio::Descripcion,
                            "Apunte de prueba *",
                            "Apunte cambiado",
                            "01/01/2024",
                            "02/06/2024",
                            false};
  herramienta(
      estado, libros(estado).copia("Cambia.MDB"),
      [&cambio](Database& empresa, const Avance& avance) { cambiaDatos(empresa, cambio, avance); });
}

void cambia_directo(benchmark::State& estado, const char* tabla) {
  bucle(estado, libros(estado).copia("CambiaDirecto.MDB"), tabla,
        "SELECT NLinea FROM %1 WHERE Descripcion LIKE 'Apunte de prueba %' AND "
        "Fecha>='2024-01-01' AND Fecha<='2024-02-06'",
        "UPDATE %1 SET Descripcion='Apunte cambiado' WHERE NLinea=?1",
        [](sqlite3_stmt*, sqlite3_stmt*) {});
}

// --- the scan of asientos out of balance --------------------------------------------------------

void descuadres_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    DataControl sumas(motor);
    sumas.bind(l.ruta(), "Select * from SqlSumaDiarioPorAsientos order by nasiento");
    int hallados = 0;
    recorreDescuadres(sumas.Recordset(), "#,##0.00 ;-#,##0.00", aliento(motor),
                      [&hallados](int, const QString&) {
                        ++hallados;
                        return true;
                      });
    benchmark::DoNotOptimize(hallados);
  }
}

void descuadres_directo(benchmark::State& estado) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* sumas = directo.prepara(
      "SELECT NAsiento, SUM(CASE WHEN DH='D' THEN Importe ELSE 0 END), SUM(CASE WHEN DH='D' THEN 0 "
      "ELSE Importe END) FROM Diario GROUP BY NAsiento ORDER BY NAsiento");
  for (auto _ : estado) {
    int hallados = 0;
    while (sqlite3_step(sumas) == SQLITE_ROW) {
      const double debe = std::round(sqlite3_column_double(sumas, 1) * 100);
      const double haber = std::round(sqlite3_column_double(sumas, 2) * 100);
      if (debe + haber != 0) ++hallados;
    }
    sqlite3_reset(sumas);
    benchmark::DoNotOptimize(hallados);
  }
}

// --- the first rows of a locate -----------------------------------------------------------------

// As the grid does: the rows found and the first thirty of them. The motor is a new one each time,
// so that nothing is remembered from the search before.
void localiza_librano(benchmark::State& estado, const char* condicion) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    estado.PauseTiming();
    auto motor = std::make_unique<DBEngine>();
    auto diario = std::make_unique<DataControl>(*motor);
    diario->bind(l.ruta(), "Select * from Empresa");
    estado.ResumeTiming();
    diario->bind(l.ruta(), QString("Select * from SqlDiarioPrincipalBlanco where ") + condicion);
    Recordset& filas = diario->Recordset();
    for (int fila = 0; fila < std::min(30, filas.rowsKnown()); ++fila)
      for (int campo = 0; campo < filas.FieldCount(); ++campo)
        benchmark::DoNotOptimize(filas.cell(fila, campo));
    estado.PauseTiming();
    diario.reset();
    motor.reset();
    estado.ResumeTiming();
  }
}

void localiza_directo(benchmark::State& estado, const char* condicion) {
  Directo directo(libros(estado).rutaSistema());
  const QByteArray sql = QByteArray("SELECT * FROM Diario WHERE ") + condicion;
  sqlite3_stmt* filas = directo.prepara(sql.constData());
  for (auto _ : estado) {
    for (int fila = 0; fila < 30 && sqlite3_step(filas) == SQLITE_ROW; ++fila) {
      benchmark::DoNotOptimize(sqlite3_column_text(filas, 1));
    }
    sqlite3_reset(filas);
  }
}

struct Busqueda {
  const char* nombre;
  const char* librano;
  const char* directo;
};

constexpr Busqueda kBusquedas[] = {
    {"localizar por punteo", "Punteo ='X' order by Nasiento", "Punteo='X' ORDER BY NAsiento"},
    {"localizar por fecha", "Fecha >=#06/15/2024# order by Fecha",
     "Fecha>='2024-06-15' ORDER BY Fecha"},
    {"localizar por asiento", "Nasiento >=1000 order by Nasiento",
     "NAsiento>=1000 ORDER BY NAsiento"},
    {"localizar por descripcion", "ucase(Descripcion) like '*PRUEBA 777*' order by Nasiento",
     "upper(Descripcion) LIKE '%PRUEBA 777%' ORDER BY NAsiento"},
    {"localizar un texto que no esta", "ucase(Descripcion) like '*NO ESTA*' order by Nasiento",
     "upper(Descripcion) LIKE '%NO ESTA%' ORDER BY NAsiento"},
    {"localizar por importe", "Importe =100 or Importe =-100 order by Nasiento",
     "Importe=100 OR Importe=-100 ORDER BY NAsiento"},
};

const bool kRegistradas = [] {
  for (const auto& [nombre, librano, directo] : kBusquedas) {
    const std::string trabajo = nombre;
    benchmark::RegisterBenchmark((trabajo + "/librano").c_str(), localiza_librano, librano)
        ->Arg(1'000'000)
        ->Iterations(20)
        ->UseRealTime();
    benchmark::RegisterBenchmark((trabajo + "/directo").c_str(), localiza_directo, directo)
        ->Arg(1'000'000)
        ->UseRealTime();
  }
  return true;
}();

BENCHMARK(renumera_librano)->Name("renumerar/librano")->Apply(unaVez);
BENCHMARK_CAPTURE(renumera_directo, diario, kDiario)->Name("renumerar/directo")->Apply(unaVez);
BENCHMARK_CAPTURE(renumera_directo, desnuda, kDesnuda)
    ->Name("renumerar, lineas desnudas/directo")
    ->Apply(unaVez);
BENCHMARK(fechas_librano)->Name("comprobar fechas/librano")->Apply(unaVez);
BENCHMARK_CAPTURE(fechas_directo, diario, kDiario)->Name("comprobar fechas/directo")->Apply(unaVez);
BENCHMARK_CAPTURE(fechas_directo, desnuda, kDesnuda)
    ->Name("comprobar fechas, lineas desnudas/directo")
    ->Apply(unaVez);
BENCHMARK(cambia_librano)->Name("cambiar una decima parte/librano")->Apply(unaVez);
BENCHMARK_CAPTURE(cambia_directo, diario, kDiario)
    ->Name("cambiar una decima parte/directo")
    ->Apply(unaVez);
BENCHMARK_CAPTURE(cambia_directo, desnuda, kDesnuda)
    ->Name("cambiar una decima parte, lineas desnudas/directo")
    ->Apply(unaVez);
BENCHMARK(descuadres_librano)->Name("buscar descuadres/librano")->Apply(unaVez);
BENCHMARK(descuadres_directo)->Name("buscar descuadres/directo")->Apply(unaVez);

}  // namespace
