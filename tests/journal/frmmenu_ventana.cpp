// The main window around the books: its menu, its companies, its coming up and its end.

#include "common/version.h"
#include "journal/menuabierto.h"

namespace {

const QString kFecha = "20/02/2003";
const QStringList kCeros = {"0,00 ", "0,00 ", "0,00 "};

class FrmMenuVentana : public MenuAbierto {
 protected:
  FrmMenuVentana() {
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
  // The number that the entry line takes next.
  QString siguiente() {
    t->enfoca("TxtAsiento");
    t->teclea("*");
    return t->textoDe("TxtAsiento");
  }

  FrmMenu* menu = nullptr;
};

TEST_F(FrmMenuVentana, SaleConLaEmpresaDeLaEntrada) {
  EXPECT_EQ(menu->windowTitle(), "Librano " + versionDelPrograma());
  EXPECT_EQ(t->textosDe({"TxtEmpresa", "TxtAñoActual", "TxtFecha"}),
            (QStringList{"Prueba", "2003", "15/03/2003"}));
  EXPECT_EQ(ctx.sesion.MarcaPunteo, "X");
  for (const char* fila : {"Total", "Cuenta", "Asiento", "Marcado"})
    EXPECT_EQ(totales(fila), kCeros);
  EXPECT_FALSE(t->visible("ImpEmp1"));
  EXPECT_FALSE(entrada("MnuInvertirCierre").isVisible());
  // Coming up costs no asiento number, nor does leaving the window by Escape.
  t->escape();
  EXPECT_TRUE(menu->isVisible());
  EXPECT_EQ(contador("Asiento"), "1");
}

TEST_F(FrmMenuVentana, PasaAOtraEmpresaPorElCombo) {
  creaOtra();
  cambia("Select * from Conceptos where NConcepto='07'", "Descripcion", "Cobro");
  linea("57000001", "100", {}, kFecha);
  t->elige("TxtEmpresa", "Otra");
  EXPECT_EQ(ctx.sesion.EmpresaActual, "Otra");
  EXPECT_EQ(t->textosDe({"TxtAñoActual", "TxtFecha"}), (QStringList{"2002", "20/02/2002"}));
  EXPECT_EQ(t->control<QLineEdit>("TxtSubcuenta").maxLength(), 9);
  for (const char* fila : {"Total", "Cuenta", "Marcado"}) EXPECT_EQ(totales(fila), kCeros);
  EXPECT_TRUE(t->visible("ImpEmp1") && t->visible("ImpEmp2") && t->visible("ImpEmp3"));
  EXPECT_TRUE(entrada("MnuInvertirCierre").isVisible());
  EXPECT_EQ(ajuste("Entrada", "UltimaEmpresa"), "Otra");
  // Numbers are those of the new company; concepts stay those of the first one.
  EXPECT_EQ(t->textoDe("TxtSubcuenta") + t->textoDe("TxtNombreCuenta"), "");
  EXPECT_EQ(siguiente(), "40");
  t->entra("TxtConcepto", "07");
  EXPECT_EQ(t->textoDe("TxtConcepto"), "Cobro");
}

TEST_F(FrmMenuVentana, SigueEnLaEmpresaAbiertaSiLaOtraNoEsta) {
  creaOtra();
  const QString otra = ctx.sesion.rutaEmpresa("Otra");
  ASSERT_TRUE(QFile::rename(rutaSistema(otra), rutaSistema(otra) + ".fuera"));
  guion.esperaMensaje(errorEnCaja(3024, otra), "Librano");
  t->elige("TxtEmpresa", "Otra");
  EXPECT_EQ(t->textoDe("TxtEmpresa"), "Prueba");
  t->enfoca("TxtSubcuenta");
  linea("57000001", "100", {}, kFecha);
  EXPECT_EQ(valor("Select Importe from Diario"), "100");
}

TEST_F(FrmMenuVentana, PreguntaAntesDeAcabarYMasSiHayDescuadre) {
  const QString salir = "¿ Deseas salir de Librano ?";
  guion.esperaPregunta(salir, false, "Salida de Librano");
  t->cierra();
  EXPECT_TRUE(menu->isVisible());
  EXPECT_EQ(finales, 0);
  linea("57000001", "0.004", {}, kFecha);
  guion.esperaPregunta(salir, true);
  entrada("MnuSalir").trigger();
  EXPECT_EQ(finales, 1);
  linea("57000001", "5", {});
  guion.esperaPregunta("¿ Tiene descuadres en el diario desea salir ?", true, "Atención");
  t->pulsa("CmdSalir");
  EXPECT_EQ(finales, 2);
}

TEST_F(FrmMenuVentana, AvisaUnaVezDeUnaVersionNueva) {
  ctx.sesion.VersionConfig = "1.5";
  guion.esperaMensaje(
      "Atención su copia de Librano se ha actualizado, siga los pasos que le marcan en la "
      "actualización y recuerde reindexar las empresas.",
      "Librano");
  abreMenu();
  EXPECT_EQ(ajuste("Version", "Version"), versionDelPrograma());
  abreMenu();
}

TEST_F(FrmMenuVentana, OfreceLasEntradasCuyoFormularioEsta) {
  for (const char* hay : {"MnuVisualizarPlan", "MnuImportaARS", "MnuSalir"})
    EXPECT_TRUE(entrada(hay).isEnabled()) << hay;
  for (const char* falta : {"MnuNominas", "MnuGuardarCopiaComo"})
    EXPECT_FALSE(entrada(falta).isEnabled()) << falta;
  EXPECT_TRUE(t->control("CmdPlan").isEnabled());
  EXPECT_FALSE(t->control("Command13").isEnabled());

  guion.esperaMensaje(
      "La modificación de los niveles puede suponer un gran riesgo para el correcto funcionamiento "
      "de Librano",
      "Atención");
  guion.esperaDialogo("FrmNivel1", [](Teclado& t) { t.pulsa("CmdSalir"); });
  entrada("MnuNivel01").trigger();
  entrada("MnuEspeciales").trigger();
  guion.esperaPregunta(
      "Atención Librano se cerrara ahora, tendrá que volver a reiniciarlo a continuación", true,
      "Salir de Librano");
  entrada("MnuActualiza").trigger();
  EXPECT_EQ(ejecutados, QStringList({ctx.sesion.DirPrograma + "ejecutar excel",
                                     ctx.sesion.DirPrograma + "Actualiza.exe"}));
  EXPECT_EQ(finales, 1);
}

TEST_F(FrmMenuVentana, DejaElFicheroAlFormularioQueOcupaSuSitio) {
  formularios->registra("FrmCopias", [&](Contexto& c) {
    EXPECT_FALSE(c.principal);
    EXPECT_FALSE(menu->DtaEmpresaActual().isOpen() || menu->DtaDiarioLista().isOpen());
    return std::make_unique<Formulario>(c);
  });
  menu = &abreMenu();
  linea("57000001", "100", {}, kFecha);
  entrada("MnuCopiasSeguridad").trigger();
  reposar();
  ASSERT_TRUE(formularios->abierto("FrmCopias"));
  abreMenu();
  EXPECT_EQ(totales("Total").constFirst(), "100,00 ");
  EXPECT_EQ(totales("Marcado").constFirst(), "100,00 ");
}

// A folder copied by hand holds the name of the company it was copied from.
TEST_F(FrmMenuVentana, AsientaEnLaEmpresaElegida) {
  creaOtra();
  ASSERT_TRUE(QFile::remove(carpetaDatos() + "/Otra/Conta.MDB"));
  ASSERT_TRUE(
      QFile::copy(carpetaDatos() + "/Prueba/Conta.MDB", carpetaDatos() + "/Otra/Conta.MDB"));
  t->elige("TxtEmpresa", "Otra");
  EXPECT_EQ(ctx.sesion.EmpresaActual, "Otra");
  EXPECT_EQ(valor("Select NombreEmpresa from Empresa"), "Otra");
  linea("57000001", "100", {}, kFecha);
  EXPECT_EQ(valor("Select Count(NLinea) from Diario"), "1");
  ASSERT_EQ(errores().size(), 1);
  EXPECT_TRUE(errores()[0].contains("Otra llevaban el nombre Prueba")) << qPrintable(errores()[0]);
  abreEmpresa("Prueba");
  EXPECT_EQ(valor("Select Count(NLinea) from Diario"), "0");
}

TEST_F(FrmMenuVentana, TieneLosBotonesDeBusquedaSobreSusColumnas) {
  const auto& rejilla = t->control<Rejilla>("GrdApuntes");
  const auto borde = [&](const char* boton, bool derecho) {
    const QWidget& b = t->control(boton);
    return b.mapTo(menu, QPoint(derecho ? b.width() : 0, 0)).x();
  };
  const auto columna = [&](int i) {
    return rejilla.viewport()->mapTo(menu, QPoint(rejilla.columnViewportPosition(i), 0)).x();
  };
  for (const int ancho : {1024, 1600}) {
    menu->resize(ancho, 700);
    reposar();
    int i = 0;
    for (const char* boton :
         {"CmdPunteo", "CmdCodigo", "CmdFecha", "CmdAsiento", "CmdDescripcion", "CmdImporte"})
      EXPECT_EQ(borde(boton, false), columna(i++)) << boton;
    EXPECT_EQ(borde("CmdDescuadres", true), columna(5));
    EXPECT_EQ(rejilla.horizontalHeader()->length(), rejilla.viewport()->width()) << ancho;
  }
}

// A catalogue without companies is where everybody begins.
TEST(FrmMenuSinEmpresa, SaysWhatIsMissingInsteadOfFailing) {
  Escenario e(Escenario::Catalogo);
  registraFormularios(*e.formularios);
  Teclado t(e.abre<FrmMenu>());
  const auto espera = [&] {
    e.guion.esperaMensaje(
        "No hay ninguna empresa abierta: elija una, o cree otra con \"Nueva empresa\" en el menú "
        "Archivo",
        "Error");
  };
  for (const char* boton :
       {"CmdRecargar", "CmdCodigo", "CmdDescuadres", "CmdModificaApunte", "CmdLinAsiento"}) {
    espera();
    t.pulsa(boton);
  }
  for (const char* entrada :
       {"MnuRenumeraDiario", "MnuDuplicaAsiento", "MnuEliminarapunte", "MnuCopiasSeguridad"}) {
    espera();
    t.control<QAction>(entrada).trigger();
  }
  for (const char* boton : {"CmdPrimero", "CmdAnterior", "CmdSiguiente", "CmdUltimo"})
    t.pulsa(boton);
}

TEST(FrmMenuSinEmpresa, TakesItsFirstOneAlive) {
  Escenario e(Escenario::Catalogo);
  registraJournal(*e.formularios);
  e.creaEmpresa(Escenario::empresaDePrueba());
  Teclado t(e.abre<FrmMenu>());
  EXPECT_EQ(t.textoDe("TxtEmpresa"), "");
  t.elige("TxtEmpresa", "Prueba");
  e.cambia("Conceptos", "Descripcion", "Su factura");
  t.enfoca("TxtAsiento");
  t.teclea("*");
  EXPECT_EQ(t.textoDe("TxtAsiento"), "1");
  for (const char* siguiente : {"TxtFecha", "TxtSubcuenta"}) {
    t.intro();
    EXPECT_EQ(t.enfocado(), siguiente);
  }
  t.enfoca("TxtConcepto");
  t.entra("01");
  EXPECT_EQ(t.textoDe("TxtConcepto"), "Su factura");
}

TEST_F(FrmMenuVentana, TomaLoQueCambiaLaPantallaDeEmpresa) {
  linea("57000001", "100", {}, kFecha);
  linea("57000001", {}, "100");
  guion.esperaDialogo("FrmEmpresas", [](Teclado& t) {
    t.control<QLineEdit>("TxtMascara").setText("0.0");
    t.control<QLineEdit>("TxtContador").setText("50");
    t.pulsa("CmdAceptar");
  });
  entrada("MnuModificaEmpresa").trigger();
  EXPECT_EQ(totales("Total"), QStringList({"100,0", "-100,0", "0,0"}));
  EXPECT_EQ(t->control<Rejilla>("GrdApuntes").texto(0, 5), "100,0");
  EXPECT_EQ(siguiente(), "50");
}

}  // namespace
