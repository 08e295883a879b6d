// What the screens do when a change can't be saved: another station reads on, or the disk
// refuses it.
#include <sys/resource.h>

#include "journal/menuabierto.h"
#include "oficial/widgets/tablahoja.h"

namespace {

class Guardado : public MenuAbierto {
 protected:
  Guardado() {
    registraFormularios(*formularios);
    inserta("Cuentas", {{"Cuenta", "570"}, {"Descripcion", "Caja"}});
    abreMenu();
    linea("57000001", "100", {}, "02/01/2003");
    linea("43000001", {}, "90");
    linea("57000001", "5", {}, "03/01/2003");
    cambia("Select * from Diario where NAsiento=2", "NAsiento", 9);
    t->tecla(Qt::Key_F5);
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
  // Tells what the user chooses when it can't be saved, and what follows once it is.
  using Eleccion = std::function<void(const std::function<void()>& siSeGuarda)>;
  struct Accion {
    const char* nombre;
    std::function<void(const Eleccion&)> haz;
  };
  // Boxes and dialogs that come before the choice are announced before it; where it comes within a
  // dialog, there.
  std::vector<Accion> acciones() {
    const auto ya = [] {};
    const auto acepta = [](Teclado& d) {
      d.pulsa("CmdAceptar");
      if (d.forma().isVisible()) d.escape();  // given up, what was typed still stands
    };
    const auto enDialogo = [this](const char* nombre, const std::function<void(Teclado&)>& paso) {
      guion.esperaDialogo(nombre, paso);
    };
    return {{"línea",
             [=, this](const Eleccion& elige) {
               elige(ya);
               linea("57000001", "3", {});
             }},
            {"asterisco",
             [=, this](const Eleccion& elige) {
               elige(ya);
               t->pulsa("CmdLinAsiento");
             }},
            {"punteo",
             [=, this](const Eleccion& elige) {
               elige(ya);
               t->enfoca("GrdApuntes");
               t->tecla(Qt::Key_Space);
             }},
            {"partida",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmPartida", [&](Teclado& d) {
                 d.escribe("TxtDebeHaber", "8");
                 elige(ya);
                 acepta(d);
               });
               t->pulsa("CmdModificaApunte");
             }},
            {"borrado",
             [=, this](const Eleccion& elige) {
               guion.esperaPregunta(
                   "Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?", true);
               elige(ya);
               t->pulsa("CmdEliminarPartida");
             }},
            {"renumera",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmRenumera", [&](Teclado& d) {
                 elige([&] { guion.esperaMensaje("Proceso terminado con exito", "Fín"); });
                 acepta(d);
               });
               formularios->mostrar("FrmRenumera");
             }},
            {"asiento borrado",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmEliminaAsiento", [&](Teclado& d) {
                 elige(ya);
                 acepta(d);
               });
               t->pulsa("CmdEliminarApunte");
             }},
            {"ajustes",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmEmpresas", [&](Teclado& d) {
                 d.control<QTabWidget>("Tabla").setCurrentIndex(1);
                 d.escribe("TxtDireccion", "Calle Mayor, 1");
                 elige(ya);
                 acepta(d);
               });
               ctx.sesion.CodigoLlamada = 2;
               formularios->mostrar("FrmEmpresas");
             }},
            {"fecha de cierre",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmInvertirCierre", [&](Teclado& d) {
                 d.escribe("TxtNoModifica", "3006");
                 elige(ya);
                 acepta(d);
               });
               formularios->mostrar("FrmInvertirCierre");
             }},
            {"recibo",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmRecibos", [&](Teclado& d) {
                 for (const auto& [campo, texto] : {std::pair("TxtFechaVencimiento", "3006"),
                                                    {"TxtCuenta", "43000001"},
                                                    {"TxtFactura", "7"},
                                                    {"TxtTipo", "Letra"},
                                                    {"TxtTitulo", "Letra"},
                                                    {"TxtContrapartida", "57200001"},
                                                    {"TxtImporte", "9"}})
                   d.escribe(campo, texto);
                 elige(ya);
                 acepta(d);
               });
               ctx.sesion.CodigoLlamada = 1;
               formularios->mostrar("FrmRecibos");
             }},
            {"subcuenta",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmSubCuentas", [&](Teclado& d) {
                 d.escribe("TxtDescripcion", "Caja del mostrador");
                 elige(ya);
                 acepta(d);
               });
               ctx.sesion.CodigoLlamada = 2;
               ctx.sesion.ValorElegido = "57000001";
               formularios->mostrar("FrmSubCuentas");
             }},
            {"nómina",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmNomina", [&](Teclado& d) {
                 rellenaNomina(d);
                 elige(ya);
                 acepta(d);
               });
               formularios->mostrar("FrmNomina");
             }},
            {"duplicado",
             [=, this](const Eleccion& elige) {
               enDialogo("FrmDuplicarAsiento", [&](Teclado& d) {
                 d.pulsa("ChkEliminaAsiento");
                 elige(ya);
                 acepta(d);
               });
               formularios->mostrar("FrmDuplicarAsiento");
             }},
            {"importación",
             [=, this](const Eleccion& elige) {
               QFile diario(carpetaDatos() + "/diario.csv");
               ASSERT_TRUE(diario.open(QIODevice::WriteOnly));
               diario.write("04/01/2003,57000001,,,1,90,Traída,1,7" + QByteArray(13, ','));
               diario.close();
               enDialogo("FrmImportarContanet", [&](Teclado& d) {
                 d.pulsa("ChkDiario");
                 d.escribe("TxtDiario", rutaPrograma(diario.fileName()));
                 elige(ya);
                 acepta(d);
               });
               formularios->mostrar("FrmImportarContanet");
             }},
            {"cierre", [=, this](const Eleccion& elige) {
               enDialogo("FrmCierre", [&](Teclado& d) {
                 elige(ya);
                 acepta(d);
               });
               formularios->mostrar("FrmCierre");
             }}};
  }
  static void rellenaNomina(Teclado& d) {
    for (const auto& [campo, texto] : {std::pair("TxtFecha", "3103"),
                                       {"TxtSubSueldoBruto", "43000001"},
                                       {"TxtImpSueldoBruto", "10"},
                                       {"TxtsubCaja", "57200001"}})
      d.escribe(campo, texto);
  }
  QString fichero() const {
    return preguntaFuera(ruta(),
                         "SELECT * FROM Diario; SELECT * FROM Empresa; SELECT * FROM Subcuentas; "
                         "SELECT * FROM Recibos");
  }
};

