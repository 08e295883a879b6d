// The dialogs that collect the limits of the official books.
#include <QFile>

#include "foundation/rutas.h"
#include "reports/errores.h"
#include "reports/listadoabierto.h"

namespace {

QString controlado(int numero, const QString& detalle = {}) {
  return QStringLiteral("Error numero : %1 ").arg(numero) +
         ErrorEjecucion(numero, detalle).descripcion();
}

// The book that a dialog launches by its button, and the dialog in front again.
LibroImpreso lanza(ListadoAbierto& e, Teclado& t) {
  t.pulsa("CmdAceptar");
  LibroImpreso libro = leeVista(e.guion);
  activar(t.forma());
  return libro;
}

TEST(FrmDiarioImprimir, TakesItsLimitsByTheKeyboard) {
  ListadoAbierto e;
  e.dialogo("MnuImprimirDiario", QStringLiteral("FrmDiarioImprimir"), [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Imprimir diario");
    EXPECT_EQ(t.textoDe("TxtAsientoHasta"), "9999999999999");
    EXPECT_EQ(t.enfocado(), "TxtDesde");
    t.intro();
    t.teclea(QStringLiteral("3101"));
    t.intro();
    EXPECT_EQ(t.textoDe("TxtHasta"), "31/01/2003");
    EXPECT_EQ(t.enfocado(), "TxtAsientoDesde");
    t.teclea(QStringLiteral("a2b"));
    EXPECT_EQ(t.textoDe("TxtAsientoDesde"), "2");
    EXPECT_EQ(static_cast<Formulario&>(t.forma()).pitidos(), 2);
    t.intro();
    t.teclea(QStringLiteral("3"));
    t.intro();
    EXPECT_EQ(t.enfocado(), "CmdAceptar");
    const LibroImpreso libro = lanza(e, t);
    EXPECT_EQ(libro.titulo, "Listado de diario");
    EXPECT_FALSE(libro.lineas().filter("Desde : 01/01/2003 ~ Hasta : 31/01/2003").isEmpty());
    EXPECT_EQ(libro.lineas().filter("Total asiento").size(), 2);
    EXPECT_FALSE(libro.linea("Total asiento 3 30,00 30,00").isEmpty());
    t.pulsa("CmdCancelar");
  });
}

// Whatever goes wrong is told in the same box, and the dialog stays as it was.
TEST(FrmDiarioImprimir, TellsWhatFails) {
  ListadoAbierto e;
  e.dialogo("MnuImprimirDiario", QStringLiteral("FrmDiarioImprimir"), [&](Teclado& t) {
    const auto falla = [&](const QString& texto) {
      e.guion.esperaMensaje(texto, QStringLiteral("Error controlado"));
      t.pulsa("CmdAceptar");
      EXPECT_EQ(vistaAbierta(), nullptr);
      EXPECT_TRUE(t.forma().isVisible());
    };
    t.enfoca("TxtDesde");
    for (const char* fecha : {"31/02/2003", ""}) {
      t.control<QLineEdit>("TxtHasta").setText(QString::fromLatin1(fecha));
      falla(controlado(13, QString::fromLatin1(fecha)));
      EXPECT_EQ(t.textoDe("TxtHasta"), QString::fromLatin1(fecha));
    }
    t.control<QLineEdit>("TxtHasta").setText(QStringLiteral("31/12/2003"));
    const QString plantilla = e.ctx.sesion.DirDatos + QStringLiteral("Impresos\\Diario.rpt");
    ASSERT_TRUE(QFile::rename(rutaSistema(plantilla), rutaSistema(plantilla) + ".fuera"));
    falla(controlado(53, plantilla));
    ASSERT_TRUE(QFile::rename(rutaSistema(plantilla) + ".fuera", rutaSistema(plantilla)));
    t.enfoca("TxtAsientoDesde");
    t.tecla(Qt::Key_Delete);
    falla(controlado(err::kFormulaRechazada, QStringLiteral("falta un paréntesis")));
    t.escribe("TxtAsientoDesde", QStringLiteral("1"));
    EXPECT_EQ(lanza(e, t).lineas().filter("Total asiento").size(), 4);
    t.escape();
  });
}

TEST(FrmSumasSaldosImpresos, EachLevelHasItsLimitsAndItsTitle) {
  ListadoAbierto e;
  e.dialogo("MnuSumasysaldos", QStringLiteral("FrmSumasSaldosImpresos"), [&](Teclado& t) {
    EXPECT_TRUE(t.control<QAbstractButton>("OptNivel_2").isChecked());
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "000999");
    EXPECT_EQ(t.textoDe("TxtDesdef") + t.textoDe("TxtHastaf"), "01-Enero12-Diciembre");
    EXPECT_EQ(t.control<QLineEdit>("TxtDesde").maxLength(), 3);
    // Enter goes on from options, texts and lists alike.
    t.enfoca("OptNivel_2");
    for (const char* siguiente : {"TxtDesde", "TxtHasta", "TxtDesdef", "TxtHastaf", "CmdAceptar"}) {
      t.intro();
      EXPECT_EQ(t.enfocado(), siguiente);
    }
    t.elige("TxtHastaf", QStringLiteral("01-Enero"));
    LibroImpreso libro = lanza(e, t);
    EXPECT_EQ(libro.titulo, "Listado de sumas y saldos Cuentas");
    EXPECT_FALSE(libro.lineas().filter("Desde : 01-Enero ~ Hasta : 01-Enero").isEmpty());
    EXPECT_TRUE(libro.linea("570 ").endsWith(" 0,00 30,00 30,00"))
        << qPrintable(libro.linea("570"));
    EXPECT_TRUE(libro.linea("572 ").endsWith(" 230,01 0,00 230,01"));

    t.marca("OptNivel_3");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "0000000099999999");
    t.escribe("TxtDesde", QStringLiteral("57200001"));
    libro = lanza(e, t);
    EXPECT_EQ(libro.titulo, "Listado de sumas y saldos Subcuentas");
    EXPECT_EQ(libro.linea("57200001"), "57200001 Banco 230,01 0,00 230,01");
    EXPECT_TRUE(libro.linea("57000001").isEmpty());

    // The boxes stay, and the months don't reach the upper levels.
    for (int nivel : {1, 2}) {
      t.marca(nivel == 1 ? "OptNivel_0" : "OptNivel_1");
      EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "5720000199999999");
      t.escribe("TxtDesde", QStringLiteral("5"));
      libro = lanza(e, t);
      EXPECT_EQ(libro.titulo, QStringLiteral("Listado de sumas y saldos Nivel %1").arg(nivel));
      EXPECT_TRUE(libro.linea(nivel == 1 ? "5 " : "57 ").endsWith(" 280,01 80,00 200,01"));
      EXPECT_TRUE(libro.linea("4").isEmpty());
      t.control<QLineEdit>("TxtDesde").setText(QStringLiteral("57200001"));
    }
    t.pulsa("CmdCancelar");
  });
}

