// The plan browser over the main window: searching, moving, delivering the code, and its buttons.

#include "accounts/plan.h"

namespace {

class EscenarioConsulta : public EscenarioPlan {
 public:
  EscenarioConsulta() {
    registraJournal(*formularios);
    principal = &abre("FrmMenu");
  }
  // Opens the browser as a field does, and drives it.
  void consulta(const QString& texto, std::function<void(Teclado&)> paso) {
    ctx.sesion.ValorElegido = texto;
    guion.esperaDialogo("FrmVisualizaPlan", std::move(paso));
    formularios->mostrar("FrmVisualizaPlan");
    EXPECT_EQ(ctx.sesion.ValorElegido, "");
  }
  QString linea() const { return Teclado(*principal).textoDe("TxtSubcuenta"); }

  Formulario* principal;
};

QString fila(const Teclado& d) {
  return d.control<Rejilla>("GrigSubCuentas").valor("Subcuenta");
}

TEST(FrmVisualizaPlan, SigueLoQueSeTecleaPorCodigoOPorNombre) {
  EscenarioConsulta e;
  e.inserta("Subcuentas", subcuentaDe("43000009", "D'Ors y Cía."));
  for (const QStringList& f : leeCsv("buscaenelplan.csv")) {
    SCOPED_TRACE(f.join(' ').toStdString());
    const bool porNombre = f[3] == "nombre";
    e.consulta(f[0], [&](Teclado& d) {
      EXPECT_EQ(d.enfocado(), "GrigSubCuentas");
      d.teclea(f[1]);  // over the list: they go to the search field
      d.enfoca("TxtBusquedaCuentas");
      EXPECT_EQ(fila(d), f[2]);
      EXPECT_TRUE(
          d.control<QAbstractButton>(porNombre ? "OptClasifica_1" : "OptClasifica_0").isChecked());
      EXPECT_EQ(d.control<QLineEdit>("TxtBusquedaCuentas").maxLength() == 50, porNombre);
      d.intro();
    });
    EXPECT_FALSE(e.abierto("FrmVisualizaPlan"));
    EXPECT_EQ(e.linea(), f[2]);
    Teclado(*e.principal).control<QLineEdit>("TxtSubcuenta").clear();
  }
}

TEST(FrmVisualizaPlan, EmpiezaEnElCodigoDelCampoYEscapeLoDevuelve) {
  EscenarioConsulta e;
  for (int i = 10; i < 60; ++i)
    e.inserta("Subcuentas", subcuentaDe(QString("430000%1").arg(i), "Otro"));
  auto& campo = Teclado(*e.principal).control<QLineEdit>("TxtSubcuenta");
  campo.setText("43000040");
  const auto primera = [](Teclado& d) {
    const auto& lista = d.control<Rejilla>("GrigSubCuentas");
    return lista.texto(lista.rowAt(0), 0);
  };
  e.consulta({}, [&](Teclado& d) {
    EXPECT_EQ(fila(d), "43000040");
    EXPECT_EQ(primera(d), "43000040");
    d.teclea("430000");
    EXPECT_EQ(primera(d), "43000001");  // a hit stands at the top
    d.teclea("2");
    EXPECT_EQ(primera(d), "43000020");
    EXPECT_EQ(e.linea(), "43000020");
    d.escape();
  });
  EXPECT_EQ(e.linea(), "43000040");
}

TEST(FrmVisualizaPlan, LasFlechasLosGruposYElOrdenMuevenLaLista) {
  EscenarioConsulta e;
  e.consulta("4300", [&](Teclado& d) {
    d.enfoca("TxtBusquedaCuentas");
    QStringList vistas;
    for (const auto tecla : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}) {
      d.tecla(tecla);
      vistas << fila(d);
      EXPECT_EQ(e.linea(), fila(d));
    }
    EXPECT_EQ(vistas.join(' '), "43000002 47200001 43000002 43000001 43000001");
    d.pulsa("CmdMayor_7");
    d.enfoca("TxtBusquedaCuentas");
    d.tecla(Qt::Key_Down);  // no further than the last
    EXPECT_EQ(fila(d), "70000001");
    d.pulsa("CmdMayor_5");
    d.enfoca("GrigSubCuentas");
    d.tecla(Qt::Key_Up);
    d.pulsa("CmdMayor_5");  // again, with its digit still on show
    EXPECT_EQ(fila(d), "57200001");
    d.pulsa("OptClasifica_1");
    EXPECT_EQ(fila(d), "43000001");
    d.enfoca("GrigSubCuentas");
    d.tecla(Qt::Key_Down);
    EXPECT_EQ(fila(d), "57200001");
    d.intro();
  });
  EXPECT_EQ(e.linea(), "57200001");
}

