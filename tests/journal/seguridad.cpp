// The program killed in the middle of each tool that changes many lines.

#include <signal.h>
#include <sqlite3.h>
#include <unistd.h>

#include "common/ignorar.h"
#include "engine/estacion.h"
#include "engine/recordset.h"
#include "journal/integridad.h"
#include "journal/masivos.h"
#include "soporte/estadolibros.h"
#include "soporte/libros.h"
#include "soporte/otropuesto.h"

namespace {

constexpr int kLineas = 1500;

// What a tool makes of a line of the journal below, as the file's own library sees it.
struct Herramienta {
  const char* nombre;
  const char* hecha;    // holds for a line already done
  const char* intacta;  // holds for one not yet reached
};

constexpr Herramienta kHerramientas[] = {
    {"renumera", "NAsiento=1+NLinea/3", "NAsiento=10+NLinea/3"},
    {"fechas", "Fecha LIKE '2025-%'", "Fecha LIKE '2024-%'"},
    {"cambia", "Descripcion='Nuevo'", "Descripcion='Viejo'"},
    {"elimina", "0", "Descripcion='Viejo'"},
    {"elimina-uno", "0", "Descripcion='Viejo'"},
};

void corre(Database& empresa, const QString& herramienta, const Avance& avance) {
  const CambioMasivo cambio{CampoCambio::Descripcion, "Viejo", "Nuevo", "01/01/2024", "31/12/2024",
                            herramienta == "elimina"};
  if (herramienta == "renumera") {
    renumeraDiario(empresa, 1, avance);
  } else if (herramienta == "fechas") {
    unificaFechas(empresa, 2025, QDate(2025, 1, 1), avance);
  } else if (herramienta == "elimina-uno") {
    eliminaAsiento(empresa, 10, avance);
  } else {
    cambiaDatos(empresa, cambio, avance);
  }
}

// In another process: the tool up to a line, with what comes before another one on the disk.
TEST(Orden, HastaUnaLinea) {
  const QStringList orden = qEnvironmentVariable("LIBRANO_ORDEN").split(' ');
  const auto esDe = [&](const Herramienta& h) { return orden[0] == QLatin1String(h.nombre); };
  if (std::ranges::none_of(kHerramientas, esDe)) {
    GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  }
  DBEngine motor;
  const auto empresa = motor.Workspaces(0).OpenDatabase(qEnvironmentVariable("LIBRANO_FICHERO"));
  const int guardada = orden[1].toInt();
  const int muerte = orden[2].toInt();
  corre(*empresa, orden[0], [&](int linea, int) {
    if (linea == guardada) motor.flush();
    if (linea == muerte) ::kill(::getpid(), SIGKILL);
  });
}

// In another process: an asiento moves to another company, up to a commit at which the program is
// killed or the disk refuses. Only the file's own library knows when one comes.
TEST(Orden, HastaUnaConfirmacion) {
  static int quedan = 0;
  static bool mata = false;
  const QStringList orden = qEnvironmentVariable("LIBRANO_ORDEN").split(' ');
  if (orden[0] != "traslada") GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  const auto vigila = [](sqlite3* base, char**, const sqlite3_api_routines*) -> int {
    const auto alConfirmar = [](void*) -> int {
      if (--quedan != 0) return 0;
      if (mata) ::kill(::getpid(), SIGKILL);
      return 1;
    };
    sqlite3_commit_hook(base, alConfirmar, nullptr);
    return SQLITE_OK;
  };
  sqlite3_auto_extension(reinterpret_cast<void (*)()>(+vigila));
  DBEngine motor;
  const QString ruta = qEnvironmentVariable("LIBRANO_FICHERO");
  const auto origen = motor.Workspaces(0).OpenDatabase(ruta);
  const auto destino =
      motor.Workspaces(0).OpenDatabase(QString(ruta).replace("Tienda", "Sucursal"));
  mata = orden[1] == "mata";
  quedan = orden[2].toInt();
  ignorando([&] {
    // A text that is no date leaves each line its own.
    EXPECT_TRUE(duplicaAsiento(motor, *origen, *destino, {10, "31/02", 8, true}));
  });
  ignorando([&] { motor.flush(); });
}

class Seguridad : public testing::Test {
 protected:
  Seguridad() {
    libros_.motor.flush();
    sqlite("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i+1<" +
           QString::number(kLineas) +
           ") INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe) "
           "SELECT i, 10+i/3, date('2024-01-01','+'||(i/6)||' days'), '57200001', 'Viejo', "
           "iif(i%3,'H','D'), iif(i%3,-5,10) FROM n; UPDATE Empresa SET NLinDiario=" +
           QString::number(kLineas));
  }

