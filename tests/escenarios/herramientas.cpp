// Correcting the quarter's books: lines changed, deleted, found and ticked off, by keys.
#include "escenarios/herramientas.h"

#include "foundation/formato.h"

namespace {

const QString kAlDebe =
    "Atención su partida anterior era en el 'HABER' , ¿Desea cambiarlo al 'DEBE'?";
const QString kAlHaber =
    "Atención su partida anterior era en el 'DEBE' , ¿Desea cambiarlo al 'HABER'?";
const QString kFechaEnTodas =
    "La fecha ha sido modificada, ¿desea que Librano modifique la fecha en cada partida del mismo "
    "asiento?";
const QString kNumeroEnTodas =
    "El asiento ha sido modificado, ¿desea que Librano modifique el número de asiento en cada "
    "partida del mismo asiento?";

class Correcciones : public DiarioDelTrimestre {
 protected:
  // The dialog over a line, by Enter in the grid.
  void partida(int asiento, int linea, const std::function<void(Teclado&)>& paso) {
    enLinea(asiento, linea);
    guion.esperaDialogo("FrmPartida", paso);
    t->intro();
  }
  void elimina(const std::function<void(Teclado&)>& paso) {
    guion.esperaDialogo("FrmEliminaAsiento", paso);
    entrada("MnuEliminarapunte");
  }
  void preguntaAlAceptar(Teclado& d, const QString& texto, bool si) {
    guion.esperaPregunta(texto, si, "Atención");
    acepta(d);
  }
};

TEST_F(Correcciones, ChangesTheSideOfALineOnlyWhenAnswered) {
  const struct {
    const char* lado;
    QString pregunta;
    bool si;
    const char* importe;
    QStringList queda;
    Movido movido;
  } pasos[] = {
      {"D", {}, false, "7000", {"4", "D", "7000"}, {"22600001", 1, -325.40, 0}},
      {"H", kAlHaber, false, "102", {"4", "D", "102"}, {"22600001", 1, -6898, 0}},
      {"H", kAlHaber, true, "103", {"4", "H", "-103"}, {"22600001", 1, -102, -103}},
      {"H", {}, false, "104", {"4", "H", "-104"}, {"22600001", 1, 0, -1}},
      {"D", kAlDebe, false, "105", {"4", "H", "-105"}, {"22600001", 1, 0, -1}},
      {"D", kAlDebe, true, "7325.40", {"4", "D", "7325,4"}, {"22600001", 1, 7325.40, 105}},
  };
  QString antes = "7.325,40 ";
  for (const auto& paso : pasos) {
    partida(3, 0, [&](Teclado& partida) {
      EXPECT_EQ(partida.textoDe("TxtDebeHaber"), antes);  // without its sign on either side
      EXPECT_EQ(partida.textoDe("TxtNombreCuenta"), "Mobiliario de tienda");
      rellena(partida, {{"TxtDebeHaber", paso.importe}, {"TxtDH", paso.lado}});
      antes = Format(Variant(QString(paso.importe).replace('.', ',')), "#,##0.00 ");
      if (paso.pregunta.isNull()) return acepta(partida);
      preguntaAlAceptar(partida, paso.pregunta, paso.si);
    });
    EXPECT_EQ(filas("Select NLinea, DH, Importe from Diario where NLinea=4"), Filas{paso.queda});
    compruebaBalance({paso.movido});
  }
}

TEST_F(Correcciones, RefusesAnIncompleteLineAndForgetsACancelledOne) {
  partida(3, 0, [&](Teclado& partida) {
    for (const auto& [campo, bueno] : {std::pair("TxtAsiento", "3"),
                                       {"TxtSubcuenta", "22600001"},
                                       {"TxtConcepto", "Mostrador"},
                                       {"TxtDebeHaber", "0"}}) {
      rellena(partida, {{campo, {}}});
      guion.esperaMensaje("Le faltan datos para entrar la partida al debe", "Error");
      acepta(partida);
      rellena(partida, {{campo, bueno}});
    }
    rellena(partida, {{"TxtDH", "H"}});
    guion.esperaPregunta(kAlHaber, true, "Atención");
    guion.esperaMensaje("Le faltan datos para entrar la partida al haber", "Error");
    acepta(partida);
    rellena(partida, {{"TxtDebeHaber", "77"}});
    partida.escape();
  });
  EXPECT_EQ(filas("Select Descripcion, Importe from Diario where NLinea=4"),
            (Filas{{"Estanterías y mostrador", "7325,4"}}));
  compruebaBalance();
}

TEST_F(Correcciones, TakesTheOtherLinesOfAnAsientoAlong) {
  // Both changed: the date reaches those already under the new number, and those that come after
  // it keep their own.
  partida(7, 0, [&](Teclado& partida) {
    rellena(partida, {{"TxtAsiento", "6"}, {"TxtFecha", "0603"}});
    guion.esperaPregunta(kFechaEnTodas, true, "Atención");
    preguntaAlAceptar(partida, kNumeroEnTodas, true);
  });
  EXPECT_EQ(lineas("NAsiento=6 or NAsiento=7"),
            (Filas{{"13", "6", "06/03/2024", "62100001", "950"},
                   {"14", "6", "06/03/2024", "47200001", "152"},
                   {"15", "6", "06/03/2024", "41000001", "-1102"},
                   {"16", "6", "06/03/2024", "41000001", "1102"},
                   {"17", "6", "05/01/2024", "57200001", "-1102"}}));
  compruebaBalance({{"62100001", 1, -950, 0},
                    {"62100001", 3, 950, 0},
                    {"47200001", 1, -152, 0},
                    {"47200001", 3, 152, 0},
                    {"41000001", 1, -1102, 1102},
                    {"41000001", 3, 1102, -1102}});
  // Answered No, the line goes alone, and both asientos stand out of balance.
  partida(8, 1, [&](Teclado& partida) {
    rellena(partida, {{"TxtAsiento", "*"}, {"TxtFecha", "0702"}});
    EXPECT_EQ(partida.textoDe("TxtAsiento"), "121");
    guion.esperaPregunta(kFechaEnTodas, false, "Atención");
    preguntaAlAceptar(partida, kNumeroEnTodas, false);
  });
  EXPECT_EQ(lineas("NAsiento=8 or NAsiento=121"),
            (Filas{{"18", "8", "06/01/2024", "57200001", "1349,9"},
                   {"19", "121", "07/02/2024", "57000001", "-1349,9"}}));
  compruebaBalance({{"57000001", 1, 0, 1349.90}, {"57000001", 2, 0, -1349.90}});

  // The scan shows them one by one, as long as it is told to.
  const QString hallado = "Asiento %1 descuadrado, ¿desea seguir viendo asientos descuadrados?";
  guion.esperaPregunta(hallado.arg(8), true, "Descuadre localizado");
  guion.esperaPregunta(hallado.arg(121), true, "Descuadre localizado");
  guion.esperaMensaje("Fín de la busqueda de asientos descuadrados", "Fín");
  t->tecla(Qt::Key_F8);
  EXPECT_EQ(rejilla().texto(0, 3), "121");
  guion.esperaPregunta(hallado.arg(8), false, "Descuadre localizado");
  entrada("MnuDescuadre");
  EXPECT_EQ(rejilla().texto(0, 3), "8");
  EXPECT_FALSE(t->visible("Bar"));
  compruebaBalance();
}

TEST_F(Correcciones, ItsFieldsAreThoseOfTheEntryLine) {
  inserta("Conceptos", {{"NConcepto", "7"}, {"Descripcion", "Cobro de factura"}});
  ctx.sesion.FechaNoModificar = "15/02/2024";
  partida(80, 0, [&](Teclado& partida) {
    // By text and day first, as in the entry line, but here the date itself gives way.
    rellena(partida, {{"TxtFecha", "2001"}});
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtFecha"), "20/01/2024");
    rellena(partida, {{"TxtFecha", "1003"}});
    guion.esperaMensaje("Usted no puede modificar ningun apunte anterior a la fecha 15/02/2024",
                        "Error");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtFecha"), "02/04/2024");

    EXPECT_EQ(partida.enfocado(), "TxtSubcuenta");
    partida.teclea("570.1");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtNombreCuenta"), "Caja");
    EXPECT_EQ(t->textoDe("TxtSubcuenta"), "57000001");  // the main window follows
    EXPECT_EQ(t->textoDe("TxtCuentaDebe"), "25.908,44 ");
    EXPECT_EQ(partida.enfocado(), "TxtConcepto");
    partida.teclea("9");
    guion.esperaMensaje("El código del concepto escrito no existe intente con otro", "Error");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "");
    partida.teclea("7");
    partida.intro();
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "Cobro de factura");
    partida.intro();
    EXPECT_EQ(partida.enfocado(), "TxtDebeHaber");
    partida.tecla(Qt::Key_Delete);
    partida.teclea("x1a2.5-");
    EXPECT_EQ(partida.textoDe("TxtDebeHaber"), "12,5");
    EXPECT_EQ(static_cast<Formulario&>(partida.forma()).pitidos(), 3);
    preguntaAlAceptar(partida, kFechaEnTodas, false);
  });
  EXPECT_EQ(filas("Select Fecha, Subcuenta, Descripcion, Importe from Diario where NLinea=208"),
            (Filas{{"02/04/2024", "57000001", "Cobro de factura", "12,5"}}));
  compruebaBalance({{"43000004", 3, -1634.38, 0}, {"57000001", 4, 12.50, 0}});
}

