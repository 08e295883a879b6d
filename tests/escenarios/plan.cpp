// The plan of accounts of a shop, from an empty folder to the one its first quarter needs and a
// copy of it in a second company, by the keyboard alone.

#include "soporte/escenario.h"

namespace {

constexpr size_t kCuentasDelPlan = 356;
const char* const kNoExiste =
    "El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ";

class EscenarioPlanTecleado : public Escenario {
 public:
  EscenarioPlanTecleado() : Escenario(Carpetas) { reloj.ponEn(QDate(2024, 1, 2)); }

  QString nombreDe(const QString& subcuenta) const {
    return valor("Select Descripcion from Subcuentas where Subcuenta='" + subcuenta + "'");
  }
  // In TxtSubcuenta of the main window, where the focus comes back to.
  void escribe(const QString& subcuenta) {
    t.teclea(subcuenta);
    t.intro();
    t.atras();
  }
  // From the main window to the browser, and back after it.
  void enPlan(const std::function<void(Teclado&)>& paso) {
    guion.esperaDialogo("FrmVisualizaPlan", [&](Teclado& plan) {
      paso(plan);
      plan.escape();
    });
    t.tecla(Qt::Key_F2);
  }
  // Through it to the list of cuentas, and back.
  void enCuentas(const std::function<void(Teclado&)>& paso) {
    enPlan([&](Teclado& plan) {
      guion.esperaDialogo("FrmCuentasLista", [&](Teclado& lista) {
        paso(lista);
        lista.escape();
      });
      plan.mnemonico('c');
    });
  }

  Teclado t{empiezaEmpresa(ctx, guion, "Comercial Ejemplo")};
};

// Down the grid until its row has this code.
void bajaHasta(Teclado& t, const char* rejilla, const QString& campo, const QString& codigo) {
  auto& grid = t.control<Rejilla>(rejilla);
  t.llega(rejilla);
  t.tecla(Qt::Key_Home, Qt::ControlModifier);
  for (int fila = 0; fila < grid.filas() && grid.valor(campo) != codigo; ++fila)
    t.tecla(Qt::Key_Down);
  ASSERT_EQ(grid.valor(campo), codigo);
}

// A name finds nothing yet: the browser comes, and "+" in it creates the subcuenta.
void altaPorNombre(EscenarioPlanTecleado& e) {
  e.guion.esperaDialogo("FrmVisualizaPlan", [&](Teclado& plan) {
    EXPECT_EQ(plan.textoDe("TxtBusquedaCuentas"), "Caja");
    e.guion.esperaDialogo("FrmSubCuentas", [](Teclado& alta) {
      alta.teclea("570.1");
      alta.intro();
      tecleaNombre(alta, "Caja");
    });
    plan.teclea("+");
    EXPECT_EQ(plan.control<Rejilla>("GrigSubCuentas").valor("Subcuenta"), "57000001");
    plan.llega("GrigSubCuentas");
    plan.intro();
  });
  e.escribe("Caja");
  EXPECT_EQ(e.t.textoDe("TxtSubcuenta"), "57000001");
  EXPECT_EQ(e.t.textoDe("TxtNombreCuenta"), "Caja");
  // A code mistyped: the browser comes instead of the dialog and, left, answers nothing.
  e.guion.esperaPregunta(kNoExiste, false, "Error");
  e.guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
  e.escribe("570.9");
  EXPECT_EQ(e.t.textoDe("TxtSubcuenta"), "57000009");
  EXPECT_EQ(e.t.textoDe("TxtNombreCuenta"), "");
  EXPECT_EQ(e.nombreDe("57000009"), "");
}

// A subcuenta whose cuenta isn't in the plan either: both are created on the way, and its card.
void altaConCuentaYFicha(EscenarioPlanTecleado& e) {
  e.guion.esperaPregunta(kNoExiste, true, "Error");
  e.guion.esperaDialogo("FrmSubCuentas", [&](Teclado& alta) {
    EXPECT_EQ(alta.forma().windowTitle(), "Alta de subcuenta");
    e.guion.esperaPregunta("La cuenta no existe en el plan de cuentas, ¿ Desea crear una cuenta ?",
                           true, "Error");
    e.guion.esperaDialogo("FrmCuentas", [](Teclado& cuenta) {
      cuenta.llega("TxtDescripcion");
      cuenta.teclea("Anticipos de clientes");
      cuenta.mnemonico('f');
      cuenta.mnemonico('a');
    });
    alta.intro();
    alta.intro();
    e.guion.esperaDialogo("FrmDatosAuxiliares", [](Teclado& ficha) {
      EXPECT_EQ(ficha.textoDe("TxtSubcuenta"), "43800001");
      EXPECT_EQ(ficha.textoDe("TxtDescripcion"), "Muñoz, anticipos");
      for (const char* texto :
           {"Mayor, 1", "Soria", "42200", "Almazán", "España", "B42", "975", "976", "Eva"}) {
        ficha.teclea(texto);
        ficha.intro();
      }
      EXPECT_EQ(ficha.enfocado(), "CmdAceptar");
      ficha.intro();
    });
    tecleaNombre(alta, "Muñoz, anticipos");
  });
  e.escribe("438.1");
  EXPECT_EQ(e.t.textoDe("TxtNombreCuenta"), "Muñoz, anticipos");
  EXPECT_EQ(e.filas("Select * from Subcuentas where Subcuenta='43800001'").at(0).join('|'),
            "43800001|438|Muñoz, anticipos|Mayor, 1|Soria|42200|Almazán|España|B42|975|976|Eva");
}

// What is in use may not be deleted, nor goes what the user thinks better of.
void borrados(EscenarioPlanTecleado& e) {
  e.t.teclea("57000001");
  tecleaLinea(e.t, e.guion, e.ctx.sesion,
              {"1", "02/01/2024", "57000001", "Saldo inicial", "100,00", ""}, true);
  for (const bool si : {false, true}) {
    e.enCuentas([&](Teclado& lista) {
      bajaHasta(lista, "GrigCuentas", "Cuenta", "438");
      e.guion.esperaPregunta("¿Desea eliminar la cuenta de su plan contable?", si, "Eliminar");
      if (si)
        e.guion.esperaMensaje(
            "Esta cuenta no puede ser eliminada, porque tiene subcuentas creadas, elimine primero "
            "las subcuentas asociadas",
            "Eliminar");
      lista.mnemonico('b');
    });
    e.enPlan([&](Teclado& plan) {
      bajaHasta(plan, "GrigSubCuentas", "Subcuenta", "57000001");
      e.guion.esperaMensaje(
          "No se puede eliminar la subcuenta, existen apuntes en el diario, elimine esos apuntes "
          "para eliminarla",
          "Error");
      plan.mnemonico('j');
      bajaHasta(plan, "GrigSubCuentas", "Subcuenta", "43800001");
      e.guion.esperaPregunta("Esta seguro de eliminar la subcuenta 43800001", si, "Eliminar");
      plan.mnemonico('j');
    });
    EXPECT_EQ(e.nombreDe("57000001"), "Caja");
    EXPECT_EQ(e.nombreDe("43800001"), si ? "" : "Muñoz, anticipos");
    EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan + 1);
  }
}

