// Correcting the quarter's books: lines changed, deleted, found and ticked off, by keys.
#include "escenarios/herramientas.h"

namespace {

const QString kAlDebe =
    "Atención su partida anterior era en el 'HABER' , ¿Desea cambiarlo al 'DEBE'?";
const QString kAlHaber =
    "Atención su partida anterior era en el 'DEBE' , ¿Desea cambiarlo al 'HABER'?";
const QString kNoExiste =
    "El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ";
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

TEST_F(Correcciones, CambianDeLadoSoloSiSeResponde) {
  const struct {
    const char* lado;
    QString pregunta;
    bool si;
    const char* importe;
    double queda;
  } pasos[] = {
      {"D", {}, false, "7000", 7000},     {"H", kAlHaber, false, "102", 102},
      {"H", kAlHaber, true, "103", -103}, {"H", {}, false, "104", -104},
      {"D", kAlDebe, false, "105", -105}, {"D", kAlDebe, true, "106.5", 106.5},
  };
  QString antes = "7.325,40 ";
  for (const auto& paso : pasos) {
    partida(3, 0, [&](Teclado& d) {
      EXPECT_EQ(d.textoDe("TxtDebeHaber"), antes);  // without its sign on either side
      EXPECT_EQ(d.textoDe("TxtNombreCuenta"), "Mobiliario de tienda");
      rellena(d, {{"TxtDebeHaber", paso.importe}, {"TxtDH", paso.lado}});
      if (!paso.pregunta.isNull()) guion.esperaPregunta(paso.pregunta, paso.si, "Atención");
      acepta(d);
    });
    antes = Format(std::abs(paso.queda), "#,##0.00 ");
    libro[4].importe = paso.queda;
    comprueba();
  }
}

TEST_F(Correcciones, NieganUnaLineaIncompletaYOlvidanLaCancelada) {
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
    guion.esperaMensaje("Error 6: El número es demasiado grande: importe");
    rellena(partida, {{"TxtDebeHaber", "1000000000000"}});
    partida.tab();
    EXPECT_EQ(partida.enfocado(), "TxtDebeHaber");
    rellena(partida, {{"TxtDebeHaber", "77"}});
    partida.escape();
  });
  comprueba();
}

TEST_F(Correcciones, LlevanConsigoLasDemasLineasDelAsiento) {
  // Both changed: the date reaches those already under the new number, and those that come after
  // it keep their own.
  partida(7, 0, [&](Teclado& partida) {
    rellena(partida, {{"TxtAsiento", "6"}, {"TxtFecha", "0603"}});
    guion.esperaPregunta(kFechaEnTodas, true, "Atención");
    preguntaAlAceptar(partida, kNumeroEnTodas, true);
  });
  for (const int numero : {13, 14, 15, 16}) libro[numero].fecha = "06/03/2024";
  for (const int numero : {16, 17}) libro[numero].asiento = 6;
  comprueba();
  // Answered No, the line goes alone, and both asientos stand out of balance.
  partida(8, 1, [&](Teclado& partida) {
    rellena(partida, {{"TxtAsiento", "*"}, {"TxtFecha", "0702"}});
    EXPECT_EQ(partida.textoDe("TxtAsiento"), "121");
    guion.esperaPregunta(kFechaEnTodas, false, "Atención");
    preguntaAlAceptar(partida, kNumeroEnTodas, false);
  });
  libro[19].asiento = 121;
  libro[19].fecha = "07/02/2024";
  comprueba();

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
  comprueba();
}

TEST_F(Correcciones, TienenLosCamposDeLaLineaDeEntrada) {
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
    partida.teclea("57200002");  // found while it is typed
    EXPECT_EQ(partida.textoDe("TxtNombreCuenta"), "Caja Rural c/c");
    partida.intro();
    const auto otra = [&](const QString& texto) {
      partida.atras();
      partida.entra(texto);
      return partida.textoDe("TxtNombreCuenta");
    };
    guion.esperaPregunta(kNoExiste, true, "Error");
    guion.esperaDialogo("FrmSubCuentas", [](Teclado& alta) { tecleaNombre(alta, "Caja chica"); });
    EXPECT_EQ(otra("570.9"), "Caja chica");
    guion.esperaPregunta(kNoExiste, false, "Error");
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
    EXPECT_EQ(otra("570.8"), "");
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.intro(); });
    EXPECT_EQ(otra("caja"), "Caja");
    EXPECT_EQ(otra("57000001"), "Caja");
    EXPECT_EQ(t->textoDe("TxtSubcuenta"), "57000001");  // the main window follows
    EXPECT_EQ(t->textoDe("TxtCuentaDebe"), "25.908,44 ");
    EXPECT_EQ(partida.enfocado(), "TxtConcepto");
    partida.entra("7");
    EXPECT_EQ(partida.textoDe("TxtConcepto"), "Cobro de factura");
    partida.intro();
    EXPECT_EQ(partida.enfocado(), "TxtDebeHaber");
    partida.tecla(Qt::Key_Delete);
    partida.teclea("x1a2.5-");
    EXPECT_EQ(partida.textoDe("TxtDebeHaber"), "12,5");
    EXPECT_EQ(static_cast<Formulario&>(partida.forma()).pitidos(), 3);
    preguntaAlAceptar(partida, kFechaEnTodas, false);
  });
  libro[208] = {80, "02/04/2024", "57000001", "Cobro de factura", 12.5};
  comprueba();
}

// What another part of the program wrote, and what is too old, may not be changed here.
TEST_F(Correcciones, GuardanLasLineasDeFacturasYDeMesesCerrados) {
  const QString borrar = "Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?";
  cambiaLinea(5, "TipoFactura", "I");
  cambiaLinea(33, "ApunteIVA", "");  // also an empty mark is one
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
  comprueba();

  // Deleting isn't bound by the date, nor by the other mark.
  enLinea(3, 1);
  for (const bool si : {false, true}) {
    guion.esperaPregunta(borrar, si, "Eliminar");
    entrada("MnuEliminarPartida");
  }
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "-1.172,06");
  libro.erase(5);
  comprueba();
}

TEST_F(Correcciones, EliminanUnAsientoConSuRegistro) {
  factura("S0000000001", 9);
  factura("S0000000002", 16);
  cambiaLinea(20, "FacturaZuri", "F-1");
  enLinea(9, 1);
  elimina([&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblAsiento"), "9");
    EXPECT_EQ(rejilla().filas(), 3);  // on show while its dialog asks
    d.escape();
  });
  comprueba();
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
  sinAsiento(9);
  comprueba();
  // An ordinary one goes without a word.
  enLinea(10, 0);
  elimina(acepta);
  sinAsiento(10);
  comprueba();
}

}  // namespace
