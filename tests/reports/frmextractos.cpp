// The ledger of a subcuenta on screen and on paper, and its accumulated months.
#include <QTableWidget>
#include <QTest>

#include "reports/listadoabierto.h"

namespace {

void dobleClicEnFila(Teclado& t, int fila) {
  auto& rejilla = t.control<Rejilla>("GridExtracto");
  const QRect celda = rejilla.visualRect(rejilla.model()->index(fila, 3));
  const QPoint sitio = rejilla.viewport()->mapTo(t.forma().window(), celda.center());
  QTest::mouseClick(t.forma().windowHandle(), Qt::LeftButton, {}, sitio);
  QTest::mouseDClick(t.forma().windowHandle(), Qt::LeftButton, {}, sitio);
  reposar();
}

QStringList columna(Teclado& t, int numero) {
  auto& rejilla = t.control<Rejilla>("GridExtracto");
  QStringList textos;
  for (int i = 0; i < rejilla.filas(); ++i) textos << rejilla.texto(i, numero).trimmed();
  return textos;
}

TEST(FrmExtractosPantalla, ShowsTheWholeYearAndStoresItsBalances) {
  ListadoAbierto e;
  e.elige("57200001");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Extracto de la subcuenta Banco - 57200001");
    EXPECT_EQ(columna(t, 1), QStringList({"3", "1", "2", "4"}));
    EXPECT_EQ(columna(t, 2), QStringList({"05/01/2003", "10/01/2003", "10/01/2003", "20/02/2003"}));
    EXPECT_EQ(columna(t, 4), QStringList({"30,00", "100,00", "100,00", "0,00"}));
    EXPECT_EQ(columna(t, 5), QStringList({"0,00", "0,00", "0,00", "-50,00"}));
    EXPECT_EQ(columna(t, 6), QStringList({"30,00", "130,00", "230,00", "180,00"}));
    // Each line is rounded before it is added.
    EXPECT_EQ(e.saldos("57200001"), QStringList({"30", "130", "230", "180"}));
    t.escape();
  });
  EXPECT_EQ(e.saldos("57000001"), QStringList({"", ""}));
  EXPECT_TRUE(e.ctx.sesion.ValorElegido.isEmpty());

  // A line that has changed since is told by the next one.
  e.cambia(QStringLiteral("Select * from Diario where NAsiento=3 and DH='D'"),
           QStringLiteral("Importe"), 40);
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"),
            [](Teclado& t) { t.pulsa("CmdSalir"); });
  EXPECT_EQ(e.saldos("57200001"), QStringList({"40", "140", "240", "190"}));
}

TEST(FrmExtractosPantalla, OpensOnItsLastLine) {
  ListadoAbierto e;
  for (int i = 10; i < 70; ++i) e.asiento(i, QDate(2003, 3, 1), "57200001", "57000001", 1);
  e.elige("57200001");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [](Teclado& t) {
    auto& rejilla = t.control<Rejilla>("GridExtracto");
    EXPECT_EQ(rejilla.filaActual(), 63);
    const QRect celda = rejilla.visualRect(rejilla.currentIndex());
    EXPECT_TRUE(rejilla.viewport()->rect().contains(celda.center())) << celda.y();
    t.escape();
  });
}

TEST(FrmExtractosPantalla, NeedsAWholeSubcuenta) {
  ListadoAbierto e;
  e.t->escribe("TxtSubcuenta", QStringLiteral("5720000"));
  for (const auto& [entrada, que] :
       {std::pair("MnuExtractos", "extracto"), std::pair("MnuAcumulados", "acumulado")}) {
    e.guion.esperaMensaje(
        QStringLiteral("Para visualizar un %1 tiene que tener una cuenta en el diario")
            .arg(QLatin1String(que)),
        QStringLiteral("Error de selección"));
    e.menu(entrada);
  }
}

