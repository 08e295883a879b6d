// Creating and changing subcuentas by the keyboard.

#include "accounts/plan.h"

namespace {

const char* const kFaltaCuenta =
    "La cuenta no existe en el plan de cuentas, ¿ Desea crear una cuenta ?";

// The same refusal, whatever takes the focus away: nothing may be written by the click that did it.
TEST(FrmSubCuentas, UnaCuentaQueFaltaYNoSeCreaDejaElCampoVacioYNoEscribeNada) {
  const struct {
    const char* como;
    std::function<void(Teclado&)> sale;
  } casos[] = {{"Intro", [](Teclado& t) { t.intro(); }},
               {"ratón", [](Teclado& t) { t.pulsa("CmdAceptar"); }},
               {"mnemónico", [](Teclado& t) { t.mnemonico('a'); }}};
  EscenarioPlan e;
  const auto antes = e.filas("Subcuentas");
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.como);
    Teclado t = e.abreCon("FrmSubCuentas", 1, "57000001");
    e.guion.esperaPregunta(kFaltaCuenta, false, "Error");
    caso.sale(t);
    EXPECT_EQ(t.textoDe("TxtSubcuenta"), "");
    EXPECT_EQ(t.enfocado(), "TxtSubcuenta");
    EXPECT_TRUE(e.abierto("FrmSubCuentas"));
    // Closing is no leaving.
    t.teclea("99900001");
    t.escape();
    EXPECT_FALSE(e.abierto("FrmSubCuentas"));
    EXPECT_EQ(e.filas("Subcuentas"), antes);
  }
}

TEST(FrmSubCuentas, LoQueElFicheroRechazaSeDiceYNadaCambia) {
  EscenarioPlan e;
  const auto antes = e.filas("Subcuentas");
  for (const int modo : {1, 2}) {
    SCOPED_TRACE(modo);
    Teclado t = e.abreCon("FrmSubCuentas", modo, "43000001");
    t.escribe("TxtSubcuenta", "43.2");
    e.guion.esperaMensaje("La subcuenta que esta introduciendo ya existe", "Error");
    t.pulsa("CmdAceptar");
    EXPECT_FALSE(e.abierto("FrmSubCuentas"));
    EXPECT_EQ(e.filas("Subcuentas"), antes);
  }
  Teclado t = e.abreCon("FrmSubCuentas", 2, "43000099");  // deleted meanwhile
  e.guion.esperaMensaje(ErrorEjecucion(err::kSinRegistroActivo).descripcion(), "Error");
  t.pulsa("CmdAceptar");
  EXPECT_TRUE(e.abierto("FrmSubCuentas"));
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores()[0].trimmed().endsWith("Producido en CmdAceptar_Click FrmSubcuentas"));
}

TEST(FrmSubCuentas, AlModificarCambianLaFichaSiLaHayElNombreYElCodigo) {
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmSubCuentas", 2, "57200001");
  EXPECT_FALSE(t.visible("CmdDatosAuxiliares"));
  t = e.abreCon("FrmSubCuentas", 2, "43000002");
  EXPECT_EQ(t.forma().windowTitle(), "Modificación de subcuenta");
  EXPECT_EQ(t.textoDe("TxtDescripcion"), "Bodegas Luna");
  EXPECT_FALSE(t.visible("CmdDesplega"));
  e.guion.esperaDialogo("FrmDatosAuxiliares", [&](Teclado& d) {
    EXPECT_EQ(d.textosDe({"TxtSubcuenta", "TxtDescripcion"}).join('|'), "43000002|Bodegas Luna");
    for (const char* texto :
         {"Mayor, 1", "Soria", "42200", "Almazán", "España", "B42", "975", "976", "Eva"})
      d.entra(texto);
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    // What a busy file doesn't take stays on screen.
    e.motor.setLockTimeout(30);
    {
      OtroPuesto otro(rutaSistema(e.ctx.sesion.rutaEmpresa()), "BEGIN EXCLUSIVE;");
      e.guion.esperaMensaje(errorEnCaja(err::kRegistroBloqueado, e.ctx.sesion.rutaEmpresa()),
                            "Librano");
      d.intro();
    }
    d.pulsa("CmdAceptar");
  });
  t.pulsa("CmdDatosAuxiliares");
  t.escribe("TxtDescripcion", "Bodegas Sol");
  // Also here a cuenta that is missing is created on the way.
  t.escribe("TxtSubcuenta", "57.1");
  e.guion.esperaPregunta(kFaltaCuenta, true, "Error");
  e.guion.esperaDialogo("FrmCuentas", [](Teclado& d) {
    d.escribe("TxtDescripcion", "Caja");
    d.pulsa("CmdAceptar");
  });
  t.intro();
  EXPECT_EQ(e.cuenta("570"), "570|Caja|5|57|Falso");
  EXPECT_EQ(t.enfocado(), "TxtSubcuenta");
  t.pulsa("CmdAceptar");
  EXPECT_EQ(e.fila("Select * from Subcuentas where Subcuenta='57000001'"),
            "57000001|570|Bodegas Sol|Mayor, 1|Soria|42200|Almazán|España|B42|975|976|Eva");
  EXPECT_EQ(e.subcuenta("43000002"), "");
}

TEST(FrmSubCuentas, LaListaSeDespliegaYSigueLoQueSeTeclea) {
  EscenarioPlan e;
  Teclado t = e.abreCon("FrmSubCuentas", 1);
  const int plegada = t.forma().height();
  t.pulsa("CmdDesplega");
  EXPECT_GT(t.forma().height(), plegada + 100);
  t.escribe("TxtSubcuenta", "572a'");  // refused keys
  EXPECT_EQ(t.textoDe("TxtSubcuenta"), "572");
  EXPECT_EQ(t.control<Rejilla>("GrigSubCuentas").valor("Cuenta"), "572");
  t.pulsa("CmdDesplega");
  EXPECT_EQ(t.forma().height(), plegada);
}

}  // namespace
