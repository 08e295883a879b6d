// The plan of accounts of a shop, from an empty folder to the one its first quarter needs and a
// copy of it in a second company, by the keyboard alone.
#include <QApplication>
#include <QMenu>

#include "foundation/toolkit/rejilla.h"
#include "soporte/escenario.h"
#include "soporte/libros.h"
#include "soporte/tecleo.h"

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
  // From the main window to the list of cuentas, and back after it.
  void enCuentas(Teclado& t, const std::function<void(Teclado&)>& paso) {
    guion.esperaDialogo("FrmVisualizaPlan", [this, paso](Teclado& plan) {
      guion.esperaDialogo("FrmCuentasLista", [paso](Teclado& lista) {
        paso(lista);
        lista.escape();
      });
      plan.mnemonico('c');
      plan.escape();
    });
    t.tecla(Qt::Key_F2);
  }
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
void altaPorNombre(EscenarioPlanTecleado& e, Teclado& t) {
  e.guion.esperaDialogo("FrmVisualizaPlan", [&e](Teclado& plan) {
    EXPECT_EQ(plan.textoDe("TxtBusquedaCuentas"), "Caja");
    e.guion.esperaDialogo("FrmSubCuentas", [](Teclado& alta) {
      alta.teclea("570.1");
      alta.intro();
      EXPECT_EQ(alta.textoDe("TxtSubcuenta"), "57000001");
      tecleaNombre(alta, "Caja");
    });
    plan.teclea("+");
    EXPECT_EQ(plan.control<Rejilla>("GrigSubCuentas").valor("Subcuenta"), "57000001");
    plan.llega("GrigSubCuentas");
    plan.intro();
  });
  t.teclea("Caja");
  t.intro();
  t.atras();
  EXPECT_EQ(t.textoDe("TxtSubcuenta"), "57000001");
  EXPECT_EQ(t.textoDe("TxtNombreCuenta"), "Caja");
}

// A subcuenta whose cuenta isn't in the plan either: both are created on the way, and its card.
void altaConCuentaYFicha(EscenarioPlanTecleado& e, Teclado& t) {
  e.guion.esperaPregunta(kNoExiste, true, "Error");
  e.guion.esperaDialogo("FrmSubCuentas", [&e](Teclado& alta) {
    e.guion.esperaPregunta("La cuenta no existe en el plan de cuentas, ¿ Desea crear una cuenta ?",
                           true, "Error");
    e.guion.esperaDialogo("FrmCuentas", [](Teclado& cuenta) {
      EXPECT_EQ(cuenta.textoDe("TxtN02N"), "43");
      cuenta.llega("TxtDescripcion");
      cuenta.teclea("Anticipos de clientes");
      cuenta.mnemonico('f');
      cuenta.mnemonico('a');
    });
    alta.intro();
    EXPECT_EQ(alta.enfocado(), "TxtSubcuenta");
    alta.intro();
    e.guion.esperaDialogo("FrmDatosAuxiliares", [](Teclado& ficha) {
      EXPECT_EQ(ficha.textoDe("TxtSubcuenta"), "43800001");
      EXPECT_EQ(ficha.textoDe("TxtDescripcion"), "Muñoz, anticipos");
      ficha.llega("TxtPoblacion");
      ficha.teclea("Aranda");
      ficha.llega("TxtNif");
      ficha.teclea("B09000001");
      ficha.mnemonico('a');
    });
    tecleaNombre(alta, "Muñoz, anticipos");
  });
  t.teclea("438.1");
  t.intro();
  t.atras();
  EXPECT_EQ(t.textoDe("TxtNombreCuenta"), "Muñoz, anticipos");
  EXPECT_EQ(e.filas("Select Cuenta, Poblacion, Nif from Subcuentas where Subcuenta='43800001'"),
            std::vector({QStringList({"438", "Aranda", "B09000001"})}));
  EXPECT_EQ(e.valor("Select GrupoN from Cuentas where Cuenta='438'"), "4");
}

// A code mistyped: the browser comes instead of the dialog and, left, answers nothing.
void codigoEquivocado(EscenarioPlanTecleado& e, Teclado& t) {
  e.guion.esperaPregunta(kNoExiste, false, "Error");
  e.guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
  t.teclea("570.9");
  t.intro();
  t.atras();
  EXPECT_EQ(t.textoDe("TxtSubcuenta"), "57000009");
  EXPECT_EQ(t.textoDe("TxtNombreCuenta"), "");
  EXPECT_EQ(e.nombreDe("57000009"), "");
  t.teclea("57000001");
}

