// The entry line, by its keys.
#include "accounts/registro.h"
#include "foundation/formato.h"
#include "journal/menuabierto.h"

namespace {

const QString kFecha = QStringLiteral("02/01/2003");

TEST(FrmMenuLinea, PostsByKeysAndByButtons) {
  MenuAbierto e;
  e.abreMenu();
  e.linea("57000001", QStringLiteral("1234,5"), {}, kFecha);
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "57000001");
  EXPECT_EQ(e.totales("Asiento"), QStringList({"1.234,50 ", "0,00 ", "1.234,50 "}));
  e.linea("43000001", {}, QStringLiteral("1000"));
  EXPECT_EQ(e.totales("Cuenta"), QStringList({"0,00 ", "-1.000,00", "-1.000,00"}));
  // The same line again on each side, by the buttons: nothing of it was cleared.
  e.t->pulsa("CmdLinDebe");
  e.t->pulsa("CmdLinHaber");

  EXPECT_EQ(
      e.filas("Select NLinea, NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe, Punteo, "
              "TipoDiario from Diario order by NLinea"),
      (std::vector<QStringList>{{"0", "1", kFecha, "57000001", "Apunte", "D", "1234,5", "", "1"},
                                {"1", "1", kFecha, "43000001", "Apunte", "H", "-1000", "", "1"},
                                {"2", "1", kFecha, "43000001", "Apunte", "D", "1000", "", "1"},
                                {"3", "1", kFecha, "43000001", "Apunte", "H", "-1000", "", "1"}}));
  EXPECT_EQ(e.filas("Select NLinea from Diario where ApunteIVA is null").size(), 4u);
  EXPECT_EQ(e.contador("NLinDiario"), "4");
  EXPECT_EQ(e.contador("Asiento"), "2");
  EXPECT_EQ(e.totales("Total"), QStringList({"2.234,50 ", "-2.000,00", "234,50 "}));
  EXPECT_EQ(e.totales("Cuenta"), QStringList({"1.000,00 ", "-2.000,00", "-1.000,00"}));
  EXPECT_EQ(e.totales("Marcado"), e.totales("Asiento"));
}

TEST(FrmMenuLinea, RefusesAnIncompleteLine) {
  MenuAbierto e;
  FrmMenu& forma = e.abreMenu();
  e.linea("57000001", QStringLiteral("100"), {}, kFecha);
  const QString alDebe = QStringLiteral("Le faltan datos para entrar la partida al debe");
  const QString alHaber = QStringLiteral("Le faltan datos para entrar la partida al haber");

  e.vacia("TxtConcepto");
  e.guion.esperaMensaje(alHaber, QStringLiteral("Error"));
  e.t->pulsa("CmdLinHaber");
  e.t->escribe("TxtConcepto", QStringLiteral("Apunte"));
  e.vacia("TxtSubcuenta");
  e.guion.esperaMensaje(alDebe, QStringLiteral("Error"));
  e.t->pulsa("CmdLinDebe");
  e.t->escribe("TxtSubcuenta", QStringLiteral("57000001"));
  e.t->escribe("TxtDebeHaber", QStringLiteral("0"));
  e.guion.esperaMensaje(alHaber, QStringLiteral("Error"));
  e.t->teclea(QStringLiteral("+"));

  // An empty amount isn't an order to post: the first Enter only shows the zero.
  e.vacia("TxtDebeHaber");
  e.t->intro();
  EXPECT_EQ(e.t->enfocado(), "TxtDebeHaber");
  EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), "0,00 ");
  e.guion.esperaMensaje(alDebe, QStringLiteral("Error"));
  e.t->intro();
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  EXPECT_EQ(e.filas("Select NLinea from Diario").size(), 1u);
  EXPECT_EQ(e.contador("NLinDiario"), "1");

  // What can't be an amount doesn't get in; the keypad's point is the decimal sign.
  const int antes = forma.pitidos();
  e.t->escribe("TxtDebeHaber", QStringLiteral("1a2-.5"));
  EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), "12,5");
  EXPECT_EQ(forma.pitidos(), antes + 2);
  e.t->escribe("TxtAsiento", QStringLiteral("7x"));
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "7");
}

TEST(FrmMenuLinea, OffersWhatSquaresTheAsiento) {
  MenuAbierto e;
  e.abreMenu();
  const auto ofrecido = [&e] {
    e.t->enfoca("TxtDebeHaber");
    return e.t->textoDe("TxtDebeHaber").trimmed();
  };
  EXPECT_EQ(ofrecido(), "0,00");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", QStringLiteral("1250.75"), {}, kFecha);
  EXPECT_EQ(ofrecido(), "1.250,75");
  e.t->teclea(QStringLiteral("+"));
  EXPECT_EQ(ofrecido(), "0,00");
  // Whatever side is open, the amount is offered positive and the key gives the side.
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", {}, QStringLiteral("80"), kFecha);
  EXPECT_EQ(ofrecido(), "80,00");
  e.t->intro();
  EXPECT_EQ(e.totales("Asiento"), QStringList({"80,00 ", "-80,00", "0,00 "}));
  EXPECT_EQ(e.totales("Total"), QStringList({"1.330,75 ", "-1.330,75", "0,00 "}));
}

