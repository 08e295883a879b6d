// The program killed in the middle of each tool that changes many lines.
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>
#include <QRandomGenerator>

#include "foundation/data/estacion.h"
#include "foundation/data/recordset.h"
#include "foundation/rutas.h"
#include "journal/integridad.h"
#include "journal/masivos.h"
#include "soporte/libros.h"

namespace {

constexpr int kLineas = 1500;

// What a tool makes of a line of the journal below, as the file's own library sees it.
struct Herramienta {
  const char* nombre;
  const char* hecha;    // holds for a line already done
  const char* intacta;  // holds for one not yet reached

  friend void PrintTo(const Herramienta& h, std::ostream* salida) { *salida << h.nombre; }
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
  if (orden.size() < 3) GTEST_SKIP() << "sólo la corren otras pruebas, en otro proceso";
  DBEngine motor;
  const auto empresa = motor.Workspaces(0).OpenDatabase(qEnvironmentVariable("LIBRANO_FICHERO"));
  const int guardada = orden[1].toInt();
  const int muerte = orden[2].toInt();
  corre(*empresa, orden[0], [&](int linea, int) {
    if (linea == guardada) motor.flush();
    if (linea == muerte) ::kill(::getpid(), SIGKILL);
  });
}

class SeguridadTest : public testing::Test {
 protected:
  SeguridadTest() {
    const auto empresa = libros_.abre();
    const auto diario = empresa->OpenRecordset("Diario");
    for (int i = 0; i < kLineas; ++i) {
      diario->AddNew();
      diario->Fields("NLinea") = i;
      diario->Fields("NAsiento") = 10 + i / 3;
      diario->Fields("Fecha") = QDate(2024, 1, 1).addDays(i / 6);
      diario->Fields("Subcuenta") = i % 2 ? "57200001" : "43000001";
      diario->Fields("Descripcion") = "Viejo";
      diario->Fields("DH") = i % 3 ? "H" : "D";
      diario->Fields("Importe") = i % 3 ? -5 : 10;
      diario->Update();
    }
    libros_.motor.flush();
  }

  QString fichero() const { return rutaSistema(libros_.rutaEmpresa()); }
  QString sqlite(const QString& sql) const {
    QProcess p;
    p.start("sqlite3", {fichero(), sql});
    p.waitForFinished();
    return QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError()).trimmed();
  }

  // Kills the tool at a line; what was on the disk by then is there, nothing else is harmed.
  void mata(const Herramienta& herramienta, int guardada, int muerte) {
    SCOPED_TRACE(testing::Message() << herramienta.nombre << ' ' << guardada << ' ' << muerte);
    if (herramienta.nombre == QLatin1String("elimina-uno")) {
      sqlite("UPDATE Diario SET NAsiento=10");
    }
    Estacion(fichero()).corre(
        QString("%1 %2 %3").arg(herramienta.nombre).arg(guardada).arg(muerte));

    EXPECT_EQ(sqlite("PRAGMA integrity_check"), "ok");
    const QString intacta = QString::fromLatin1(herramienta.intacta);
    const QString hecha = QString::fromLatin1(herramienta.hecha);
    const int quedan = sqlite("SELECT count(*) FROM Diario WHERE " + intacta).toInt();
    const int hechas = kLineas - quedan;
    EXPECT_GE(hechas, guardada);
    EXPECT_LE(hechas, muerte + 3);  // deleting takes the other lines of the asiento too
    EXPECT_EQ(sqlite(QString("SELECT count(*) FROM Diario WHERE NLinea<%1 AND NOT (%2)")
                         .arg(hechas)
                         .arg(hecha)),
              "0");
    EXPECT_EQ(sqlite(QString("SELECT count(*) FROM Diario WHERE NLinea>=%1 AND NOT (%2)")
                         .arg(hechas)
                         .arg(intacta)),
              "0");
    // The sums that the program keeps are those of the lines.
    DBEngine otro;
    const auto empresa = otro.Workspaces(0).OpenDatabase(fichero());
    const auto sumas =
        empresa->OpenRecordset("Select * from SqlSumaDiarioPorAsientos order by NAsiento");
    QStringList porAsiento;
    for (; !sumas->Eof(); sumas->MoveNext()) {
      porAsiento += QString("%1|%2|%3")
                        .arg(sumas->Fields(0).toLong())
                        .arg(sumas->Fields(1).toLong())
                        .arg(sumas->Fields(2).toLong());
    }
    EXPECT_EQ(porAsiento.join('\n'),
              sqlite("SELECT NAsiento, CAST(sum(iif(DH='D',Importe,0)) AS INTEGER), "
                     "CAST(sum(iif(DH='D',0,Importe)) AS INTEGER) FROM Diario GROUP BY NAsiento"));
  }

  Libros libros_;
};

class Seguridad : public SeguridadTest, public testing::WithParamInterface<Herramienta> {};

// Once, and LIBRANO_SOAK times more at other lines.
TEST_P(Seguridad, MatarUnaHerramientaDejaLoHechoHastaEntonces) {
  QFile libro(fichero());
  ASSERT_TRUE(libro.open(QIODevice::ReadOnly));
  const QByteArray antes = libro.readAll();
  libro.close();
  mata(GetParam(), 300, 900);
  for (int veces = qEnvironmentVariableIntValue("LIBRANO_SOAK"); veces > 0; --veces) {
    ASSERT_TRUE(libro.open(QIODevice::WriteOnly));
    libro.write(antes);
    libro.close();
    const int muerte = QRandomGenerator::global()->bounded(2, kLineas);
    mata(GetParam(), QRandomGenerator::global()->bounded(1, muerte), muerte);
  }
}

INSTANTIATE_TEST_SUITE_P(Masivas, Seguridad, testing::ValuesIn(kHerramientas),
                         [](const auto& caso) {
                           return QString(caso.param.nombre).remove('-').toStdString();
                         });

}  // namespace