TEST(FrmVisualizaPlan, DiceUnaVezQueElFicheroEstaOcupadoYLuegoLoLee) {
  EscenarioConsulta e;
  e.motor.setLockTimeout(30);
  std::unique_ptr<OtroPuesto> otro;
  const auto ocupado = [&] {
    otro =
        std::make_unique<OtroPuesto>(rutaSistema(e.ctx.sesion.rutaEmpresa()), "BEGIN EXCLUSIVE;");
    e.guion.esperaMensaje(errorEnCaja(err::kRegistroBloqueado, e.ctx.sesion.rutaEmpresa()),
                          "Librano");
  };
  ocupado();
  e.consulta("Bod", [&](Teclado& d) {
    otro.reset();
    d.teclea("43");
    EXPECT_EQ(fila(d), "43000001");
    const int todas = d.control<Rejilla>("GrigSubCuentas").filas();
    ocupado();
    d.enfoca("TxtBusquedaCuentas");
    d.control<QLineEdit>("TxtBusquedaCuentas").selectAll();
    d.teclea("b");
    EXPECT_EQ(d.control<Rejilla>("GrigSubCuentas").filas(), todas);  // they stay, in their order
    EXPECT_TRUE(d.control<QAbstractButton>("OptClasifica_0").isChecked());
    otro.reset();
    d.teclea("o");
    EXPECT_EQ(fila(d), "43000002");
    EXPECT_TRUE(d.control<QAbstractButton>("OptClasifica_1").isChecked());
    d.intro();
  });
  EXPECT_EQ(e.linea(), "43000002");
}

TEST(FrmVisualizaPlan, NoBorraLoQueTieneApuntesNiLoQueNoSeQuiere) {
  EscenarioConsulta e;
  e.inserta("Diario", lineaDe(1, 1, "02/01/2003", "57200001", 100));
  e.consulta("572", [&](Teclado& d) {
    e.guion.esperaMensaje(
        "No se puede eliminar la subcuenta, existen apuntes en el diario, elimine esos apuntes "
        "para eliminarla",
        "Error");
    d.mnemonico('j');
    d.escape();
  });
  for (const bool si : {false, true})
    e.consulta("43000002", [&](Teclado& d) {
      e.guion.esperaPregunta("Esta seguro de eliminar la subcuenta 43000002", si, "Eliminar");
      d.mnemonico('j');
      EXPECT_EQ(e.subcuenta("43000002"), si ? "" : "430|Bodegas Luna");
      d.escape();
    });
  EXPECT_EQ(e.subcuenta("57200001"), "572|Banco Duero");
}

TEST(FrmVisualizaPlan, SeQuedaEnLoQueSeEscribeYTrasLoQueSeBorra) {
  EscenarioConsulta e;
  e.consulta("572", [&](Teclado& d) {
    e.guion.esperaDialogo("FrmSubCuentas", [](Teclado& s) {
      s.entra("572.9");
      tecleaNombre(s, "Banco Tajo");
    });
    d.teclea("+");
    EXPECT_EQ(fila(d), "57200009");
    EXPECT_EQ(d.textoDe("TxtBusquedaCuentas"), "57200009");
    e.guion.esperaDialogo("FrmSubCuentas", [](Teclado& s) {
      EXPECT_EQ(s.textoDe("TxtDescripcion"), "Banco Tajo");
      s.escribe("TxtDescripcion", "Caja Ebro");
      s.pulsa("CmdAceptar");
    });
    d.pulsa("CmdModifica");
    EXPECT_EQ(fila(d), "57200009");
    EXPECT_EQ(e.subcuenta("57200009"), "572|Caja Ebro");
    e.guion.esperaPregunta("Esta seguro de eliminar la subcuenta 57200009", true);
    d.pulsa("CmdBajas");
    EXPECT_EQ(fila(d), "60000001");
    d.pulsa("CmdSalir");
  });
}

}  // namespace
