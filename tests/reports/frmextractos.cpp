// The ledger of a subcuenta on screen and on paper, and its accumulated months.

#include "reports/listadoabierto.h"

namespace {

using Extractos = ListadoAbierto;

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

TEST_F(Extractos, MuestranElAnoEnteroYGuardanSusSaldos) {
  elige("57200001");
  dialogo("MnuExtractos", "FrmExtractosPantalla", [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Extracto de la subcuenta Banco - 57200001");
    EXPECT_EQ(columna(t, 1), QStringList({"3", "1", "2", "4"}));
    EXPECT_EQ(columna(t, 2), QStringList({"05/01/2003", "10/01/2003", "10/01/2003", "20/02/2003"}));
    EXPECT_EQ(columna(t, 4), QStringList({"30,00", "100,00", "100,00", "0,00"}));
    EXPECT_EQ(columna(t, 5), QStringList({"0,00", "0,00", "0,00", "-50,00"}));
    EXPECT_EQ(columna(t, 6), QStringList({"30,00", "130,00", "230,00", "180,00"}));
    EXPECT_EQ(t.control<Rejilla>("GridExtracto").filaActual(), 3);
    // Each line is rounded before it is added.
    EXPECT_EQ(saldos("57200001"), QStringList({"30", "130", "230", "180"}));
    t.escape();
  });
  EXPECT_EQ(saldos("57000001"), QStringList({"", ""}));
  EXPECT_TRUE(ctx.sesion.ValorElegido.isEmpty());

  // A line that has changed since is told by the next one.
  cambia("Select * from Diario where NAsiento=3 and DH='D'", "Importe", 40);
  dialogo("MnuExtractos", "FrmExtractosPantalla", [](Teclado& t) { t.pulsa("CmdSalir"); });
  EXPECT_EQ(saldos("57200001"), QStringList({"40", "140", "240", "190"}));

  // Its lines are seen even when another station doesn't let the balances be written.
  const QString ajuste = "Select * from Diario where NAsiento=3 and DH='D'";
  cambia(ajuste, "Importe", 50);
  DBEngine estacion;
  DataControl ajena(estacion);
  ajena.bind(ctx.sesion.rutaEmpresa(), ajuste);
  ajena.Edit();
  ctx.motor.setLockTimeout(10);
  guion.esperaDialogo("FrmExtractosPantalla", [&](Teclado& t) {
    EXPECT_EQ(columna(t, 4), QStringList({"50,00", "100,00", "100,00", "0,00"}));
    EXPECT_EQ(columna(t, 6), QStringList({"40,00", "140,00", "240,00", "190,00"}));
    t.escape();
  });
  guion.esperaMensaje(errorEnCaja(3260, ctx.sesion.rutaEmpresa()), "Librano");
  menu("MnuExtractos");
  ajena.unbind();

  inserta("Subcuentas", subcuentaDe("57200002", "Otro banco"));
  elige("57200002");
  dialogo("MnuExtractos", "FrmExtractosPantalla", [&](Teclado& t) {
    EXPECT_EQ(t.control<Rejilla>("GridExtracto").filas(), 0);
    t.teclea(" ");
    t.tecla(Qt::Key_V, Qt::ControlModifier);
    t.escape();
  });

  t->escribe("TxtSubcuenta", "5720000");
  for (const auto& [entrada, que] :
       {std::pair("MnuExtractos", "extracto"), std::pair("MnuAcumulados", "acumulado")}) {
    guion.esperaMensaje(
        QString("Para visualizar un %1 tiene que tener una cuenta en el diario").arg(que),
        "Error de selección");
    menu(entrada);
  }
}

TEST_F(Extractos, PunteanBuscanYVanAlAsiento) {
  elige("57200001");
  dialogo("MnuExtractos", "FrmExtractosPantalla", [&](Teclado& t) {
    auto& rejilla = t.control<Rejilla>("GridExtracto");
    // A date as it is typed everywhere; the first line from it on. What is no date, and no answer,
    // isn't taken for today.
    reloj.ponEn(QDate(2003, 1, 31));
    const std::pair<std::optional<QString>, const char*> fechas[] = {
        {"1102", "4"}, {"06/01/2003", "1"}, {std::nullopt, "1"}, {"31/02", "1"}, {"enero", "1"}};
    for (const auto& [fecha, asiento] : fechas) {
      guion.esperaEntrada("Introduzca una fecha a localizar", fecha);
      if (fecha)
        t.tecla(Qt::Key_B, Qt::ControlModifier);
      else
        t.pulsa("LocalizarFecha");
      EXPECT_EQ(rejilla.valor("NAsiento"), asiento);
    }
    rejilla.setFocus();
    for (const char* marca : {"X", ""}) {
      t.teclea(" ");
      EXPECT_EQ(columna(t, 0), QStringList({"", marca, "", ""}));
      EXPECT_EQ(valor("Select Punteo from Diario where NAsiento=1 and DH='D'"), marca);
      EXPECT_EQ(rejilla.filaActual(), 1);
    }
    // Only a marked line is taken to its asiento by key or button.
    t.tecla(Qt::Key_V, Qt::ControlModifier);
    t.pulsa("ImpresionEntreCuentas");
    t.escape();
  });
  t->pulsa("CmdActivaPunteo");
  dialogo("MnuExtractos", "FrmExtractosPantalla", [&](Teclado& t) {
    dobleClicEnFila(t, 2);
    EXPECT_EQ(columna(t, 0), QStringList({"", "", "X", ""}));
    t.escape();
  });
  t->pulsa("CmdCerrarPunteo");
  dialogo("MnuExtractos", "FrmExtractosPantalla", [&](Teclado& t) {
    guion.esperaDialogo("FrmAsiento", [](Teclado& asiento) {
      EXPECT_EQ(asiento.textoDe("TxtAsiento"), "2");
      EXPECT_EQ(asiento.forma().windowTitle(), "10/01/2003");
      const auto& lineas = asiento.control<Rejilla>("GridAsiento");
      EXPECT_EQ(lineas.filas(), 2);
      EXPECT_EQ(lineas.texto(1, 3), "-100,00");
      asiento.pulsa("CmdSalir");
    });
    t.tecla(Qt::Key_Up);
    t.tecla(Qt::Key_V, Qt::ControlModifier);  // the marked one
    guion.esperaDialogo("FrmAsiento", [](Teclado& asiento) { asiento.pulsa("CmdVerAsiento"); });
    dobleClicEnFila(t, 3);
    EXPECT_FALSE(t.forma().isVisible());
  });
  EXPECT_EQ(t->textoDe("TxtAsiento"), "4");
  EXPECT_EQ(t->control<Rejilla>("GrdApuntes").filas(), 2);
}

TEST_F(Extractos, EscribenLosSaldosDeSuRangoComoEstan) {
  guion.esperaDialogo("FrmExtractoEntraCtas", [&](Teclado& t) {
    // Nothing in the range: nobody catches it but the form itself.
    t.entra("TxtSubcuentaDesde", "9.");
    EXPECT_EQ(t.textoDe("TxtSubcuentaDesde"), "90000000");
    t.teclea("9.1");
    guion.esperaMensaje(errorEnCaja(3021), "Librano");
    t.pulsa("CmdAceptar");
    EXPECT_EQ(vistaAbierta(), nullptr);

    // Over the whole year, whatever the limits, and not rounded.
    t.escribe("TxtSubcuentaDesde", "57.1");
    t.escribe("TxtSubcuentaHasta", "572.1");
    t.escribe("TxtDesde", "01/02/2003");
    EXPECT_EQ(
        lanza(t).lineas().filter("20/02/2003"),
        QStringList({"20/02/2003 4 Apunte 4 50,00 20,00", "20/02/2003 4 Apunte 4 50,00 180,01"}));
    EXPECT_FALSE(t.visible("Bar"));
    t.escape();
  });
  formularios->mostrar("FrmExtractoEntraCtas");
  EXPECT_EQ(saldos("57200001"), QStringList({"30", "130,004", "230,008", "180,008"}));
  EXPECT_EQ(saldos("57000001"), QStringList({"-30", "20"}));
  EXPECT_EQ(saldos("43000001"), QStringList({"", ""}));
}

TEST_F(Extractos, SumanMesAMes) {
  elige("57000001");
  const auto mira = [&](const std::vector<std::pair<int, QStringList>>& filas) {
    dialogo("MnuAcumulados", "FrmAcumulados", [&](Teclado& t) {
      EXPECT_EQ(t.forma().windowTitle(), "Acumulados de cuentas");
      const auto& grid = t.control<QTableWidget>("Grid");
      ASSERT_EQ(grid.rowCount(), 13);
      for (const auto& [fila, esperado] : filas) {
        QStringList visto;
        for (int c = 0; c < 5; ++c) visto << grid.item(fila, c)->text().trimmed();
        EXPECT_EQ(visto, esperado) << fila;
      }
      t.escape();
    });
  };
  mira({{0, {"", "Debe", "Haber", "Saldo mes", "Saldo"}},
        {1, {"ENE", "0,00", "-30,00", "-30,00", "-30,00"}},
        {2, {"FEB", "50,00", "0,00", "50,00", "20,00"}},
        {12, {"DIC", "0,00", "0,00", "0,00", "20,00"}}});
  // What the mask writes is what is summed, whatever it looks like.
  ctx.sesion.MascaraImporte = "#,### \"Fr\"";
  dialogo("MnuExtractos", "FrmExtractosPantalla", [](Teclado& t) { t.escape(); });
  EXPECT_EQ(saldos("57000001"), QStringList({"-30", "20"}));
  ctx.sesion.MascaraImporte = "#,### €;(#,### €)";
  mira(
      {{1, {"ENE", "€", "(30 €)", "(30 €)", "(30 €)"}}, {2, {"FEB", "50 €", "€", "50 €", "20 €"}}});
}

}  // namespace
