// Creating a company and changing its settings.
#include "company/frmempresas.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "company/registro.h"
#include "foundation/rutas.h"
#include "soporte/escenario.h"

namespace {

Teclado alta(Escenario& e) {
  e.ctx.sesion.CodigoLlamada = 1;
  return Teclado(e.abre<FrmEmpresas>());
}

Teclado modificacion(Escenario& e) {
  e.ctx.sesion.CodigoLlamada = 2;
  return Teclado(e.abre<FrmEmpresas>());
}

bool sigueAbierta(const Escenario& e) {
  return e.formularios->abierto(QStringLiteral("FrmEmpresas")) != nullptr;
}

int pestana(const Teclado& t) {
  return t.control<QTabWidget>("Tabla").currentIndex();
}

void pulsaPestana(Teclado& t, int indice) {
  QTabBar& barra = *t.control<QTabWidget>("Tabla").tabBar();
  QTest::mouseClick(barra.window()->windowHandle(), Qt::LeftButton, {},
                    barra.mapTo(barra.window(), barra.tabRect(indice).center()));
  reposar();
}

int empresasDelCatalogo(Escenario& e) {
  const auto base = e.ctx.motor.Workspaces(0).OpenDatabase(e.ctx.sesion.rutaCatalogo());
  return base->OpenRecordset(QStringLiteral("Empresas"))->rowTotal();
}

const QString kNivelCorto = QStringLiteral(
    "El nivel de la subcuenta tiene que ser un número más que las cuentas, como mínimo");

}  // namespace

TEST(FrmEmpresas, AltaTecleada) {
  Escenario e(Escenario::Catalogo);
  Teclado t = alta(e);
  EXPECT_EQ(t.forma().windowTitle(), QStringLiteral("Alta de empresa"));
  EXPECT_TRUE(t.visible("OptCreaPlan"));
  t.escribe("TxtNombreEmpresa", QStringLiteral("Comercial Ejemplo"));
  t.intro();
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtAñoContable"));
  EXPECT_EQ(t.textoDe("TxtAñoContable"), QStringLiteral("2003"));
  t.intro();
  t.intro();
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtSubNivel"));
  t.teclea(QStringLiteral("7"));
  t.intro();
  EXPECT_EQ(pestana(t), 1);
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtDireccion"));
  t.teclea(QStringLiteral("Calle Mayor, 1"));
  t.escribe("TxtNif", QStringLiteral("12345678"));
  t.escribe("TxtCapitalSocial", QStringLiteral("3005,06"));
  t.intro();
  EXPECT_EQ(pestana(t), 2);
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtIVASCuenta"));
  t.teclea(QStringLiteral("4720000x9"));  // letters are refused with a beep
  EXPECT_EQ(static_cast<Formulario&>(t.forma()).pitidos(), 1);
  t.enfoca("TXTIVARVentas");
  t.intro();
  EXPECT_EQ(pestana(t), 3);
  EXPECT_EQ(t.enfocado(), QStringLiteral("TxtMesInicio"));
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(sigueAbierta(e));

  e.ctx.sesion.EmpresaActual = QStringLiteral("Comercial Ejemplo");
  const auto filas = e.filas(QStringLiteral("Select * from Empresa"));
  ASSERT_EQ(filas.size(), 1U);
  const QStringList& f = filas.front();
  const struct {
    int ordinal;
    const char* valor;
  } esperados[] = {
      {0, "1"},
      {1, "Comercial Ejemplo"},
      {2, "2003"},
      {3, "15/03/2003"},
      {4, "Calle Mayor, 1"},
      {9, "12345678"},
      {13, "3005,06"},
      {14, "3"},
      {15, "7"},
      {16, "4720001"},
      {17, "400"},
      {18, "6000001"},
      {19, "4770001"},
      {20, "430"},
      {21, "7000001"},
      {22, "3"},
      {23, ""},
      {24, "1"},
      {27, "#,##0.00 ;-#,##0.00"},
      {32, "4750001"},
      {33, "4730001"},
  };
  for (const auto& [ordinal, valor] : esperados)
    EXPECT_EQ(f.value(ordinal), QString::fromUtf8(valor)) << ordinal;
  EXPECT_EQ(empresasDelCatalogo(e), 1);
}

