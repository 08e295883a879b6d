// Finding one's way in the quarter's books: locating, ticking off, looking at an asiento, picking a
// day and reckoning beside the entry line, by keys.
#include "escenarios/herramientas.h"
#include "foundation/data/errorejecucion.h"

namespace {

constexpr int kTodas = 312;

// A locate: its entry, its dialog and what is asked for.
struct Busqueda {
  const char* entrada;
  const char* forma;
  const char* campo;
  const char* texto;
};

struct Busquedas : DiarioDelTrimestre {
  void busca(const Busqueda& b, const std::function<void(Teclado&)>& paso) {
    herramienta(b.entrada, b.forma, [&](Teclado& d) {
      rellena(d, {{b.campo, b.texto}});
      paso(d);
    });
  }
  QString marcadas() const { return valor("Select Count(Punteo) from Diario where Punteo<>''"); }
};

TEST(Busquedas, NarrowTheJournalUntilItIsReloaded) {
  const struct {
    Busqueda busqueda;
    int filas;
    const char* asiento;
  } casos[] = {
      {{"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "43.6"}, 6, "11"},
      // From the given one on.
      {{"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", "118x"}, 10, "118"},
      {{"MnuLocDescripcion", "FrmBusDes", "TxtDescripcion", "quiLER"}, 15, "6"},
      // On either side.
      {{"MnuLocImporte", "FrmBusImp", "TxtImporte", "1102"}, 9, "6"},
      {{"MnuLocImporte", "FrmBusImp", "TxtImporte", "12.02"}, 6, "22"},
      // The third of January: the month goes first where it can.
      {{"MnuLocFecha", "FrmBusFec", "TxtFecha", "0103"}, 308, "3"},
      {{"MnuLocFecha", "FrmBusFec", "TxtFecha", "1503"}, 63, "96"},
  };
  Busquedas e;
  for (const auto& [busqueda, filas, asiento] : casos) {
    SCOPED_TRACE(testing::Message() << busqueda.forma << ' ' << busqueda.texto);
    e.busca(busqueda, [](Teclado& d) { d.escape(); });
    EXPECT_EQ(e.rejilla().filas(), kTodas);
    e.busca(busqueda, e.acepta);
    EXPECT_EQ(e.rejilla().filas(), filas);
    EXPECT_EQ(e.t->textoDe("TxtAsiento"), asiento);
    // A dialog that closes without a word leaves it narrowed.
    e.herramienta("MnuRenumeraDiario", "FrmRenumera", [](Teclado& d) { d.escape(); });
    EXPECT_EQ(e.rejilla().filas(), filas);
    e.t->tecla(Qt::Key_F5);
    EXPECT_EQ(e.rejilla().filas(), kTodas);
    EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  }
  // The subcuenta being typed is the one proposed.
  e.t->teclea("572.2");
  e.t->intro();
  e.guion.esperaDialogo("FrmBusSub", [](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtSubcuenta"), "57200002");
    d.intro();
    d.intro();
  });
  e.t->tecla(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(e.rejilla().filas(), 7);
  e.compruebaBalance();
}

TEST(Busquedas, SayWhatIsNotThereAndWhatCanNotBeLookedFor) {
  const struct {
    Busqueda busqueda;
    const char* aviso;  // null: not a word
    bool cierra;
  } casos[] = {
      {{"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "43.9"},
       "La subcuenta introducida no existe",
       true},
      {{"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", "999"},
       "El asiento introducido no existe",
       true},
      {{"MnuLocDescripcion", "FrmBusDes", "TxtDescripcion", "xyz"},
       "Ninguna partida tiene los caracteres introducidos",
       true},
      {{"MnuLocImporte", "FrmBusImp", "TxtImporte", "31"},
       "El importe introducido no existe",
       true},
      {{"MnuLocFecha", "FrmBusFec", "TxtFecha", "3112"}, nullptr, true},
      {{"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", ""},
       "No tiene ninguna cuenta introducida",
       false},
      {{"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "430"},
       "La cuenta introducida no tiene los digitos correspondientes",
       false},
      {{"MnuLocCodigo", "FrmBusSub", "TxtSubcuenta", "ABCDEFGH"}, nullptr, false},
      {{"MnuLocAsiento", "FrmBusAsi", "TxtAsiento", ""},
       "No tiene ningun asiento introducido",
       false},
      {{"MnuLocImporte", "FrmBusImp", "TxtImporte", "x"},
       "No tiene ningun importe introducido",
       false},
  };
  Busquedas e;
  for (const auto& [busqueda, aviso, cierra] : casos) {
    SCOPED_TRACE(testing::Message() << busqueda.forma << ' ' << busqueda.texto);
    e.enLinea(3, 0);
    const int antes = e.rejilla().filas();
    e.busca(busqueda, [&, aviso = aviso, cierra = cierra](Teclado& d) {
      if (aviso) e.guion.esperaMensaje(aviso, "Error");
      e.acepta(d);
      EXPECT_EQ(d.forma().isVisible(), !cierra);
      d.escape();
    });
    EXPECT_EQ(e.rejilla().filas(), cierra ? 0 : antes);
    EXPECT_EQ(e.t->textoDe("TxtAsiento"), cierra && aviso ? "" : "3");
  }
  e.compruebaBalance();
}

TEST(Busquedas, FindWhatHasBeenTickedOff) {
  const char* const kNinguna = "No se ha encontrado ninguna partida con el punteo seleccionado";
  Busquedas e;
  // The space bar marks with the frame closed too; a double click doesn't.
  e.enLinea(29, 0);
  e.t->tecla(Qt::Key_Space);
  e.t->tecla(Qt::Key_Down);
  e.t->tecla(Qt::Key_Space);
  e.t->dobleClic("GrdApuntes");
  EXPECT_EQ(e.filas("Select NAsiento, Punteo from Diario where Punteo<>'' order by NLinea"),
            (Filas{{"29", "X"}, {"29", "X"}}));
  // Another mark clears; it doesn't replace.
  e.t->pulsa("CmdActivaPunteo");
  e.t->pulsa("OptPunteo_7");
  e.enLinea(29, 0);
  e.t->tecla(Qt::Key_Space);
  EXPECT_EQ(e.marcadas(), "1");
  e.t->tecla(Qt::Key_Space);
  EXPECT_EQ(e.valor("Select Punteo from Diario where NAsiento=29"), "*");
  e.t->dobleClic("GrdApuntes");
  EXPECT_EQ(e.rejilla().valor("Punteo"), "*");
  EXPECT_EQ(e.marcadas(), "3");
  e.t->pulsa("CmdCerrarPunteo");
  EXPECT_FALSE(e.t->visible("FrmPunteo"));

  // None is chosen at the start, and no line bears none.
  e.herramienta("MnuLocApuntes", "FrmBusApu", [&](Teclado& d) {
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    e.guion.esperaMensaje(kNinguna, "Error");
    d.intro();
  });
  EXPECT_EQ(e.rejilla().filas(), 0);
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "");
  e.herramienta("MnuLocApuntes", "FrmBusApu", [&](Teclado& d) {
    d.llega("OptPunteo_0");
    d.tecla(Qt::Key_Space);
    e.acepta(d);
  });
  EXPECT_EQ(e.rejilla().filas(), 1);
  EXPECT_EQ(e.rejilla().valor("Subcuenta"), "43000006");
  e.compruebaBalance();
}

TEST(Busquedas, LeadFromAnExtractToItsAsiento) {
  Busquedas e;
  e.t->teclea("572.2");
  e.guion.esperaDialogo("FrmExtractosPantalla", [&e](Teclado& extracto) {
    e.guion.esperaDialogo("FrmAsiento", [](Teclado& asiento) {
      EXPECT_EQ(asiento.textoDe("TxtAsiento"), "29");
      EXPECT_EQ(asiento.forma().windowTitle(), "27/01/2024");
      const auto& lineas = asiento.control<Rejilla>("GridAsiento");
      EXPECT_EQ(lineas.filas(), 2);
      EXPECT_EQ(lineas.texto(1, 3), "-682,96");
      asiento.llega("CmdVerAsiento");
      asiento.intro();
    });
    extracto.llega("GridExtracto");
    extracto.tecla(Qt::Key_Home, Qt::ControlModifier);
    extracto.control<Rejilla>("GridExtracto").dobleClic();
    EXPECT_FALSE(extracto.forma().isVisible());
  });
  e.t->intro();
  e.t->tecla(Qt::Key_F3);
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "29");
  EXPECT_EQ(e.rejilla().filas(), 2);
}

TEST(Busquedas, WriteTheDayWhereItWasAskedFrom) {
  Busquedas e;
  const auto alDiaSiguiente = [](Teclado& dias) {
    dias.llega("Calendario");
    dias.tecla(Qt::Key_Right);
    dias.intro();
    EXPECT_FALSE(dias.forma().isVisible());
  };
  e.guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
  e.t->pulsa("CmdLinFecha");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "03/04/2024");
  EXPECT_EQ(e.t->enfocado(), "TxtFecha");

  e.enLinea(7, 0);
  e.guion.esperaDialogo("FrmPartida", [&](Teclado& partida) {
    e.guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
    partida.pulsa("CmdLinFecha");
    EXPECT_EQ(partida.textoDe("TxtFecha"), "06/01/2024");
    EXPECT_EQ(e.t->textoDe("TxtFecha"), "03/04/2024");
    partida.escape();
  });
  e.t->intro();
  e.herramienta("MnuLocFecha", "FrmBusFec", [&](Teclado& busca) {
    // A day chosen without closing is written too.
    e.guion.esperaDialogo("FrmCalendario", [](Teclado& dias) {
      dias.llega("Calendario");
      dias.tecla(Qt::Key_Down);
      dias.escape();
    });
    busca.pulsa("CmdCal");
    EXPECT_EQ(busca.textoDe("TxtFecha"), "09/04/2024");
    busca.escape();
  });
  e.compruebaBalance();
}

TEST(Busquedas, ReckonBesideTheEntryLine) {
  Busquedas e;
  const struct {
    const char* importe;
    QList<const char*> teclas;
    const char* resultado;
  } casos[] = {
      {"", {"CmdNumeros_1", "CmdNumeros_0", "CmdNumeros_10", "CmdNumeros_5", "CmdSuma"}, "10,5"},
      {"100", {"CmdNumeros_3", "CmdResta"}, "97"},
      {"1200.5", {"CmdNumeros_2", "CmdMultiplica"}, "2401"},
      {"", {"CmdNumeros_7", "CmdMultiplica"}, "7"},
      {"7", {"CmdNumeros_2", "CmdDivide"}, "3,5"},
      {"7", {"CmdNumeros_2", "CmdC", "CmdNumeros_1", "CmdSuma"}, "8"},
      {"7", {"CmdNumeros_2", "CmdCE"}, "0,00 "},
  };
  for (const auto& [importe, teclas, resultado] : casos) {
    e.t->llega("TxtDebeHaber");
    e.t->teclea(importe);
    for (const char* tecla : teclas) e.t->pulsa(tecla);
    EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), resultado);
    EXPECT_EQ(e.t->textoDe("TxtCalImp"), "0");
    EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  }
  // A result is posted as it stands by the buttons: the field would offer another amount.
  tecleaLinea(*e.t, e.guion, e.ctx.sesion, {"", "02/04/2024", "57000001", "Ajuste", "9", ""}, true);
  for (const char* tecla : {"CmdNumeros_4", "CmdSuma", "CmdLinHaber"}) e.t->pulsa(tecla);
  e.compruebaBalance({{"57000001", 4, 9, -13}});
  e.guion.esperaMensaje("Error 11: " + ErrorEjecucion(err::kDivisionPorCero).descripcion(),
                        "Librano");
  e.t->pulsa("CmdDivide");
}

}  // namespace
