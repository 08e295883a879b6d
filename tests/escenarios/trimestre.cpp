// The first quarter of a shop, from an empty folder to balances that agree with those of another
// reckoning, by the keyboard alone.
#include "common/formato.h"
#include "soporte/escenario.h"
#include "soporte/libros.h"
#include "soporte/tecleo.h"
#include "toolkit/rejilla.h"

namespace {

double numero(const QString& texto) {
  return Variant(texto).number();
}

TEST(Trimestre, DeUnaCarpetaVaciaASusSaldos) {
  Escenario e(Escenario::Carpetas);
  e.reloj.ponEn(QDate(2024, 1, 2));
  Formulario& menu = empiezaEmpresa(e.ctx, e.guion, "Comercial Ejemplo");
  Teclado t(menu);
  EXPECT_EQ(e.ctx.sesion.DigitosCuenta, 3);
  EXPECT_EQ(e.ctx.sesion.DigitosSubcuenta, 8);
  tecleaPlanTrimestre(e.ctx, e.guion, t);

  const QString mascara = e.ctx.sesion.MascaraImporte;
  double debe = 0;
  double haber = 0;
  int lineas = 0;
  tecleaTrimestre(e.ctx, e.guion, menu, [&](const LineaDiario& linea) {
    debe += linea.Debe.isEmpty() ? 0 : numero(linea.Debe);
    haber -= linea.Haber.isEmpty() ? 0 : numero(linea.Haber);
    ++lineas;
    ASSERT_EQ(t.textoDe("TxtAsiento"), linea.Asiento);
    ASSERT_EQ(t.textoDe("TxtTotalDebe"), Format(debe, mascara)) << "línea " << lineas;
    ASSERT_EQ(t.textoDe("TxtTotalHaber"), Format(haber, mascara)) << "línea " << lineas;
  });
  EXPECT_EQ(lineas, 312);
  EXPECT_EQ(t.control<Rejilla>("GrdApuntes").filas(), 312);
  EXPECT_EQ(e.valor("Select Asiento from Empresa"), "121");
  EXPECT_EQ(e.valor("Select NLinDiario from Empresa"), "312");

  // On the screen, subcuenta by subcuenta, and by stored query.
  for (const QStringList& saldo : leeCsv("trimestre/saldos-trimestre.csv")) {
    const QStringList esperado = {Format(numero(saldo[1]), mascara),
                                  Format(-numero(saldo[2]), mascara),
                                  Format(numero(saldo[3]), mascara)};
    const bool total = saldo[0] == "Total";
    if (!total) {
      t.escribe("TxtSubcuenta", saldo[0]);
      const auto fila = e.filas(
          "Select SumaDeDebe, SumaDeHaber, SaldoFinal from "
          "[SqlSubcuentas con saldo] where Subcuenta='" +
          saldo[0] + "'");
      ASSERT_EQ(fila.size(), 1u) << qPrintable(saldo[0]);
      for (int i = 0; i < 3; ++i) EXPECT_EQ(Format(fila[0][i], mascara), esperado[i]);
    }
    const QString panel = total ? "Total" : "Cuenta";
    const QStringList visto = {t.textoDe(qPrintable("Txt" + panel + "Debe")),
                               t.textoDe(qPrintable("Txt" + panel + "Haber")),
                               t.textoDe(qPrintable("Txt" + panel + "Descuadre"))};
    EXPECT_EQ(visto, esperado) << qPrintable(saldo[0]);
  }
  const auto asientos =
      e.filas("Select NAsiento, SumaDeDebe, SumaDeHaber from SqlSumaDiarioPorAsientos");
  EXPECT_EQ(asientos.size(), 120u);
  for (const QStringList& asiento : asientos) {
    EXPECT_EQ(Format(numero(asiento[1]) + numero(asiento[2]), mascara), Format("0", mascara))
        << qPrintable(asiento[0]);
  }
}

}  // namespace