// What may not be deleted, and what the user thinks better of.
void borradosNegados(EscenarioPlanTecleado& e, Teclado& t) {
  tecleaLinea(t, e.guion, e.ctx.sesion,
              {"1", "02/01/2024", "57000001", "Saldo inicial", "100,00", ""}, true);
  e.guion.esperaDialogo("FrmVisualizaPlan", [&e](Teclado& plan) {
    bajaHasta(plan, "GrigSubCuentas", "Subcuenta", "57000001");
    e.guion.esperaMensaje(
        "No se puede eliminar la subcuenta, existen apuntes en el diario, elimine esos apuntes "
        "para eliminarla",
        "Error");
    plan.mnemonico('j');
    bajaHasta(plan, "GrigSubCuentas", "Subcuenta", "43800001");
    e.guion.esperaPregunta("Esta seguro de eliminar la subcuenta 43800001", false, "Eliminar");
    plan.mnemonico('j');
    plan.escape();
  });
  t.tecla(Qt::Key_F2);
  e.enCuentas(t, [&e](Teclado& lista) {
    bajaHasta(lista, "GrigCuentas", "Cuenta", "438");
    for (const bool si : {false, true}) {
      e.guion.esperaPregunta("¿Desea eliminar la cuenta de su plan contable?", si, "Eliminar");
      if (si)
        e.guion.esperaMensaje(
            "Esta cuenta no puede ser eliminada, porque tiene subcuentas creadas, elimine primero "
            "las subcuentas asociadas",
            "Eliminar");
      lista.mnemonico('b');
    }
  });
  EXPECT_EQ(e.nombreDe("57000001"), "Caja");
  EXPECT_EQ(e.nombreDe("43800001"), "Muñoz, anticipos");
  EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan + 1);
}

// Without its subcuenta the cuenta goes; one of the plan goes too, and sowing brings it back.
void borradosYSiembras(EscenarioPlanTecleado& e, Teclado& t) {
  e.guion.esperaDialogo("FrmVisualizaPlan", [&e](Teclado& plan) {
    bajaHasta(plan, "GrigSubCuentas", "Subcuenta", "43800001");
    e.guion.esperaPregunta("Esta seguro de eliminar la subcuenta 43800001", true, "Eliminar");
    plan.mnemonico('j');
    plan.escape();
  });
  t.tecla(Qt::Key_F2);
  EXPECT_EQ(e.nombreDe("43800001"), "");
  e.enCuentas(t, [&e](Teclado& lista) {
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
void copiaEnOtraEmpresa(EscenarioPlanTecleado& e, Teclado& t) {
  e.guion.esperaDialogo("FrmEmpresas", [&e](Teclado& alta) {
    tecleaEmpresa(alta, e.guion, "Filial Ejemplo", [](Teclado& crear) {
      crear.mnemonico('e');
      crear.llega("TxtEmpresa");
      crear.tecla(Qt::Key_Down);
      EXPECT_EQ(crear.textoDe("TxtEmpresa"), "Comercial Ejemplo");
      crear.mnemonico('s');
      crear.mnemonico('a');
    });
  });
  t.mnemonico('a');
  QWidget* archivo = QApplication::activePopupWidget();
  ASSERT_TRUE(archivo);
  Teclado(*archivo).teclea("n");
}

TEST(Plan, FromAnEmptyFolderToThePlanOfTheQuarter) {
  EscenarioPlanTecleado e;
  Formulario& menu = empiezaEmpresa(e.ctx, e.guion, "Comercial Ejemplo");
  EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan);
  Teclado t(menu);
  altaPorNombre(e, t);
  altaConCuentaYFicha(e, t);
  codigoEquivocado(e, t);
  borradosNegados(e, t);
  borradosYSiembras(e, t);

  tecleaPlanTrimestre(e.ctx, e.guion, menu);
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

  copiaEnOtraEmpresa(e, t);
  EXPECT_EQ(e.ctx.sesion.EmpresaActual, "Comercial Ejemplo");
  e.abreEmpresa("Filial Ejemplo");
  EXPECT_EQ(e.filas("Cuentas").size(), kCuentasDelPlan);
  EXPECT_EQ(subcuentas(), esperadas);
}

}  // namespace
