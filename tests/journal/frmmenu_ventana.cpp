// The main window around the books: its menu, its companies, its coming up and its end.
#include <QAction>
#include <QFile>
#include <QHeaderView>

#include "accounts/registro.h"
#include "company/registro.h"
#include "foundation/cini.h"
#include "foundation/rutas.h"
#include "journal/menuabierto.h"

namespace {

QString ajuste(const Escenario& e, const char* seccion, const char* clave) {
  QString valor;
  CIni().Leer(e.ctx.carpetaPrograma + QStringLiteral("Config.ini"), QLatin1String(seccion),
              QLatin1String(clave), valor);
  return valor;
}

DatosEmpresa otraEmpresa() {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.NombreEmpresa = QStringLiteral("Otra");
  datos.Ano = QStringLiteral("2002");
  datos.SubCuN01 = QStringLiteral("9");
  datos.NoModificar = QStringLiteral("31/12/2002");
  datos.Asiento = QStringLiteral("40");
  return datos;
}

TEST(FrmMenuVentana, ComesUpWithTheCompanyOfTheLogin) {
  MenuAbierto e;
  FrmMenu& forma = e.abreMenu();
  EXPECT_EQ(forma.windowTitle(), "Librano 1.6");
  EXPECT_EQ(e.t->textoDe("TxtEmpresa"), "Prueba");
  EXPECT_EQ(e.t->textoDe("TxtAñoActual"), "2003");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "15/03/2003");
  EXPECT_EQ(e.ctx.sesion.MarcaPunteo, "X");
  for (const char* fila : {"Total", "Cuenta", "Asiento", "Marcado"}) {
    EXPECT_EQ(e.totales(QString::fromLatin1(fila)), QStringList({"0,00 ", "0,00 ", "0,00 "}));
  }
  EXPECT_FALSE(e.t->visible("ImpEmp1"));
  EXPECT_FALSE(forma.findChild<QAction*>("MnuInvertirCierre")->isVisible());
  // Coming up costs no asiento number, nor does leaving the window by Escape.
  e.t->escape();
  EXPECT_TRUE(forma.isVisible());
  EXPECT_EQ(e.contador("Asiento"), "1");
}

TEST(FrmMenuVentana, PassesToAnotherCompanyByTheCombo) {
  MenuAbierto e;
  e.creaEmpresa(otraEmpresa());
  e.cambia(QStringLiteral("Select * from Conceptos where NConcepto='07'"),
           QStringLiteral("Descripcion"), "Cobro");
  FrmMenu& forma = e.abreMenu();
  e.linea("57000001", QStringLiteral("100"), {}, QStringLiteral("20/02/2003"));
  e.t->elige("TxtEmpresa", QStringLiteral("Otra"));
  EXPECT_EQ(e.ctx.sesion.EmpresaActual, "Otra");
  EXPECT_EQ(e.t->textoDe("TxtAñoActual"), "2002");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "20/02/2002");
  EXPECT_EQ(e.t->control<QLineEdit>("TxtSubcuenta").maxLength(), 9);
  for (const char* fila : {"Total", "Cuenta", "Marcado"}) {
    EXPECT_EQ(e.totales(QString::fromLatin1(fila)).constFirst(), "0,00 ") << fila;
  }
  EXPECT_TRUE(e.t->visible("ImpEmp1") && e.t->visible("ImpEmp2") && e.t->visible("ImpEmp3"));
  EXPECT_TRUE(forma.findChild<QAction*>("MnuInvertirCierre")->isVisible());
  EXPECT_EQ(ajuste(e, "Entrada", "UltimaEmpresa"), "Otra");
  // Numbers are those of the new company; concepts stay those of the first one.
  e.t->enfoca("TxtAsiento");
  e.t->teclea(QStringLiteral("*"));
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "40");
  e.t->escribe("TxtConcepto", QStringLiteral("07"));
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), "Cobro");
}

