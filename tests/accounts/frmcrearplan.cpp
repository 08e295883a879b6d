// Filling a plan by its dialog: the standing plan, another company's, and a company being created.

#include "accounts/crearplan.h"
#include "accounts/plan.h"

namespace {

const char* const kCasillas[] = {"ChkSubcuentas", "ChkTipoIva", "ChkTipoCartera",
                                 "ChkRestoCartera"};

TEST(FrmCrearPlan, CopiaLoMarcadoYSeNiegaSobreLaMismaYSobreOtrasAnchuras) {
  EscenarioPlan e;
  e.inserta("Recibos", {{"Subcuenta", "43000001"}, {"Importe", 5.0}});
  e.cambia("TiposIVA", "IVA", 5);
  DatosEmpresa nueva = Escenario::empresaDePrueba();
  for (const char* nombre : {"Ancha", "Nueva"}) {
    nueva.NombreEmpresa = nombre;
    nueva.MayorN01 = *nombre == 'A' ? "4" : "3";
    nueva.SubCuN01 = *nombre == 'A' ? "9" : "8";
    e.creaEmpresa(nueva);
  }
  e.abreEmpresa("Nueva");

  Teclado t = e.abreCon("FrmCrearPlan", 0);
  const std::pair<const char*, const char*> negadas[] = {
      {"Nueva", "No puede copiar un plan de cuentas sobre la misma empresa"},
      {"Ancha",
       "El tamaño de las subcuentas es diferente en la empresa seleccionada y no se podra copiar "
       "el plan."}};
  for (const auto& [empresa, texto] : negadas) {
    t.pulsa("OptCreaAPartirDe_1");
    t.elige("TxtEmpresa", empresa);
    t.marca("ChkSubcuentas");
    e.guion.esperaMensaje(texto);
    t.pulsa("CmdAceptar");
    // Back to the standing plan, what was chosen is dropped.
    t.pulsa("OptCreaAPartirDe_0");
    EXPECT_EQ(t.textoDe("TxtEmpresa"), "");
    EXPECT_FALSE(t.control<QAbstractButton>("ChkSubcuentas").isChecked());
  }
  // Of two widths one may differ.
  const auto origen = e.abreBase("Prueba");
  EXPECT_TRUE(anchurasCopiables(*origen, 4, 8) && anchurasCopiables(*origen, 3, 9));
  for (const bool otraVez : {false, true}) {
    t = e.abreCon("FrmCrearPlan", 0);
    t.pulsa("OptCreaAPartirDe_1");
    t.elige("TxtEmpresa", "Prueba");
    for (const char* casilla : kCasillas) t.marca(casilla);
    // A second copy meets the cuentas of the first one.
    if (otraVez) e.guion.esperaMensaje(errorEnCaja(3022));
    t.pulsa("CmdAceptar");
    EXPECT_EQ(e.abierto("FrmCrearPlan"), otraVez);
  }
  EXPECT_EQ(e.filas("Cuentas").size(), 2u);
  EXPECT_EQ(e.subcuenta("43000002"), "430|Bodegas Luna");
  EXPECT_EQ(e.valor("Select Importe from Recibos"), "5");
  // Row after row was written over the first one: where codes may repeat the last one remains, and
  // where they may not only its own fits.
  for (const auto& [fuente, primeras] : {std::pair("Select Codigo from TipoRecibos", "99 02"),
                                         {"Select Codigo & '|' & IVA from TiposIVA", "01|5 02|7"}})
    EXPECT_EQ(e.filas(fuente)[0][0] + ' ' + e.filas(fuente)[1][0], primeras);
}

TEST(FrmCrearPlan, AlCrearUnaEmpresaLlenaLaSuyaYCierraLosDos) {
  const struct {
    const char* empresa;
    const char* opciones;  // the keys that pick them
    const char* boton;
    size_t cuentas;
    const char* primera;
  } casos[] = {{"Filial", "", "CmdAceptar", 356, "1000|Capital social|1|10|Falso"},
               {"Nueva ley", "2", "CmdAceptar", 608, "1000|Capital social|1|10|Falso"},
               {"Grande", "2N", "CmdAceptar", 715, "1000|Capital social|1|10|Falso"},
               {"Vacía", "", "CmdCancelar", 0, ""}};
  EscenarioPlan e;
  registraCompany(*e.formularios);
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.empresa);
    Teclado t = e.abreCon("FrmEmpresas", 1);
    t.escribe("TxtNombreEmpresa", caso.empresa);
    t.control<QLineEdit>("TxtMayNivel").setText("4");
    t.marca("OptCreaPlan");
    e.guion.esperaDialogo("FrmCrearPlan", [&](Teclado& d) {
      for (const char* casilla : kCasillas) EXPECT_FALSE(d.control(casilla).isEnabled());
      EXPECT_FALSE(d.control("OptModelo_0").isEnabled());
      for (const char* letra = caso.opciones; *letra; ++letra) d.mnemonico(QLatin1Char(*letra));
      d.pulsa(caso.boton);
    });
    t.pulsa("CmdAceptar");
    EXPECT_FALSE(e.abierto("FrmEmpresas"));
    e.abreEmpresa(caso.empresa);
    EXPECT_EQ(e.filas("Cuentas").size(), caso.cuentas);
    EXPECT_EQ(e.fila("Cuentas"), caso.primera);
    // Subgroups of the old plan that no account is left in go.
    EXPECT_EQ(e.fila("Select * from Nivel02 where NNivel='27'").isEmpty(), *caso.opciones == '2');
    e.abreEmpresa("Prueba");
    EXPECT_EQ(e.filas("Cuentas").size(), 2u);
  }
}

}  // namespace
