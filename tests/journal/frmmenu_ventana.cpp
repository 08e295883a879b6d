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

const QString kFecha = "20/02/2003";
const QStringList kCeros = {"0,00 ", "0,00 ", "0,00 "};

struct VentanaAbierta : MenuAbierto {
  VentanaAbierta() {
    registraAccounts(*formularios);
    registraCompany(*formularios);
    menu = &abreMenu();
  }

  void creaOtra() {
    DatosEmpresa otra = empresaDePrueba();
    otra.NombreEmpresa = "Otra";
    otra.Ano = "2002";
    otra.SubCuN01 = "9";
    otra.NoModificar = "31/12/2002";
    otra.Asiento = "40";
    creaEmpresa(otra);
    menu = &abreMenu();
  }
  QAction& entrada(const char* nombre) const {
    return *menu->findChild<QAction*>(QString::fromLatin1(nombre));
  }
  QString ajuste(const char* seccion, const char* clave) const {
    QString valor;
    CIni().Leer(ctx.carpetaPrograma + "Config.ini", seccion, clave, valor);
    return valor;
  }
  // The number that the entry line takes next.
  QString siguiente() {
    t->enfoca("TxtAsiento");
    t->teclea("*");
    return t->textoDe("TxtAsiento");
  }

  FrmMenu* menu = nullptr;
};

TEST(FrmMenuVentana, ComesUpWithTheCompanyOfTheLogin) {
  VentanaAbierta e;
  EXPECT_EQ(e.menu->windowTitle(), "Librano 1.6");
  EXPECT_EQ(e.t->textoDe("TxtEmpresa"), "Prueba");
  EXPECT_EQ(e.t->textoDe("TxtAñoActual"), "2003");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "15/03/2003");
  EXPECT_EQ(e.ctx.sesion.MarcaPunteo, "X");
  for (const char* fila : {"Total", "Cuenta", "Asiento", "Marcado"})
    EXPECT_EQ(e.totales(fila), kCeros);
  EXPECT_FALSE(e.t->visible("ImpEmp1"));
  EXPECT_FALSE(e.entrada("MnuInvertirCierre").isVisible());
  // Coming up costs no asiento number, nor does leaving the window by Escape.
  e.t->escape();
  EXPECT_TRUE(e.menu->isVisible());
  EXPECT_EQ(e.contador("Asiento"), "1");
}

TEST(FrmMenuVentana, PassesToAnotherCompanyByTheCombo) {
  VentanaAbierta e;
  e.creaOtra();
  e.cambia("Select * from Conceptos where NConcepto='07'", "Descripcion", "Cobro");
  e.linea("57000001", "100", {}, kFecha);
  e.t->elige("TxtEmpresa", "Otra");
  EXPECT_EQ(e.ctx.sesion.EmpresaActual, "Otra");
  EXPECT_EQ(e.t->textoDe("TxtAñoActual"), "2002");
  EXPECT_EQ(e.t->textoDe("TxtFecha"), "20/02/2002");
  EXPECT_EQ(e.t->control<QLineEdit>("TxtSubcuenta").maxLength(), 9);
  for (const char* fila : {"Total", "Cuenta", "Marcado"}) EXPECT_EQ(e.totales(fila), kCeros);
  EXPECT_TRUE(e.t->visible("ImpEmp1") && e.t->visible("ImpEmp2") && e.t->visible("ImpEmp3"));
  EXPECT_TRUE(e.entrada("MnuInvertirCierre").isVisible());
  EXPECT_EQ(e.ajuste("Entrada", "UltimaEmpresa"), "Otra");
  // Numbers are those of the new company; concepts stay those of the first one.
  e.vacia("TxtSubcuenta");
  EXPECT_EQ(e.siguiente(), "40");
  e.t->escribe("TxtConcepto", "07");
  e.t->intro();
  EXPECT_EQ(e.t->textoDe("TxtConcepto"), "Cobro");
}

TEST(FrmMenuVentana, KeepsTheOpenCompanyWhenTheOtherIsGone) {
  VentanaAbierta e;
  e.creaOtra();
  const QString otra = e.ctx.sesion.rutaEmpresa("Otra");
  ASSERT_TRUE(QFile::rename(rutaSistema(otra), rutaSistema(otra) + ".fuera"));
  e.guion.esperaMensaje("Error 3024: " + ErrorEjecucion(err::kBaseNoEncontrada, otra).descripcion(),
                        "Librano");
  e.t->elige("TxtEmpresa", "Otra");
  EXPECT_EQ(e.t->textoDe("TxtEmpresa"), "Prueba");
  e.t->enfoca("TxtSubcuenta");
  e.linea("57000001", "100", {}, kFecha);
  EXPECT_EQ(e.valor("Select Importe from Diario"), "100");
}

TEST(FrmMenuVentana, AsksBeforeItEndsAndHarderWithADescuadre) {
  VentanaAbierta e;
  const QString salir = "¿ Deseas salir de Librano ?";
  e.guion.esperaPregunta(salir, false, "Salida de Librano");
  e.t->cierra();
  EXPECT_TRUE(e.menu->isVisible());
  EXPECT_EQ(e.finales, 0);
  e.linea("57000001", "0.004", {}, kFecha);
  e.guion.esperaPregunta(salir, true);
  e.entrada("MnuSalir").trigger();
  EXPECT_EQ(e.finales, 1);
  e.linea("57000001", "5", {});
  e.guion.esperaPregunta("¿ Tiene descuadres en el diario desea salir ?", true, "Atención");
  e.t->pulsa("CmdSalir");
  EXPECT_EQ(e.finales, 2);
}