// What another part of the program wrote, and what is too old, may not be changed here.
TEST_F(Correcciones, GuardsTheLinesOfInvoicesAndOfTheClosedMonths) {
  const QString borrar = "Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?";
  const QString deLinea = "Select * from Diario where NLinea=%1";
  cambia(deLinea.arg(5), "TipoFactura", "I");
  cambia(deLinea.arg(33), "ApunteIVA", "");  // also an empty mark is one
  ctx.sesion.FechaNoModificar = "12/01/2024";
  enLinea(3, 1);
  guion.esperaMensaje(
      "No puede modificar una partida creada con IVA intracomunitario, elimine la partida y cree "
      "una nueva",
      "Partida intracomunitaria");
  t->intro();
  enLinea(11, 0);
  guion.esperaMensaje("Usted no puede modificar ningún apunte anterior a la fecha 12/01/2024",
                      "Error");
  entrada("MnuModificarApunte");
  // The line that another part wrote goes to its screen, with the asiento.
  formularios->registra("FrmIVASR", [](Contexto& c) { return std::make_unique<Formulario>(c); });
  enLinea(13, 1);
  guion.esperaDialogo("FrmIVASR", [&](Teclado& factura) {
    EXPECT_EQ(ctx.sesion.CodigoLlamada, 8);
    EXPECT_EQ(ctx.sesion.ValorElegido, "13");
    factura.escape();
  });
  t->intro();
  enLinea(13, 1);
  guion.esperaMensaje("Usted no puede eliminar una partida creada por un apunte de IVA", "Error");
  entrada("MnuEliminarPartida");
  EXPECT_EQ(t->enfocado(), "TxtSubcuenta");
  compruebaBalance();

  // Deleting isn't bound by the date, nor by the other mark.
  enLinea(3, 1);
  for (const bool si : {false, true}) {
    guion.esperaPregunta(borrar, si, "Eliminar");
    entrada("MnuEliminarPartida");
  }
  EXPECT_TRUE(lineas("NLinea=5").empty());
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "-1.172,06");
  compruebaBalance({{"47200001", 1, -1172.06, 0}});
}

