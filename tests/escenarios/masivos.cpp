// Changing the quarter's books in bulk: duplicating, replacing, squaring, checking dates and
// renumbering, by keys.
#include "escenarios/herramientas.h"

namespace {

const QString kFin = "Proceso terminado con exito";

TEST(Masivos, DuplicateAnAsientoWithItsInvoice) {
  DiarioDelTrimestre e;
  e.factura("S0000000041", 9);
  e.cambia("Empresa", "NLinIVAS", 41);
  e.enLinea(9, 1);
  e.herramienta("MnuDuplicaAsiento", "FrmDuplicarAsiento", [&e](Teclado& duplica) {
    EXPECT_EQ(duplica.textoDe("TxtAsiento"), "9");
    EXPECT_EQ(duplica.textoDe("TxtEmpresa"), "Comercial Ejemplo");
    EXPECT_EQ(duplica.textoDe("TxtFecha"), "08/01/2024");
    EXPECT_EQ(e.rejilla().filas(), 3);  // the asiento is on show meanwhile
    e.rellena(duplica, {{"TxtFecha", "0104"}});
    e.acepta(duplica);
  });
  EXPECT_EQ(e.lineas("NAsiento>120"), (Filas{{"312", "121", "01/04/2024", "60000001", "3309,4"},
                                             {"313", "121", "01/04/2024", "47200001", "529,5"},
                                             {"314", "121", "01/04/2024", "40000003", "-3838,9"}}));
  EXPECT_EQ(e.filas("Select NLinea from Diario where ApunteIVA='S0000000042'").size(), 3u);
  EXPECT_EQ(e.filas("Select Codigo, Asiento, FechaC, Factura from RSIVA order by Codigo"),
            (Filas{{"S0000000041", "9", "", "A-7"}, {"S0000000042", "121", "01/04/2024", "A-7"}}));
  EXPECT_EQ(e.filas("Select Asiento, NLinDiario, NLinIVAS from Empresa"),
            (Filas{{"122", "315", "42"}}));
  e.compruebaBalance(
      {{"60000001", 4, 3309.40, 0}, {"47200001", 4, 529.50, 0}, {"40000003", 4, 0, -3838.90}});
}

TEST(Masivos, MoveAnAsientoToAnotherCompany) {
  DiarioDelTrimestre e;
  DatosEmpresa ancha = e.empresa("Ancha");
  ancha.SubCuN01 = "9";
  e.creaEmpresa(ancha);
  e.creaEmpresa(e.empresa("Sucursal"));
  e.factura("R0000000007", 10);
  e.enLinea(10, 0);
  e.herramienta("MnuDuplicaAsiento", "FrmDuplicarAsiento", [&e](Teclado& duplica) {
    duplica.llega("TxtEmpresa");
    duplica.tecla(Qt::Key_Up);
    EXPECT_EQ(duplica.textoDe("TxtEmpresa"), "Ancha");
    e.guion.esperaMensaje(
        "El tamaño de las subcuentas en la empresa destino no son iguales a las del origen, el "
        "proceso se cancelara",
        "Atención");
    e.acepta(duplica);
    duplica.llega("TxtEmpresa");
    duplica.tecla(Qt::Key_End);
    EXPECT_EQ(duplica.textoDe("TxtEmpresa"), "Sucursal");
    duplica.llega("ChkEliminaAsiento");
    duplica.tecla(Qt::Key_Space);
    e.acepta(duplica);
  });
  EXPECT_TRUE(e.filas("RSIVA").empty());
  e.compruebaBalance(
      {{"43000004", 1, -900.53, 0}, {"47700001", 1, 0, 124.21}, {"70000001", 1, 0, 776.32}});
  e.abreEmpresa("Sucursal");
  EXPECT_EQ(e.lineas("ApunteIVA='R0000000001'"),
            (Filas{{"0", "1", "09/01/2024", "43000004", "900,53"},
                   {"1", "1", "09/01/2024", "47700001", "-124,21"},
                   {"2", "1", "09/01/2024", "70000001", "-776,32"}}));
  EXPECT_EQ(e.filas("Select Codigo, Asiento from RSIVA"), (Filas{{"R0000000001", "1"}}));
  EXPECT_EQ(e.filas("Select Asiento, NLinDiario, NLinIVAR from Empresa"), (Filas{{"2", "3", "1"}}));
}

struct Cambio {
  QString campo;
  const char* localizar;
  const char* cambiar;
  const char* hasta = "3112";
};

struct Cambios : DiarioDelTrimestre {
  void cambiaDatos(const std::function<void(Teclado&)>& paso) {
    herramienta("MnuCambiaAsientos", "FrmCambiadatos", paso);
  }
  static void elige(Teclado& d, const QString& campo) {
    d.llega("TxtCampo");
    d.teclea(campo.left(1));
    EXPECT_EQ(d.textoDe("TxtCampo"), campo);
  }
  static void llena(Teclado& d, const Cambio& cambio) {
    elige(d, cambio.campo);
    rellena(d, {{"TxtDatoLoc", cambio.localizar},
                {"TxtDatoCam", cambio.cambiar},
                {"TxtFechaHasta", cambio.hasta}});
  }
};

TEST(Masivos, ReplaceWhatTheyFind) {
  const struct {
    Cambio cambio;
    const char* condicion;
    size_t lineas;
    std::vector<Movido> movidos;
  } casos[] = {
      {{"Subcuenta", "628.2", "628.1"},
       "Subcuenta='62800001'",
       6,
       {{"62800002", 1, -88.90, 0},
        {"62800001", 1, 88.90, 0},
        {"62800002", 2, -60.63, 0},
        {"62800001", 2, 60.63, 0},
        {"62800002", 3, -125.57, 0},
        {"62800001", 3, 125.57, 0}}},
      {{"Fecha", "2001", "2103"},
       "Fecha=#3-21-24# and NAsiento<100",
       4,
       {{"57200001", 1, -971.19, 12.02},
        {"57200001", 3, 971.19, -12.02},
        {"57000001", 1, 0, 971.19},
        {"57000001", 3, 0, -971.19},
        {"62600001", 1, -12.02, 0},
        {"62600001", 3, 12.02, 0}}},
      {{"Descripcion", "pago n*", "Líquido"}, "Descripcion='Líquido'", 6, {}},
      // On this side only.
      {{"Importe", "12.02", "13"},
       "Importe=13",
       3,
       {{"62600001", 2, 0.98, 0}, {"62600001", 3, 1.96, 0}}},
      {{"NAsiento", "1", "501"}, "NAsiento=501", 2, {}},
      // The limits are read month first where they can be: up to the third of January.
      {{"Subcuenta", "572.1", "572.2", "0103"},
       "Subcuenta='57200002'",
       9,
       {{"57200001", 1, -78000, 0}, {"57200002", 1, 78000, 0}}},
  };
  Cambios e;
  for (const auto& [cambio, condicion, lineas, movidos] : casos) {
    SCOPED_TRACE(qPrintable(cambio.campo));
    e.cambiaDatos([&, &cambio = cambio](Teclado& d) {
      EXPECT_EQ(d.textoDe("TxtFechaDesde"), "01/01/2024");
      EXPECT_EQ(d.textoDe("TxtFechaHasta"), "31/12/2024");
      e.llena(d, cambio);
      e.acepta(d);
      EXPECT_FALSE(d.forma().isVisible());
    });
    EXPECT_EQ(e.lineas(condicion).size(), lineas);
    e.compruebaBalance(movidos);
  }
}

TEST(Masivos, SayWhyTheyCanNotReplace) {
  const QString kVacio = "No existe ningun apunte entre los límites seleccionados";
  const QString kMalRelleno = "Una de las casillas no la ha rellenado correctamente";
  const std::pair<Cambio, QString> casos[] = {
      {{"Importe", "31", "32"}, kVacio},
      {{"Fecha", "0502", "0603", "0103"}, kVacio},
      {{"NAsiento", "", "3"}, kMalRelleno},
      {{"Subcuenta", "O'Brien", "3"}, kMalRelleno},
      {{"NAsiento", "1", "siete"},
       "El dato a convertir en la casilla de dato a cambiar, no es correcto"},
      // Whatever else the engine says is shown as it says it.
      {{"Subcuenta", "572.1", "572000011"}, "El texto es demasiado largo para el campo: 572000011"},
  };
  Cambios e;
  for (const auto& [cambio, aviso] : casos) {
    e.cambiaDatos([&, &cambio = cambio, &aviso = aviso](Teclado& d) {
      e.llena(d, cambio);
      e.guion.esperaMensaje(aviso, "Error");
      e.acepta(d);
      EXPECT_FALSE(d.visible("Bar"));
      d.escape();
    });
  }
  EXPECT_EQ(e.lineas("NAsiento=7").size(), 2u);
  e.compruebaBalance();
}

TEST(Masivos, DeleteWholeAsientosByACondition) {
  Cambios e;
  e.cambiaDatos([&e](Teclado& d) {
    e.rellena(d, {{"TxtDatoCam", "9"}});
    d.llega("ChkEliminarAsientos");
    d.tecla(Qt::Key_Space);
    EXPECT_EQ(d.textoDe("TxtDatoCam"), "");
    EXPECT_FALSE(d.control("TxtDatoCam").isEnabled());
    e.guion.esperaMensaje("No se puede eliminar asientos a la vez que localiza por ellos",
                          "Ejecución anulada");
    e.acepta(d);
    for (const bool libre : {true, false}) {
      d.llega("ChkEliminarAsientos");
      d.tecla(Qt::Key_Space);
      EXPECT_EQ(d.control("TxtDatoCam").isEnabled(), libre);
    }
    // Two lines of each asiento are found: the second is gone when its turn comes.
    e.elige(d, "Descripcion");
    e.rellena(d, {{"TxtDatoLoc", "ventas contado semana"}, {"TxtFechaHasta", "1302"}});
    d.llega("TxtFechaDesde");
    d.teclea("1301");
    e.acepta(d);
  });
  EXPECT_EQ(e.filas("Select NLinea from Diario").size(), 300u);
  e.compruebaBalance({{"57000001", 1, -1409.17 - 1786.84, 0},
                      {"47700001", 1, 0, 194.37 + 246.46},
                      {"70000001", 1, 0, 1214.80 + 1540.38},
                      {"57000001", 2, -2387.71 - 2026.16, 0},
                      {"47700001", 2, 0, 329.34 + 279.47},
                      {"70000001", 2, 0, 2058.37 + 1746.69}});
}

TEST(Masivos, PostWhatIsMissingToSquare) {
  DiarioDelTrimestre e;
  const LineaDiario descuadres[] = {{"", "01/01/2024", "57000001", "Suelto", "9", ""},
                                    {"", "10/03/2024", "57000001", "Suelto", "8", ""},
                                    {"", "11/03/2024", "57000001", "Suelto", "", "7.5"},
                                    {"", "12/03/2024", "57000001", "Suelto", "0.001", ""}};
  for (const LineaDiario& linea : descuadres) tecleaLinea(*e.t, e.guion, e.ctx.sesion, linea, true);
  e.compruebaBalance({{"57000001", 1, 9, 0}, {"57000001", 3, 8, -7.50}});
  const QString cuadrar = "Asiento %1 descuadrado, ¿desea cuadrar el asiento?";
  const QString fin = "Fín de la busqueda de cuadrar asientos descuadrados";
  e.herramienta("MnuCuadrarAsientosAutomaticamente", "FrmCuadrarAsientos", [&](Teclado& cuadra) {
    EXPECT_EQ(cuadra.textoDe("TxtDesde"), "01/01/2024");
    EXPECT_EQ(cuadra.textoDe("TxtHasta"), "31/12/2024");
    cuadra.teclea("572.2");
    cuadra.intro();
    EXPECT_EQ(cuadra.textoDe("LblCuenta"), "Caja Rural c/c");
    EXPECT_EQ(cuadra.enfocado(), "TxtDesde");
    // The one of the first of January stands on the limit, and a thousandth is square.
    e.guion.esperaPregunta(cuadrar.arg(122), false, "Descuadre localizado");
    e.guion.esperaPregunta(cuadrar.arg(123), true, "Descuadre localizado");
    e.guion.esperaMensaje(fin, "Fín");
    e.acepta(cuadra);
  });
  e.compruebaBalance({{"57200002", 3, 7.50, 0}});
  e.herramienta("MnuCuadrarAsientosAutomaticamente", "FrmCuadrarAsientos", [&](Teclado& cuadra) {
    // A code that isn't there leads to the plan, which gives back the one chosen.
    e.guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.intro(); });
    cuadra.teclea("43000");
    cuadra.intro();
    EXPECT_EQ(cuadra.enfocado(), "TxtSubcuenta");
    EXPECT_EQ(cuadra.textoDe("TxtSubcuenta"), "43000001");
    cuadra.llega("ChkSolicitar");
    cuadra.tecla(Qt::Key_Space);
    e.guion.esperaMensaje(fin, "Fín");
    e.acepta(cuadra);
  });
  EXPECT_EQ(e.lineas("Descripcion='Descuadre Automático'"),
            (Filas{{"316", "123", "11/03/2024", "57200002", "7,5"},
                   {"317", "122", "10/03/2024", "43000001", "-8"}}));
  EXPECT_EQ(e.valor("Select NLinDiario from Empresa"), "318");
  EXPECT_EQ(e.rejilla().texto(0, 3), "122");
  e.compruebaBalance({{"43000001", 3, 0, -8}});
}

