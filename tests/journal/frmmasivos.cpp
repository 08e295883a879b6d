// Duplicating, changing in mass and deleting asientos, by their keys.
#include "journal/herramientas.h"

namespace {

const QString kLineas = QStringLiteral("Select NLinea from Diario");

TEST(FrmDuplicarAsiento, CopiesUnderTheNextNumbers) {
  Herramientas e;
  e.t->pulsa("CmdUltimo");
  e.dialogo("MnuDuplicaAsiento", "FrmDuplicarAsiento", [&e](Teclado& duplica) {
    EXPECT_EQ(duplica.textoDe("TxtAsiento"), "2");
    EXPECT_EQ(duplica.textoDe("TxtEmpresa"), "Prueba");
    EXPECT_EQ(duplica.textoDe("TxtFecha"), "05/02/2003");
    EXPECT_EQ(e.rejilla().filas(), 2);  // the asiento is on show meanwhile
    duplica.escribe("TxtFecha", "0703");
    duplica.intro();
    EXPECT_EQ(duplica.textoDe("TxtFecha"), "07/03/2003");
    duplica.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select NLinea, NAsiento, Fecha, Subcuenta, Importe from Diario where NLinea>3 "
                    "order by NLinea"),
            (Filas{{"4", "3", "07/03/2003", "57200001", "30"},
                   {"5", "3", "07/03/2003", "43000001", "-30"}}));
  EXPECT_EQ(e.contador("Asiento"), "4");
  EXPECT_EQ(e.contador("NLinDiario"), "6");
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"},
                                {"43000001", "0", "-30", "2"},
                                {"43000001", "0", "-30", "3"},
                                {"57000001", "100", "0", "1"},
                                {"57200001", "30", "0", "2"},
                                {"57200001", "30", "0", "3"}}));
}

