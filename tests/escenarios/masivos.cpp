// Changing the quarter's books in bulk: duplicating, replacing, squaring, checking dates and
// renumbering, by keys.
#include "escenarios/herramientas.h"

namespace {

const QString kFin = "Proceso terminado con exito";

struct Cambio {
  QString campo, localizar, cambiar, hasta = "3112";
  QString seBusca = {}, seGuarda = {};  // how both are told to be read
};

class Masivos : public DiarioDelTrimestre {
 protected:
  // The dialog of a replacement, whose list takes the first letter of a field.
  static void llena(Teclado& d, const Cambio& cambio) {
    d.llega("TxtCampo");
    d.teclea(cambio.campo.left(1));
    EXPECT_EQ(d.textoDe("TxtCampo"), cambio.campo);
    rellena(d, {{"TxtDatoLoc", cambio.localizar}, {"TxtFechaHasta", cambio.hasta}});
    if (!cambio.cambiar.isEmpty()) rellena(d, {{"TxtDatoCam", cambio.cambiar}});
    d.tab();
    if (cambio.seBusca.isEmpty()) return;
    EXPECT_EQ(d.textoDe("LblLeidoLoc"), cambio.seBusca);
    EXPECT_EQ(d.textoDe("LblLeidoCam"), cambio.seGuarda);
  }
};

TEST_F(Masivos, DuplicanUnAsientoConSuFactura) {
  factura("S0000000041", 9);
  cambia("Empresa", "NLinIVAS", 41);
  enLinea(9, 1);
  herramienta("MnuDuplicaAsiento", [&](Teclado& duplica) {
    EXPECT_EQ(duplica.textosDe({"TxtAsiento", "TxtEmpresa", "TxtFecha"}),
              (QStringList{"9", "Comercial Ejemplo", "08/01/2024"}));
    EXPECT_EQ(rejilla().filas(), 3);  // the asiento is on show meanwhile
    rellena(duplica, {{"TxtFecha", "0104"}});
    acepta(duplica);
  });
  for (const int numero : {20, 21, 22}) {
    libro[292 + numero] = libro[numero];
    libro[292 + numero].asiento = 121;
    libro[292 + numero].fecha = "01/04/2024";
  }
  comprueba();
  EXPECT_EQ(filas("Select NLinea from Diario where ApunteIVA='S0000000042'"),
            (Filas{{"312"}, {"313"}, {"314"}}));
  EXPECT_EQ(filas("Select Codigo, Asiento, FechaC, Factura from RSIVA order by Codigo"),
            (Filas{{"S0000000041", "9", "", "A-7"}, {"S0000000042", "121", "01/04/2024", "A-7"}}));
  EXPECT_EQ(filas("Select Asiento, NLinDiario, NLinIVAS from Empresa"),
            (Filas{{"122", "315", "42"}}));
}

// A number typed by hand can be the counter's next one: the copy gets it too, and stays.
TEST_F(Masivos, CambianUnAsientoPorSuCopia) {
  cambia("Empresa", "Asiento", 9);
  enLinea(9, 0);
  herramienta("MnuDuplicaAsiento", [&](Teclado& duplica) {
    rellena(duplica, {{"TxtFecha", "0104"}});
    alterna(duplica, "ChkEliminaAsiento");
    acepta(duplica);
  });
  for (const int numero : {20, 21, 22}) {
    libro[292 + numero] = libro[numero];
    libro[292 + numero].fecha = "01/04/2024";
    libro.erase(numero);
  }
  comprueba();
  // With no line current there is nothing to duplicate.
  guion.esperaPregunta("Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?", true,
                       "Eliminar");
  entrada("MnuEliminarPartida");
  libro.erase(314);
  comprueba();
  guion.esperaMensaje("Debe seleccionar un apunte de la lista de apuntes", "Error");
  entrada("MnuDuplicaAsiento");
}

TEST_F(Masivos, LlevanUnAsientoAOtraEmpresa) {
  DatosEmpresa ancha = empresa("Ancha");
  ancha.SubCuN01 = "9";
  creaEmpresa(ancha);
  creaEmpresa(empresa("Sucursal"));
  factura("R0000000007", 10);
  enLinea(10, 0);
  herramienta("MnuDuplicaAsiento", [&](Teclado& duplica) {
    duplica.llega("TxtEmpresa");
    duplica.tecla(Qt::Key_Up);
    EXPECT_EQ(duplica.textoDe("TxtEmpresa"), "Ancha");
    guion.esperaMensaje(
        "El tamaño de las subcuentas en la empresa destino no son iguales a las del origen, el "
        "proceso se cancelara",
        "Atención");
    acepta(duplica);
    duplica.llega("TxtEmpresa");
    duplica.tecla(Qt::Key_End);
    alterna(duplica, "ChkEliminaAsiento");
    acepta(duplica);
  });
  EXPECT_TRUE(filas("RSIVA").empty());
  std::map<int, Linea> traslado;
  for (const int numero : {23, 24, 25}) {
    traslado[numero - 23] = libro[numero];
    traslado[numero - 23].asiento = 1;
  }
  sinAsiento(10);
  comprueba();
  abreEmpresa("Sucursal");
  libro = traslado;
  EXPECT_EQ(lee(), libro);
  EXPECT_EQ(filas("Select NLinea from Diario where ApunteIVA='R0000000001'").size(), 3u);
  EXPECT_EQ(filas("Select Codigo, Asiento from RSIVA"), (Filas{{"R0000000001", "1"}}));
  EXPECT_EQ(filas("Select Asiento, NLinDiario, NLinIVAR from Empresa"), (Filas{{"2", "3", "1"}}));
}

TEST_F(Masivos, CambianLoQueEncuentran) {
  const std::pair<Cambio, void (*)(Linea&)> casos[] = {
      {{"Fecha", "0502", "0603", "3112", "se buscará 5 febrero 2024", "se guardará 6 marzo 2024"},
       [](Linea& l) {
         if (l.fecha == "05/02/2024") l.fecha = "06/03/2024";
       }},
      {{"Descripcion", "pago n*", "Líquido", "3112", "se buscará pago n*", "se guardará Líquido"},
       [](Linea& l) {
         if (l.concepto == "Pago nóminas") l.concepto = "Líquido";
       }},
      // On this side only; the point is a decimal in one field and nothing in the other.
      {{"Importe", "12.02", "1.3", "3112", "se buscará 12,02", "se guardará 13,00"},
       [](Linea& l) {
         if (l.importe == 12.02) l.importe = 13;
       }},
      {{"NAsiento", "1", "501", "3112", "se buscará 1", "se guardará 501"},
       [](Linea& l) {
         if (l.asiento == 1) l.asiento = 501;
       }},
      // The limits are read month first where they can be: up to the third of January.
      {{"Subcuenta", "572.1", "572.2", "0103"},
       [](Linea& l) {
         if (l.subcuenta == "57200001" && l.fecha == "02/01/2024") l.subcuenta = "57200002";
       }},
  };
  for (const auto& [cambio, efecto] : casos) {
    SCOPED_TRACE(qPrintable(cambio.campo));
    herramienta("MnuCambiaAsientos", [&, &cambio = cambio](Teclado& d) {
      EXPECT_EQ(d.textoDe("TxtFechaDesde"), "01/01/2024");
      EXPECT_EQ(d.textoDe("TxtFechaHasta"), "31/12/2024");
      llena(d, cambio);
      EXPECT_EQ(d.textoDe("LblLeidoHasta"),
                cambio.hasta == "0103" ? "se leerá 3 enero 2024" : "se leerá 31 diciembre 2024");
      acepta(d);
    });
    for (auto& [numero, linea] : libro) efecto(linea);
    comprueba();
  }
}

TEST_F(Masivos, DicenPorQueNoPuedenCambiar) {
  for (const QStringList& f : leeCsv("cambiosnegados.csv")) {
    herramienta("MnuCambiaAsientos", [&](Teclado& d) {
      llena(d, {f[0], f[1], f[2], f[3], f[4], f[5]});
      guion.esperaMensaje(f[6], "Error");
      acepta(d);
      EXPECT_FALSE(d.visible("Bar"));
      d.escape();
    });
  }
  comprueba();
}

// Before anything is done with it, and the mouse's Cancelar leaves the field all the same.
TEST_F(Masivos, RechazanUnImporteEnormeEnSuCampo) {
  herramienta("MnuCambiaAsientos", [&](Teclado& d) {
    guion.esperaMensaje("Error 6: El número es demasiado grande: importe");
    llena(d, {"Importe", "31", "1000000000000", "3112", "se buscará 31,00",
              "no se puede guardar en este campo"});
    EXPECT_EQ(d.enfocado(), "TxtDatoCam");
    d.pulsa("CmdCancelar");
  });
}

TEST_F(Masivos, EliminanAsientosEnterosPorUnaCondicion) {
  herramienta("MnuCambiaAsientos", [&](Teclado& d) {
    rellena(d, {{"TxtDatoCam", "9"}});
    alterna(d, "ChkEliminarAsientos");
    EXPECT_EQ(d.textoDe("TxtDatoCam"), "");
    EXPECT_FALSE(d.control("TxtDatoCam").isEnabled());
    guion.esperaMensaje("No se puede eliminar asientos a la vez que localiza por ellos",
                        "Ejecución anulada");
    acepta(d);
    for (const bool libre : {true, false}) {
      alterna(d, "ChkEliminarAsientos");
      EXPECT_EQ(d.control("TxtDatoCam").isEnabled(), libre);
    }
    // Two lines of each asiento are found: the second is gone when its turn comes.
    llena(d, {"Descripcion", "ventas contado semana", "", "1302"});
    rellena(d, {{"TxtFechaDesde", "1301"}});
    acepta(d);
  });
  for (const int asiento : {20, 28, 38, 47}) sinAsiento(asiento);
  comprueba();
}

TEST_F(Masivos, AsientanLoQueFaltaParaCuadrar) {
  for (const auto& [fecha, debe, haber] : {std::tuple("01/01/2024", "9", ""),
                                           {"10/03/2024", "8", ""},
                                           {"11/03/2024", "", "7.5"},
                                           {"12/03/2024", "0.001", ""}})
    teclea({{}, fecha, "57000001", "Suelto", debe, haber});
  libro = lee();
  const QString cuadrar = "Asiento %1 descuadrado, ¿desea cuadrar el asiento?";
  const QString fin = "Fín de la busqueda de cuadrar asientos descuadrados";
  herramienta("MnuCuadrarAsientosAutomaticamente", [&](Teclado& cuadra) {
    EXPECT_EQ(cuadra.textosDe({"TxtDesde", "TxtHasta"}), (QStringList{"01/01/2024", "31/12/2024"}));
    cuadra.entra("572.2");
    EXPECT_EQ(cuadra.textoDe("LblCuenta"), "Caja Rural c/c");
    const QWidget& nombre = cuadra.control("LblCuenta");
    EXPECT_GT(nombre.width(), nombre.fontMetrics().horizontalAdvance(
                                  "Suministros y Materiales de Construcción del Ebro"));
    EXPECT_EQ(cuadra.enfocado(), "TxtDesde");
    // The one of the first of January stands on the limit, and a thousandth is square.
    guion.esperaPregunta(cuadrar.arg(122), false, "Descuadre localizado");
    guion.esperaPregunta(cuadrar.arg(123), true, "Descuadre localizado");
    guion.esperaMensaje(fin, "Fín");
    acepta(cuadra);
  });
  libro[316] = {123, "11/03/2024", "57200002", "Descuadre Automático", 7.5};
  comprueba();
  herramienta("MnuCuadrarAsientosAutomaticamente", [&](Teclado& cuadra) {
    // What isn't there leads to the plan, which gives back the one chosen.
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
    cuadra.entra("O'Brien");
    EXPECT_EQ(cuadra.enfocado(), "TxtSubcuenta");
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.intro(); });
    cuadra.entra("43000");
    EXPECT_EQ(cuadra.enfocado(), "TxtSubcuenta");
    EXPECT_EQ(cuadra.textoDe("TxtSubcuenta"), "43000001");
    alterna(cuadra, "ChkSolicitar");
    guion.esperaMensaje(fin, "Fín");
    acepta(cuadra);
  });
  libro[317] = {122, "10/03/2024", "43000001", "Descuadre Automático", -8};
  comprueba();
  EXPECT_EQ(valor("Select NLinDiario from Empresa"), "318");
  EXPECT_EQ(rejilla().texto(0, 3), "122");
}

