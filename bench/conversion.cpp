// The conversion of whole journals to the plan of 2007, every code of them another one afterwards,
// next to the change of that one column done directly.
#include <benchmark/benchmark.h>

#include "journal/avance.h"
#include "libros.h"
#include "oficial/conversion.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::unaVez;

void convierte_librano(benchmark::State& estado) {
  DBEngine motor;
  const auto empresa = motor.Workspaces(0).OpenDatabase(libros(estado).copia("Conversion.MDB"));
  Conversion conversion{Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)};
  for (FilaConversion& fila : conversion.filas) {
    fila.nuevo = fila.codigo;
    fila.nuevo[2] = QChar(fila.nuevo[2].unicode() + 1);  // 430 becomes 431
  }
  for (auto _ : estado) {
    convierteA2007(motor, *empresa, conversion, {2024, 1, 1}, [&](int, int) { motor.breathe(); });
  }
}

void convierte_directo(benchmark::State& estado) {
  Directo directo(libros(estado).copia("ConversionDirecta.MDB"));
  directo.ejecuta("PRAGMA temp_store=MEMORY");  // as the motor does
  for (auto _ : estado)
    directo.ejecuta(
        "UPDATE Diario SET Subcuenta=substr(Subcuenta,1,2)||(substr(Subcuenta,3,1)+1)||"
        "substr(Subcuenta,4)");
}

BENCHMARK(convierte_librano)->Name("conversion a 2007/librano")->Apply(unaVez);
BENCHMARK(convierte_directo)->Name("conversion a 2007/directo")->Apply(unaVez);

}  // namespace
