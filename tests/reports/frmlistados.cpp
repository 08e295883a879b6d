// What the dialogs of the official books do when there is no book to show.

#include "reports/errores.h"
#include "reports/frmlistado.h"
#include "reports/listadoabierto.h"

namespace {

using Listados = ListadoAbierto;

// Whatever goes wrong is told in the same box, and the dialog stays as it was.
TEST_F(Listados, DicenLoQueFalla) {
  const auto controlado = [](int numero, const QString& detalle = {}) {
    return QString("Error numero : %1 ").arg(numero) +
           ErrorEjecucion(numero, detalle).descripcion();
  };
  const auto falla = [&](Teclado& t, const QString& texto, const QString& titulo) {
    guion.esperaMensaje(texto, titulo);
    t.pulsa("CmdAceptar");
    EXPECT_EQ(vistaAbierta(), nullptr);
    EXPECT_TRUE(t.forma().isVisible());
  };
  dialogo("MnuImprimirDiario", "FrmDiarioImprimir", [&](Teclado& t) {
    for (const char* fecha : {"31/02/2003", ""}) {
      t.control<QLineEdit>("TxtHasta").setText(fecha);
      falla(t, controlado(13, fecha), "Error controlado");
      EXPECT_EQ(t.textoDe("TxtHasta"), fecha);
    }
    t.control<QLineEdit>("TxtHasta").setText("31/12/2003");
    t.enfoca("TxtAsientoDesde");
    t.tecla(Qt::Key_Delete);
    falla(t, controlado(err::kFormulaRechazada, "falta un paréntesis"), "Error controlado");
    t.escribe("TxtAsientoDesde", "1");
    EXPECT_EQ(lanza(t).lineas().filter("Total asiento").size(), 4);
    EXPECT_EQ(QDir::currentPath(), QDir(carpetaPrograma()).canonicalPath());
    const QString programa = std::exchange(ctx.carpetaPrograma, "\\No está\\");
    falla(t, controlado(76, ctx.carpetaPrograma), "Error controlado");
    ctx.carpetaPrograma = programa;
    t.escape();
  });
  guion.esperaDialogo("FrmSubcuentasImpresos", [&](Teclado& t) {
    falla(t, controlado(53), "Error controlado");  // no choice, no template
    t.escape();
  });
  formularios->mostrar("FrmSubcuentasImpresos");
  const QString plantilla = ctx.sesion.DirDatos + "Impresos\\SumSalN3.rpt";
  ASSERT_TRUE(QFile::remove(rutaSistema(plantilla)));
  dialogo("MnuSumasysaldos", "FrmSumasSaldosImpresos", [&](Teclado& t) {
    falla(t, errorEnCaja(53, plantilla), "Librano");
    t.escape();
  });
  EXPECT_EQ(errores().size(), 5);

  struct SinImpresora : FrmListado {
    explicit SinImpresora(Contexto& contexto) : FrmListado(contexto) {
      lanza([]() -> Listado { throw ErrorEjecucion(err::kSinImpresora); });
    }
  };
  guion.esperaMensaje("No tiene ninguna impresora instalada en su sistema", "Error de Windows");
  SinImpresora{ctx};
}

}  // namespace