TEST_F(Guardado, LoQueOtroNoDejaGuardarSeReintentaOSeDescartaPeroNuncaSePierdeSinDecirlo) {
  for (const Accion& caso : acciones()) {
    SCOPED_TRACE(caso.nombre);
    t->tecla(Qt::Key_F5);
    const QStringList visto = pantalla();
    const QString antes = fichero();
    auto otro = lector();
    caso.haz([&](const auto&) { guion.esperaEleccion(false); });
    EXPECT_TRUE(guion.agotado());
    otro.reset();
    EXPECT_EQ(fichero(), antes);
    EXPECT_TRUE(totales("Total") == visto.mid(0, 3));
    t->tecla(Qt::Key_F5);
    EXPECT_EQ(pantalla(), visto);

    otro = lector();
    caso.haz([&](const auto& siSeGuarda) {
      guion.esperaEleccion(true);
      guion.esperaEleccion(true, [&] { otro.reset(); });
      siSeGuarda();
    });
    EXPECT_TRUE(guion.agotado());
    EXPECT_NE(fichero(), antes);
  }
}

TEST_F(Guardado, LoDescartadoSePuedeAceptarDeNuevoComoSiNada) {
  const auto dosVeces = [this](const char* nombre, const std::function<void(Teclado&)>& rellena) {
    guion.esperaDialogo(nombre, [this, rellena](Teclado& d) {
      rellena(d);
      auto otro = lector();
      guion.esperaEleccion(false);
      d.pulsa("CmdAceptar");
      EXPECT_TRUE(guion.agotado());
      otro.reset();
      d.pulsa("CmdAceptar");
    });
  };
  // The line that the dialog was opened for, and no other.
  t->control<Rejilla>("GrdApuntes").mover(Rejilla::Primera);
  dosVeces("FrmPartida", [](Teclado& d) { d.escribe("TxtDebeHaber", "8"); });
  t->pulsa("CmdModificaApunte");
  EXPECT_EQ(filas("Select Importe from Diario order by NLinea"),
            (std::vector<QStringList>{{"8"}, {"-90"}, {"5"}}));
  // A number that was given back is taken anew.
  dosVeces("FrmNomina", rellenaNomina);
  formularios->mostrar("FrmNomina");
  EXPECT_EQ(filas("Select NAsiento from Diario where NLinea > 2"),
            (std::vector<QStringList>{{"3"}, {"3"}}));
  EXPECT_EQ(contador("Asiento"), "4");
}