// Without its subcuenta the cuenta goes; one of the plan goes too, and sowing brings it back.
void siembras(EscenarioPlanTecleado& e) {
  e.enCuentas([&](Teclado& lista) {
    for (const char* cuenta : {"438", "199"}) {
      bajaHasta(lista, "GrigCuentas", "Cuenta", cuenta);
      e.guion.esperaPregunta("¿Desea eliminar la cuenta de su plan contable?", true, "Eliminar");
      lista.mnemonico('b');
    }
    EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan - 1);
    for (int vez = 0; vez < 2; ++vez) {
      e.guion.esperaDialogo("FrmCrearPlan", [](Teclado& crear) { crear.mnemonico('a'); });
      lista.mnemonico('p');
      EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan);
    }
  });
}

// A second company from the menu, whose plan is the first one's.
void copiaEnOtraEmpresa(EscenarioPlanTecleado& e) {
  e.guion.esperaDialogo("FrmEmpresas", [&](Teclado& alta) {
    tecleaEmpresa(alta, e.guion, "Filial Ejemplo", [](Teclado& crear) {
      crear.mnemonico('e');
      crear.llega("TxtEmpresa");
      crear.tecla(Qt::Key_Down);
      EXPECT_EQ(crear.textoDe("TxtEmpresa"), "Comercial Ejemplo");
      crear.mnemonico('s');
      crear.mnemonico('a');
    });
  });
  e.t.mnemonico('a');
  QWidget* archivo = QApplication::activePopupWidget();
  ASSERT_TRUE(archivo);
  Teclado(*archivo).teclea("n");
}

TEST(Plan, DeUnaCarpetaVaciaAlPlanDelTrimestre) {
  EscenarioPlanTecleado e;
  EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan);
  altaPorNombre(e);
  altaConCuentaYFicha(e);
  borrados(e);
  siembras(e);

  tecleaPlanTrimestre(e.ctx, e.guion, e.t);
  QStringList esperadas;
  for (const QStringList& fila : leeCsv("trimestre/subcuentas.csv"))
    esperadas << fila[0] + '|' + fila[0].left(3) + '|' + fila[1];
  // Every company is made with this one, of the variation of stocks.
  esperadas << "611||Regularización existencias";
  esperadas.sort();
  const auto subcuentas = [&e] {
    QStringList todas;
    for (const QStringList& fila :
         e.filas("Select Subcuenta, Cuenta, Descripcion from Subcuentas order by Subcuenta"))
      todas << fila.join('|');
    return todas;
  };
  EXPECT_EQ(subcuentas(), esperadas);

  copiaEnOtraEmpresa(e);
  EXPECT_EQ(e.ctx.sesion.EmpresaActual, "Comercial Ejemplo");
  e.abreEmpresa("Filial Ejemplo");
  EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan);
  EXPECT_EQ(subcuentas(), esperadas);
}

}  // namespace