TEST(Masivos, GiveEachAsientoItsEarliestDateInTheYear) {
  DiarioDelTrimestre e;
  const auto comprueba = [&e](const std::function<void(Teclado&)>& paso) {
    e.herramienta("MnuCompruebaFechasAsientos", "FrmCompruebaFechasAsientos", paso);
  };
  const Filas antes = e.lineas("NAsiento<>9");
  e.cambia("Select * from Diario where NLinea=14", "Fecha", "03/02/2024");
  e.cambia("Select * from Diario where NLinea=21", "Fecha", "07/02/1999");
  comprueba([](Teclado& d) { d.escape(); });
  e.compruebaBalance({{"47200001", 1, -152 - 529.50, 0}, {"47200001", 2, 152 + 529.50, 0}});
  comprueba([&e](Teclado& d) {
    e.guion.esperaMensaje(kFin, "Fín");
    e.acepta(d);
  });
  EXPECT_EQ(e.lineas("NAsiento<>9"), antes);
  EXPECT_EQ(e.lineas("Fecha=#2-7-24#").size(), 3u);
  e.compruebaBalance({{"47200001", 1, 152, 0},
                      {"47200001", 2, -152, 0},
                      {"60000001", 1, -3309.40, 0},
                      {"60000001", 2, 3309.40, 0},
                      {"40000003", 1, 0, 3838.90},
                      {"40000003", 2, 0, -3838.90}});
}

