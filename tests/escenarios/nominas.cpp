// Payrolls over the quarter's books, by keys.
#include "escenarios/herramientas.h"

namespace {

class Nominas : public DiarioDelTrimestre {
 protected:
  void rellenaConAnticipo(Teclado& d) const {
    d.pulsa("ChkAnticipos");
    rellena(d, {{"TxtSubAnticipos", "57000001"},
                {"TxtImpAnticipos", "100"},
                {"TxtsubCaja", "57000001"},
                {"TxtFecha", "3103"},
                {"TxtSubSueldoBruto", "64000001"},
                {"TxtImpSueldoBruto", "1000"}});
  }
};

TEST_F(Nominas, LoQueSeRechazaDejaLoTecleado) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    guion.esperaMensaje("Le faltan datos de rellenar para la creación de la nomina", "Error");
    d.pulsa("CmdAceptar");
    EXPECT_EQ(d.enfocado(), "TxtImpSueldoBruto");
    rellenaConAnticipo(d);
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
    guion.esperaMensaje(errorEnCaja(3421, "ciento"), "Librano");
    acepta(d);
    EXPECT_EQ(d.textoDe("TxtApunteN"), "ciento");
    comprueba();
    d.enfoca("TxtApunteN");
    rellena(d, {{"TxtApunteN", "120"}});
    acepta(d);
  });
  t->pulsa("Command13");
  anota(120, "31/03/2024", "Nomina Sueldos y salarios", {{"64000001", 1000}, {"57000001", -1000}});
  comprueba();
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa")[0], QStringList({"121", "314"}));
}

TEST_F(Nominas, UnaAceptacionQueFallaSePuedeRepetir) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    rellenaConAnticipo(d);
    d.llega("CmdAceptar");
    fallaAlAceptar(d, "TxtImpCaja", "900,00 ");
    EXPECT_EQ(d.textoDe("TxtApunteN"), "<Auto>");
    acepta(d);
  });
  t->pulsa("Command13");
  for (const auto& [subcuenta, texto, importe] : {std::tuple("64000001", "Nomina", 1000.0),
                                                  {"57000001", "Anticipos", -100.0},
                                                  {"57000001", "Nomina", -900.0}})
    anota(121, "31/03/2024", QString(texto) + " Sueldos y salarios", {{subcuenta, importe}});
  comprueba();
  // Left by the mouse, a code that isn't there asks nothing and writes nothing.
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    d.enfoca("TxtsubCaja");
    d.teclea("57000099");
    d.pulsa("CmdCancelar");
  });
  t->pulsa("Command13");
  comprueba();
}

}  // namespace
