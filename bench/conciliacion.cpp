// The bank's movements against the lines of its subcuenta, ten lines for each movement: twice as
// many must take twice as long, also where a whole year has only some hundreds of amounts. First
// the pairing by itself, then a statement from its file to its pairs, beside the same rows written
// and read without the program.
#include <benchmark/benchmark.h>

#include <QFile>

#include "libros.h"
#include "oficial/conciliacion.h"

namespace {

constexpr int kApuntesPorMovimiento = 10;
constexpr int kImportes = 500;
constexpr int kDias = 365;

Conciliacion inventada(int movimientos) {
  Conciliacion c;
  c.movimientos.reserve(size_t(movimientos));
  const QDate enero(2024, 1, 1);
  for (int i = 0; i < movimientos; ++i) {
    MovimientoGuardado m;
    m.operacion = enero.addDays(qint64(i) * kDias / movimientos);
    m.valor = m.operacion.addDays(-(i % 3));
    m.centimos = 100 + i % kImportes;
    c.movimientos.push_back(m);
  }
  const int apuntes = movimientos * kApuntesPorMovimiento;
  for (int i = 0; i < apuntes; ++i)
    c.apuntes.push_back({i + 1,
                         i,
                         enero.addDays(qint64(i) * kDias / apuntes),
                         {},
                         100 + (i * 7) % (kImportes * 2),
                         {},
                         0});
  return c;
}

void empareja(benchmark::State& estado) {
  const Conciliacion c = inventada(int(estado.range(0)));
  size_t parejas = 0;
  for (auto _ : estado) {
    parejas = ::empareja(c).size();
    benchmark::DoNotOptimize(parejas);
  }
  estado.counters["parejas"] = double(parejas);
  estado.SetComplexityN(estado.range(0));
}
BENCHMARK(empareja)
    ->Name("conciliacion/empareja")
    ->RangeMultiplier(2)
    ->Range(1250, 20000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

// --- from the file ------------------------------------------------------------------------------

using banco::Directo;
using banco::Libros;

constexpr const char* kCcc = "99910025110000123456";

QByteArray cifras(qint64 numero, int ancho) {
  return QByteArray::number(std::abs(numero)).rightJustified(ancho, '0');
}

// A statement of the year that says of every tenth line of the journal what the bank would.
QByteArray extracto(const Libros& l) {
  Directo directo(l.rutaSistema());
  sqlite3_stmt* const lineas = directo.prepara(
      "SELECT substr(replace(Fecha, '-', ''), 3, 6), CAST(round(Importe*100) AS INTEGER), NLinea "
      "FROM Diario "
      "WHERE NLinea % 10 = 0");
  QByteArray fichero =
      ("119991002500001234562401012412312" + QByteArray(14, '0') + "9783").leftJustified(80) + '\n';
  qint64 total[2] = {}, cuantos[2] = {}, saldo = 0;
  while (sqlite3_step(lineas) == SQLITE_ROW) {
    const QByteArray dia(reinterpret_cast<const char*>(sqlite3_column_text(lineas, 0)));
    const qint64 centimos = sqlite3_column_int64(lineas, 1);
    const int lado = centimos < 0 ? 0 : 1;
    total[lado] += std::abs(centimos);
    ++cuantos[lado];
    saldo += centimos;
    fichero += "22    0025" + dia + dia + "04101" + QByteArray::number(lado + 1) +
               cifras(centimos, 14) + cifras(sqlite3_column_int(lineas, 2), 10) +
               QByteArray(12, '0') + "\n2301TRANSFERENCIA DE PRUEBA\n";
  }
  fichero += "33999100250000123456" + cifras(cuantos[0], 5) + cifras(total[0], 14) +
             cifras(cuantos[1], 5) + cifras(total[1], 14) + (saldo < 0 ? '1' : '2') +
             cifras(saldo, 14) + "978\n88" + QByteArray(18, '9') +
             cifras(2 * (cuantos[0] + cuantos[1]) + 2, 6) + '\n';
  return fichero;
}

Libros& librosDelBanco(const benchmark::State& estado) {
  return Libros::de(static_cast<int>(estado.range(0)) * kApuntesPorMovimiento, 1);
}

// A copy of the books with an account of the bank that nothing was read of yet.
std::unique_ptr<Database> conCuenta(Libros& l) {
  l.motor().flush();
  l.copia("Conciliacion.MDB");
  auto empresa = l.motor().Workspaces(0).OpenDatabase(l.carpeta() + "Conciliacion.MDB");
  ponSubcuentaDeBanco(l.motor(), *empresa, kCcc, banco::kSubcuenta);
  return empresa;
}

void norma43_librano(benchmark::State& estado) {
  Libros& l = librosDelBanco(estado);
  const QByteArray fichero = extracto(l);
  size_t parejas = 0;
  for (auto _ : estado) {
    estado.PauseTiming();
    const auto empresa = conCuenta(l);
    estado.ResumeTiming();
    const LecturaNorma43 leido = leeNorma43(fichero);
    if (!leido.errores.isEmpty())
      return estado.SkipWithError(leido.errores.first().entero().toUtf8().constData());
    importaNorma43(l.motor(), *empresa, leido);
    parejas = ::empareja(leeConciliacion(*empresa, kCcc)).size();
  }
  estado.counters["parejas"] = double(parejas);
  estado.SetComplexityN(estado.range(0));
}

void norma43_directo(benchmark::State& estado) {
  Libros& l = librosDelBanco(estado);
  Directo directo(l.copia("ConciliacionDirecto.MDB"));
  directo.ejecuta(
      "CREATE TABLE Movimientos AS SELECT NLinea AS Numero, Fecha, Importe, "
      "Descripcion FROM Diario WHERE 0");
  sqlite3_stmt* const escribe = directo.prepara(
      "INSERT INTO Movimientos SELECT NLinea, Fecha, Importe, Descripcion FROM "
      "Diario WHERE NLinea % 10 = 0");
  sqlite3_stmt* const lee =
      directo.prepara("SELECT NLinea, NAsiento, Fecha, Descripcion, Importe, Punteo FROM Diario");
  for (auto _ : estado) {
    directo.ejecuta("DELETE FROM Movimientos");
    Directo::recorre(escribe);
    benchmark::DoNotOptimize(Directo::recorre(lee));
  }
  estado.SetComplexityN(estado.range(0));
}

void acepta_librano(benchmark::State& estado) {
  Libros& l = librosDelBanco(estado);
  const LecturaNorma43 leido = leeNorma43(extracto(l));
  for (auto _ : estado) {
    estado.PauseTiming();
    const auto empresa = conCuenta(l);
    importaNorma43(l.motor(), *empresa, leido);
    Conciliacion c = leeConciliacion(*empresa, kCcc);
    const std::vector<Pareja> parejas = ::empareja(c);
    estado.ResumeTiming();
    aceptaParejas(l.motor(), *empresa, c, parejas, {"X", QDate(2024, 12, 31)});
  }
  estado.SetComplexityN(estado.range(0));
}

void movimientos(benchmark::internal::Benchmark* b) {
  b->Arg(2500)
      ->Arg(5000)
      ->Arg(10000)
      ->UseRealTime()
      ->Unit(benchmark::kMillisecond)
      ->Complexity(benchmark::oN);
}
BENCHMARK(norma43_librano)->Name("norma 43/librano")->Apply(movimientos);
BENCHMARK(norma43_directo)->Name("norma 43/directo")->Apply(movimientos);
BENCHMARK(acepta_librano)->Name("norma 43, aceptar todas/librano")->Apply(movimientos);

}  // namespace
