// The entry line, by its keys.
#include "journal/menuabierto.h"

namespace {

const QString kFecha = "02/01/2003";
const QString kAlDebe = "Le faltan datos para entrar la partida al debe";
const QString kAlHaber = "Le faltan datos para entrar la partida al haber";

class FrmMenuLinea : public MenuAbierto {
 protected:
  FrmMenuLinea() : menu(abreMenu()) {}

  // What the amount proposes when it is entered.
  QString ofrecido() {
    t->enfoca("TxtDebeHaber");
    return t->textoDe("TxtDebeHaber").trimmed();
  }
  size_t lineas() const { return filas("Select NLinea from Diario").size(); }

  FrmMenu& menu;
};

TEST_F(FrmMenuLinea, NiegaUnaLineaIncompleta) {
  linea("57000001", "100", {}, kFecha);
  vacia("TxtConcepto");
  guion.esperaMensaje(kAlHaber, "Error");
  t->pulsa("CmdLinHaber");
  t->escribe("TxtConcepto", "Apunte");
  vacia("TxtSubcuenta");
  guion.esperaMensaje(kAlDebe, "Error");
  t->pulsa("CmdLinDebe");
  t->escribe("TxtSubcuenta", "57000001");
  t->escribe("TxtDebeHaber", "0");
  guion.esperaMensaje(kAlHaber, "Error");
  t->teclea("+");

  // An empty amount isn't an order to post: the first Enter only shows the zero.
  vacia("TxtDebeHaber");
  t->intro();
  EXPECT_EQ(t->enfocado(), "TxtDebeHaber");
  EXPECT_EQ(t->textoDe("TxtDebeHaber"), "0,00 ");
  guion.esperaMensaje(kAlDebe, "Error");
  t->intro();
  EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
  EXPECT_EQ(lineas(), 1u);
  EXPECT_EQ(contador("NLinDiario"), "1");

  // What can't be an amount doesn't get in; the keypad's point is the decimal sign.
  const int antes = menu.pitidos();
  t->escribe("TxtDebeHaber", "1a2-.5");
  EXPECT_EQ(t->textoDe("TxtDebeHaber"), "12,5");
  EXPECT_EQ(menu.pitidos(), antes + 2);
  t->escribe("TxtAsiento", "7x-");
  EXPECT_EQ(t->textoDe("TxtAsiento"), "7");
}

// Whatever the company's amounts look like, they can be offered, typed over, posted and squared.
TEST_F(FrmMenuLinea, PostsUnderAnyMask) {
  const std::pair<const char*, const char*> casos[] = {{"#,###", "1.500"},
                                                       {"#,##0.00 €;(#,##0.00 €)", "1.500,00 €"},
                                                       {"$ #,##0.00;-$ #,##0.00", "$ 1.500,00"},
                                                       {"#,##0.00 \"Pts\"", "1.500,00 Pts"}};
  linea("57000001", "7", {}, kFecha);  // another asiento's lack is not offered
  int asiento = 1;
  for (const auto& [mascara, ofrecido_] : casos) {
    SCOPED_TRACE(mascara);
    ctx.sesion.MascaraImporte = mascara;
    linea("57000001", "1500", {}, kFecha);
    EXPECT_EQ(ofrecido(), ofrecido_);
    t->teclea("+");
    linea("43000001", {}, "1500");
    EXPECT_EQ(ofrecido(), ofrecido_);
    t->intro();
    EXPECT_EQ(t->textoDe("TxtAsientoDescuadre"), Format(0.0, mascara));
    EXPECT_EQ(ofrecido(), Format(0.0, mascara).trimmed());
    t->enfoca("TxtSubcuenta");
    ++asiento;
    EXPECT_EQ(
        filas(QString("Select DH, Importe from Diario where NAsiento = %1 order by NLinea")
                  .arg(asiento)),
        (std::vector<QStringList>{{"D", "1500"}, {"H", "-1500"}, {"H", "-1500"}, {"D", "1500"}}));
  }
  // Beyond 10^12 sums would not be exact to the cent.
  guion.esperaMensaje("Error 6: El número es demasiado grande: importe", "Librano");
  linea("57000001", "1000000000000", {}, kFecha);
  EXPECT_EQ(lineas(), 17u);
}

// Enter after a click on a button of the line goes on with the typing.
TEST_F(FrmMenuLinea, GoesOnTypingAfterItsButtons) {
  linea("57000001", "100", {}, kFecha);
  t->pulsa("CmdLinDebe");
  t->intro();
  EXPECT_EQ(lineas(), 2u);
  EXPECT_EQ(t->enfocado(), "TxtConcepto");
  t->pulsa("CmdLinAsiento");
  const QString asiento = t->textoDe("TxtAsiento");
  EXPECT_EQ(t->enfocado(), "TxtFecha");
  t->intro();
  EXPECT_EQ(t->textoDe("TxtAsiento"), asiento);
  EXPECT_EQ(totales("Asiento").constFirst(), "0,00 ");

  // A date that was set and never left is looked at before a line is posted on it.
  t->enfoca("TxtDebeHaber");
  t->teclea("25");
  t->control<QLineEdit>("TxtFecha").setText("31/12/2002");
  guion.esperaMensaje("La fecha introducida no es la del año actual", "Error");
  t->intro();
  EXPECT_EQ(t->textoDe("TxtFecha"), "01/01/2003");
  EXPECT_EQ(lineas(), 2u);
  t->enfoca("TxtDebeHaber");
  t->entra("25");
  EXPECT_EQ(lineas(), 3u);
}

// The concepts: a click selects the text, the wheel leaves it, the list has codes and no blanks.
TEST_F(FrmMenuLinea, OffersTheConceptsWithTheirCodes) {
  cambia("Select * from Conceptos where NConcepto='07'", "Descripcion", QString(50, 'W'));
  abreMenu();
  auto& concepto = t->control<QComboBox>("TxtConcepto");
  EXPECT_EQ(concepto.count(), 1);
  EXPECT_LT(t->forma().minimumSizeHint().width(), 1000);
  t->escribe("TxtConcepto", "Nuestra");
  t->enfoca("TxtFecha");
  QTest::mouseClick(concepto.lineEdit(), Qt::LeftButton, {}, QPoint(20, 5));
  EXPECT_EQ(concepto.lineEdit()->selectedText(), "Nuestra");
  const QPointF medio = concepto.rect().center();
  QWheelEvent rueda(medio, concepto.mapToGlobal(medio), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(&concepto, &rueda);
  EXPECT_EQ(t->textoDe("TxtConcepto"), "Nuestra");
}

TEST_F(FrmMenuLinea, CompletaYPoneEnDudaLasFechas) {
  const QString deOtroAno = "La fecha introducida no es la del año actual";
  const QString cerrado = "Usted no puede modificar ningun apunte anterior a la fecha 15/03/2003";
  const std::tuple<const char*, const char*, const char*, QString> casos[] = {
      {"0502", "", "05/02/2003", {}},
      {"nada", "", "15/03/2003", {}},
      {"150299", "", "01/01/2003", deOtroAno},
      // By text, day first: January passes a limit in March, June doesn't.
      {"2001", "15/03/2003", "20/01/2003", {}},
      {"1006", "15/03/2003", "10/06/2003", cerrado},
  };
  for (const auto& [tecleado, limite, fecha, aviso] : casos) {
    ctx.sesion.FechaNoModificar = limite;
    t->escribe("TxtFecha", tecleado);
    if (!aviso.isEmpty()) guion.esperaMensaje(aviso, "Error");
    t->atras();
    EXPECT_EQ(t->textoDe("TxtFecha"), fecha) << tecleado;
  }
  // The last one sent the bookkeeper on, but the line can be posted.
  EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
}

TEST_F(FrmMenuLinea, CambiaElNombreDeUnaSubcuentaSiSeResponde) {
  t->teclea("43000001");
  // The question comes each time the name is left.
  for (const auto& [respuesta, queda] :
       {std::pair(false, "Almacenes Ruiz"), {true, "Ruiz e Hijos"}}) {
    t->escribe("TxtNombreCuenta", "Ruiz e Hijos");
    guion.esperaPregunta("¿Desea cambiar el nombre de la subcuenta?", respuesta, "Eliminar");
    t->intro();
    EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
    EXPECT_EQ(valor("Select Descripcion from Subcuentas where Subcuenta='43000001'"), queda);
    EXPECT_EQ(t->textoDe("TxtNombreCuenta"), queda);  // the real one
  }
  // A name with an apostrophe is looked for; in a code it spoils the search and nothing else.
  t->entra("TxtSubcuenta", "d'");
  EXPECT_TRUE(errores().isEmpty());
  t->entra("TxtSubcuenta", "43'");
  ASSERT_EQ(errores().size(), 1);
  EXPECT_TRUE(errores().constLast().contains("TxtSubcuenta_LostFocus - FrmMenu"));
}

TEST_F(FrmMenuLinea, CambiaLosCodigosDeConceptoPorSusTextos) {
  cambia("Select * from Conceptos where NConcepto='07'", "Descripcion", "Su factura nº");
  t->entra("TxtConcepto", "07");
  EXPECT_EQ(t->textoDe("TxtConcepto"), "Su factura nº");
  EXPECT_EQ(t->enfocado(), "TxtConcepto");
  t->entra(" 15");
  EXPECT_EQ(t->textoDe("TxtConcepto"), "Su factura nº 15");
  EXPECT_EQ(t->enfocado(), "TxtDebeHaber");
  // Neither a code that isn't there nor one without a text.
  for (const char* codigo : {"7", "08"}) {
    t->escribe("TxtConcepto", codigo);
    guion.esperaMensaje("El código del concepto escrito no existe intente con otro", "Error");
    t->intro();
    EXPECT_EQ(t->textoDe("TxtConcepto"), "");
  }
  t->entra("TxtConcepto", "0'");
  ASSERT_EQ(errores().size(), 1);
  EXPECT_TRUE(errores().constLast().contains("TxtConcepto_KeyPress - FrmMenu"));
}

TEST_F(FrmMenuLinea, LimpiaLaPantallaYPasaDeNumeroComoQuiereLaEmpresa) {
  cambia("Empresa", "Limpiar", true);
  cambia("Empresa", "Controlar", true);
  abreMenu();
  const auto& rejilla = t->control<Rejilla>("GrdApuntes");
  const auto dejaAsiento = [&] {
    t->enfoca("TxtAsiento");
    t->intro();
    return t->textoDe("TxtAsiento");
  };
  // Left empty it takes a number, and as that one reads as square, another.
  EXPECT_EQ(dejaAsiento(), "2");
  t->enfoca("TxtSubcuenta");
  linea("57000001", "100", {});
  EXPECT_EQ(dejaAsiento(), "2");
  EXPECT_EQ(rejilla.filas(), 1);
  t->enfoca("TxtDebeHaber");
  t->teclea("+");
  EXPECT_EQ(rejilla.filas(), 2);
  EXPECT_EQ(rejilla.filaActual(), 1);
  EXPECT_EQ(dejaAsiento(), "3");
  EXPECT_EQ(contador("Asiento"), "4");
  EXPECT_EQ(dejaAsiento(), "4");
  EXPECT_EQ(rejilla.filas(), 0);
  EXPECT_EQ(totales("Marcado").constFirst(), "0,00 ");
  t->pulsa("CmdRecargar");
  EXPECT_EQ(rejilla.filas(), 2);
}

TEST_F(FrmMenuLinea, TomaLaCeldaArrastradaDeLaRejilla) {
  for (const char* campo :
       {"TxtAsiento", "TxtFecha", "TxtSubcuenta", "TxtConcepto", "TxtDebeHaber"}) {
    t->suelta(campo, "43000001");
    EXPECT_EQ(t->textoDe(campo), "43000001") << campo;
  }
  EXPECT_EQ(t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");
}

}  // namespace
