// Changing a posted line, by its keys.
#include "journal/herramientas.h"

namespace {

const QString kAlDebe =
    QStringLiteral("Atención su partida anterior era en el 'HABER' , ¿Desea cambiarlo al 'DEBE'?");
const QString kAlHaber =
    QStringLiteral("Atención su partida anterior era en el 'DEBE' , ¿Desea cambiarlo al 'HABER'?");
const QString kFechaEnTodas = QStringLiteral(
    "La fecha ha sido modificada, ¿desea que Librano modifique la fecha en cada partida del mismo "
    "asiento?");
const QString kNumeroEnTodas = QStringLiteral(
    "El asiento ha sido modificado, ¿desea que Librano modifique el número de asiento en cada "
    "partida del mismo asiento?");
const QString kAtencion = QStringLiteral("Atención");

struct Partidas : Herramientas {
  // The dialog over the first line on show, opened from the grid.
  void primera(const std::function<void(Teclado&)>& paso) {
    t->pulsa("CmdRecargar");
    t->pulsa("CmdPrimero");
    guion.esperaDialogo(QStringLiteral("FrmPartida"), paso);
    t->enfoca("GrdApuntes");
    t->intro();
  }
};

TEST(FrmPartida, AsksBeforeALineChangesSides) {
  Partidas e;
  const struct {
    const char* lado;
    QString pregunta;
    bool si;
    const char* importe;
    QStringList queda;
  } pasos[] = {
      {"D", {}, false, "101", {"0", "D", "101"}},
      {"H", kAlHaber, false, "102", {"0", "D", "102"}},
      {"H", kAlHaber, true, "103", {"0", "H", "-103"}},
      {"H", {}, false, "104", {"0", "H", "-104"}},
      {"D", kAlDebe, false, "105", {"0", "H", "-105"}},
      {"D", kAlDebe, true, "106", {"0", "D", "106"}},
  };
  QString antes = QStringLiteral("100,00 ");
  for (const auto& paso : pasos) {
    e.primera([&](Teclado& partida) {
      EXPECT_EQ(partida.textoDe("TxtDebeHaber"), antes);  // without its sign on either side
      EXPECT_EQ(partida.textoDe("TxtNombreCuenta"), "Caja");
      partida.escribe("TxtDebeHaber", QString::fromLatin1(paso.importe));
      partida.intro();
      EXPECT_EQ(partida.enfocado(), "TxtDH");
      partida.teclea(QString::fromLatin1(paso.lado));
      if (!paso.pregunta.isNull()) e.guion.esperaPregunta(paso.pregunta, paso.si, kAtencion);
      partida.pulsa("CmdAceptar");
    });
    EXPECT_EQ(e.filas("Select NLinea, DH, Importe from Diario where NLinea=0"), Filas{paso.queda});
    EXPECT_EQ(e.rejilla().filaActual(), 3);
    antes = QString::fromLatin1(paso.importe) + ",00 ";
  }
  EXPECT_EQ(e.totales("Total"), QStringList({"136,00 ", "-130,00", "6,00 "}));
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"},
                                {"43000001", "0", "-30", "2"},
                                {"57000001", "106", "0", "1"},
                                {"57200001", "30", "0", "2"}}));
}

TEST(FrmPartida, RefusesAnIncompleteLineAndForgetsACancelledOne) {
  Partidas e;
  const Filas antes = e.diario();
  e.primera([&](Teclado& partida) {
    const std::pair<const char*, QString> campos[] = {
        {"TxtAsiento", "1"}, {"TxtSubcuenta", "57000001"}, {"TxtConcepto", "Apunte"}};
    for (const auto& [campo, bueno] : campos) {
      partida.enfoca(campo);
      partida.tecla(Qt::Key_A, Qt::ControlModifier);
      partida.tecla(Qt::Key_Delete);
      e.guion.esperaMensaje("Le faltan datos para entrar la partida al debe", "Error");
      partida.pulsa("CmdAceptar");
      EXPECT_TRUE(partida.forma().isVisible()) << campo;
      partida.escribe(campo, bueno);
    }
    // The first key in an empty amount shows the zero; it can't be posted, on either side.
    partida.enfoca("TxtDebeHaber");
    partida.tecla(Qt::Key_Delete);
    e.guion.esperaMensaje("Le faltan datos para entrar la partida al debe", "Error");
    partida.pulsa("CmdAceptar");
    partida.escribe("TxtDebeHaber", "0");
    partida.escribe("TxtDH", "H");
    e.guion.esperaPregunta(kAlHaber, true, kAtencion);
    e.guion.esperaMensaje("Le faltan datos para entrar la partida al haber", "Error");
    partida.pulsa("CmdAceptar");
    partida.escribe("TxtDebeHaber", "77");
    partida.pulsa("CmdSalir");
  });
  EXPECT_EQ(e.diario(), antes);
}

