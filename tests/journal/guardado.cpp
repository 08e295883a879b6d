// What the main window does when a change can't be saved: another station reads on, or the disk
// refuses it.
#include <sys/resource.h>
#include <QScopeGuard>

#include "common/rutas.h"
#include "journal/menuabierto.h"
#include "journal/registro.h"
#include "soporte/otropuesto.h"

namespace {

class Guardado : public MenuAbierto {
 protected:
  Guardado() {
    registraJournal(*formularios);
    abreMenu();
    linea("57000001", "100", {}, "02/01/2003");
    linea("43000001", {}, "90");
    motor.setLockTimeout(30);
  }
  QString ruta() const { return rutaSistema(ctx.sesion.rutaEmpresa()); }
  // Somebody with a pager over the file.
  std::unique_ptr<OtroPuesto> lector() const {
    auto otro = std::make_unique<OtroPuesto>(ruta());
    otro->ejecuta("BEGIN; SELECT count(*) FROM Diario;");
    return otro;
  }
  // What is on show of the journal, and what any other tool reads of it.
  QStringList pantalla() const {
    const auto& rejilla = t->control<Rejilla>("GrdApuntes");
    QStringList todo = totales("Total");
    for (int fila = 0; fila < rejilla.filas(); ++fila)
      for (int columna = 0; columna < rejilla.model()->columnCount(); ++columna)
        todo += rejilla.texto(fila, columna);
    return todo;
  }
  QString fichero() const {
    QProcess p;
    p.start("sqlite3", {ruta(), "SELECT * FROM Diario; SELECT NLinDiario, Asiento FROM Empresa"});
    p.waitForFinished();
    return QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError());
  }
};

TEST_F(Guardado, LoQueOtroNoDejaGuardarSeReintentaOSeDescartaPeroNuncaSePierdeSinDecirlo) {
  const struct {
    const char* nombre;
    std::function<void()> accion;
    std::function<void()> anuncio = [] {};
  } acciones[] = {{"línea", [&] { linea("57000001", "3", {}); }},
                  {"asterisco", [&] { t->pulsa("CmdLinAsiento"); }},
                  {"punteo",
                   [&] {
                     t->enfoca("GrdApuntes");
                     t->tecla(Qt::Key_Space);
                   }},
                  {"partida", [&] { t->pulsa("CmdModificaApunte"); },
                   [&] {
                     guion.esperaDialogo("FrmPartida", [](Teclado& d) {
                       d.escribe("TxtDebeHaber", "8");
                       d.pulsa("CmdAceptar");
                     });
                   }},
                  {"borrado", [&] { t->pulsa("CmdEliminarPartida"); },
                   [&] {
                     guion.esperaPregunta(
                         "Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?",
                         true);
                   }}};
  for (const auto& caso : acciones) {
    SCOPED_TRACE(caso.nombre);
    const QStringList visto = pantalla();
    const QString antes = fichero();
    auto otro = lector();
    caso.anuncio();
    guion.esperaEleccion(false);
    caso.accion();
    EXPECT_TRUE(guion.agotado());
    otro.reset();
    EXPECT_EQ(fichero(), antes);
    EXPECT_EQ(pantalla(), visto);

    otro = lector();
    caso.anuncio();
    guion.esperaEleccion(true);
    guion.esperaEleccion(true, [&] { otro.reset(); });
    caso.accion();
    EXPECT_TRUE(guion.agotado());
    EXPECT_NE(fichero(), antes);
  }
  // Saved while the choice still stands, nothing is left to be given up.
  auto otro = lector();
  guion.esperaEleccion(false, [&] {
    otro.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return fichero().contains("|7.25|"); }));
  });
  linea("57000001", "7.25", {});
  EXPECT_TRUE(guion.agotado());
  EXPECT_TRUE(fichero().contains("|7.25|"));
}

TEST_F(Guardado, LoQueElDiscoRechazaNoSigueEnPantalla) {
  ::signal(SIGXFSZ, SIG_IGN);
  rlimit tope;
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &tope), 0);
  const QStringList visto = pantalla();
  const QString antes = fichero();
  rlimit corto = tope;
  corto.rlim_cur = 128 * 1024;  // room for the journal of one line, and not for its pages
  {
    const auto vuelve = qScopeGuard([&] { ::setrlimit(RLIMIT_FSIZE, &tope); });
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &corto), 0);
    guion.esperaMensaje(
        "Error 3043: Error al leer o escribir en el disco: " + ctx.sesion.rutaEmpresa() +
            ". Se ha deshecho lo último anotado, que no llegó a guardarse (cambios "
            "deshechos: 2)",
        "Librano", [&] { ::setrlimit(RLIMIT_FSIZE, &tope); });  // undoing it writes too
    linea("57000001", "3", {});
  }
  EXPECT_TRUE(guion.agotado());
  EXPECT_EQ(fichero(), antes);
  EXPECT_EQ(pantalla(), visto);
  t->tecla(Qt::Key_F5);
  EXPECT_EQ(pantalla(), visto);
}

}  // namespace