TEST(FrmMenuVentana, KeepsTheOpenCompanyWhenTheOtherIsGone) {
  MenuAbierto e;
  e.creaEmpresa(otraEmpresa());
  FrmMenu& forma = e.abreMenu();
  const QString otra = rutaSistema(e.ctx.sesion.rutaEmpresa(QStringLiteral("Otra")));
  ASSERT_TRUE(QFile::rename(otra, otra + QStringLiteral(".fuera")));
  e.guion.esperaMensaje(
      QStringLiteral("Error 3024: ") +
          ErrorEjecucion(err::kBaseNoEncontrada, e.ctx.sesion.rutaEmpresa(QStringLiteral("Otra")))
              .descripcion(),
      QStringLiteral("Librano"));
  e.t->elige("TxtEmpresa", QStringLiteral("Otra"));
  EXPECT_EQ(e.t->textoDe("TxtEmpresa"), "Prueba");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", QStringLiteral("100"), {}, QStringLiteral("20/02/2003"));
  EXPECT_EQ(e.valor("Select Importe from Diario"), "100");
  EXPECT_TRUE(forma.isVisible());
}

TEST(FrmMenuVentana, AsksBeforeItEndsAndHarderWithADescuadre) {
  MenuAbierto e;
  FrmMenu& forma = e.abreMenu();
  const QString salir = QStringLiteral("¿ Deseas salir de Librano ?");
  e.guion.esperaPregunta(salir, false, QStringLiteral("Salida de Librano"));
  e.t->cierra();
  EXPECT_TRUE(forma.isVisible());
  EXPECT_EQ(e.finales, 0);
  e.linea("57000001", QStringLiteral("0.004"), {}, QStringLiteral("20/02/2003"));
  e.guion.esperaPregunta(salir, true);
  forma.findChild<QAction*>("MnuSalir")->trigger();
  EXPECT_EQ(e.finales, 1);
  e.linea("57000001", QStringLiteral("5"), {});
  e.guion.esperaPregunta(QStringLiteral("¿ Tiene descuadres en el diario desea salir ?"), true,
                         QStringLiteral("Atención"));
  e.t->pulsa("CmdSalir");
  EXPECT_EQ(e.finales, 2);
}

TEST(FrmMenuVentana, TellsOfANewVersionOnce) {
  MenuAbierto e;
  e.ctx.sesion.VersionConfig = QStringLiteral("1.5");
  e.guion.esperaMensaje(
      QStringLiteral(
          "Atención su copia de Librano se ha actualizado, siga los pasos que le marcan en "
          "la actualización y recuerde reindexar las empresas."),
      QStringLiteral("Librano"));
  e.abreMenu();
  EXPECT_EQ(ajuste(e, "Version", "Version"), "1.6");
  e.abreMenu();
}

TEST(FrmMenuVentana, ADialogThatClosesLeavesTheJournalAsItWasNarrowed) {
  MenuAbierto e;
  registraAccounts(*e.formularios);
  FrmMenu& forma = e.abreMenu();
  e.linea("57000001", QStringLiteral("100"), {}, QStringLiteral("20/02/2003"));
  e.linea("57000001", QStringLiteral("50"), {}, QStringLiteral("20/02/2003"));
  forma.DtaDiarioLista().setRecordSource("Select * from SqlDiarioPrincipalBlanco where Nasiento=1");
  forma.DtaDiarioLista().Refresh();
  e.t->control<QLineEdit>("TxtFecha").setText(QStringLiteral("20/02/2003"));
  e.guion.esperaDialogo(QStringLiteral("FrmConceptos"), [](Teclado& t) { t.pulsa("CmdSalir"); });
  e.t->pulsa("CmdLinConceptos");
  activar(forma);
  EXPECT_EQ(e.t->control<Rejilla>("GrdApuntes").filas(), 1);
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "20/02/2003");
}

TEST(FrmMenuVentana, OffersTheEntriesWhoseFormIsThere) {
  MenuAbierto e;
  registraAccounts(*e.formularios);
  FrmMenu& forma = e.abreMenu();
  const auto abierta = [&forma](const char* entrada) {
    return forma.findChild<QAction*>(QString::fromLatin1(entrada))->isEnabled();
  };
  EXPECT_TRUE(abierta("MnuVisualizarPlan") && abierta("MnuImportaARS") && abierta("MnuSalir"));
  EXPECT_FALSE(abierta("MnuNominas") || abierta("MnuGuardarCopiaComo"));
  EXPECT_TRUE(e.t->control("CmdPlan").isEnabled());
  EXPECT_FALSE(e.t->control("Command13").isEnabled());

  e.guion.esperaMensaje(
      QStringLiteral("La modificación de los niveles puede suponer un gran riesgo "
                     "para el correcto funcionamiento de Librano"),
      QStringLiteral("Atención"));
  e.guion.esperaDialogo(QStringLiteral("FrmNivel1"), [](Teclado& t) { t.pulsa("CmdSalir"); });
  forma.findChild<QAction*>("MnuNivel01")->trigger();

  forma.findChild<QAction*>("MnuEspeciales")->trigger();
  e.guion.esperaPregunta(
      QStringLiteral(
          "Atención Librano se cerrara ahora, tendrá que volver a reiniciarlo a continuación"),
      true, QStringLiteral("Salir de Librano"));
  forma.findChild<QAction*>("MnuActualiza")->trigger();
  EXPECT_EQ(e.ejecutados, QStringList({e.ctx.carpetaPrograma + "ejecutar excel",
                                       e.ctx.carpetaPrograma + "Actualiza.exe"}));
  EXPECT_EQ(e.finales, 1);
}

