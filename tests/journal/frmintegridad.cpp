// Squaring, checking dates and renumbering, by their keys.
#include "accounts/registro.h"
#include "journal/herramientas.h"

namespace {

const QString kFin = QStringLiteral("Proceso terminado con exito");

struct Descuadrado : Herramientas {
  Descuadrado() {
    registraAccounts(*formularios);
    asiento(10, 5, "01/01/2003", "57000001", 9);
    asiento(11, 6, "10/03/2003", "57000001", 8);
    asiento(12, 7, "11/03/2003", "57000001", -7.5);
    asiento(13, 8, "12/03/2003", "57000001", 0.001);
    cambia("Select * from Empresa", "NLinDiario", 14);
  }
  Filas cuadres() const {
    return filas(
        "Select NLinea, NAsiento, Fecha, Subcuenta, DH, Importe from Diario where "
        "Descripcion='Descuadre Automático' order by NLinea");
  }
};

TEST(FrmCuadrarAsientos, PostsWhatIsMissingWhenAnswered) {
  Descuadrado e;
  const QString cuadrar = "Asiento %1 descuadrado, ¿desea cuadrar el asiento?";
  e.dialogo("MnuCuadrarAsientosAutomaticamente", "FrmCuadrarAsientos", [&](Teclado& cuadra) {
    EXPECT_EQ(cuadra.textoDe("TxtDesde"), "01/01/2003");
    EXPECT_EQ(cuadra.textoDe("TxtHasta"), "31/12/2003");
    cuadra.teclea("572.1");
    cuadra.intro();
    EXPECT_EQ(cuadra.textoDe("TxtSubcuenta"), "57200001");
    EXPECT_EQ(cuadra.textoDe("LblCuenta"), "Banco");
    EXPECT_EQ(cuadra.enfocado(), "TxtDesde");
    // The one of the first of January stands on the limit, and a thousandth is square.
    e.guion.esperaPregunta(cuadrar.arg(6), false, "Descuadre localizado");
    e.guion.esperaPregunta(cuadrar.arg(7), true, "Descuadre localizado");
    e.guion.esperaMensaje("Fín de la busqueda de cuadrar asientos descuadrados", "Fín");
    cuadra.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.cuadres(), (Filas{{"14", "7", "11/03/2003", "57200001", "D", "7,5"}}));

  e.dialogo("MnuCuadrarAsientosAutomaticamente", "FrmCuadrarAsientos", [&](Teclado& cuadra) {
    // A code that isn't there leads to the plan, which gives back the one chosen.
    e.guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.intro(); });
    cuadra.teclea("43000");
    cuadra.intro();
    EXPECT_EQ(cuadra.enfocado(), "TxtSubcuenta");
    EXPECT_EQ(cuadra.textoDe("TxtSubcuenta"), "43000001");
    cuadra.marca("ChkSolicitar");
    e.guion.esperaMensaje("Fín de la busqueda de cuadrar asientos descuadrados", "Fín");
    cuadra.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.cuadres(), (Filas{{"14", "7", "11/03/2003", "57200001", "D", "7,5"},
                                {"15", "6", "10/03/2003", "43000001", "H", "-8"}}));
  EXPECT_EQ(e.contador("NLinDiario"), "16");
  EXPECT_EQ(e.rejilla().texto(0, 3), "6");
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"},
                                {"43000001", "0", "-30", "2"},
                                {"43000001", "0", "-8", "3"},
                                {"57000001", "109", "0", "1"},
                                {"57000001", "8,001", "-7,5", "3"},
                                {"57200001", "30", "0", "2"},
                                {"57200001", "7,5", "0", "3"}}));
}

TEST(FrmCompruebaFechasAsientos, GivesEachAsientoItsEarliestDateInTheYear) {
  Herramientas e;
  e.asiento(10, 5, "03/02/2003", "57000001", 9);
  e.asiento(11, 5, "01/02/2003", "43000001", -9);
  e.asiento(12, 6, "10/03/1999", "57200001", 8);
  e.dialogo("MnuCompruebaFechasAsientos", "FrmCompruebaFechasAsientos",
            [](Teclado& comprueba) { comprueba.cierra(); });
  EXPECT_EQ(e.valor("Select Fecha from Diario where NLinea=10"), "03/02/2003");
  e.dialogo("MnuCompruebaFechasAsientos", "FrmCompruebaFechasAsientos", [&e](Teclado& comprueba) {
    e.guion.esperaMensaje(kFin, "Fín");
    comprueba.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select NAsiento, Fecha from Diario order by NLinea"),
            (Filas{{"1", "02/01/2003"},
                   {"1", "02/01/2003"},
                   {"2", "05/02/2003"},
                   {"2", "05/02/2003"},
                   {"5", "01/02/2003"},
                   {"5", "01/02/2003"},
                   {"6", "10/03/2003"}}));
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"},
                                {"43000001", "0", "-39", "2"},
                                {"57000001", "100", "0", "1"},
                                {"57000001", "9", "0", "2"},
                                {"57200001", "30", "0", "2"},
                                {"57200001", "8", "0", "3"}}));
}

