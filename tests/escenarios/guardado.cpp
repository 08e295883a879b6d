// What the screens do when a change can't be saved: another station reads on, or the disk
// refuses it.
#include <QScopedValueRollback>

#include "company/indices.h"
#include "journal/menuabierto.h"
#include "journal/widgets/trabajoendiario.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/discolleno.h"

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
    return std::make_unique<OtroPuesto>(ruta(), "BEGIN; SELECT count(*) FROM Diario;");
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
  // Boxes that come before the choice are announced before it; where it comes within a dialog,
  // there. A field without a text is pressed.
  Accion enVentana(const char* nombre, const std::function<void()>& haz, bool pregunta = false) {
    return {nombre, [=, this](const Eleccion& elige) {
              if (pregunta)
                guion.esperaPregunta(
                    "Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?", true);
              elige([] {});
              haz();
            }};
  }
  Accion enDialogo(
      const char* nombre, const std::function<void()>& abre, const Campos& campos,
      const std::function<void()>& siSeGuarda = [] {}) {
    return {nombre, [=, this](const Eleccion& elige) {
              guion.esperaDialogo(nombre, [&](Teclado& d) {
                if (auto* tabla = d.forma().findChild<QTabWidget*>("Tabla"))
                  tabla->setCurrentIndex(1);
                for (const auto& [campo, texto] : campos)
                  texto.isNull() ? d.pulsa(campo) : d.escribe(campo, texto);
                elige(siSeGuarda);
                d.pulsa("CmdAceptar");
                if (d.forma().isVisible()) d.escape();  // given up, what was typed still stands
              });
              abre();
            }};
  }
  std::vector<Accion> acciones() {
    const auto boton = [this](const char* cual) { return [=, this] { t->pulsa(cual); }; };
    const auto muestra = [this](const char* forma, int codigo = 0, const char* elegido = "") {
      return [=, this] {
        ctx.sesion.CodigoLlamada = codigo;
        ctx.sesion.ValorElegido = elegido;
        formularios->mostrar(forma);
      };
    };
    const QString diario = haceFichero(carpetaDatos() + "/diario.csv",
                                       "04/01/2003,57000001,,,1,90,Traída,1,7,,,,,,,,,,,,,");
    return {
        enVentana("línea", [this] { linea("57000001", "3", {}); }),
        enVentana("asterisco", boton("CmdLinAsiento")),
        enVentana("punteo",
                  [this] {
                    t->enfoca("GrdApuntes");
                    t->tecla(Qt::Key_Space);
                  }),
        enDialogo("FrmPartida", boton("CmdModificaApunte"), {{"TxtDebeHaber", "8"}}),
        enVentana("borrado", boton("CmdEliminarPartida"), true),
        enDialogo("FrmRenumera", muestra("FrmRenumera"), {},
                  [this] { guion.esperaMensaje("Proceso terminado con exito", "Fín"); }),
        enDialogo("FrmEliminaAsiento", boton("CmdEliminarApunte"), {}),
        enDialogo("FrmEmpresas", muestra("FrmEmpresas", 2), {{"TxtDireccion", "Calle Mayor, 1"}}),
        enDialogo("FrmInvertirCierre", muestra("FrmInvertirCierre"), {{"TxtNoModifica", "3006"}}),
        enDialogo("FrmRecibos", muestra("FrmRecibos", 1),
                  {{"TxtFechaVencimiento", "3006"},
                   {"TxtCuenta", "43000001"},
                   {"TxtFactura", "7"},
                   {"TxtTipo", "Letra"},
                   {"TxtTitulo", "Letra"},
                   {"TxtContrapartida", "57200001"},
                   {"TxtImporte", "9"}}),
        enDialogo("FrmSubCuentas", muestra("FrmSubCuentas", 2, "57000001"),
                  {{"TxtDescripcion", "Caja del mostrador"}}),
        enDialogo("FrmNomina", muestra("FrmNomina"), kNomina),
        enDialogo("FrmDuplicarAsiento", muestra("FrmDuplicarAsiento"), {{"ChkEliminaAsiento", {}}}),
        enDialogo("FrmImportarContanet", muestra("FrmImportarContanet"),
                  {{"ChkDiario", {}}, {"TxtDiario", rutaPrograma(diario)}}),
        enDialogo("FrmCierre", muestra("FrmCierre"), {})};
  }
  const Campos kNomina = {{"TxtFecha", "3103"},
                          {"TxtSubSueldoBruto", "43000001"},
                          {"TxtImpSueldoBruto", "10"},
                          {"TxtsubCaja", "57200001"}};
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
  dosVeces("FrmNomina", [this](Teclado& d) { d.escribe(kNomina); });
  formularios->mostrar("FrmNomina");
  EXPECT_EQ(filas("Select NAsiento from Diario where NLinea > 2"),
            (std::vector<QStringList>{{"3"}, {"3"}}));
  EXPECT_EQ(contador("Asiento"), "4");
}

// Those of a long journal go with the first part of the work that is saved, and come back with the
// last, which may be given up.
TEST_F(Guardado, LoDescartadoNoDejaElDiarioSinIndices) {
  const auto hay = [this] {
    return preguntaFuera(ruta(),
                         "SELECT count(*) FROM sqlite_schema WHERE name LIKE "
                         "'librano_Diario_%'");
  };
  const QScopedValueRollback<int> siempre(IndicesAparte::desde, 1);
  const auto empresa = abreBase();
  const auto seDescarta = [&] {
    trabajaEnDiario(ctx, [&] {
      IndicesAparte aparte(*empresa, 100);
      motor.flush();
      EXPECT_EQ(hay(), "0");
      aparte.repone();
      motor.discard();
      throw ErrorEjecucion(err::kOperacionCancelada);
    });
  };
  EXPECT_EQ(numeroDeError(seDescarta), err::kOperacionCancelada);
  motor.flush();
  EXPECT_EQ(hay(), "5");
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
    auto otro = std::make_unique<OtroPuesto>(catalogo, "BEGIN; SELECT count(*) FROM Empresas;");
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
  const QStringList visto = pantalla();
  const QString antes = fichero();
  const auto rechaza = [&](int deshechos, const std::function<void()>& haz) {
    DiscoLleno disco(128 * 1024);  // room for the journal of one line, and not for its pages
    guion.esperaMensaje(errorEnCaja(3043, ctx.sesion.rutaEmpresa()) +
                            QString(". Se ha deshecho lo último anotado, que no llegó a guardarse "
                                    "(cambios deshechos: %1)")
                                .arg(deshechos),
                        "Librano", [&] { disco.vacia(); });  // undoing it writes too
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
    d.escribe(kNomina);
    rechaza(5, [&] { d.pulsa("CmdAceptar"); });
    EXPECT_EQ(d.textoDe("TxtImpSueldoBruto"), "10,00 ");
    d.escape();
  });
  formularios->mostrar("FrmNomina");
}

}  // namespace