// A cell shows what the file holds, a dialog keeps what was typed.
TEST_F(Guardado, LoDescartadoDeUnaCeldaDejaDeVerseEnElla) {
  const auto escribe = [](Teclado& d, const char* rejilla, int fila, int columna) {
    auto& tabla = d.control<TablaHoja>(rejilla);
    tabla.setFocus();
    tabla.irA(fila, columna);
    d.teclea("7");
    d.tecla(Qt::Key_Return);
    return tabla.textoDe(fila, columna);
  };
  guion.esperaDialogo("FrmModelo303", [&](Teclado& d) {
    constexpr int kAMano = 3;
    auto& casillas = d.control<TablaHoja>("GrdCasillas");
    int fila = 0;
    while (casillas.textoDe(fila, 0) != "110") ASSERT_LT(++fila, casillas.model()->rowCount());
    const QString antes = casillas.textoDe(fila, kAMano);
    auto otro = lector();
    guion.esperaEleccion(false);
    escribe(d, "GrdCasillas", fila, kAMano);
    reposar();
    EXPECT_TRUE(guion.agotado());
    EXPECT_EQ(casillas.textoDe(fila, kAMano), antes);
    otro.reset();
    EXPECT_EQ(escribe(d, "GrdCasillas", fila, kAMano), "7,00");
    reposar();
    EXPECT_EQ(casillas.textoDe(fila, kAMano), "7,00");
    d.escape();
  });
  formularios->mostrar("FrmModelo303");
  guion.esperaDialogo("FrmDeclarante", [&](Teclado& d) {
    const QString escrito = escribe(d, "GrdDatos", 0, 1);
    auto otro = lector();
    guion.esperaEleccion(false);
    d.pulsa("CmdAceptar");
    EXPECT_TRUE(guion.agotado());
    EXPECT_EQ(d.control<TablaHoja>("GrdDatos").textoDe(0, 1), escrito);
    otro.reset();
    d.pulsa("CmdAceptar");
  });
  formularios->mostrar("FrmDeclarante");
}

// Nothing of it is left behind, and what was typed stands to be accepted again.
TEST_F(Guardado, UnaEmpresaQueElCatalogoNoTomaSeDiceYSePuedeRepetir) {
  const QString carpeta = carpetaDatos() + "/Otra",
                catalogo = rutaSistema(ctx.sesion.rutaCatalogo());
  const auto lista = QDir(carpetaDatos()).entryList(QDir::AllDirs | QDir::Hidden);
  for (const bool reintenta : {false, true}) {
    auto otro = std::make_unique<OtroPuesto>(catalogo);
    otro->ejecuta("BEGIN; SELECT count(*) FROM Empresas;");
    guion.esperaDialogo("FrmEmpresas", [&](Teclado& d) {
      d.escribe("TxtNombreEmpresa", "Otra");
      guion.esperaEleccion(reintenta, [&] { otro.reset(); });
      guion.esperaMensaje(
          "No se ha podido crear la empresa. No se puede guardar: otro puesto está usando los "
          "datos: " +
          ctx.sesion.rutaCatalogo());
      d.pulsa("CmdAceptar");
      EXPECT_EQ(QDir(carpetaDatos()).entryList(QDir::AllDirs | QDir::Hidden), lista);
      if (reintenta) return d.pulsa("CmdAceptar");
      d.escape();
    });
    ctx.sesion.CodigoLlamada = 1;
    formularios->mostrar("FrmEmpresas");
    EXPECT_EQ(QFile::exists(carpeta + "/Conta.MDB"), reintenta);
  }
  abreEmpresa("Otra");
  EXPECT_EQ(valor("Select NombreEmpresa from Empresa"), "Otra");
}

// Saved while the choice still stands, nothing is left to be given up.
TEST_F(Guardado, LoYaGuardadoNoSeDescarta) {
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
  const auto rechaza = [&](int deshechos, const std::function<void()>& haz) {
    const auto vuelve = qScopeGuard([&] { ::setrlimit(RLIMIT_FSIZE, &tope); });
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &corto), 0);
    guion.esperaMensaje(
        "Error 3043: Error al leer o escribir en el disco: " + ctx.sesion.rutaEmpresa() +
            ". Se ha deshecho lo último anotado, que no llegó a guardarse (cambios "
            "deshechos: " +
            QString::number(deshechos) + ')',
        "Librano", [&] { ::setrlimit(RLIMIT_FSIZE, &tope); });  // undoing it writes too
    haz();
    EXPECT_TRUE(guion.agotado());
    EXPECT_EQ(fichero(), antes);
    EXPECT_EQ(pantalla(), visto);
    t->tecla(Qt::Key_F5);
    EXPECT_EQ(pantalla(), visto);
  };
  rechaza(2, [&] { linea("57000001", "3", {}); });
  // Nothing of it is left to be looked over.
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    rellenaNomina(d);
    rechaza(5, [&] { d.pulsa("CmdAceptar"); });
    EXPECT_EQ(d.textoDe("TxtImpSueldoBruto"), "10,00 ");
    d.escape();
  });
  formularios->mostrar("FrmNomina");
}

}  // namespace