  QString fichero(const QString& empresa = "Tienda") const {
    return rutaSistema(libros_.rutaEmpresa(empresa));
  }
  QString sqlite(const QString& sql, const QString& empresa = "Tienda") const {
    return preguntaFuera(fichero(empresa), sql);
  }
  int lineas(const QString& condicion, const QString& empresa = "Tienda") const {
    return sqlite("SELECT count(*) FROM Diario WHERE " + condicion, empresa).toInt();
  }

  // Nothing is harmed, and the sums that the program keeps are those of the lines.
  void compruebaSano() const { EXPECT_EQ(quejasDeLibros(rutaSistema(libros_.dirDatos())), ""); }

  // Kills the tool at a line; what was on the disk by then is there.
  void mata(const Herramienta& herramienta, int guardada, int muerte) {
    SCOPED_TRACE(testing::Message() << herramienta.nombre << ' ' << guardada << ' ' << muerte);
    if (herramienta.nombre == QLatin1String("elimina-uno")) {
      sqlite("UPDATE Diario SET NAsiento=10");
    }
    Estacion(fichero()).corre(
        QString("%1 %2 %3").arg(herramienta.nombre).arg(guardada).arg(muerte));
    compruebaSano();
    const QString intacta = QString::fromLatin1(herramienta.intacta);
    const QString hecha = QString::fromLatin1(herramienta.hecha);
    const int hechas = kLineas - lineas(intacta);
    EXPECT_GE(hechas, guardada);
    EXPECT_LE(hechas, muerte + 3);  // deleting takes the other lines of the asiento too
    EXPECT_EQ(lineas(QString("NLinea<%1 AND NOT (%2)").arg(hechas).arg(hecha)), 0);
    EXPECT_EQ(lineas(QString("NLinea>=%1 AND NOT (%2)").arg(hechas).arg(intacta)), 0);
  }

  Libros libros_;
};

// A line that is in neither company is lost: the copy is on the disk before the original goes.
TEST_F(Seguridad, UnTrasladoCortadoNoPierdeElAsiento) {
  libros_.creaEmpresa(Libros::datosPorDefecto("Sucursal", 3, 8));
  libros_.motor.flush();
  sqlite("UPDATE Diario SET NAsiento=10");
  const struct {
    const char* corte;
    int aqui;
    int copias;
  } cortes[] = {{"mata 1", kLineas, 0},
                {"niega 1", kLineas, 0},
                {"mata 2", kLineas, 1},
                {"niega 2", kLineas, 2},
                {"mata 3", 0, 3}};
  for (const auto& [corte, aqui, copias] : cortes) {
    SCOPED_TRACE(corte);
    Estacion(fichero()).corre(QString("traslada ") + corte);
    compruebaSano();
    EXPECT_EQ(lineas("1"), aqui);
    EXPECT_EQ(
        lineas("Fecha LIKE date('2024-01-01', '+'||(NLinea%1500/6)||' days')||'%'", "Sucursal"),
        copias * kLineas);
    EXPECT_EQ(sqlite("SELECT NLinDiario, Asiento FROM Empresa", "Sucursal"),
              QString("%1|%2").arg(copias * kLineas).arg(1 + copias));
  }
}

// Each tool once, and LIBRANO_SOAK times more at other lines.
TEST_F(Seguridad, MatarUnaHerramientaDejaLoHechoHastaEntonces) {
  QFile libro(fichero());
  ASSERT_TRUE(libro.open(QIODevice::ReadWrite));
  const QByteArray antes = libro.readAll();
  const int veces = qEnvironmentVariableIntValue("LIBRANO_SOAK");
  for (const Herramienta& herramienta : kHerramientas) {
    for (int vez = 0; vez <= veces; ++vez) {
      const int muerte = vez == 0 ? 900 : QRandomGenerator::global()->bounded(2, kLineas);
      const int guardada = vez == 0 ? 300 : QRandomGenerator::global()->bounded(1, muerte);
      libro.resize(0);
      libro.seek(0);
      libro.write(antes);
      libro.flush();
      mata(herramienta, guardada, muerte);
    }
  }
}

}  // namespace