TEST_F(Masivos, DanACadaAsientoSuPrimeraFechaDelAno) {
  const std::map<int, Linea> antes = libro;
  cambiaLinea(14, "Fecha", "03/02/2024");
  cambiaLinea(21, "Fecha", "07/02/1999");
  libro = lee();
  herramienta("MnuCompruebaFechasAsientos", [](Teclado& d) { d.escape(); });
  comprueba();
  herramienta("MnuCompruebaFechasAsientos", [&](Teclado& d) {
    // The bar takes no room from what is to be read.
    const int alto = d.control("Aviso").height();
    d.control("Bar").show();
    reposar();
    EXPECT_EQ(d.control("Aviso").height(), alto);
    guion.esperaMensaje(kFin, "Fín");
    acepta(d);
  });
  libro = antes;
  for (const int numero : {20, 21, 22}) libro[numero].fecha = "07/02/2024";
  comprueba();
}

TEST_F(Masivos, ComparanComoTextosLosNumerosDeRenumerar) {
  const struct {
    const char *desde, *numero, *quedaDesde, *quedaNumero;
  } casos[] = {
      {"1", "1", "1", "1"}, {"9", "10", "9", "9"},      {"10", "9", "10", "9"},
      {"x", "0", "1", "1"}, {"20", "nada", "20", "20"}, {"3", "30", "3", "30"},
  };
  herramienta("MnuRenumeraDiario", [&](Teclado& renumera) {
    for (const auto& caso : casos) {
      rellena(renumera, {{"TxtRenumeraAsientoDesde", caso.desde}});
      renumera.intro();
      renumera.entra(caso.numero);
      EXPECT_EQ(renumera.textoDe("TxtRenumeraAsientoDesde"), caso.quedaDesde) << caso.desde;
      EXPECT_EQ(renumera.textoDe("TxtRenumeraDesdeNumero"), caso.quedaNumero) << caso.numero;
    }
    renumera.escape();
  });
}