TEST(FrmMenuLinea, CompletesAndQuestionsDates) {
  MenuAbierto e;
  e.abreMenu();
  const QString deOtroAno = QStringLiteral("La fecha introducida no es la del año actual");
  const QString cerrado =
      QStringLiteral("Usted no puede modificar ningun apunte anterior a la fecha 15/03/2003");
  const struct {
    const char* tecleado;
    const char* limite;
    const char* fecha;
    QString aviso;
  } casos[] = {
      {"0502", "", "05/02/2003", {}},
      {"nada", "", "15/03/2003", {}},
      {"150299", "", "01/01/2003", deOtroAno},
      // By text, day first: January passes a limit in March, June doesn't.
      {"2001", "15/03/2003", "20/01/2003", {}},
      {"1006", "15/03/2003", "10/06/2003", cerrado},
  };
  for (const auto& caso : casos) {
    e.ctx.sesion.FechaNoModificar = QString::fromUtf8(caso.limite);
    e.t->escribe("TxtFecha", QString::fromUtf8(caso.tecleado));
    if (!caso.aviso.isEmpty()) e.guion.esperaMensaje(caso.aviso, QStringLiteral("Error"));
    e.t->atras();
    EXPECT_EQ(e.t->textoDe("TxtFecha"), caso.fecha) << caso.tecleado;
  }
  // The last one sent the bookkeeper on, but the line can be posted.
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
}

TEST(FrmMenuLinea, FindsSubcuentasWhileTypingAndOnLeaving) {
  MenuAbierto e;
  e.abreMenu();
  e.linea("43000001", QStringLiteral("100"), {}, kFecha);
  e.t->teclea(QStringLiteral("57.1"));
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "57000001");
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Caja");
  EXPECT_EQ(e.totales("Cuenta").constFirst(), "0,00 ");
  e.t->escribe("TxtSubcuenta", QStringLiteral("43000001"));
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");
  EXPECT_EQ(e.totales("Cuenta").constFirst(), "100,00 ");

  // Not in the plan, and no dialog to add it: both answers leave the code to be posted as it is.
  const QString alta =
      QStringLiteral("El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ");
  for (const bool respuesta : {false, true}) {
    e.t->escribe("TxtSubcuenta", QStringLiteral("43000009"));
    e.guion.esperaPregunta(alta, respuesta, QStringLiteral("Error"));
    e.t->intro();
    EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "43000009");
    EXPECT_EQ(e.totales("Cuenta"), QStringList({"0,00 ", "0,00 ", "0,00 "}));
  }
  // A quote spoils the search and nothing else.
  e.t->escribe("TxtSubcuenta", QStringLiteral("43'"));
  e.t->intro();
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().constLast().contains("TxtSubcuenta_LostFocus - FrmMenu"));
}

TEST(FrmMenuLinea, LeadsToThePlanAndToANewSubcuenta) {
  MenuAbierto e;
  registraAccounts(*e.formularios);
  e.abreMenu();
  e.t->escribe("TxtSubcuenta", QStringLiteral("alma"));
  e.guion.esperaDialogo(QStringLiteral("FrmVisualizaPlan"), [](Teclado& plan) {
    EXPECT_EQ(plan.textoDe("TxtBusquedaCuentas"), "alma");
    plan.intro();
  });
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "43000001");
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");

  e.t->escribe("TxtSubcuenta", QStringLiteral("57000002"));
  e.guion.esperaPregunta(
      QStringLiteral("El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? "),
      true);
  e.guion.esperaDialogo(QStringLiteral("FrmSubCuentas"), [&e](Teclado& alta) {
    EXPECT_EQ(e.ctx.sesion.CodigoLlamada, 1);
    alta.cierra();
  });
  e.t->intro();
  EXPECT_EQ(e.ctx.sesion.CodigoLlamada, 0);
  EXPECT_EQ(e.ctx.sesion.ValorElegido, "");
}

TEST(FrmMenuLinea, ChangesTheNameOfASubcuentaWhenAnswered) {
  MenuAbierto e;
  e.abreMenu();
  const QString cambiar = QStringLiteral("¿Desea cambiar el nombre de la subcuenta?");
  const QString nombre =
      QStringLiteral("Select Descripcion from Subcuentas where Subcuenta='57000001'");
  e.t->teclea(QStringLiteral("57000001"));
  for (const auto& [respuesta, queda] : {std::pair(false, "Caja"), std::pair(true, "Caja chica")}) {
    e.t->escribe("TxtNombreCuenta", QStringLiteral("Caja chica"));
    e.guion.esperaPregunta(cambiar, respuesta, QStringLiteral("Eliminar"));
    e.t->intro();
    EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
    EXPECT_EQ(e.valor(nombre), queda);
  }
}

