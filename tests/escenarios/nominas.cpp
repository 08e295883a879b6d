// Payrolls over the quarter's books, by keys.
#include "escenarios/herramientas.h"

namespace {

using Nominas = DiarioDelTrimestre;

TEST_F(Nominas, UnaNominaEnteraPorElTeclado) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Asiento contable de tipo nomina ( Automátizado )");
    EXPECT_EQ(d.textoDe("TxtApunteN"), "<Auto>");
    const auto enter = [&](const QString& texto) {
      d.teclea(texto);
      d.intro();
    };
    // A check mark put with the space bar goes on to its subcuenta; Enter passes it by.
    EXPECT_EQ(d.enfocado(), "TxtFecha");
    for (const char* texto : {"3103", "", "640.1", "1500"}) enter(texto);
    EXPECT_EQ(d.textoDe("LblSubSueldoBruto"), "Sueldos y salarios");
    EXPECT_EQ(d.enfocado(), "ChkSSCargoEmpresa");
    EXPECT_EQ(d.textoDe("TxtImpCaja"), "1.500,00 ");
    d.tecla(Qt::Key_Space);
    EXPECT_EQ(d.enfocado(), "TxtSubSSCargoEmpresa");
    for (const char* texto : {"642.1", "400", "95.25"}) enter(texto);
    EXPECT_EQ(d.textoDe("TxtImpOrganismosSSAcreedora"), "495,25 ");
    d.tecla(Qt::Key_Space);
    for (const char* texto : {"476.1", ""}) enter(texto);
    EXPECT_EQ(d.enfocado(), "ChkRetenciones");
    d.tecla(Qt::Key_Space);
    // Looked for by name, in the plan.
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) {
      plan.llega("TxtBusquedaCuentas");
      plan.teclea("H.P. ret");
      plan.intro();
    });
    d.tecla(Qt::Key_F2);
    EXPECT_EQ(d.textoDe("LblSubRetenciones"), "H.P. retenciones I.R.P.F.");
    for (const char* texto : {"", "225"}) enter(texto);
    EXPECT_EQ(d.enfocado(), "ChkAnticipos");
    d.intro();
    d.intro();
    EXPECT_EQ(d.enfocado(), "TxtsubCaja");
    enter("572.1");
    enter("1");  // a net can't be forced
    EXPECT_EQ(d.textoDe("TxtImpCaja"), "1.179,75 ");
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    d.intro();
  });
  t->pulsa("Command13");
  const std::pair<const char*, double> lineas[] = {{"64000001 Nomina ", 1500},
                                                   {"64200001 S.S.Emp+TR ", 400},
                                                   {"47600001 S.S.Acreedora ", -495.25},
                                                   {"47510001 Retencion ", -225},
                                                   {"57200001 Nomina ", -1179.75}};
  int numero = 312;
  for (const auto& [texto, importe] : lineas) {
    libro[numero++] = {121, "31/03/2024", QString(texto).left(8),
                       QString(texto).mid(9) + "Sueldos y salarios", importe};
  }
  comprueba();
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa")[0], QStringList({"122", "317"}));
}

TEST_F(Nominas, LoQueSeRechazaDejaLoTecleado) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    guion.esperaMensaje("Le faltan datos de rellenar para la creación de la nomina", "Error");
    d.pulsa("CmdAceptar");
    EXPECT_EQ(d.enfocado(), "TxtImpSueldoBruto");
    d.pulsa("ChkAnticipos");
    rellena(d, {{"TxtSubAnticipos", "57000001"},
                {"TxtImpAnticipos", "100"},
                {"TxtsubCaja", "57000001"},
                {"TxtFecha", "3103"},
                {"TxtSubSueldoBruto", "64000001"},
                {"TxtImpSueldoBruto", "1000"}});
    d.llega("ChkAnticipos");
    EXPECT_EQ(d.textoDe("TxtImpCaja"), "900,00 ");
    // Switched off its amount is zero, and the net follows at the next box that is left.
    d.tecla(Qt::Key_Space);
    EXPECT_EQ(d.textoDe("TxtImpAnticipos"), "0,00 ");
    EXPECT_FALSE(d.control("TxtImpAnticipos").isEnabled());
    guion.esperaMensaje("El apunte no puede ser creado, la causa: (esta descuadrado)",
                        "Asiento descuadrado");
    d.pulsa("CmdAceptar");
    EXPECT_EQ(d.enfocado(), "TxtImpSueldoBruto");
    d.intro();
    EXPECT_EQ(d.textoDe("TxtImpCaja"), "1.000,00 ");
    rellena(d, {{"TxtApunteN", "ciento"}});
    guion.esperaMensaje("Error 3421: " + descripcionDeError(3421) + ": ciento", "Librano");
    acepta(d);
    EXPECT_EQ(d.textoDe("TxtApunteN"), "ciento");
    comprueba();
    d.enfoca("TxtApunteN");
    rellena(d, {{"TxtApunteN", "120"}});
    acepta(d);
  });
  t->pulsa("Command13");
  libro[312] = {120, "31/03/2024", "64000001", "Nomina Sueldos y salarios", 1000};
  libro[313] = {120, "31/03/2024", "57000001", "Nomina Sueldos y salarios", -1000};
  comprueba();
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa")[0], QStringList({"121", "314"}));
}

TEST_F(Nominas, UnaAceptacionQueFallaSePuedeRepetirYBajoCualquierMascara) {
  const std::vector<std::pair<const char*, QString>> campos = {
      {"TxtSubAnticipos", "57000001"},   {"TxtImpAnticipos", "100"},
      {"TxtsubCaja", "57000001"},        {"TxtFecha", "3103"},
      {"TxtSubSueldoBruto", "64000001"}, {"TxtImpSueldoBruto", "1000"}};
  int numero = 312, asiento = 121;
  for (const QString& mascara :
       {ctx.sesion.MascaraImporte, QString("#,##0.00 €;(#,##0.00 €)"), QString("#,###")}) {
    const bool primera = mascara == ctx.sesion.MascaraImporte;
    ctx.sesion.MascaraImporte = mascara;
    guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
      EXPECT_EQ(d.textoDe("TxtImpRenumeracionesPP"), Format("0", mascara));
      d.pulsa("ChkAnticipos");
      rellena(d, campos);
      d.llega("CmdAceptar");
      EXPECT_EQ(d.textoDe("TxtImpCaja"), Format(900, mascara));
      if (primera) fallaAlAceptar(d, "TxtImpCaja", Format(900, mascara));
      EXPECT_EQ(d.textoDe("TxtApunteN"), "<Auto>");
      acepta(d);
    });
    t->pulsa("Command13");
    for (const auto& [texto, importe] :
         {std::pair("64000001 Nomina ", 1000), std::pair("57000001 Anticipos ", -100),
          std::pair("57000001 Nomina ", -900)})
      libro[numero++] = {asiento, "31/03/2024", QString(texto).left(8),
                         QString(texto).mid(9) + "Sueldos y salarios", double(importe)};
    ++asiento;
    EXPECT_EQ(lee(), libro) << qPrintable(mascara);
  }
  // Left by the mouse, a code that isn't there asks nothing and writes nothing.
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    d.enfoca("TxtsubCaja");
    d.teclea("57000099");
    d.pulsa("CmdCancelar");
  });
  t->pulsa("Command13");
  EXPECT_EQ(lee(), libro);
}

}  // namespace
