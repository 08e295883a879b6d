// The orders that another station runs for the tests of the engine.
#include "estacion.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>

#include "foundation/data/connection.h"
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
    const int linea = static_cast<int>(empresa->Fields("NLinDiario").toLong());
    LibroEnDisco::anota(*diario, linea, linea / 3, "430", "D", 0.1 * (linea % 7));
    empresa->Edit();
    empresa->Fields("NLinDiario") = linea + 1;
    empresa->Update();
    if (linea % 4 != 0) continue;
    engine.flush();
    dice(linea);
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

// A disk, full or failing, that takes the line noted first and not a long action after it; then it
// takes everything again.
void discoMalo(DBEngine& engine, const QString& ruta, bool lleno) {
  const auto db = engine.Workspaces(0).OpenDatabase(ruta);
  const auto rs = db->OpenRecordset("Diario");
  const auto limita = [&](qint64 bytes) {
    rlimit tope;
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &tope), 0);
    tope.rlim_cur = static_cast<rlim_t>(bytes);
    if (lleno) {
      db->connection()->execute(QString("PRAGMA max_page_count = %1").arg(bytes / 4096));
    } else {
      ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tope), 0);
    }
  };
  LibroEnDisco::anota(*rs, 1, 1, "430", "D", 1);
  engine.flush();
  ::signal(SIGXFSZ, SIG_IGN);
  limita(QFileInfo(ruta).size() + 8192);
  int linea = 2;
  try {
    for (; linea < 3000; ++linea) LibroEnDisco::anota(*rs, linea, 1, "430", "D", 1);
    engine.flush();
  } catch (const ErrorEjecucion& e) {
    dice(e.numero());
    dice(e.descripcion().endsWith(
        QString(
            "Se ha deshecho lo último anotado, que no llegó a guardarse (cambios deshechos: %1)")
            .arg(linea - 2)));
  }
  dice(db->OpenRecordset("Diario")->rowTotal());
  dice(numeroDeError([&] {
    rs->MoveLast();
    rs->Fields(0).Value();
  }));
  limita(1 << 24);
  LibroEnDisco::anota(*rs, 9000, 1, "430", "D", 1);
}

TEST(Orden, DeOtraEstacion) {
  const QString orden = qEnvironmentVariable("LIBRANO_ORDEN");
  const QString ruta = qEnvironmentVariable("LIBRANO_FICHERO");
  if (orden.isEmpty()) GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  DBEngine engine;
  if (orden == "anotar") anotar(engine, ruta);
  if (orden.startsWith("disco")) discoMalo(engine, ruta, orden == "disco-lleno");
  if (orden == "leer-y-escribir") leerYEscribir(engine, ruta);
}

}  // namespace
