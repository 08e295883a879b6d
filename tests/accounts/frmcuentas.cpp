// Creating and changing cuentas, with their levels, and the lists they are deleted from.

#include "accounts/plan.h"

namespace {

const char* const kSinNivel = "El nivel que ha escrito no existe";

QString niveles(const Teclado& t) {
  return t.textosDe({"TxtN01N", "TxtN01T", "TxtN02N", "TxtN02T"}).join('|');
}

TEST(FrmCuentas, LosNivelesSeBuscanPorCodigoYPorNombreHaciaAbajoYHaciaArriba) {
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmCuentas", 1);
  t.escribe("TxtN01N", "6");
  EXPECT_EQ(niveles(t), "6|Compras y gastos||");
  t.entra("TxtN02N", "10");
  EXPECT_EQ(niveles(t), "1|Financiacion Basica|10|Capital");
  t.elige("TxtN02T", "Tributos");
  EXPECT_EQ(niveles(t), "6|Compras y gastos|63|Tributos");
  t.elige("TxtN01T", "Cuentas financieras");
  EXPECT_EQ(t.textoDe("TxtN01N"), "5");
  // The subgroups are by now those of the group picked.
  EXPECT_EQ(t.control<QComboBox>("TxtN02T").count(), 10);
  t.escribe("TxtN02N", "43");
  e.guion.esperaMensaje(kSinNivel, "Error");
  t.intro();
  t.enfoca("TxtN01N");
  e.guion.esperaMensaje(kSinNivel, "Error");
  t.escribe("TxtN01N", "9");
  // A group typed back narrows again.
  t.escribe("TxtN01N", "4");
  t.tab();
  EXPECT_EQ(t.control<QComboBox>("TxtN02T").count(), 8);
  t.elige("TxtN02T", "Personal");
  EXPECT_EQ(niveles(t), "4|Acreedores y deudores por operaciones de tráfico|46|Personal");
  t.escribe("TxtCuenta", "");
  t.tecla(Qt::Key_Delete);
  e.guion.esperaMensaje("Necesita introducir el código de la cuenta", "Error");
  t.pulsa("CmdAceptar");
  EXPECT_EQ(t.enfocado(), "TxtCuenta");
}

TEST(FrmCuentas, UnaRepetidaSeDiceYSePuedeCorregirYUnaModificadaGuardaSuCodigo) {
  const QString kNiveles = "4|Acreedores y deudores por operaciones de tráfico|43|Clientes";
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmCuentas", 1, "430");
  EXPECT_EQ(t.forma().windowTitle(), "Alta de cuenta");
  EXPECT_EQ(niveles(t), kNiveles);
  t.escribe("TxtDescripcion", "Clientes, efectos");
  t.marca("TxtAbrirFicha");
  e.guion.esperaMensaje(errorEnCaja(3022), "Librano");
  t.pulsa("CmdAceptar");
  EXPECT_TRUE(e.abierto("FrmCuentas"));
  t.escribe("TxtCuenta", "4319");  // one digit too many
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmCuentas"));
  EXPECT_EQ(e.cuenta("431"), "431|Clientes, efectos|4|43|Verdadero");
  EXPECT_EQ(e.cuenta("430"), "430|Clientes|4|43|Verdadero");

  t = e.abreCon("FrmCuentas", 2, "430");
  EXPECT_FALSE(t.control("TxtCuenta").isEnabled());
  EXPECT_EQ(niveles(t), kNiveles);
  t.marca("TxtAbrirFicha", false);
  t.escribe("TxtDescripcion", "Clientes varios");
  t.pulsa("CmdAceptar");
  EXPECT_EQ(e.cuenta("430"), "430|Clientes varios|4|43|Falso");
}

TEST(FrmCuentasLista, SigueLoQueSeDaDeAltaYSeModifica) {
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmCuentasLista", 0);
  auto& lista = t.control<Rejilla>("GrigCuentas");
  e.guion.esperaDialogo("FrmCuentas", [](Teclado& d) {
    for (const char* texto : {"570", "Caja", "5"}) d.entra(texto);
    d.pulsa("CmdAceptar");
  });
  t.pulsa("CmdAltas");
  EXPECT_EQ(lista.valor("Cuenta"), "570");
  e.guion.esperaDialogo("FrmCuentas", [](Teclado& d) {
    d.escribe("TxtDescripcion", "Caja, euros");
    d.pulsa("CmdAceptar");
  });
  t.pulsa("CmdModifica");
  EXPECT_EQ(lista.valor("Descripcion"), "Caja, euros");
  EXPECT_EQ(lista.texto(1, 0), "570");  // in order of codes

  // Keys over the list search in it; Enter changes the row found and "+" creates one.
  t.enfoca("GrigCuentas");
  t.teclea("caj");
  EXPECT_EQ(t.enfocado(), "TxtBusquedaCuentas");
  EXPECT_EQ(lista.valor("Cuenta"), "570");
  t.tecla(Qt::Key_Up);
  EXPECT_EQ(lista.valor("Descripcion"), "Bancos");  // in order of names now
  t.enfoca("GrigCuentas");
  t.teclea("43");
  e.guion.esperaDialogo("FrmCuentas", [](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtCuenta"), "430");
    d.escape();
  });
  t.intro();
  t.enfoca("GrigCuentas");
  e.guion.esperaDialogo("FrmCuentas", [](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Alta de cuenta");
    d.escape();
  });
  t.teclea("+");
  EXPECT_EQ(lista.valor("Cuenta"), "430");
}

// Nor goes what the user thinks better of; sowing brings back what the plan has, once.
TEST(FrmCuentasLista, BorraLasQueNoSeUsanYVuelveASembrar) {
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmCuentasLista", 0);
  const auto siembra = [&] {
    e.guion.esperaDialogo("FrmCrearPlan", [](Teclado& crear) { crear.mnemonico('a'); });
    t.mnemonico('p');
    return e.filas("Cuentas").size();
  };
  const auto borra = [&](const QString& cuenta, bool si) {
    t.enfoca("GrigCuentas");
    t.teclea(cuenta);
    EXPECT_EQ(t.control<Rejilla>("GrigCuentas").valor("Cuenta"), cuenta);
    e.guion.esperaPregunta("¿Desea eliminar la cuenta de su plan contable?", si, "Eliminar");
    if (si && cuenta == "430")
      e.guion.esperaMensaje(
          "Esta cuenta no puede ser eliminada, porque tiene subcuentas creadas, elimine primero "
          "las subcuentas asociadas",
          "Eliminar");
    t.mnemonico('b');
    return e.filas("Cuentas").size();
  };
  EXPECT_EQ(siembra(), 356u);
  for (const bool si : {false, true}) {
    EXPECT_EQ(borra("430", si), 356u);
    EXPECT_EQ(borra("199", si), si ? 355u : 356u);
  }
  for (int vez = 0; vez < 2; ++vez) EXPECT_EQ(siembra(), 356u);
  EXPECT_EQ(e.cuenta("199").section('|', 2), "1|19|Falso");
  EXPECT_EQ(e.cuenta("430"), "430|Clientes|4|43|Verdadero");
}

TEST(FrmTabla, LoTecleadoQuedaEnElFicheroAlDejarLaCelda) {
  const struct {
    const char *formulario, *fuente;
    int filas;
  } casos[] = {{"FrmConceptos", "Select NConcepto, Descripcion from Conceptos", 99},
               {"FrmNivel1", "Select NNivel, Descripcion from Nivel01", 7},
               {"FrmNivel2", "Select NNivel, Descripcion from Nivel02", 64}};
  EscenarioPlan e;
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.formulario);
    Teclado t = e.abreCon(caso.formulario, 0);
    EXPECT_EQ(t.control<Rejilla>("DBGrid1").filas(), caso.filas);
    t.enfoca("DBGrid1");
    t.tecla(Qt::Key_Down);
    t.tecla(Qt::Key_Right);
    t.teclea("Texto nuevo");
    t.pulsa("CmdSalir");
    EXPECT_FALSE(e.abierto(caso.formulario));
    EXPECT_EQ(e.filas(caso.fuente)[1].value(1), "Texto nuevo");
    EXPECT_NE(e.filas(caso.fuente)[0].value(1), "Texto nuevo");
  }
}

}  // namespace
