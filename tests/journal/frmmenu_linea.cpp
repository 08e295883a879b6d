// The entry line, by its keys.
#include "journal/menuabierto.h"

namespace {

const QString kFecha = "02/01/2003";
const QString kAlDebe = "Le faltan datos para entrar la partida al debe";
const QString kAlHaber = "Le faltan datos para entrar la partida al haber";

struct LineaAbierta : MenuAbierto {
  explicit LineaAbierta(const DatosEmpresa& datos = empresaDePrueba())
      : MenuAbierto(datos), menu(abreMenu()) {}

  // What the amount proposes when it is entered.
  QString ofrecido() {
    t->enfoca("TxtDebeHaber");
    return t->textoDe("TxtDebeHaber").trimmed();
  }
  size_t lineas() const { return filas("Select NLinea from Diario").size(); }

  FrmMenu& menu;
};

TEST(FrmMenuLinea, PostsByKeysAndByButtons) {
  LineaAbierta e;
  e.linea("57000001", "1234,5", {}, kFecha);
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  EXPECT_EQ(e.t->textoDe("TxtSubcuenta"), "57000001");
  EXPECT_EQ(e.totales("Asiento"), QStringList({"1.234,50 ", "0,00 ", "1.234,50 "}));
  e.linea("43000001", {}, "1000");
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
  LineaAbierta e;
  e.linea("57000001", "100", {}, kFecha);
  e.vacia("TxtConcepto");
  e.guion.esperaMensaje(kAlHaber, "Error");
  e.t->pulsa("CmdLinHaber");
  e.t->escribe("TxtConcepto", "Apunte");
  e.vacia("TxtSubcuenta");
  e.guion.esperaMensaje(kAlDebe, "Error");
  e.t->pulsa("CmdLinDebe");
  e.t->escribe("TxtSubcuenta", "57000001");
  e.t->escribe("TxtDebeHaber", "0");
  e.guion.esperaMensaje(kAlHaber, "Error");
  e.t->teclea("+");

  // An empty amount isn't an order to post: the first Enter only shows the zero.
  e.vacia("TxtDebeHaber");
  e.t->intro();
  EXPECT_EQ(e.t->enfocado(), "TxtDebeHaber");
  EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), "0,00 ");
  e.guion.esperaMensaje(kAlDebe, "Error");
  e.t->intro();
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
  EXPECT_EQ(e.lineas(), 1u);
  EXPECT_EQ(e.contador("NLinDiario"), "1");

  // What can't be an amount doesn't get in; the keypad's point is the decimal sign.
  const int antes = e.menu.pitidos();
  e.t->escribe("TxtDebeHaber", "1a2-.5");
  EXPECT_EQ(e.t->textoDe("TxtDebeHaber"), "12,5");
  EXPECT_EQ(e.menu.pitidos(), antes + 2);
  e.t->escribe("TxtAsiento", "7x");
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "7");
}

TEST(FrmMenuLinea, OffersWhatSquaresTheAsiento) {
  LineaAbierta e;
  EXPECT_EQ(e.ofrecido(), "0,00");
  // Whatever side is open, the amount is offered positive and the key gives the side.
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", "1250.75", {}, kFecha);
  EXPECT_EQ(e.ofrecido(), "1.250,75");
  e.t->teclea("+");
  EXPECT_EQ(e.ofrecido(), "0,00");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", {}, "80", kFecha);
  EXPECT_EQ(e.ofrecido(), "80,00");
  e.t->intro();
  EXPECT_EQ(e.totales("Asiento"), QStringList({"80,00 ", "-80,00", "0,00 "}));
  EXPECT_EQ(e.totales("Total"), QStringList({"1.330,75 ", "-1.330,75", "0,00 "}));
}

TEST(FrmMenuLinea, CompletesAndQuestionsDates) {
  const QString deOtroAno = "La fecha introducida no es la del año actual";
  const QString cerrado = "Usted no puede modificar ningun apunte anterior a la fecha 15/03/2003";
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
  LineaAbierta e;
  for (const auto& [tecleado, limite, fecha, aviso] : casos) {
    e.ctx.sesion.FechaNoModificar = limite;
    e.t->escribe("TxtFecha", tecleado);
    if (!aviso.isEmpty()) e.guion.esperaMensaje(aviso, "Error");
    e.t->atras();
    EXPECT_EQ(e.t->textoDe("TxtFecha"), fecha) << tecleado;
  }
  // The last one sent the bookkeeper on, but the line can be posted.
  EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
}

TEST(FrmMenuLinea, FindsSubcuentasAndRenamesThem) {
  LineaAbierta e;
  e.linea("43000001", "100", {}, kFecha);
  e.t->teclea("57.1");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Caja");
  EXPECT_EQ(e.totales("Cuenta").constFirst(), "0,00 ");
  e.t->escribe("TxtSubcuenta", "43000001");  // found while it is typed
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");
  EXPECT_EQ(e.totales("Cuenta").constFirst(), "100,00 ");
  // The question comes each time the name is left.
  for (const auto& [respuesta, queda] :
       {std::pair(false, "Almacenes Ruiz"), {true, "Ruiz e Hijos"}}) {
    e.t->escribe("TxtNombreCuenta", "Ruiz e Hijos");
    e.guion.esperaPregunta("¿Desea cambiar el nombre de la subcuenta?", respuesta, "Eliminar");
    e.t->intro();
    EXPECT_EQ(e.t->enfocado(), "TxtSubcuenta");
    EXPECT_EQ(e.valor("Select Descripcion from Subcuentas where Subcuenta='43000001'"), queda);
  }
  // A quote spoils the search and nothing else.
  e.t->escribe("TxtSubcuenta", "43'");
  e.t->intro();
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().constLast().contains("TxtSubcuenta_LostFocus - FrmMenu"));
}

