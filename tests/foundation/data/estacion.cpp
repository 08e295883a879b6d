// The orders that another station runs for the tests of the engine.
#include "estacion.h"

#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>

#include "libroendisco.h"

namespace {

void dice(int numero) {
  std::printf("dice %d\n", numero);
  std::fflush(stdout);
}

// Posts without end, the row before its counter as the program does, and tells each row saved.
void anotar(DBEngine& engine, const QString& ruta) {
  const auto db = engine.Workspaces(0).OpenDatabase(ruta);
  const auto empresa = db->OpenRecordset("Empresa"), diario = db->OpenRecordset("Diario");
  for (;;) {
    diario->AddNew();
    const qint64 linea = empresa->Fields("NLinDiario").toLong();
    diario->Fields("NLinea") = linea;
    diario->Fields("NAsiento") = linea / 3;
    diario->Fields("DH") = "D";
    diario->Fields("Importe") = 0.1 * static_cast<double>(linea % 7);
    diario->Update();
    empresa->Edit();
    empresa->Fields("NLinDiario") = linea + 1;
    empresa->Update();
    if (linea % 4 != 0) continue;
    engine.flush();
    dice(static_cast<int>(linea));
  }
}

void leerYEscribir(DBEngine& engine, const QString& ruta) {
  ::chmod(ruta.toUtf8().constData(), 0444);
  // The administrator may write anything: somebody else tries.
  if (::geteuid() == 0) {
    ::chmod(QFileInfo(ruta).path().toUtf8().constData(), 0755);
    ASSERT_EQ(::setuid(65534), 0);
  }
  const auto db = engine.Workspaces(0).OpenDatabase(ruta);
  const auto rs = db->OpenRecordset("Diario");
  dice(static_cast<int>(rs->Fields("NLinea").toLong()));
  dice(numeroDeError([&] { rs->Edit(); }));
  dice(numeroDeError([&] { rs->AddNew(); }));
}

TEST(Orden, DeOtraEstacion) {
  const QString orden = qEnvironmentVariable("LIBRANO_ORDEN");
  const QString ruta = qEnvironmentVariable("LIBRANO_FICHERO");
  if (orden.isEmpty()) GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  DBEngine engine;
  if (orden == "anotar") anotar(engine, ruta);
  if (orden == "leer-y-escribir") leerYEscribir(engine, ruta);
}

}  // namespace