TEST(FrmDuplicarAsiento, CarriesAnAsientoToAnotherCompany) {
  Herramientas e;
  DatosEmpresa otra = Escenario::empresaDePrueba();
  otra.NombreEmpresa = "Sucursal";
  e.creaEmpresa(otra);
  otra.NombreEmpresa = "Ancha";
  otra.SubCuN01 = "9";
  e.creaEmpresa(otra);
  e.registroDeIVA("S0000000041", 1);
  e.cambia("Select * from Diario where NLinea=0", "ApunteIVA", "S0000000041");
  e.t->pulsa("CmdRecargar");
  e.t->pulsa("CmdPrimero");
  e.dialogo("MnuDuplicaAsiento", "FrmDuplicarAsiento", [&e](Teclado& duplica) {
    duplica.elige("TxtEmpresa", "Ancha");
    e.guion.esperaMensaje(
        "El tamaño de las subcuentas en la empresa destino no son iguales a las del origen, el "
        "proceso se cancelara",
        "Atención");
    duplica.pulsa("CmdAceptar");
    if (!duplica.forma().isVisible()) return;
    duplica.elige("TxtEmpresa", "Sucursal");
    duplica.marca("ChkEliminaAsiento");
    duplica.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.diario().size(), 2u);
  EXPECT_TRUE(e.filas("Select Codigo from RSIVA").empty());
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-30", "2"}, {"57200001", "30", "0", "2"}}));
  e.abreEmpresa("Sucursal");
  EXPECT_EQ(e.filas("Select NLinea, NAsiento, Subcuenta, Importe, ApunteIVA from Diario"),
            (Filas{{"0", "1", "57000001", "100", "S0000000001"},
                   {"1", "1", "43000001", "-100", "S0000000001"}}));
  EXPECT_EQ(e.filas("Select Codigo, Asiento from RSIVA"), (Filas{{"S0000000001", "1"}}));
  EXPECT_EQ(e.filas("Select Asiento, NLinDiario, NLinIvaS from Empresa"), (Filas{{"2", "2", "1"}}));
}

struct Cambio {
  const char* campo;
  const char* localizar;
  const char* cambiar;
};

TEST(FrmCambiadatos, ReplacesWhatItFinds) {
  const struct {
    Cambio cambio;
    const char* consulta;
    Filas queda;
  } casos[] = {
      {{"Subcuenta", "43.1", "57.1"},
       "Select NLinea from Diario where Subcuenta='57000001' order by NLinea",
       {{"0"}, {"1"}, {"3"}}},
      {{"Fecha", "0502", "0603"},
       "Select NLinea, Fecha from Diario where NLinea>1 order by NLinea",
       {{"2", "06/03/2003"}, {"3", "06/03/2003"}}},
      {{"Descripcion", "Apu*", "Cobro"},
       "Select Descripcion from Diario group by Descripcion",
       {{"Cobro"}}},
      {{"Importe", "30", "31"}, "Select NLinea from Diario where Importe=31", {{"2"}}},
      {{"NAsiento", "1", "7"},
       "Select NLinea from Diario where NAsiento=7 order by NLinea",
       {{"0"}, {"1"}}},
  };
  Herramientas e;
  for (const auto& caso : casos) {
    e.dialogo("MnuCambiaAsientos", "FrmCambiadatos", [&caso](Teclado& cambia) {
      EXPECT_EQ(cambia.textoDe("TxtFechaDesde"), "01/01/2003");
      EXPECT_EQ(cambia.textoDe("TxtFechaHasta"), "31/12/2003");
      cambia.elige("TxtCampo", QString::fromLatin1(caso.cambio.campo));
      cambia.escribe("TxtDatoLoc", QString::fromLatin1(caso.cambio.localizar));
      cambia.escribe("TxtDatoCam", QString::fromLatin1(caso.cambio.cambiar));
      cambia.pulsa("CmdAceptar");
      EXPECT_FALSE(cambia.forma().isVisible()) << caso.cambio.campo;
    });
    EXPECT_EQ(e.filas(QString::fromLatin1(caso.consulta)), caso.queda) << caso.cambio.campo;
  }
  EXPECT_EQ(e.balance(), (Filas{{"57000001", "100", "-100", "1"},
                                {"57000001", "0", "-30", "3"},
                                {"57200001", "31", "0", "3"}}));
}

TEST(FrmCambiadatos, SaysWhyItCanNot) {
  const QString kVacio = "No existe ningun apunte entre los límites seleccionados";
  const struct {
    Cambio cambio;
    const char* hasta;
    QString aviso;
  } casos[] = {
      {{"Importe", "31", "32"}, "3112", kVacio},
      // The limits are read month first: up to the third of January.
      {{"Fecha", "0502", "0603"}, "0103", kVacio},
      {{"NAsiento", "", "3"}, "3112", "Una de las casillas no la ha rellenado correctamente"},
      {{"NAsiento", "1", "siete"},
       "3112",
       "El dato a convertir en la casilla de dato a cambiar, no es correcto"},
  };
  Herramientas e;
  const Filas antes = e.diario();
  for (const auto& caso : casos) {
    e.dialogo("MnuCambiaAsientos", "FrmCambiadatos", [&](Teclado& cambia) {
      cambia.elige("TxtCampo", QString::fromLatin1(caso.cambio.campo));
      cambia.escribe("TxtDatoLoc", QString::fromLatin1(caso.cambio.localizar));
      cambia.escribe("TxtDatoCam", QString::fromLatin1(caso.cambio.cambiar));
      cambia.escribe("TxtFechaHasta", QString::fromLatin1(caso.hasta));
      e.guion.esperaMensaje(caso.aviso, "Error");
      cambia.pulsa("CmdAceptar");
      EXPECT_FALSE(cambia.visible("Bar"));
      cambia.escape();
    });
  }
  EXPECT_EQ(e.diario(), antes);
}

TEST(FrmCambiadatos, DeletesWholeAsientos) {
  Herramientas e;
  e.dialogo("MnuCambiaAsientos", "FrmCambiadatos", [&e](Teclado& cambia) {
    cambia.escribe("TxtDatoCam", "9");
    cambia.marca("ChkEliminarAsientos");
    EXPECT_EQ(cambia.textoDe("TxtDatoCam"), "");
    EXPECT_FALSE(cambia.control("TxtDatoCam").isEnabled());
    e.guion.esperaMensaje("No se puede eliminar asientos a la vez que localiza por ellos",
                          "Ejecución anulada");
    cambia.pulsa("CmdAceptar");
    cambia.marca("ChkEliminarAsientos", false);
    EXPECT_TRUE(cambia.control("TxtDatoCam").isEnabled());
    // Both lines of the asiento are of that day: the second is gone when its turn comes.
    cambia.marca("ChkEliminarAsientos");
    cambia.elige("TxtCampo", "Fecha");
    cambia.escribe("TxtDatoLoc", "0502");
    cambia.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.balance(), (Filas{{"43000001", "0", "-100", "1"}, {"57000001", "100", "0", "1"}}));
}

// Some line in the middle can't be written: the failure is told, and what was done before stays.
TEST(FrmCambiadatos, StopsAtALineThatFails) {
  Herramientas e;
  e.ctx.motor.flush();
  QProcess::execute("sqlite3", {e.carpetaDatos() + "/Prueba/Conta.MDB",
                                "CREATE UNIQUE INDEX unCobro ON Diario(Descripcion) WHERE "
                                "Descripcion='Cobro' AND NLinea>0"});
  e.dialogo("MnuCambiaAsientos", "FrmCambiadatos", [&e](Teclado& cambia) {
    cambia.elige("TxtCampo", "Descripcion");
    cambia.escribe("TxtDatoLoc", "Apunte");
    cambia.escribe("TxtDatoCam", "Cobro");
    e.guion.esperaMensaje("Ya existe un registro con esa clave; no se han guardado los cambios.",
                          "Error");
    cambia.pulsa("CmdAceptar");
    EXPECT_FALSE(cambia.visible("Bar"));
    cambia.escape();
  });
  EXPECT_EQ(e.filas("Select Descripcion from Diario order by NLinea"),
            (Filas{{"Cobro"}, {"Cobro"}, {"Apunte"}, {"Apunte"}}));
}

TEST(FrmEliminaAsiento, WarnsAndTakesTheRegisterAlong) {
  Herramientas e;
  for (const char* linea : {"0", "1"}) {
    e.cambia(QString("Select * from Diario where NLinea=%1").arg(linea), "ApunteIVA",
             "S0000000001");
  }
  e.cambia("Select * from Diario where NLinea=0", "FacturaZuri", "F-1");
  e.registroDeIVA("S0000000001", 1);
  e.registroDeIVA("S0000000002", 2);
  const auto elimina = [&e](const char* boton) {
    e.t->pulsa("CmdRecargar");
    e.t->pulsa("CmdPrimero");
    e.dialogo("MnuEliminarapunte", "FrmEliminaAsiento", [&](Teclado& forma) {
      EXPECT_EQ(e.rejilla().filas(), 2);
      forma.pulsa(boton);
    });
  };
  elimina("CmdCancelar");
  EXPECT_EQ(e.diario().size(), 4u);
  e.t->pulsa("CmdRecargar");
  e.t->pulsa("CmdPrimero");
  e.dialogo("MnuEliminarapunte", "FrmEliminaAsiento", [&e](Teclado& forma) {
    EXPECT_EQ(forma.textoDe("LblAsiento"), "1");
    e.guion.esperaMensaje(
        "Atención este apunte se ha creado con Almirel, si lo elimina desde aquí, no eliminara la "
        "factura relaccionada",
        "Almirel");
    e.guion.esperaMensaje(
        "La partida que va a eliminar es un apunte de IVA, si la elimina se eliminara el apunte de "
        "IVA asociado",
        "ATENCION!!!");
    forma.pulsa("CmdAceptar");
  });
  EXPECT_EQ(e.filas("Select Codigo from RSIVA"), (Filas{{"S0000000002"}}));
  EXPECT_EQ(e.rejilla().filas(), 2);
  EXPECT_EQ(e.rejilla().filaActual(), 1);
  EXPECT_EQ(e.totales("Total"), QStringList({"30,00 ", "-30,00", "0,00 "}));
  // An ordinary one goes without a word.
  elimina("CmdAceptar");
  EXPECT_EQ(e.filas(kLineas), Filas());
  EXPECT_EQ(e.balance(), Filas());
}

}  // namespace