TEST(FrmMenuVentana, TellsOfANewVersionOnce) {
  VentanaAbierta e;
  e.ctx.sesion.VersionConfig = "1.5";
  e.guion.esperaMensaje(
      "Atención su copia de Librano se ha actualizado, siga los pasos que le marcan en la "
      "actualización y recuerde reindexar las empresas.",
      "Librano");
  e.abreMenu();
  EXPECT_EQ(e.ajuste("Version", "Version"), "1.6");
  e.abreMenu();
}

TEST(FrmMenuVentana, OffersTheEntriesWhoseFormIsThere) {
  VentanaAbierta e;
  for (const char* hay : {"MnuVisualizarPlan", "MnuImportaARS", "MnuSalir"})
    EXPECT_TRUE(e.entrada(hay).isEnabled()) << hay;
  for (const char* falta : {"MnuNominas", "MnuGuardarCopiaComo"})
    EXPECT_FALSE(e.entrada(falta).isEnabled()) << falta;
  EXPECT_TRUE(e.t->control("CmdPlan").isEnabled());
  EXPECT_FALSE(e.t->control("Command13").isEnabled());

  e.guion.esperaMensaje(
      "La modificación de los niveles puede suponer un gran riesgo para el correcto funcionamiento "
      "de Librano",
      "Atención");
  e.guion.esperaDialogo("FrmNivel1", [](Teclado& t) { t.pulsa("CmdSalir"); });
  e.entrada("MnuNivel01").trigger();
  e.entrada("MnuEspeciales").trigger();
  e.guion.esperaPregunta(
      "Atención Librano se cerrara ahora, tendrá que volver a reiniciarlo a continuación", true,
      "Salir de Librano");
  e.entrada("MnuActualiza").trigger();
  EXPECT_EQ(e.ejecutados, QStringList({e.ctx.carpetaPrograma + "ejecutar excel",
                                       e.ctx.carpetaPrograma + "Actualiza.exe"}));
  EXPECT_EQ(e.finales, 1);
}

TEST(FrmMenuVentana, GivesTheFileUpToTheFormThatTakesItsPlace) {
  VentanaAbierta e;
  e.formularios->registra("FrmCopias", [&](Contexto& c) {
    EXPECT_FALSE(c.principal);
    EXPECT_FALSE(e.menu->DtaEmpresaActual().isOpen() || e.menu->DtaDiarioLista().isOpen());
    return std::make_unique<Formulario>(c);
  });
  e.menu = &e.abreMenu();
  e.linea("57000001", "100", {}, kFecha);
  e.entrada("MnuCopiasSeguridad").trigger();
  reposar();
  ASSERT_TRUE(e.formularios->abierto("FrmCopias"));
  e.abreMenu();
  EXPECT_EQ(e.totales("Total").constFirst(), "100,00 ");
}

TEST(FrmMenuVentana, TakesWhatTheCompanysScreenChanges) {
  VentanaAbierta e;
  e.linea("57000001", "100", {}, kFecha);
  e.linea("57000001", {}, "100");
  e.guion.esperaDialogo("FrmEmpresas", [](Teclado& t) {
    t.control<QLineEdit>("TxtMascara").setText("0.0");
    t.control<QLineEdit>("TxtContador").setText("50");
    t.pulsa("CmdAceptar");
  });
  e.entrada("MnuModificaEmpresa").trigger();
  EXPECT_EQ(e.totales("Total"), QStringList({"100,0", "-100,0", "0,0"}));
  EXPECT_EQ(e.t->control<Rejilla>("GrdApuntes").texto(0, 5), "100,0");
  EXPECT_EQ(e.siguiente(), "50");
}

TEST(FrmMenuVentana, KeepsSearchButtonsOverTheirColumns) {
  VentanaAbierta e;
  const auto& rejilla = e.t->control<Rejilla>("GrdApuntes");
  const auto borde = [&](const char* boton, bool derecho) {
    const QWidget& b = e.t->control(boton);
    return b.mapTo(e.menu, QPoint(derecho ? b.width() : 0, 0)).x();
  };
  const auto columna = [&](int i) {
    return rejilla.viewport()->mapTo(e.menu, QPoint(rejilla.columnViewportPosition(i), 0)).x();
  };
  for (const int ancho : {1024, 1600}) {
    e.menu->resize(ancho, 700);
    reposar();
    int i = 0;
    for (const char* boton :
         {"CmdPunteo", "CmdCodigo", "CmdFecha", "CmdAsiento", "CmdDescripcion", "CmdImporte"})
      EXPECT_EQ(borde(boton, false), columna(i++)) << boton;
    EXPECT_EQ(borde("CmdDescuadres", true), columna(5));
    EXPECT_EQ(rejilla.horizontalHeader()->length(), rejilla.viewport()->width()) << ancho;
  }
}

}  // namespace
