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
    t.escribe("TxtAsientoHasta", "1.000");
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

// Books of two pages: what the first hands on is the sum of its lines, each in its column.
TEST_F(Listados, CadaPaginaEntregaSusSumas) {
  asiento(5, QDate(2003, 1, 10), "43000001", "57200001", 5);
  const auto base = abreBase();
  const auto diario = base->OpenRecordset("Diario"), registro = base->OpenRecordset("RSIVA");
  for (int i = 11; i < 71; ++i) {
    anade(*diario, lineaDe(i, i, "10/01/2003", QString("430000%1").arg(i), 120));
    anade(*registro, {{"Codigo", QString("R00000000%1").arg(i)},
                      {"Fecha", "10/01/2003"},
                      {"Base", -100},
                      {"IVA", -16},
                      {"Recargo", -4},
                      {"Neto", -120}});
  }
  const struct {
    const char *entrada, *nombre, *opcion, *lineas;
    qsizetype cuantas;  // on the first page
    QString sumas;
  } casos[] = {{"MnuSumasysaldos", "FrmSumasSaldosImpresos", "OptNivel_3", " 120,00", 56,
                "6.725,00 200,01 6.720,00 195,01"},
               {"MnuLibroSR", "FrmIVASRLibros", "OptLibro_1", "R00000000", 36,
                "3.600,00 576,00 144,00 4.320,00"}};
  for (const auto& c : casos) {
    dialogo(c.entrada, c.nombre, [&](Teclado& t) {
      t.marca(c.opcion);
      const LibroImpreso libro = lanza(t);
      EXPECT_EQ(libro.paginas[0].filter(c.lineas).size(), c.cuantas);
      EXPECT_EQ(libro.linea("Suma y sigue", 1), "Suma y sigue " + c.sumas);
      EXPECT_EQ(libro.linea("Suma anterior", 2), "Suma anterior " + c.sumas);
      t.escape();
    });
  }
}

}  // namespace
