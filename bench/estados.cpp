// The official balance over whole journals, next to one sum of the whole journal done directly.
#include <benchmark/benchmark.h>

#include "libros.h"
#include "oficial/estados.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;

void balance_librano(benchmark::State& estado) {
  const Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    const auto empresa = motor.Workspaces(0).OpenDatabase(l.ruta());
    benchmark::DoNotOptimize(
        calculaEstado(Estado::Balance, saldosDelPeriodo(*empresa, 1, 12)).lineas.size());
  }
}

void balance_directo(benchmark::State& estado) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* suma = directo.prepara(
      "SELECT Subcuenta, sum(Importe) FROM Diario WHERE TipoDiario NOT IN ('B','C') "
      "GROUP BY Subcuenta");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(suma));
}

BENCHMARK(balance_librano)->Name("balance oficial/librano")->Apply(banco::tamanos);
BENCHMARK(balance_directo)->Name("balance oficial/directo")->Apply(banco::tamanos);

}  // namespace