TEST_F(Masivos, RenumeranPorFechaDigaLoQueDigaElSegundoCampo) {
  teclea({"", "10/01/2024", "57000001", "Suelto", "9", ""});
  teclea({"", "", "57200001", "Suelto", "", "9"});
  factura("S0000000001", 121);
  cambiaLinea(17, "Fecha", "09/01/2024");
  libro = lee();
  // From the second on: the last typed goes to its day, and the second line of the seventh, of a
  // later day, becomes an asiento of its own.
  for (auto& [numero, linea] : libro) {
    const int antes = linea.asiento;
    linea.asiento = antes == 121 ? 12 : antes > 10 ? antes + 2 : antes + antes / 10;
  }
  libro[17].asiento = 10;
  herramienta("MnuRenumeraDiario", [&](Teclado& renumera) {
    rellena(renumera, {{"TxtRenumeraAsientoDesde", "2"}, {"TxtRenumeraDesdeNumero", "50"}});
    guion.esperaDialogo("FrmCompruebaFechasAsientos", [](Teclado& d) { d.escape(); });
    renumera.llega("CmdRevisarFechas");
    renumera.intro();
    guion.esperaMensaje(kFin, "Fín");
    acepta(renumera);
  });
  comprueba();
  EXPECT_EQ(valor("Select Asiento from RSIVA"), "12");
  EXPECT_EQ(valor("Select Asiento from Empresa"), "123");

  // Invoices that aren't in the register are told before anything is written.
  libro = lee();
  for (const int linea : {309, 310, 311}) cambiaLinea(linea, "ApunteIVA", "S0000000007");
  const QString falta = " a un registro de IVA que no existe (asiento %1). No se ha cambiado nada.";
  herramienta("MnuRenumeraDiario", [&](Teclado& renumera) {
    rellena(renumera, {{"TxtRenumeraAsientoDesde", "3"}});
    guion.esperaMensaje("Hay 3 partidas que señalan" + falta.arg("122"), "Error");
    acepta(renumera);
    renumera.escape();
  });
  EXPECT_EQ(valor("Select Asiento from Empresa"), "123");
  enLinea(12, 0);
  cambiaLinea(310, "ApunteIVA", "");
  enLinea(122, 0);
  herramienta("MnuDuplicaAsiento", [&](Teclado& duplica) {
    guion.esperaMensaje("Hay 2 partidas que señalan" + falta.arg("122"), "Error");
    acepta(duplica);
    duplica.escape();
  });
  comprueba();
}

// A tool that fails half-way leaves what it has done, and the window shows that.
TEST_F(Masivos, MuestranLoHechoAntesDeUnFallo) {
  for (const char* fecha : {"10/03/2024", "11/03/2024"})
    teclea({"", fecha, "57000001", "Suelto", "9", ""});
  inserta("Diario", lineaDe(315, 1, "02/01/2024", "57000001", 0, {{"Descripcion", "Nada"}}));
  libro = lee();
  herramienta("MnuCuadrarAsientosAutomaticamente", [&](Teclado& cuadra) {
    cuadra.teclea("572.2");
    alterna(cuadra, "ChkSolicitar");
    // The number of the second line is taken.
    guion.esperaMensaje(errorEnCaja(3022));
    acepta(cuadra);
    libro[314] = {121, "10/03/2024", "57200002", "Descuadre Automático", -9};
    comprueba();
    cuadra.escape();
  });
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "9,00 ");
}

}  // namespace
