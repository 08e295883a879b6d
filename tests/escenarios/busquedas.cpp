// Finding one's way in the quarter's books: locating, ticking off, looking at an asiento, picking a
// day and reckoning beside the entry line, by keys.
#include "escenarios/herramientas.h"

namespace {

constexpr int kTodas = 312;

// A locate by its entry, the field of its dialog, and what is asked for.
struct Busqueda {
  explicit Busqueda(const QStringList& f) : entrada(f[0]), campo(f[1]), texto(f[2]) {}
  QString entrada, campo, texto;
};

class Busquedas : public DiarioDelTrimestre {
 protected:
  void busca(const Busqueda& b, const std::function<void(Teclado&)>& paso) {
    herramienta(qPrintable(b.entrada), [&](Teclado& d) {
      rellena(d, {{qPrintable(b.campo), b.texto}});
      paso(d);
    });
  }
  QString marcadas() const { return valor("Select Count(NLinea) from Diario where Punteo<>''"); }
};

TEST_F(Busquedas, DejanElDiarioReducidoHastaRecargarlo) {
  for (const QStringList& f : leeCsv("busquedas/halladas.csv")) {
    const auto& [busqueda, filas, asiento] = std::tuple(Busqueda(f), f[3].toInt(), f[4]);
    SCOPED_TRACE(f.join(' ').toStdString());
    busca(busqueda, [](Teclado& d) { d.escape(); });
    EXPECT_EQ(rejilla().filas(), kTodas);
    busca(busqueda, acepta);
    EXPECT_EQ(rejilla().filas(), filas);
    EXPECT_EQ(t->textoDe("TxtAsiento"), asiento);
    // A dialog that closes without a word leaves it narrowed.
    herramienta("MnuRenumeraDiario", [](Teclado& d) { d.escape(); });
    EXPECT_EQ(rejilla().filas(), filas);
    t->tecla(Qt::Key_F5);
    EXPECT_EQ(rejilla().filas(), kTodas);
    EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
  }
  // The subcuenta being typed is the one proposed.
  t->entra("572.2");
  guion.esperaDialogo("FrmBusSub", [](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtSubcuenta"), "57200002");
    d.intro();
    d.intro();
  });
  t->tecla(Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(rejilla().filas(), 7);
  comprueba();
}

TEST_F(Busquedas, DicenLoQueNoEstaYLoQueNoSePuedeBuscar) {
  for (const QStringList& f : leeCsv("busquedas/negadas.csv")) {
    const Busqueda busqueda(f);
    const QString aviso = f[3];  // empty: not a word
    const bool cierra = f[4] == "sí";
    SCOPED_TRACE(f.join(' ').toStdString());
    enLinea(118, 0);
    busca(busqueda, [&](Teclado& d) {
      if (!aviso.isEmpty()) guion.esperaMensaje(aviso, "Error");
      acepta(d);
      EXPECT_EQ(d.forma().isVisible(), !cierra);
      d.escape();
    });
    EXPECT_EQ(rejilla().filas(), cierra ? 0 : 10);
    EXPECT_EQ(t->textoDe("TxtAsiento"), cierra && !aviso.isEmpty() ? "" : "118");
  }
}

// Only the lack of a row is "not there": what couldn't be looked for is told as it is, and leaves
// the journal and the dialog where they were.
TEST_F(Busquedas, DistinguenUnFalloDeNoHallarNada) {
  enLinea(118, 0);
  busca(Busqueda({"MnuLocDescripcion", "TxtDescripcion", "d'ors"}), [&](Teclado& d) {
    guion.esperaMensaje(errorEnCaja(3075, "' order by Nasiento"), "Librano");
    acepta(d);
    d.escape();
  });
  EXPECT_EQ(rejilla().filas(), 10);
  EXPECT_EQ(t->textoDe("TxtAsiento"), "118");

  const QString ocupado = errorEnCaja(err::kRegistroBloqueado, ctx.sesion.rutaEmpresa());
  t->escribe("TxtSubcuenta", "57200001");
  motor.setLockTimeout(30);
  {
    OtroPuesto otro(rutaSistema(ctx.sesion.rutaEmpresa()), "BEGIN EXCLUSIVE;");
    busca(Busqueda({"MnuLocAsiento", "TxtAsiento", "5"}), [&](Teclado& d) {
      guion.esperaMensaje(ocupado, "Librano");
      acepta(d);
      d.escape();
    });
    EXPECT_EQ(rejilla().filas(), 10);
    // No months full of zeros for an account with lines.
    guion.esperaMensaje(ocupado, "Librano");
    entrada("MnuAcumulados");
    EXPECT_TRUE(guion.agotado());
  }
  EXPECT_EQ(rejilla().filaActual(), 0);
  EXPECT_EQ(rejilla().valor("NAsiento"), "118");
}

TEST_F(Busquedas, EncuentranLoPunteado) {
  const char* const kNinguna = "No se ha encontrado ninguna partida con el punteo seleccionado";
  // The space bar marks with the frame closed too; a double click doesn't.
  enLinea(29, 0);
  t->tecla(Qt::Key_Space);
  t->tecla(Qt::Key_Down);
  t->tecla(Qt::Key_Space);
  t->dobleClic("GrdApuntes");
  EXPECT_EQ(filas("Select NAsiento, Punteo from Diario where Punteo<>'' order by NLinea"),
            (Filas{{"29", "X"}, {"29", "X"}}));
  // Another mark clears; it doesn't replace.
  t->pulsa("CmdActivaPunteo");
  t->pulsa("OptPunteo_7");
  enLinea(29, 0);
  t->tecla(Qt::Key_Space);
  EXPECT_EQ(marcadas(), "1");
  t->tecla(Qt::Key_Space);
  EXPECT_EQ(valor("Select Punteo from Diario where NAsiento=29"), "*");
  t->dobleClic("GrdApuntes");
  EXPECT_EQ(rejilla().valor("Punteo"), "*");
  EXPECT_EQ(marcadas(), "3");
  t->pulsa("CmdCerrarPunteo");
  EXPECT_FALSE(t->visible("FrmPunteo"));

  // None is chosen at the start, and no line bears none.
  herramienta("MnuLocApuntes", [&](Teclado& d) {
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    guion.esperaMensaje(kNinguna, "Error");
    d.intro();
  });
  EXPECT_EQ(rejilla().filas(), 0);
  EXPECT_EQ(t->textoDe("TxtAsiento"), "");
  herramienta("MnuLocApuntes", [&](Teclado& d) {
    alterna(d, "OptPunteo_0");
    acepta(d);
  });
  EXPECT_EQ(rejilla().filas(), 1);
  EXPECT_EQ(rejilla().valor("Subcuenta"), "43000006");
  comprueba();
}

TEST_F(Busquedas, EscribenElDiaDondeSePidio) {
  const auto alDiaSiguiente = [](Teclado& dias) {
    dias.llega("Calendario");
    dias.tecla(Qt::Key_Right);
    dias.intro();
    EXPECT_FALSE(dias.forma().isVisible());
  };
  guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
  t->pulsa("CmdLinFecha");
  EXPECT_EQ(t->textoDe("TxtFecha"), "03/04/2024");
  EXPECT_EQ(t->enfocado(), "TxtFecha");

  enLinea(7, 0);
  guion.esperaDialogo("FrmPartida", [&](Teclado& partida) {
    guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
    partida.pulsa("CmdLinFecha");
    EXPECT_EQ(partida.textoDe("TxtFecha"), "06/01/2024");
    EXPECT_EQ(t->textoDe("TxtFecha"), "03/04/2024");
    partida.escape();
  });
  t->intro();
  herramienta("MnuLocFecha", [&](Teclado& busca) {
    // A day chosen without closing is written too.
    guion.esperaDialogo("FrmCalendario", [](Teclado& dias) {
      dias.llega("Calendario");
      dias.tecla(Qt::Key_Down);
      dias.escape();
    });
    busca.pulsa("CmdCal");
    EXPECT_EQ(busca.textoDe("TxtFecha"), "09/04/2024");
    busca.escape();
  });
  comprueba();
}

TEST_F(Busquedas, CuentanConElAyudante) {
  const std::tuple<const char*, QList<const char*>, const char*> casos[] = {
      {"", {"CmdNumeros_1", "CmdNumeros_0", "CmdNumeros_10", "CmdNumeros_5", "CmdSuma"}, "10,5"},
      {"100", {"CmdNumeros_3", "CmdResta"}, "97"},
      {"1200.5", {"CmdNumeros_2", "CmdMultiplica"}, "2401"},
      {"", {"CmdNumeros_7", "CmdMultiplica"}, "7"},
      {"7", {"CmdNumeros_2", "CmdDivide"}, "3,5"},
      {"7", {"CmdNumeros_2", "CmdC", "CmdNumeros_1", "CmdSuma"}, "8"},
      {"7", {"CmdNumeros_2", "CmdCE"}, "0,00 "},
  };
  t->forma().showNormal();
  t->forma().resize(1000, 700);  // room for the calculator
  reposar();
  for (const auto& [importe, teclas, resultado] : casos) {
    t->llega("TxtDebeHaber");
    t->teclea(importe);
    for (const char* tecla : teclas) t->pulsa(tecla);
    EXPECT_EQ(t->textosDe({"TxtDebeHaber", "TxtCalImp"}), (QStringList{resultado, "0"}));
    EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
  }
  // A result is posted as it stands by the buttons: the field would offer another amount.
  teclea({"", "02/04/2024", "57000001", "Ajuste", "9", ""});
  for (const char* tecla : {"CmdNumeros_4", "CmdSuma", "CmdLinHaber"}) t->pulsa(tecla);
  anota(121, "02/04/2024", "Ajuste", {{"57000001", 9}, {"57000001", -13}});
  comprueba();
  guion.esperaMensaje(errorEnCaja(11), "Librano");
  t->pulsa("CmdDivide");
}

}  // namespace