TEST(FrmMenuVentana, GivesTheFileUpToTheFormThatTakesItsPlace) {
  MenuAbierto e;
  FrmMenu* forma = nullptr;
  e.formularios->registra(QStringLiteral("FrmCopias"), [&](Contexto& c) {
    EXPECT_FALSE(c.principal);
    EXPECT_FALSE(forma->DtaEmpresaActual().isOpen() || forma->DtaDiarioLista().isOpen());
    return std::make_unique<Formulario>(c);
  });
  forma = &e.abreMenu();
  e.linea("57000001", QStringLiteral("100"), {}, QStringLiteral("20/02/2003"));
  forma->findChild<QAction*>("MnuCopiasSeguridad")->trigger();
  reposar();
  ASSERT_TRUE(e.formularios->abierto(QStringLiteral("FrmCopias")));
  e.abreMenu();
  EXPECT_EQ(e.totales("Total").constFirst(), "100,00 ");
}

TEST(FrmMenuVentana, TakesWhatTheCompanysScreenChanges) {
  MenuAbierto e;
  registraCompany(*e.formularios);
  FrmMenu& forma = e.abreMenu();
  e.linea("57000001", QStringLiteral("100"), {}, QStringLiteral("20/02/2003"));
  e.linea("57000001", {}, QStringLiteral("100"));
  e.guion.esperaDialogo(QStringLiteral("FrmEmpresas"), [](Teclado& t) {
    t.control<QLineEdit>("TxtMascara").setText(QStringLiteral("0.0"));
    t.control<QLineEdit>("TxtContador").setText(QStringLiteral("50"));
    t.pulsa("CmdAceptar");
  });
  forma.findChild<QAction*>("MnuModificaEmpresa")->trigger();
  EXPECT_EQ(e.totales("Total"), QStringList({"100,0", "-100,0", "0,0"}));
  EXPECT_EQ(e.t->control<Rejilla>("GrdApuntes").texto(0, 5), "100,0");
  e.t->enfoca("TxtAsiento");
  e.t->teclea(QStringLiteral("*"));
  EXPECT_EQ(e.t->textoDe("TxtAsiento"), "50");
}

TEST(FrmMenuVentana, KeepsSearchButtonsOverTheirColumns) {
  MenuAbierto e;
  FrmMenu& forma = e.abreMenu();
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  const auto borde = [&](const char* boton, bool derecho) {
    const QWidget& b = e.t->control(boton);
    return b.mapTo(&forma, QPoint(derecho ? b.width() : 0, 0)).x();
  };
  const auto columna = [&](int i) {
    return rejilla.viewport()->mapTo(&forma, QPoint(rejilla.columnViewportPosition(i), 0)).x();
  };
  for (const int ancho : {1024, 1600}) {
    forma.resize(ancho, 700);
    reposar();
    const std::pair<const char*, int> parejas[] = {{"CmdPunteo", 0},      {"CmdCodigo", 1},
                                                   {"CmdFecha", 2},       {"CmdAsiento", 3},
                                                   {"CmdDescripcion", 4}, {"CmdImporte", 5}};
    for (const auto& [boton, i] : parejas) EXPECT_EQ(borde(boton, false), columna(i)) << boton;
    EXPECT_EQ(borde("CmdDescuadres", true), columna(5));
    EXPECT_EQ(rejilla.horizontalHeader()->length(), rejilla.viewport()->width()) << ancho;
  }
}

}  // namespace