TEST(FrmExtractosPantalla, TicksOffAndFinds) {
  ListadoAbierto e;
  e.elige("57200001");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    auto& rejilla = t.control<Rejilla>("GridExtracto");
    t.tecla(Qt::Key_Home, Qt::ControlModifier);
    t.tecla(Qt::Key_Down);
    t.teclea(QStringLiteral(" "));
    EXPECT_EQ(columna(t, 0), QStringList({"", "X", "", ""}));
    EXPECT_EQ(e.valor("Select Punteo from Diario where NAsiento=1 and DH='D'"), "X");
    EXPECT_EQ(rejilla.filaActual(), 1);
    t.teclea(QStringLiteral(" "));
    EXPECT_EQ(e.valor("Select Punteo from Diario where NAsiento=1 and DH='D'"), "");

    // A date as it is typed everywhere; the first line from it on.
    e.guion.esperaEntrada(QStringLiteral("Introduzca una fecha a localizar"),
                          QStringLiteral("1102"));
    t.tecla(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(rejilla.valor("NAsiento"), "4");
    e.guion.esperaEntrada(QStringLiteral("Introduzca una fecha a localizar"),
                          QStringLiteral("06/01/2003"));
    t.pulsa("LocalizarFecha");
    EXPECT_EQ(rejilla.valor("NAsiento"), "1");
    // What is no date, and no answer, isn't taken for today.
    e.reloj.ponEn(QDate(2003, 1, 31));
    for (const std::optional<QString>& ninguna : {std::optional<QString>(), {"31/02"}, {"enero"}}) {
      e.guion.esperaEntrada(QStringLiteral("Introduzca una fecha a localizar"), ninguna);
      t.tecla(Qt::Key_B, Qt::ControlModifier);
      EXPECT_EQ(rejilla.valor("NAsiento"), "1");
    }
    // Only a marked line is taken to its asiento by key or button.
    t.tecla(Qt::Key_V, Qt::ControlModifier);
    t.pulsa("ImpresionEntreCuentas");
    t.escape();
  });
}

TEST(FrmExtractosPantalla, GoesToTheAsientoUnlessTicking) {
  ListadoAbierto e;
  e.elige("57200001");
  e.t->pulsa("CmdActivaPunteo");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    dobleClicEnFila(t, 2);
    EXPECT_EQ(columna(t, 0), QStringList({"", "", "X", ""}));
    t.escape();
  });
  e.t->pulsa("CmdCerrarPunteo");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    e.guion.esperaDialogo(QStringLiteral("FrmAsiento"), [](Teclado& asiento) {
      EXPECT_EQ(asiento.forma().windowTitle(), "10/01/2003");
      asiento.pulsa("CmdSalir");
    });
    t.control<Rejilla>("GridExtracto").setFocus();
    t.tecla(Qt::Key_Home, Qt::ControlModifier);
    t.tecla(Qt::Key_Down);
    t.tecla(Qt::Key_Down);
    t.tecla(Qt::Key_V, Qt::ControlModifier);  // the marked one
    e.guion.esperaDialogo(QStringLiteral("FrmAsiento"), [](Teclado& asiento) {
      EXPECT_EQ(asiento.textoDe("TxtAsiento"), "4");
      asiento.pulsa("CmdVerAsiento");
    });
    dobleClicEnFila(t, 3);
    EXPECT_FALSE(t.forma().isVisible());
  });
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "4");
  auto& apuntes = e.t->control<Rejilla>("GrdApuntes");
  ASSERT_EQ(apuntes.filas(), 2);
  EXPECT_EQ(apuntes.valor("NAsiento"), "4");
}

TEST(FrmExtractosPantalla, WithoutLinesItOpensEmpty) {
  ListadoAbierto e;
  e.inserta(QStringLiteral("Subcuentas"), {{QStringLiteral("Subcuenta"), "57200002"},
                                           {QStringLiteral("Cuenta"), "572"},
                                           {QStringLiteral("Descripcion"), "Otro banco"}});
  e.elige("57200002");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    EXPECT_EQ(t.control<Rejilla>("GridExtracto").filas(), 0);
    t.teclea(QStringLiteral(" "));
    t.tecla(Qt::Key_V, Qt::ControlModifier);
    t.escape();
  });
}

TEST(FrmExtractos, PrintsTheBalancesThatTheExtractLeft) {
  ListadoAbierto e;
  e.elige("57200001");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    e.guion.esperaDialogo(QStringLiteral("FrmExtractos"), [&](Teclado& mayor) {
      EXPECT_EQ(mayor.forma().windowTitle(), "Edicion de libro mayor");
      EXPECT_EQ(mayor.textoDe("TxtSubcuenta"), "57200001");
      EXPECT_EQ(mayor.textoDe("TxtDesde"), "01/01/2003");
      EXPECT_EQ(mayor.textoDe("TxtHasta"), "31/12/2003");
      mayor.teclea(QStringLiteral("1001"));
      mayor.intro();
      EXPECT_EQ(mayor.textoDe("TxtDesde"), "10/01/2003");
      EXPECT_EQ(mayor.enfocado(), "TxtHasta");
      mayor.intro();
      EXPECT_EQ(mayor.enfocado(), "CmdAceptar");
      mayor.intro();
      const LibroImpreso libro = leeVista(e.guion);
      EXPECT_TRUE(mayor.forma().isVisible());
      EXPECT_EQ(libro.titulo, "Listado de libro Mayor");
      EXPECT_FALSE(libro.lineas().filter("Desde : 10/01/2003 ~ Hasta : 31/12/2003").isEmpty());
      EXPECT_TRUE(libro.lineas().filter("05/01/2003").isEmpty());
      EXPECT_TRUE(libro.linea("10/01/2003 1 ").endsWith(" 130,00"))
          << qPrintable(libro.linea("10"));
      EXPECT_TRUE(libro.linea("20/02/2003 4 ").endsWith(" 50,00 180,00"));
      activar(mayor.forma());
      mayor.pulsa("CmdCancelar");
    });
    t.tecla(Qt::Key_P, Qt::ControlModifier);
    t.escape();
  });
}