// The only one whose failures reach the form's own box.
TEST(FrmSumasSaldosImpresos, LaunchesWithoutTrap) {
  ListadoAbierto e;
  const QString plantilla = e.ctx.sesion.DirDatos + QStringLiteral("Impresos\\SumSalN3.rpt");
  ASSERT_TRUE(QFile::remove(rutaSistema(plantilla)));
  e.dialogo("MnuSumasysaldos", QStringLiteral("FrmSumasSaldosImpresos"), [&](Teclado& t) {
    e.guion.esperaMensaje("Error 53: " + ErrorEjecucion(53, plantilla).descripcion(),
                          QStringLiteral("Librano"));
    t.pulsa("CmdAceptar");
    EXPECT_TRUE(t.forma().isVisible());
    t.escape();
  });
  EXPECT_EQ(e.errores().size(), 1);
}

TEST(FrmSubcuentasImpresos, ChecksItsLimitsAgainstThePlan) {
  ListadoAbierto e;
  const QString banco = QStringLiteral("Select * from Subcuentas where Subcuenta='57200001'");
  e.cambia(banco, QStringLiteral("Nif"), "A99887766");
  e.cambia(banco, QStringLiteral("Direccion"), "Calle Mayor, 3");
  e.guion.esperaDialogo(QStringLiteral("FrmVisualizaPlan"), [&](Teclado& plan) {
    e.guion.esperaDialogo(QStringLiteral("FrmSubcuentasImpresos"), [&](Teclado& t) {
      e.guion.esperaMensaje(controlado(53), QStringLiteral("Error controlado"));
      t.enfoca("OptPlan_0");
      t.pulsa("CmdAceptar");

      t.escribe("TxtSubcuentasDesde", QStringLiteral("570.1"));
      t.intro();
      EXPECT_EQ(t.textoDe("TxtSubcuentasDesde"), "57000001");
      EXPECT_EQ(t.textoDe("LblDesde"), "Caja");
      EXPECT_EQ(t.enfocado(), "TxtSubcuentasHasta");
      t.teclea(QStringLiteral("572.9"));
      e.guion.esperaDialogo(QStringLiteral("FrmVisualizaPlan"), [&](Teclado& otro) {
        EXPECT_EQ(e.ctx.sesion.CodigoAccion, 31);
        otro.escape();
      });
      t.tab();
      EXPECT_EQ(t.enfocado(), "TxtSubcuentasHasta");
      EXPECT_TRUE(e.ctx.sesion.ValorElegido.isEmpty());
      t.teclea(QStringLiteral("572.1"));
      t.tab();
      EXPECT_EQ(t.textoDe("LblHasta"), "Banco");

      const struct {
        const char *plan, *tipo;
        QString banco;
        bool cuentas;
      } casos[] = {{"OptPlan_0", "OptOpciones_0", "57200001 Banco", false},
                   {"OptPlan_0", "OptOpciones_1", "57200001 Banco A99887766", false},
                   {"OptPlan_0", "OptOpciones_2", "57200001 Banco 230,01 50,00 180,01", false},
                   {"OptPlan_1", "OptOpciones_0", "57200001 Banco", true},
                   {"OptPlan_1", "OptOpciones_1", "57200001 Banco A99887766", true},
                   {"OptPlan_1", "OptOpciones_2", "57200001 Banco 230,01 50,00 180,01", true}};
      for (const auto& c : casos) {
        t.marca(c.plan);
        t.marca(c.tipo);
        const LibroImpreso libro = lanza(e, t);
        EXPECT_EQ(libro.titulo, "Listado de Subcuentas");
        EXPECT_EQ(libro.linea("57200001"), c.banco) << c.plan << c.tipo;
        EXPECT_EQ(libro.linea("572 ").isEmpty(), !c.cuentas) << c.plan << c.tipo;
        EXPECT_EQ(libro.linea("Calle Mayor, 3").isEmpty(), c.tipo != QString("OptOpciones_1"));
        EXPECT_TRUE(libro.linea("43000001").isEmpty());
      }
      t.pulsa("CmdCancelar");
    });
    plan.pulsa("CmdImpresos");
    plan.escape();
  });
  e.menu("MnuVisualizarPlan");
}

