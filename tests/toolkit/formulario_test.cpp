// The life of a form: loading, failing, showing others, taking the place of others.
#include <gtest/gtest-spi.h>

#include "toolkit/consulta.h"
#include "toolkit/formdeprueba.h"

namespace {
using Lista = QStringList;

// Others of the same kind, under other names.
class FrmIVASR : public FormDePrueba {
  Q_OBJECT
 public:
  using FormDePrueba::FormDePrueba;
};

struct PruebaDeDos : Prueba {
  PruebaDeDos() { e.formularios->registra<FrmIVASR>(); }
};

TEST(Formulario, UnErrorDaUnaCajaYUnaLineaYElFormularioSigue) {
  Prueba p;
  p.f.alPulsar(p.f.CmdAceptar, [] { throw ErrorEjecucion(err::kSinRegistroActivo); });
  const QString texto = ErrorEjecucion(err::kSinRegistroActivo).descripcion();
  p.e.guion.esperaMensaje("Error 3021: " + texto, "Librano");
  p.t.pulsa("CmdAceptar");
  ASSERT_EQ(p.e.errores().size(), 1);
  EXPECT_EQ(p.e.errores()[0].trimmed(),
            "Error n - 3021 - " + texto + " - Producido en CmdAceptar_Click - FormDePrueba");

  p.f.alSalir(p.f.TxtA, [] { throw std::runtime_error("roto"); });
  p.t.enfoca("TxtA");
  p.e.guion.esperaMensaje("Error 51: roto", "Librano");
  p.t.tab();
  EXPECT_EQ(p.t.enfocado(), "TxtB");
  EXPECT_EQ(p.e.errores().size(), 2);
}

TEST(Formulario, CargaUnaVezYSeActivaCadaVezQueSeMuestra) {
  PruebaDeDos p;
  EXPECT_EQ(p.f.lee().mid(0, 2), (Lista{"carga", "activa"}));
  p.e.guion.esperaDialogo("FrmIVASR", [&](Teclado& d) {
    EXPECT_EQ(p.e.formularios->abierto("FrmIVASR"), &d.forma());
    EXPECT_EQ(d.forma().parentWidget(), &p.f);
    d.escape();
  });
  EXPECT_TRUE(p.f.mostrar("FrmIVASR"));
  EXPECT_EQ(p.e.formularios->abierto("FrmIVASR"), nullptr);
  p.e.guion.esperaMensaje("Hola");
  p.f.mensaje("Hola", "Librano");
  EXPECT_FALSE(p.f.lee().contains("activa"));
  p.f.hide();
  p.f.show();
  EXPECT_EQ(p.f.lee().filter("activa"), Lista{"activa"});
  // The one that closes itself while loading, or isn't registered, comes with no dialog.
  FormDePrueba::alCargar = [](FormDePrueba& f) { f.descargar(); };
  EXPECT_TRUE(p.f.mostrar("FrmIVASR"));
  EXPECT_FALSE(p.f.mostrar("FrmQueNoHay"));
  EXPECT_FALSE(p.e.formularios->cambiarA("FrmQueNoHay"));
  EXPECT_EQ(p.e.formularios->abierto("FormDePrueba"), &p.f);
}

TEST(Consulta, EscribeEnElCampoQuePidioYEnNingunOtro) {
  Prueba p;
  p.f.TxtA->setObjectName("TxtCodigoProveedor");
  const auto entrega = [&](const char* forma, int codigo, std::span<const DestinoConsulta> tabla) {
    p.f.setObjectName(forma);
    p.f.TxtA->clear();
    p.e.ctx.sesion.CodigoAccion = codigo;
    const bool entregado = entregarConsulta(p.e.ctx, tabla, "40000001");
    EXPECT_EQ(entregado, !p.f.TxtA->text().isEmpty());
    return p.f.TxtA->text();
  };
  EXPECT_EQ(entrega("FrmIVASR", 20, destinosDeSubcuenta()), "40000001");
  EXPECT_EQ(entrega("FrmIVASR", 22, destinosDeSubcuenta()), "");  // of another field
  EXPECT_EQ(entrega("FrmIVASR", 20, destinosDeTipoIVA()), "");
  EXPECT_EQ(entrega("FrmIVASR", 0, destinosDeSubcuenta()), "");
  EXPECT_EQ(entrega("FrmPartida", 20, destinosDeSubcuenta()), "");  // the form isn't open
}

// The script of the tests themselves.
TEST(Guion, FallaSiLlegaLoNoAnunciadoONoLlegaLoAnunciado) {
  static DBEngine motor;
  EXPECT_NONFATAL_FAILURE(Guion(motor).mensaje(nullptr, "Hola", "", Icono::Ninguno),
                          "Sin anunciar: mensaje \"Hola\"");
  EXPECT_NONFATAL_FAILURE(Guion(motor).esperaPregunta("¿Sigue?", true),
                          "Anunciado y no llegado: pregunta");
  EXPECT_NONFATAL_FAILURE(
      {
        Guion guion(motor);
        guion.esperaMensaje("Hola", "Error");
        guion.mensaje(nullptr, "Hola", "Atención", Icono::Ninguno);
      },
      "Título de \"Hola\": Atención");
}
}  // namespace

#include "formulario_test.moc"
#include "moc_formdeprueba.cpp"
