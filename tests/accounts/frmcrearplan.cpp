// Filling a plan by its dialog: the standing plan, another company's, and a company being created.
#include <gtest/gtest.h>

#include "accounts/plan.h"
#include "company/registro.h"

namespace {

const char* const kCasillas[] = {"ChkSubcuentas", "ChkTipoIva", "ChkTipoCartera",
                                 "ChkRestoCartera"};

DatosEmpresa empresa(const char* nombre, const char* cuenta, const char* subcuenta) {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.NombreEmpresa = nombre;
  datos.MayorN01 = cuenta;
  datos.SubCuN01 = subcuenta;
  return datos;
}

// Another open company, whose plan is to be filled from that of "Prueba".
class EscenarioCopia : public EscenarioPlan {
 public:
  EscenarioCopia() {
    inserta("Recibos", {{"Subcuenta", "43000001"}, {"Importe", 5.0}});
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
    const auto tipos = base->OpenRecordset("TiposIVA");
    tipos->Edit();
    tipos->Fields("IVA") = 5;
    tipos->Update();
    creaEmpresa(empresa("Nueva", "3", "8"));
    abreEmpresa("Nueva");
  }
};

TEST(FrmCrearPlan, SembrarDosVecesDejaElPlanYNoCambiaLoQueHabia) {
  EscenarioPlan e;
  Teclado lista = e.abreCon("FrmCuentasLista", 0);
  for (int vez = 0; vez < 2; ++vez) {
    e.guion.esperaDialogo("FrmCrearPlan", [](Teclado& d) {
      EXPECT_FALSE(d.control("TxtEmpresa").isEnabled());
      for (const char* casilla : kCasillas) EXPECT_FALSE(d.control(casilla).isEnabled());
      d.mnemonico('a');
    });
    lista.pulsa("CmdCrearPlan");
    EXPECT_EQ(e.filas("Cuentas").size(), 356u);
  }
  EXPECT_EQ(e.valor("Select Descripcion from Cuentas where Cuenta='572'"), "Bancos");
}

TEST(FrmCrearPlan, CopiaLoMarcadoYLosTiposCaenEnUnaSolaFila) {
  EscenarioCopia e;
  Teclado t = e.abreCon("FrmCrearPlan", 0);
  t.pulsa("OptCreaAPartirDe_1");
  t.elige("TxtEmpresa", "Prueba");
  for (const char* casilla : kCasillas) t.marca(casilla);
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmCrearPlan"));
  EXPECT_EQ(e.filas("Cuentas").size(), 2u);
  EXPECT_EQ(e.subcuenta("43000002"), "430|Bodegas Luna");
  EXPECT_EQ(e.valor("Select Importe from Recibos"), "5");
  // Row after row was written over the first one: where codes may repeat the last one remains, and
  // where they may not only its own fits.
  EXPECT_EQ(e.valor("Select Codigo from TipoRecibos"), "99");
  EXPECT_EQ(e.filas("TipoRecibos")[1][0], "02");
  EXPECT_EQ(e.filas("Select Codigo, IVA from TiposIVA")[0].join('|'), "01|5");
  EXPECT_EQ(e.filas("Select Codigo, IVA from TiposIVA")[1].join('|'), "02|7");
}

TEST(FrmCrearPlan, SeNiegaSobreLaMismaYSobreOtrasAnchuras) {
  EscenarioCopia e;
  e.creaEmpresa(empresa("Ancha", "4", "9"));
  e.creaEmpresa(empresa("Media", "4", "8"));
  Teclado t = e.abreCon("FrmCrearPlan", 0);
  t.pulsa("OptCreaAPartirDe_1");
  t.marca("ChkSubcuentas");
  t.elige("TxtEmpresa", "Nueva");
  e.guion.esperaMensaje("No puede copiar un plan de cuentas sobre la misma empresa");
  t.pulsa("CmdAceptar");
  t.elige("TxtEmpresa", "Ancha");
  e.guion.esperaMensaje(
      "El tamaño de las subcuentas es diferente en la empresa seleccionada y no se podra copiar el "
      "plan.",
      "Error");
  t.pulsa("CmdAceptar");
  EXPECT_TRUE(e.abierto("FrmCrearPlan"));
  // Back to the standing plan, what was chosen is dropped.
  t.pulsa("OptCreaAPartirDe_0");
  EXPECT_EQ(t.textoDe("TxtEmpresa"), "");
  EXPECT_FALSE(t.control<QAbstractButton>("ChkSubcuentas").isChecked());
  t.pulsa("OptCreaAPartirDe_1");
  t.elige("TxtEmpresa", "Media");  // differs in one width only
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmCrearPlan"));
}

TEST(FrmCrearPlan, AlCrearUnaEmpresaLlenaLaSuyaYCierraLosDos) {
  for (const bool acepta : {true, false}) {
    SCOPED_TRACE(acepta);
    EscenarioPlan e;
    registraCompany(*e.formularios);
    Teclado t = e.abreCon("FrmEmpresas", 1);
    t.escribe("TxtNombreEmpresa", "Filial");
    t.control<QLineEdit>("TxtMayNivel").setText("4");
    t.marca("OptCreaPlan");
    e.guion.esperaDialogo("FrmCrearPlan", [acepta](Teclado& d) {
      if (acepta)
        d.pulsa("CmdAceptar");
      else
        d.escape();
    });
    t.pulsa("CmdAceptar");
    EXPECT_FALSE(e.abierto("FrmEmpresas"));
    e.abreEmpresa("Filial");
    EXPECT_EQ(e.filas("Cuentas").size(), acepta ? 356u : 0u);
    EXPECT_EQ(e.valor("Select Cuenta from Cuentas"), acepta ? "1000" : "");
    e.abreEmpresa("Prueba");
    EXPECT_EQ(e.filas("Cuentas").size(), 2u);
  }
}

}  // namespace