TEST(FrmBalanceImpresos, EachLevelWithinItsMonths) {
  ListadoAbierto e;
  e.dialogo("MnuBalanceSituacion", QStringLiteral("FrmBalanceImpresos"), [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Balance de situación (General)");
    LibroImpreso libro = lanza(e, t);  // no option touched
    EXPECT_EQ(libro.titulo, "Balance de situación");
    EXPECT_FALSE(libro.lineas().filter("Desde : 01-Enero ~ Hasta : 12-Diciembre").isEmpty());
    EXPECT_TRUE(libro.linea("57").isEmpty());
    t.marca("OptTipo_3");
    libro = lanza(e, t);
    EXPECT_TRUE(libro.linea("57000001 Caja").endsWith(" -20,00")) << qPrintable(libro.linea("570"));
    t.enfoca("TxtDesde");
    t.tecla(Qt::Key_Down);
    EXPECT_EQ(t.textoDe("TxtDesde"), "02-Febrero");
    libro = lanza(e, t);
    EXPECT_TRUE(libro.linea("57000001 Caja").endsWith(" -50,00"));
    t.pulsa("CmdCancelar");
  });
}

TEST(FrmPerdidasYGananciasImpresos, OpensUnderTheTitleOfAnotherBook) {
  ListadoAbierto e;
  e.asiento(5, QDate(2003, 3, 1), "60000001", "70000001", 12);
  e.dialogo("MnuPerdidasyGanancias", QStringLiteral("FrmPerdidasYGananciasImpresos"),
            [&](Teclado& t) {
              EXPECT_EQ(t.forma().windowTitle(), "Explotación (Perdidas y Ganancias)");
              for (const char* tipo : {"OptTipo_0", "OptTipo_1", "OptTipo_2", "OptTipo_3"}) {
                t.marca(tipo);
                const LibroImpreso libro = lanza(e, t);
                EXPECT_EQ(libro.titulo, "Acumulados de IVA");
                EXPECT_EQ(libro.linea("Totales"), "Totales 12,00 12,00") << tipo;
                EXPECT_EQ(libro.linea("600000").isEmpty(), tipo[8] != '3') << tipo;
              }
              t.elige("TxtHasta", QStringLiteral("02-Febrero"));
              EXPECT_EQ(lanza(e, t).linea("Totales"), "Totales 0,00 0,00");
              t.escape();
            });
}

}  // namespace
