// The bank's movements against the lines of its subcuenta, ten lines for each movement: twice as
// many must take twice as long, also where a whole year has only some hundreds of amounts.
#include <benchmark/benchmark.h>

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

}  // namespace