TEST(FrmExtractoEntraCtas, WritesTheBalancesOfItsRangeAsTheyAre) {
  ListadoAbierto e;
  e.elige("57200001");
  e.dialogo("MnuExtractos", QStringLiteral("FrmExtractosPantalla"), [&](Teclado& t) {
    e.guion.esperaDialogo(QStringLiteral("FrmExtractos"), [&](Teclado& mayor) {
      e.guion.esperaDialogo(QStringLiteral("FrmExtractoEntraCtas"), [&](Teclado& entre) {
        EXPECT_EQ(entre.textoDe("TxtHasta"), "31/12/2003");
        EXPECT_FALSE(entre.visible("Bar"));
        // Nothing in the range: nobody catches it but the form itself.
        entre.escribe("TxtSubcuentaDesde", QStringLiteral("9."));
        entre.intro();
        EXPECT_EQ(entre.textoDe("TxtSubcuentaDesde"), "90000000");
        EXPECT_EQ(entre.enfocado(), "TxtSubcuentaHasta");
        entre.teclea(QStringLiteral("9.1"));
        e.guion.esperaMensaje("Error 3021: " + ErrorEjecucion(3021).descripcion(),
                              QStringLiteral("Librano"));
        entre.pulsa("CmdAceptar");
        EXPECT_EQ(vistaAbierta(), nullptr);

        entre.escribe("TxtSubcuentaDesde", QStringLiteral("57.1"));
        entre.escribe("TxtSubcuentaHasta", QStringLiteral("572.1"));
        entre.escribe("TxtDesde", QStringLiteral("01/02/2003"));
        entre.pulsa("CmdAceptar");
        EXPECT_FALSE(entre.visible("Bar"));
        const LibroImpreso libro = leeVista(e.guion);
        EXPECT_EQ(libro.titulo, "Listado de libro Mayor");
        // From the whole year, whatever the limits.
        EXPECT_EQ(libro.lineas().filter("Sumas y saldo").size(), 2);
        EXPECT_TRUE(libro.lineas().filter("20/02/2003 4").at(1).endsWith(" 50,00 180,01"));
        activar(entre.forma());
        entre.escape();
      });
      mayor.pulsa("CmdSeleccion");
    });
    t.pulsa("CmdImpresos");
    t.pulsa("CmdSalir");
  });
  EXPECT_EQ(e.saldos("57200001"), QStringList({"30", "130,004", "230,008", "180,008"}));
  EXPECT_EQ(e.saldos("57000001"), QStringList({"-30", "20"}));
  EXPECT_EQ(e.saldos("43000001"), QStringList({"", ""}));
}

TEST(FrmAcumulados, SumsMonthByMonth) {
  ListadoAbierto e;
  e.elige("57000001");
  e.dialogo("MnuAcumulados", QStringLiteral("FrmAcumulados"), [](Teclado& t) {
    const auto& grid = t.control<QTableWidget>("Grid");
    ASSERT_EQ(grid.rowCount(), 13);
    const std::pair<int, QStringList> filas[] = {{0, {"", "Debe", "Haber", "Saldo mes", "Saldo"}},
                                                 {1, {"ENE", "0,00", "-30,00", "-30,00", "-30,00"}},
                                                 {2, {"FEB", "50,00", "0,00", "50,00", "20,00"}},
                                                 {3, {"MAR", "0,00", "0,00", "0,00", "20,00"}},
                                                 {12, {"DIC", "0,00", "0,00", "0,00", "20,00"}}};
    for (const auto& [fila, esperado] : filas) {
      QStringList visto;
      for (int c = 0; c < 5; ++c) visto << grid.item(fila, c)->text().trimmed();
      EXPECT_EQ(visto, esperado) << fila;
    }
    t.escape();
  });
}

}  // namespace