TEST(Masivos, CompareTheNumbersOfRenumberingAsTexts) {
  const struct {
    const char* desde;
    const char* numero;
    const char* quedaDesde;
    const char* quedaNumero;
  } casos[] = {
      {"1", "1", "1", "1"}, {"9", "10", "9", "9"},      {"10", "9", "10", "9"},
      {"x", "0", "1", "1"}, {"20", "nada", "20", "20"}, {"3", "30", "3", "30"},
  };
  DiarioDelTrimestre e;
  e.herramienta("MnuRenumeraDiario", "FrmRenumera", [&](Teclado& renumera) {
    for (const auto& caso : casos) {
      e.rellena(renumera, {{"TxtRenumeraAsientoDesde", caso.desde}});
      renumera.intro();
      renumera.teclea(caso.numero);
      renumera.intro();
      EXPECT_EQ(renumera.textoDe("TxtRenumeraAsientoDesde"), caso.quedaDesde) << caso.desde;
      EXPECT_EQ(renumera.textoDe("TxtRenumeraDesdeNumero"), caso.quedaNumero) << caso.numero;
    }
    renumera.escape();
  });
}

TEST(Masivos, RenumberByDateWhateverTheSecondFieldSays) {
  DiarioDelTrimestre e;
  tecleaLinea(*e.t, e.guion, e.ctx.sesion, {"", "10/01/2024", "57000001", "Suelto", "9", ""}, true);
  tecleaLinea(*e.t, e.guion, e.ctx.sesion, {"", "", "57200001", "Suelto", "", "9"}, false);
  e.compruebaBalance({{"57000001", 1, 9, 0}, {"57200001", 1, 0, -9}});
  e.factura("S0000000001", 121);
  e.cambia("Select * from Diario where NLinea=17", "Fecha", "09/01/2024");
  const QString numeros = "Select NAsiento from Diario order by NLinea";
  // From the second on: the last typed goes to its day, and the second line of the seventh, of a
  // later day, becomes an asiento of its own.
  Filas esperados = e.filas(numeros);
  for (QStringList& fila : esperados) {
    const int antes = fila[0].toInt();
    fila[0] = QString::number(antes == 121 ? 12 : antes > 10 ? antes + 2 : antes + antes / 10);
  }
  esperados[17] = QStringList("10");
  e.herramienta("MnuRenumeraDiario", "FrmRenumera", [&e](Teclado& renumera) {
    e.rellena(renumera, {{"TxtRenumeraAsientoDesde", "2"}, {"TxtRenumeraDesdeNumero", "50"}});
    e.guion.esperaDialogo("FrmCompruebaFechasAsientos", [](Teclado& d) { d.escape(); });
    renumera.llega("CmdRevisarFechas");
    renumera.intro();
    e.guion.esperaMensaje(kFin, "Fín");
    e.acepta(renumera);
  });
  EXPECT_EQ(e.filas(numeros), esperados);
  EXPECT_EQ(e.valor("Select Asiento from RSIVA"), "12");
  EXPECT_EQ(e.valor("Select Asiento from Empresa"), "123");
  e.compruebaBalance();

  // An invoice that isn't in the register is told, and the counter stays.
  e.cambia("Select * from Diario where NLinea=311", "ApunteIVA", "S0000000007");
  e.herramienta("MnuRenumeraDiario", "FrmRenumera", [&e](Teclado& renumera) {
    e.rellena(renumera, {{"TxtRenumeraAsientoDesde", "3"}});
    e.guion.esperaMensaje("Error 3021: No hay ningún registro en curso.", "Librano");
    e.acepta(renumera);
    EXPECT_TRUE(renumera.visible("Bar"));
    renumera.escape();
  });
  EXPECT_EQ(e.valor("Select Asiento from Empresa"), "123");
}

}  // namespace