TEST(FrmMenuLinea, TurnsConceptCodesIntoTheirTexts) {
  MenuAbierto e;
  e.cambia(QStringLiteral("Select * from Conceptos where NConcepto='07'"),
           QStringLiteral("Descripcion"), "Su factura nº");
  e.abreMenu();
  e.t->escribe("TxtConcepto", QStringLiteral("07"));
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), QStringLiteral("Su factura nº"));
  EXPECT_EQ(e.t->enfocado(), "TxtConcepto");
  e.t->teclea(QStringLiteral(" 15"));
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), QStringLiteral("Su factura nº 15"));
  EXPECT_EQ(e.t->enfocado(), "TxtDebeHaber");
  // Neither a code that isn't there nor one without a text.
  for (const char* codigo : {"7", "08"}) {
    e.t->escribe("TxtConcepto", QString::fromLatin1(codigo));
    e.guion.esperaMensaje(
        QStringLiteral("El código del concepto escrito no existe intente con otro"),
        QStringLiteral("Error"));
    e.t->intro();
    EXPECT_EQ(e.t->textoDe("TxtConcepto"), "");
  }
  e.t->escribe("TxtConcepto", QStringLiteral("0'"));
  e.t->intro();
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().constLast().contains("TxtConcepto_KeyPress - FrmMenu"));
}

TEST(FrmMenuLinea, ClearsTheScreenAndMovesTheNumberOnAsTheCompanyWishes) {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.Limpiar = true;
  datos.Controlar = true;
  MenuAbierto e(datos);
  e.abreMenu();
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  // Left empty it takes a number, and as that one reads as square, another.
  e.t->enfoca("TxtAsiento");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "2");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", QStringLiteral("100"), {});
  e.t->enfoca("TxtAsiento");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "2");
  EXPECT_EQ(rejilla.filas(), 1);
  e.t->enfoca("TxtDebeHaber");
  e.t->teclea(QStringLiteral("+"));
  EXPECT_EQ(rejilla.filas(), 2);
  EXPECT_EQ(rejilla.filaActual(), 1);
  e.t->enfoca("TxtAsiento");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "3");
  EXPECT_EQ(e.contador("Asiento"), "4");
  e.t->enfoca("TxtAsiento");
  e.t->intro();
  EXPECT_EQ(rejilla.filas(), 0);
  EXPECT_EQ(e.totales("Marcado").constFirst(), "0,00 ");
  e.t->pulsa("CmdRecargar");
  EXPECT_EQ(rejilla.filas(), 2);
}

TEST(FrmMenuLinea, HandsALineOfIVAOverToItsInvoice) {
  MenuAbierto e;
  e.abreMenu();
  const QString texto = QStringLiteral(
      "La partida que introduce corresponde a un apunte de IVA ¿desea crear un asiento de Iva %1 "
      "en "
      "este momento?");
  // Without the dialog a Yes deletes nothing.
  e.linea("57000001", QStringLiteral("100"), {}, kFecha);
  e.t->escribe("TxtSubcuenta", QStringLiteral("47700001"));
  e.t->enfoca("TxtAsiento");
  e.guion.esperaPregunta(texto.arg("Repercutido"), true, QStringLiteral("IVA"));
  e.t->intro();
  EXPECT_EQ(e.filas("Select NLinea from Diario").size(), 1u);

  e.formularios->registra(QStringLiteral("FrmIVASR"),
                          [](Contexto& c) { return std::make_unique<Formulario>(c); });
  const struct {
    const char* asiento;
    const char* subcuenta;
    const char* clase;
    int codigo;
    size_t quedan;
  } casos[] = {{"1", "47200001", "Soportado", 6, 1}, {"2", "47700001", "Repercutido", 7, 1}};
  e.t->enfoca("TxtSubcuenta");
  for (const auto& caso : casos) {
    e.t->escribe("TxtSubcuenta", QString::fromLatin1(caso.subcuenta));
    e.t->escribe("TxtAsiento", QString::fromLatin1(caso.asiento));
    e.guion.esperaPregunta(texto.arg(QLatin1String(caso.clase)), true);
    e.guion.esperaDialogo(QStringLiteral("FrmIVASR"), [&](Teclado& factura) {
      EXPECT_EQ(e.ctx.sesion.CodigoLlamada, caso.codigo);
      EXPECT_EQ(e.ctx.sesion.ValorElegido, caso.asiento);
      // The lines of an invoice's asiento are gone, those of the first asiento never.
      EXPECT_EQ(e.filas("Select NLinea from Diario").size(), caso.quedan);
      factura.cierra();
    });
    e.t->intro();
    EXPECT_EQ(e.ctx.sesion.ValorElegido, "");
    e.t->enfoca("TxtSubcuenta");
    e.linea("57000001", QStringLiteral("50"), {}, kFecha);
  }
}

TEST(FrmMenuLinea, TakesTheCellDraggedFromTheGrid) {
  MenuAbierto e;
  e.abreMenu();
  for (const char* campo :
       {"TxtAsiento", "TxtFecha", "TxtSubcuenta", "TxtConcepto", "TxtDebeHaber"}) {
    e.t->suelta(campo, QStringLiteral("43000001"));
    EXPECT_EQ(e.t->textoDe(campo), "43000001") << campo;
  }
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");
}

}  // namespace
