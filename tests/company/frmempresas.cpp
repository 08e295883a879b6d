// Creating a company and changing its settings.
#include "company/frmempresas.h"

#include "soporte/escenario.h"

namespace {

constexpr int kAlta = 1;
constexpr int kModificacion = 2;

Teclado abre(Escenario& e, int codigoLlamada) {
  e.formularios->registra<FrmEmpresas>();
  return e.abreCon("FrmEmpresas", codigoLlamada);
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

QString empresasDelCatalogo(Escenario& e) {
  e.motor.flush();
  return preguntaFuera(rutaSistema(e.ctx.sesion.rutaCatalogo()), "SELECT count(*) FROM Empresas");
}

TEST(FrmEmpresas, AltaTecleada) {
  Escenario e(Escenario::Catalogo);
  Teclado t = abre(e, kAlta);
  EXPECT_EQ(t.forma().windowTitle(), "Alta de empresa");
  EXPECT_TRUE(t.visible("OptCreaPlan"));
  EXPECT_EQ(t.enfocado(), "TxtNombreEmpresa");
  t.escribe("TxtNombreEmpresa", "Comercial Ejemplo");
  for (int i = 0; i < 3; ++i) t.intro();
  EXPECT_EQ(t.enfocado(), "TxtSubNivel");
  t.entra("7");
  EXPECT_EQ(pestana(t), 1);
  EXPECT_EQ(t.enfocado(), "TxtDireccion");
  t.teclea("Calle Mayor, 1");
  t.escribe("TxtNif", "12345678");
  t.entra("TxtCapitalSocial", "3005,06");
  EXPECT_EQ(pestana(t), 2);
  EXPECT_EQ(t.enfocado(), "TxtIVASCuenta");
  t.teclea("4720000x9");  // letters are refused with a beep
  EXPECT_EQ(static_cast<Formulario&>(t.forma()).pitidos(), 1);
  t.enfoca("TXTIVARVentas");
  t.intro();
  EXPECT_EQ(pestana(t), 3);  // where the accounts have their defaults again
  EXPECT_EQ(t.enfocado(), "TxtMesInicio");
  t.escribe("TxtContador", "1-");  // a minus behind would make a counter that goes down
  EXPECT_EQ(t.textoDe("TxtContador"), "1");
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmEmpresas"));
  e.ctx.sesion.EmpresaActual = "Comercial Ejemplo";
  EXPECT_EQ(e.fila("Select * from Empresa"),
            "1|Comercial Ejemplo|2003|15/03/2003|Calle Mayor, 1|||||12345678||||3005,06|3|7|"
            "4720001|400|6000001|4770001|430|7000001|3||1|Falso|Falso|#,##0.00 ;-#,##0.00||"
            "0|0|0|4750001|4730001");
  EXPECT_EQ(empresasDelCatalogo(e), "1");
}

// What is typed in the levels, and where that leaves them and the first account.
TEST(FrmEmpresas, Niveles) {
  const std::tuple<const char*, const char*, const char*, const char*, const char*> casos[] = {
      {"TxtMayNivel", "4", "4", "5", "47201"},     {"TxtMayNivel", "2", "3", "4", "4721"},
      {"TxtMayNivel", "0", "3", "4", "4721"},      {"TxtSubNivel", "4", "3", "4", "4721"},
      {"TxtSubNivel", "9", "3", "9", "472000001"}, {"TxtSubNivel", "10", "3", "10", "4720000001"},
      {"TxtMayNivel", "", "", "8", "47200001"},  // nothing typed touches nothing
  };
  Escenario e(Escenario::Catalogo);
  for (const auto& [campo, tecleado, mayores, subcuentas, iva] : casos) {
    SCOPED_TRACE(std::string(campo) + " " + tecleado);
    Teclado t = abre(e, kAlta);
    t.escribe(campo, tecleado);
    if (!*tecleado) t.tecla(Qt::Key_Delete);
    EXPECT_EQ(t.textosDe({"TxtMayNivel", "TxtSubNivel"}), (QStringList{mayores, subcuentas}));
    EXPECT_EQ(t.textoDe("TxtSubRepre").size(), QByteArray(subcuentas).toInt());
    EXPECT_EQ(t.textoDe("TxtIVASCuenta"), iva);
  }
}

// However the field of the subcuentas is left, a level too short brings back to it, and the click
// that left it doesn't happen.
TEST(FrmEmpresas, SubcuentaMasCortaQueLaCuenta) {
  const std::function<void(Teclado&)> salidas[] = {
      [](Teclado& t) { t.intro(); },
      [](Teclado& t) { t.tab(); },
      [](Teclado& t) { pulsaPestana(t, 2); },
      [](Teclado& t) { t.mnemonico('a'); },
  };
  for (const auto& salida : salidas) {
    SCOPED_TRACE(&salida - salidas);
    Escenario e(Escenario::Catalogo);
    Teclado t = abre(e, kAlta);
    t.escribe("TxtSubNivel", "3");
    e.guion.esperaMensaje(
        "El nivel de la subcuenta tiene que ser un número más que las cuentas, como mínimo",
        "Error");
    salida(t);
    EXPECT_EQ(pestana(t), 0);
    EXPECT_EQ(t.textoDe("TxtSubNivel"), "4");
    EXPECT_EQ(t.enfocado(), "TxtSubNivel");
  }
}

TEST(FrmEmpresas, AltasQueFallan) {
  Escenario e;
  Teclado t = abre(e, kAlta);
  e.guion.esperaMensaje("Necesita introducir un nombre de empresa", "Error");
  t.pulsa("CmdAceptar");
  EXPECT_EQ(t.enfocado(), "TxtNombreEmpresa");
  t.teclea("PRUEBA");
  e.guion.esperaMensaje("Esta intentando dar de alta una empresa que ya existe, cree otra empresa",
                        "Error");
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmEmpresas"));
  EXPECT_EQ(empresasDelCatalogo(e), "1");
  EXPECT_TRUE(e.errores().isEmpty());

  // What is told about a field goes to it; nothing was written.
  Teclado otra = abre(e, kAlta);
  otra.escribe("TxtNombreEmpresa", "a/b");
  e.guion.esperaMensaje(
      "El nombre de la empresa es también el de su carpeta: no puede llevar \\ / : * ? \" < > | ni "
      "empezar por un punto",
      "Error");
  otra.pulsa("CmdAceptar");
  EXPECT_EQ(otra.enfocado(), "TxtNombreEmpresa");
  otra.teclea(" Otra ");
  pulsaPestana(otra, 2);
  otra.escribe("TXTIVARVentas", "47.7");
  otra.escribe("TxtIVARRecargo", "477000011");  // no more digits than its level has
  EXPECT_EQ(otra.textoDe("TXTIVARVentas"), "47000007");
  EXPECT_EQ(otra.textoDe("TxtIVARRecargo"), "47700001");
  e.guion.esperaMensaje("Hay dos subcuentas con el código 47700001", "Error");
  otra.pulsa("CmdAceptar");
  EXPECT_EQ(pestana(otra), 2);
  EXPECT_EQ(otra.enfocado(), "TxtIVARRecargo");
  EXPECT_EQ(empresasDelCatalogo(e), "1");
  EXPECT_TRUE(e.errores().isEmpty());
  otra.teclea("4.3");
  otra.pulsa("CmdAceptar");
  EXPECT_FALSE(e.abierto("FrmEmpresas"));
  EXPECT_EQ(empresasDelCatalogo(e), "2");
  e.ctx.sesion.EmpresaActual = "Otra";
  EXPECT_EQ(e.valor("Select NombreEmpresa & '|' & IVARRE from Empresa"), "Otra|40000003");
}

TEST(FrmEmpresas, ModificaLoQuePuede) {
  DatosEmpresa datos = Escenario::empresaDePrueba();
  datos.IVASSub = "47200099";
  datos.Nif = "12345678";
  datos.Controlar = true;
  Escenario e(Escenario::Empresa, datos);
  const QString antes = e.fila("Select * from Empresa");
  for (const char* boton : {"CmdCancelar", "CmdAceptar"}) {
    EXPECT_EQ(e.fila("Select * from Empresa"), antes);
    Teclado t = abre(e, kModificacion);
    for (const char* fijo : {"TxtNombreEmpresa", "TxtAñoContable", "TxtMayNivel", "TxtSubNivel"})
      EXPECT_FALSE(t.control(fijo).isEnabled()) << fijo;
    EXPECT_FALSE(t.visible("OptCreaPlan"));
    EXPECT_EQ(t.textoDe("TxtIVASCuenta"), "47200099");
    // The wheel goes to none.
    QTabBar& barra = *t.control<QTabWidget>("Tabla").tabBar();
    const QPointF medio = barra.rect().center();
    QWheelEvent rueda(medio, barra.mapToGlobal(medio), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&barra, &rueda);
    EXPECT_EQ(t.textoDe("TxtIVASCuenta"), "47200099");
    // Going to another tab brings the default accounts back; they are what is stored.
    pulsaPestana(t, 1);
    EXPECT_EQ(t.textoDe("TxtIVASCuenta"), "47200001");
    t.escribe("TxtGerente", "Ana Ruiz");
    t.escribe("TxtNif", "B1234");  // letters: lost without a word
    pulsaPestana(t, 3);
    t.escribe("TxtNoModifica", "3112");
    t.escribe("TxtMesInicio", "04");
    t.marca("TxtLimpiarPantalla");
    t.marca("TxtControlarAsiento", false);
    EXPECT_EQ(t.textoDe("TxtNoModifica"), "31/12/2003");
    t.escribe("TxtMascara", "#,##0");
    t.pulsa(boton);
    EXPECT_FALSE(e.abierto("FrmEmpresas"));
  }
  EXPECT_EQ(e.fila("Select * from Empresa"),
            "1|Prueba|2003|01/01/2003||||||12345678|||Ana Ruiz|0|3|8|47200001|400|60000001|"
            "47700001|430|70000001|4|31/12/2003|1|Verdadero|Falso|#,##0|€|0|0|0|47500001|"
            "47300001");
  const Sesion& s = e.ctx.sesion;
  EXPECT_EQ(s.MesInicio, 4);
  EXPECT_EQ(s.FechaNoModificar, "31/12/2003");
  EXPECT_TRUE(s.LimpiarAsiento);
  EXPECT_FALSE(s.ControlarAsiento);
  EXPECT_EQ(s.MascaraImporte, "#,##0");
  EXPECT_EQ(s.GerenteEmpresa, "");  // with the next opening
}

}  // namespace
