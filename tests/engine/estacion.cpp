// The order that another station runs for the tests of the engine.
#include "estacion.h"

#include <cstdio>

#include "libroendisco.h"

namespace {

// Posts without end, the row before its counter as the program does, and tells each row saved.
TEST(Orden, Anotar) {
  if (qEnvironmentVariable("LIBRANO_ORDEN") != "anotar")
    GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  DBEngine engine;
  const auto db = engine.Workspaces(0).OpenDatabase(qEnvironmentVariable("LIBRANO_FICHERO"));
  const auto empresa = db->OpenRecordset("Empresa"), diario = db->OpenRecordset("Diario");
  for (;;) {
    const int linea = static_cast<int>(empresa->Fields("NLinDiario").toLong());
    LibroEnDisco::anota(*diario, linea, linea / 3, "430", "D", 0.1 * (linea % 7));
    corrige(*empresa, {{"NLinDiario", linea + 1}});
    if (linea % 4 != 0) continue;
    engine.flush();
    std::printf("dice %d\n", linea);
    std::fflush(stdout);
  }
}

}  // namespace