// What is typed in the levels, and where that leaves them and the first account.
TEST(FrmEmpresas, Niveles) {
  const struct {
    const char* campo;
    const char* tecleado;
    const char* mayores;
    const char* subcuentas;
    const char* iva;
  } casos[] = {
      {"TxtMayNivel", "4", "4", "5", "47201"},     {"TxtMayNivel", "2", "3", "4", "4721"},
      {"TxtMayNivel", "0", "3", "4", "4721"},      {"TxtSubNivel", "4", "3", "4", "4721"},
      {"TxtSubNivel", "9", "3", "9", "472000001"}, {"TxtSubNivel", "10", "3", "10", "4720000001"},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.campo) + " " + c.tecleado);
    Escenario e(Escenario::Catalogo);
    Teclado t = alta(e);
    t.escribe(c.campo, QLatin1String(c.tecleado));
    EXPECT_EQ(t.textoDe("TxtMayNivel"), QLatin1String(c.mayores));
    EXPECT_EQ(t.textoDe("TxtSubNivel"), QLatin1String(c.subcuentas));
    EXPECT_EQ(t.textoDe("TxtMayRepre").size(), QByteArray(c.mayores).toInt());
    EXPECT_EQ(t.textoDe("TxtSubRepre").size(), QByteArray(c.subcuentas).toInt());
    EXPECT_EQ(t.textoDe("TxtIVASCuenta"), QLatin1String(c.iva));
  }
}

TEST(FrmEmpresas, NivelVacioNoTocaNada) {
  Escenario e(Escenario::Catalogo);
  Teclado t = alta(e);
  t.enfoca("TxtMayNivel");
  t.tecla(Qt::Key_Delete);
  EXPECT_EQ(t.textoDe("TxtMayNivel"), QString());
  EXPECT_EQ(t.textoDe("TxtSubNivel"), QStringLiteral("8"));
  EXPECT_EQ(t.textoDe("TxtIVASCuenta"), QStringLiteral("47200001"));
}

// However the field of the subcuentas is left, a level too short brings back to it, and the click
// that left it doesn't happen.
TEST(FrmEmpresas, SubcuentaMasCortaQueLaCuenta) {
  const std::function<void(Teclado&)> salidas[] = {
      [](Teclado& t) { t.intro(); },
      [](Teclado& t) { t.tab(); },
      [](Teclado& t) { pulsaPestana(t, 2); },
      [](Teclado& t) { t.mnemonico(QLatin1Char('a')); },
  };
  for (const auto& salida : salidas) {
    Escenario e(Escenario::Catalogo);
    Teclado t = alta(e);
    t.escribe("TxtSubNivel", QStringLiteral("3"));
    e.guion.esperaMensaje(kNivelCorto, QStringLiteral("Error"));
    salida(t);
    EXPECT_EQ(pestana(t), 0) << &salida - salidas;
    EXPECT_EQ(t.textoDe("TxtSubNivel"), QStringLiteral("4"));
    EXPECT_EQ(t.enfocado(), QStringLiteral("TxtSubNivel"));
    EXPECT_TRUE(e.guion.agotado()) << &salida - salidas;
  }
}

TEST(FrmEmpresas, AltasQueFallan) {
  Escenario e;
  {
    Teclado t = alta(e);
    e.guion.esperaMensaje(QStringLiteral("Necesita introducir un nombre de empresa"),
                          QStringLiteral("Error"));
    t.pulsa("CmdAceptar");
    EXPECT_EQ(t.enfocado(), QStringLiteral("TxtNombreEmpresa"));

    t.teclea(QStringLiteral("PRUEBA"));
    e.guion.esperaMensaje(
        QStringLiteral("Esta intentando dar de alta una empresa que ya existe, cree otra empresa"),
        QStringLiteral("Error"));
    t.pulsa("CmdAceptar");
    EXPECT_FALSE(sigueAbierta(e));
    EXPECT_EQ(empresasDelCatalogo(e), 1);
    EXPECT_TRUE(e.errores().isEmpty());
  }
  {
    // No folder can bear this name: the row of the catalogue is there by then.
    Teclado t = alta(e);
    t.escribe("TxtNombreEmpresa", QStringLiteral("a/b"));
    t.pulsa("CmdAceptar");
    EXPECT_TRUE(sigueAbierta(e));
    EXPECT_EQ(empresasDelCatalogo(e), 2);
    ASSERT_EQ(e.errores().size(), 1);
    EXPECT_TRUE(e.errores().front().endsWith(
        QStringLiteral("Producido en CmdAceptar_Click - FrmEmpresas")));
    t.escape();
    EXPECT_FALSE(sigueAbierta(e));
  }
}

