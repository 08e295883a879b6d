// The ledger of one busy subcuenta on the screen: a hundred thousand lines, each of which gets its
// balance written before the first is seen.
#include <benchmark/benchmark.h>

#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "reports/registro.h"
#include "ventana.h"

namespace {

using banco::Directo;
using banco::Libros;

constexpr const char* kLineas =
    "SELECT rowid, Importe FROM Diario WHERE Subcuenta=?1 ORDER BY Fecha, NAsiento, NLinea";
constexpr const char* kEscribe = "UPDATE Diario SET Saldo=?2 WHERE rowid=?1";
// The year's first line has changed since the last extract, so no balance stands any more.
constexpr const char* kCambia = "UPDATE Diario SET Importe=Importe+1 WHERE NLinea=0";

enum Saldos { Nuevos, Puestos };

void tamanos(benchmark::internal::Benchmark* b) {
  b->Arg(10'000)->Arg(100'000)->UseRealTime()->Unit(benchmark::kMillisecond);
}

// All lines stand in one subcuenta.
Libros& libros(const benchmark::State& estado) {
  return Libros::de(static_cast<int>(estado.range(0)), 1);
}

void extracto_librano(benchmark::State& estado, Saldos saldos) {
  const Libros& l = libros(estado);
  banco::Ventana ventana(l);
  registraReports(ventana.registro);
  DataControl primera(ventana.ctx.motor);
  primera.bind(l.ruta(), "Select * from Diario where NLinea = 0");
  const auto muestra = [&] {
    ventana.ctx.sesion.ValorElegido = banco::kSubcuenta;
    ventana.registro.mostrar("FrmExtractosPantalla");
    ventana.ctx.motor.flush();
  };
  muestra();
  for (auto _ : estado) {
    if (saldos == Nuevos) {
      estado.PauseTiming();
      primera.Edit();
      primera.Fields("Importe") = primera.Fields("Importe").number() + 1;
      primera.Update();
      ventana.ctx.motor.flush();
      estado.ResumeTiming();
    }
    muestra();
  }
}

void extracto_directo(benchmark::State& estado, Saldos saldos) {
  Directo directo(libros(estado).copia("ExtractoDirecto.MDB"));
  sqlite3_stmt* lee = directo.prepara(kLineas);
  sqlite3_stmt* escribe = directo.prepara(kEscribe);
  sqlite3_bind_text(lee, 1, banco::kSubcuenta, -1, SQLITE_STATIC);
  for (auto _ : estado) {
    if (saldos == Nuevos) {
      estado.PauseTiming();
      directo.ejecuta(kCambia);
      estado.ResumeTiming();
      directo.ejecuta("BEGIN IMMEDIATE");
    }
    double saldo = 0;
    while (sqlite3_step(lee) == SQLITE_ROW) {
      saldo += sqlite3_column_double(lee, 1);
      if (saldos == Puestos) continue;
      sqlite3_bind_int64(escribe, 1, sqlite3_column_int64(lee, 0));
      sqlite3_bind_double(escribe, 2, saldo);
      Directo::recorre(escribe);
    }
    sqlite3_reset(lee);
    if (saldos == Nuevos) directo.ejecuta("COMMIT");
    benchmark::DoNotOptimize(saldo);
  }
}

BENCHMARK_CAPTURE(extracto_librano, nuevos, Nuevos)
    ->Name("extracto, saldos nuevos/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(extracto_directo, nuevos, Nuevos)
    ->Name("extracto, saldos nuevos/directo")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(extracto_librano, puestos, Puestos)
    ->Name("extracto, saldos puestos/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(extracto_directo, puestos, Puestos)
    ->Name("extracto, saldos puestos/directo")
    ->Apply(tamanos);

}  // namespace