TEST(FrmPartida, TakesTheOtherLinesAlongInOrder) {
  Partidas e;
  // Both changed: the date reaches those already under the new number, and those that come after
  // it keep their own.
  e.primera([&](Teclado& partida) {
    partida.escribe("TxtAsiento", "2");
    partida.escribe("TxtFecha", "0503");
    e.guion.esperaPregunta(kFechaEnTodas, true, kAtencion);
    e.guion.esperaPregunta(kNumeroEnTodas, true, kAtencion);
    partida.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.diario(), (Filas{{"0", "2", "05/03/2003", "57000001", "100"},
                               {"1", "2", "02/01/2003", "43000001", "-100"},
                               {"2", "2", "05/03/2003", "57200001", "30"},
                               {"3", "2", "05/03/2003", "43000001", "-30"}}));
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"},
                                {"43000001", "0", "-30", "3"},
                                {"57000001", "100", "0", "3"},
                                {"57200001", "30", "0", "3"}}));
  // Answered No, the line goes alone.
  e.primera([&](Teclado& partida) {
    partida.escribe("TxtAsiento", "8");
    partida.escribe("TxtFecha", "0603");
    e.guion.esperaPregunta(kFechaEnTodas, false, kAtencion);
    e.guion.esperaPregunta(kNumeroEnTodas, false, kAtencion);
    partida.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select NLinea, Fecha from Diario where NAsiento=8"),
            (Filas{{"0", "06/03/2003"}}));
  EXPECT_EQ(e.filas("Select NLinea from Diario where NAsiento=2").size(), 3u);
}

TEST(FrmPartida, ItsFieldsAreThoseOfTheEntryLine) {
  Partidas e;
  e.inserta("Conceptos", {{"NConcepto", "7"}, {"Descripcion", "Cobro de factura"}});
  e.primera([&](Teclado& partida) {
    auto& forma = static_cast<Formulario&>(partida.forma());
    partida.escribe("TxtAsiento", "*");
    EXPECT_EQ(partida.textoDe("TxtAsiento"), "3");
    partida.escribe("TxtAsiento", "1x");
    EXPECT_EQ(partida.textoDe("TxtAsiento"), "1");
    EXPECT_EQ(forma.pitidos(), 1);

    // By text and day first, as in the entry line, but here the date itself gives way.
    e.ctx.sesion.FechaNoModificar = "15/03/2003";
    partida.escribe("TxtFecha", "2001");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtFecha"), "20/01/2003");
    partida.escribe("TxtFecha", "1006");
    e.guion.esperaMensaje("Usted no puede modificar ningun apunte anterior a la fecha 15/03/2003");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtFecha"), "15/03/2003");
    e.ctx.sesion.FechaNoModificar.clear();

    EXPECT_EQ(partida.enfocado(), "TxtSubcuenta");
    partida.teclea("572.1");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtNombreCuenta"), "Banco");
    EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "57200001");  // the main window follows
    EXPECT_EQ(e.totales("Cuenta").constFirst(), "30,00 ");
    EXPECT_EQ(partida.enfocado(), "TxtConcepto");
    partida.teclea("9");
    e.guion.esperaMensaje("El código del concepto escrito no existe intente con otro", "Error");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "");
    partida.teclea("7");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "Cobro de factura");
    EXPECT_EQ(partida.enfocado(), "TxtConcepto");
    partida.intro();
    EXPECT_EQ(partida.enfocado(), "TxtDebeHaber");
    partida.teclea("1a2.5");
    EXPECT_EQ(partida.textoDe("TxtDebeHaber"), "12,5");
    e.guion.esperaPregunta(kFechaEnTodas, false, kAtencion);
    partida.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select Subcuenta, Descripcion, Importe from Diario where NLinea=0"),
            (Filas{{"57200001", "Cobro de factura", "12,5"}}));
}

TEST(FrmCalendario, WritesTheDayWhereItWasAskedFrom) {
  Partidas e;
  const auto alDiaSiguiente = [](Teclado& dias) {
    dias.enfoca("Calendario");
    dias.tecla(Qt::Key_Right);
    dias.intro();
    EXPECT_FALSE(dias.forma().isVisible());
  };
  e.t->escribe("TxtFecha", "0502");
  e.guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
  e.t->pulsa("CmdLinFecha");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "06/02/2003");

  e.primera([&](Teclado& partida) {
    e.guion.esperaDialogo("FrmCalendario", alDiaSiguiente);
    partida.pulsa("CmdLinFecha");
    EXPECT_EQ(partida.textoDe("TxtFecha"), "03/01/2003");
    EXPECT_EQ(e.t->textoDe("TxtFecha"), "06/02/2003");
    partida.cierra();
  });
  e.dialogo("MnuLocFecha", "FrmBusFec", [&](Teclado& busca) {
    // A day chosen without closing is written too.
    e.guion.esperaDialogo("FrmCalendario", [](Teclado& dias) {
      dias.enfoca("Calendario");
      dias.tecla(Qt::Key_Down);
      dias.pulsa("CmdSalir");
    });
    busca.pulsa("CmdCal");
    EXPECT_EQ(busca.textoDe("TxtFecha"), "22/03/2003");
    busca.cierra();
  });
}

TEST(FrmAsiento, ShowsAnAsientoAndLeadsToIt) {
  Partidas e;
  e.guion.esperaDialogo("FrmAsiento", [](Teclado& asiento) {
    EXPECT_EQ(asiento.textoDe("TxtAsiento"), "2");
    EXPECT_EQ(asiento.forma().windowTitle(), "05/02/2003");
    const auto& lineas = asiento.control<Rejilla>("GridAsiento");
    EXPECT_EQ(lineas.filas(), 2);
    EXPECT_EQ(lineas.texto(1, 3), "-30,00");
    asiento.pulsa("CmdVerAsiento");
  });
  e.ctx.sesion.ValorElegido = "2";
  e.formularios->mostrar("FrmAsiento");
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "2");
  EXPECT_EQ(e.rejilla().filas(), 2);
}

}  // namespace