TEST_F(Correcciones, DeletesAnAsientoWithItsRegister) {
  factura("S0000000001", 9);
  factura("S0000000002", 16);
  cambia("Select * from Diario where NAsiento=9", "FacturaZuri", "F-1");
  enLinea(9, 1);
  elimina([&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblAsiento"), "9");
    EXPECT_EQ(rejilla().filas(), 3);  // on show while its dialog asks
    d.escape();
  });
  compruebaBalance();
  elimina([&](Teclado& d) {
    guion.esperaMensaje(
        "Atención este apunte se ha creado con Almirel, si lo elimina desde aquí, no eliminara la "
        "factura relaccionada",
        "Almirel");
    guion.esperaMensaje(
        "La partida que va a eliminar es un apunte de IVA, si la elimina se eliminara el apunte de "
        "IVA asociado",
        "ATENCION!!!");
    acepta(d);
  });
  EXPECT_EQ(filas("Select Codigo from RSIVA"), (Filas{{"S0000000002"}}));
  EXPECT_EQ(rejilla().filas(), 309);
  EXPECT_EQ(rejilla().filaActual(), 308);
  EXPECT_EQ(t->textoDe("TxtTotalDebe"), "290.988,64 ");
  compruebaBalance(
      {{"60000001", 1, -3309.40, 0}, {"47200001", 1, -529.50, 0}, {"40000003", 1, 0, 3838.90}});
  // An ordinary one goes without a word.
  enLinea(10, 0);
  elimina(acepta);
  compruebaBalance(
      {{"43000004", 1, -900.53, 0}, {"47700001", 1, 0, 124.21}, {"70000001", 1, 0, 776.32}});
}

}  // namespace