TEST(FrmRenumera, ComparesItsNumbersAsTexts) {
  const struct {
    const char* desde;
    const char* numero;
    const char* quedaDesde;
    const char* quedaNumero;
  } casos[] = {
      {"1", "1", "1", "1"}, {"9", "10", "9", "9"},      {"10", "9", "10", "9"},
      {"x", "0", "1", "1"}, {"20", "nada", "20", "20"}, {"3", "30", "3", "30"},
  };
  Herramientas e;
  e.dialogo("MnuRenumeraDiario", "FrmRenumera", [&casos](Teclado& renumera) {
    for (const auto& caso : casos) {
      renumera.escribe("TxtRenumeraAsientoDesde", QString::fromLatin1(caso.desde));
      renumera.intro();
      EXPECT_EQ(renumera.enfocado(), "TxtRenumeraDesdeNumero");
      renumera.teclea(QString::fromLatin1(caso.numero));
      renumera.intro();
      EXPECT_EQ(renumera.textoDe("TxtRenumeraAsientoDesde"), caso.quedaDesde) << caso.desde;
      EXPECT_EQ(renumera.textoDe("TxtRenumeraDesdeNumero"), caso.quedaNumero) << caso.numero;
    }
    renumera.cierra();
  });
}

TEST(FrmRenumera, NumbersByDateWhateverTheSecondFieldSays) {
  Herramientas e;
  e.asiento(10, 9, "01/02/2003", "57000001", 9, "S0000000001");
  e.asiento(11, 9, "01/02/2003", "43000001", -9, "S0000000001");
  e.registroDeIVA("S0000000001", 9);
  const Filas saldos = e.balance();
  e.dialogo("MnuRenumeraDiario", "FrmRenumera", [&e](Teclado& renumera) {
    renumera.escribe("TxtRenumeraAsientoDesde", "2");
    renumera.escribe("TxtRenumeraDesdeNumero", "50");
    e.guion.esperaDialogo("FrmCompruebaFechasAsientos",
                          [](Teclado& comprueba) { comprueba.escape(); });
    renumera.pulsa("CmdRevisarFechas");
    e.guion.esperaMensaje(kFin, "Fín");
    renumera.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select NLinea, NAsiento from Diario order by NLinea"),
            (Filas{{"0", "1"}, {"1", "1"}, {"2", "3"}, {"3", "3"}, {"10", "2"}, {"11", "2"}}));
  EXPECT_EQ(e.valor("Select Asiento from RSIVA"), "2");
  EXPECT_EQ(e.contador("Asiento"), "4");
  EXPECT_EQ(e.balance(), saldos);
}

// The invoice of a line in the middle isn't in the register: the failure is told, and what was done
// before stays.
TEST(FrmRenumera, StopsAtALineThatFails) {
  Herramientas e;
  e.asiento(10, 9, "06/02/2003", "57000001", 9, "S0000000007");
  e.asiento(11, 12, "07/02/2003", "57000001", 9);
  e.cambia("Select * from Diario where NLinea=0", "NAsiento", 3);
  e.cambia("Select * from Diario where NLinea=1", "NAsiento", 3);
  e.dialogo("MnuRenumeraDiario", "FrmRenumera", [&e](Teclado& renumera) {
    e.guion.esperaMensaje("Error 3021: No hay ningún registro en curso.", "Librano");
    renumera.pulsa("CmdAceptar");
    EXPECT_TRUE(renumera.visible("Bar"));
    renumera.escape();
  });
  EXPECT_EQ(e.filas("Select NLinea, NAsiento from Diario order by NLinea"),
            (Filas{{"0", "1"}, {"1", "1"}, {"2", "2"}, {"3", "2"}, {"10", "3"}, {"11", "12"}}));
  EXPECT_EQ(e.contador("Asiento"), "3");
}

}  // namespace
