// The plan of 2007 over a company that stands, by its screen.

#include "soporte/escenario.h"

namespace {

class FrmPlan2007 : public testing::Test, protected Escenario {
 protected:
  FrmPlan2007() {
    registraFormularios(*formularios);
    inserta("Cuentas", {{"Cuenta", "210"}, {"Descripcion", "I+D"}, {"SubGrupoN", "21"}});
  }
  // What the screen says of a cuenta.
  static QString fila(const Teclado& t, const QString& cuenta) {
    const auto& tabla = t.control<QTableWidget>("GrdPlan");
    for (int i = 0; i < tabla.rowCount(); ++i)
      if (tabla.item(i, 0)->text() == cuenta)
        return tabla.item(i, 1)->text() + '|' + tabla.item(i, 2)->text() + '|' +
               tabla.item(i, 3)->text();
    return {};
  }
  const QString pregunta =
      "Hay cuentas que en la empresa se llaman de otra manera, y en el plan de 2007 su código "
      "puede significar otra cosa. Si la empresa lleva el plan anterior, haga antes la conversión. "
      "¿Desea seguir?";
};

TEST_F(FrmPlan2007, EnsenaLoQueTraeYLoTraeSiSeQuiere) {
  Teclado t(abre("FrmPlan2007"));
  EXPECT_EQ(fila(t, "210"), "I+D|Terrenos y bienes naturales|Se queda como está");
  EXPECT_EQ(fila(t, "100"), "|Capital social|Se crea");
  EXPECT_EQ(t.textoDe("LblResumen"),
            "Cuentas del plan: 347   Se crean: 346   Con otro nombre en la empresa: 1");
  EXPECT_EQ(fila(t, "178"), "");
  t.mnemonico('N');
  EXPECT_NE(fila(t, "178"), "");
  t.mnemonico('Y');
  guion.esperaPregunta(pregunta, false);
  t.pulsa("CmdAceptar");
  t.escape();
  EXPECT_EQ(filas("Cuentas").size(), 1u);
  t = Teclado(abre("FrmPlan2007"));
  t.marca("ChkNombres");
  EXPECT_EQ(fila(t, "210"), "I+D|Terrenos y bienes naturales|Cambia de nombre");
  guion.esperaPregunta(pregunta, true);
  t.pulsa("CmdAceptar");
  EXPECT_EQ(formularios->abierto("FrmPlan2007"), nullptr);
  EXPECT_EQ(valor("Select Descripcion from Cuentas where Cuenta='210'"),
            "Terrenos y bienes naturales");
  EXPECT_EQ(filas("Cuentas").size(), 347u);
  EXPECT_EQ(valor("Select Plan from PlanOficial"), "2007 PYMES");
}

}  // namespace