TEST(FrmMenuLinea, TurnsConceptCodesIntoTheirTexts) {
  LineaAbierta e;
  e.cambia("Select * from Conceptos where NConcepto='07'", "Descripcion", "Su factura nº");
  e.t->escribe("TxtConcepto", "07");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), "Su factura nº");
  EXPECT_EQ(e.t->enfocado(), "TxtConcepto");
  e.t->teclea(" 15");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), "Su factura nº 15");
  EXPECT_EQ(e.t->enfocado(), "TxtDebeHaber");
  // Neither a code that isn't there nor one without a text.
  for (const char* codigo : {"7", "08"}) {
    e.t->escribe("TxtConcepto", codigo);
    e.guion.esperaMensaje("El código del concepto escrito no existe intente con otro", "Error");
    e.t->intro();
    EXPECT_EQ(e.t->textoDe("TxtConcepto"), "");
  }
  e.t->escribe("TxtConcepto", "0'");
  e.t->intro();
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().constLast().contains("TxtConcepto_KeyPress - FrmMenu"));
}

TEST(FrmMenuLinea, ClearsTheScreenAndMovesTheNumberOnAsTheCompanyWishes) {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.Limpiar = true;
  datos.Controlar = true;
  LineaAbierta e(datos);
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  const auto dejaAsiento = [&e] {
    e.t->enfoca("TxtAsiento");
    e.t->intro();
    return e.t->textoDe("TxtAsiento");
  };
  // Left empty it takes a number, and as that one reads as square, another.
  EXPECT_EQ(dejaAsiento(), "2");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", "100", {});
  EXPECT_EQ(dejaAsiento(), "2");
  EXPECT_EQ(rejilla.filas(), 1);
  e.t->enfoca("TxtDebeHaber");
  e.t->teclea("+");
  EXPECT_EQ(rejilla.filas(), 2);
  EXPECT_EQ(rejilla.filaActual(), 1);
  EXPECT_EQ(dejaAsiento(), "3");
  EXPECT_EQ(e.contador("Asiento"), "4");
  EXPECT_EQ(dejaAsiento(), "4");
  EXPECT_EQ(rejilla.filas(), 0);
  EXPECT_EQ(e.totales("Marcado").constFirst(), "0,00 ");
  e.t->pulsa("CmdRecargar");
  EXPECT_EQ(rejilla.filas(), 2);
}

TEST(FrmMenuLinea, HandsALineOfIVAOverToItsInvoice) {
  LineaAbierta e;
  const auto preguntaPor = [&e](const char* clase) {
    e.guion.esperaPregunta(QString("La partida que introduce corresponde a un apunte de IVA ¿desea "
                                   "crear un asiento de Iva %1 en este momento?")
                               .arg(clase),
                           true, "IVA");
  };
  // Without the dialog a Yes deletes nothing.
  e.linea("57000001", "100", {}, kFecha);
  e.t->escribe("TxtSubcuenta", "47700001");
  e.t->enfoca("TxtAsiento");
  preguntaPor("Repercutido");
  e.t->intro();
  EXPECT_EQ(e.lineas(), 1u);

  e.formularios->registra("FrmIVASR", [](Contexto& c) { return std::make_unique<Formulario>(c); });
  const struct {
    const char* asiento;
    const char* subcuenta;
    const char* clase;
    int codigo;
  } casos[] = {{"1", "47200001", "Soportado", 6}, {"2", "47700001", "Repercutido", 7}};
  for (const auto& caso : casos) {
    e.t->escribe("TxtSubcuenta", caso.subcuenta);
    e.t->escribe("TxtAsiento", caso.asiento);
    preguntaPor(caso.clase);
    e.guion.esperaDialogo("FrmIVASR", [&](Teclado& factura) {
      EXPECT_EQ(e.ctx.sesion.CodigoLlamada, caso.codigo);
      EXPECT_EQ(e.ctx.sesion.ValorElegido, caso.asiento);
      // The lines of an invoice's asiento are gone, those of the first asiento never.
      EXPECT_EQ(e.lineas(), 1u);
      factura.cierra();
    });
    e.t->intro();
    EXPECT_EQ(e.ctx.sesion.ValorElegido, "");
    e.t->enfoca("TxtSubcuenta");
    e.linea("57000001", "50", {}, kFecha);
  }
}

TEST(FrmMenuLinea, TakesTheCellDraggedFromTheGrid) {
  LineaAbierta e;
  for (const char* campo :
       {"TxtAsiento", "TxtFecha", "TxtSubcuenta", "TxtConcepto", "TxtDebeHaber"}) {
    e.t->suelta(campo, "43000001");
    EXPECT_EQ(e.t->textoDe(campo), "43000001") << campo;
  }
  EXPECT_EQ(e.t->textoDe("TxtNombreCuenta"), "Almacenes Ruiz");
}

}  // namespace
