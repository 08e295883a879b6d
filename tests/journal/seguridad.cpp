// The program killed while an asiento moves from one file to another.

#include <signal.h>
#include <sqlite3.h>
#include <unistd.h>

#include "common/ignorar.h"
#include "engine/estacion.h"
#include "journal/masivos.h"
#include "soporte/estadolibros.h"
#include "soporte/libros.h"
#include "soporte/otropuesto.h"

namespace {

constexpr int kLineas = 1500;

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

  Libros libros_;
};

// A line that is in neither company is lost: the copy is on the disk before the original goes.
TEST_F(Seguridad, UnTrasladoCortadoNoPierdeElAsiento) {
  libros_.creaEmpresa(Libros::datosPorDefecto("Sucursal", 3, 8));
  libros_.motor.flush();
  sqlite("UPDATE Diario SET NAsiento=10");
  const std::tuple<const char*, int, int> cortes[] = {{"mata 1", kLineas, 0},
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

}  // namespace