TEST(FrmEmpresas, SinElFormularioDelPlanElAltaTermina) {
  Escenario e(Escenario::Catalogo);
  Teclado t = alta(e);
  t.escribe("TxtNombreEmpresa", QStringLiteral("Tienda"));
  t.marca("OptCreaPlan");
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(sigueAbierta(e));
  EXPECT_TRUE(QFileInfo::exists(rutaSistema(e.ctx.sesion.rutaEmpresa(QStringLiteral("Tienda")))));
}

TEST(FrmEmpresas, ModificaLoQuePuede) {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.IVASSub = QStringLiteral("47200099");
  datos.Nif = QStringLiteral("12345678");
  datos.Controlar = true;
  Escenario e(Escenario::Empresa, datos);
  Teclado t = modificacion(e);
  for (const char* fijo : {"TxtNombreEmpresa", "TxtAñoContable", "TxtMayNivel", "TxtSubNivel"})
    EXPECT_FALSE(t.control(fijo).isEnabled()) << fijo;
  EXPECT_FALSE(t.visible("OptCreaPlan"));
  EXPECT_EQ(t.textoDe("TxtNombreEmpresa"), QStringLiteral("Prueba"));
  EXPECT_EQ(t.textoDe("TxtIVASCuenta"), QStringLiteral("47200099"));
  EXPECT_TRUE(t.control<QCheckBox>("TxtControlarAsiento").isChecked());

  // Going to another tab brings the default accounts back; they are what is stored.
  pulsaPestana(t, 1);
  EXPECT_EQ(t.textoDe("TxtIVASCuenta"), QStringLiteral("47200001"));
  t.escribe("TxtGerente", QStringLiteral("Ana Ruiz"));
  t.escribe("TxtNif", QStringLiteral("B1234"));
  pulsaPestana(t, 3);
  t.escribe("TxtNoModifica", QStringLiteral("3112"));
  t.escribe("TxtMesInicio", QStringLiteral("04"));
  t.marca("TxtLimpiarPantalla");
  EXPECT_EQ(t.textoDe("TxtNoModifica"), QStringLiteral("31/12/2003"));
  EXPECT_EQ(t.textoDe("TxtMesInicio"), QStringLiteral("4"));
  t.escribe("TxtMascara", QStringLiteral("#,##0"));
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(sigueAbierta(e));

  const QStringList f = e.filas(QStringLiteral("Select * from Empresa")).front();
  EXPECT_EQ(f.value(9), QStringLiteral("12345678"));  // letters: lost without a word
  EXPECT_EQ(f.value(12), QStringLiteral("Ana Ruiz"));
  EXPECT_EQ(f.value(16), QStringLiteral("47200001"));
  EXPECT_EQ(f.value(22), QStringLiteral("4"));
  EXPECT_EQ(f.value(23), QStringLiteral("31/12/2003"));
  EXPECT_EQ(f.value(27), QStringLiteral("#,##0"));
  const Sesion& s = e.ctx.sesion;
  EXPECT_EQ(s.MesInicio, 4);
  EXPECT_EQ(s.FechaNoModificar, QStringLiteral("31/12/2003"));
  EXPECT_TRUE(s.LimpiarAsiento);
  EXPECT_TRUE(s.ControlarAsiento);
  EXPECT_EQ(s.MascaraImporte, QStringLiteral("#,##0"));
  EXPECT_EQ(s.GerenteEmpresa, QString());  // with the next opening
}

TEST(FrmEmpresas, CancelarNoCambiaNada) {
  Escenario e;
  const auto antes = e.filas(QStringLiteral("Select * from Empresa"));
  Teclado t = modificacion(e);
  pulsaPestana(t, 3);
  t.escribe("TxtMascara", QStringLiteral("0"));
  t.escape();
  EXPECT_FALSE(sigueAbierta(e));
  EXPECT_EQ(e.filas(QStringLiteral("Select * from Empresa")), antes);
  EXPECT_EQ(e.ctx.sesion.MascaraImporte, QStringLiteral("#,##0.00 ;-#,##0.00"));
}
