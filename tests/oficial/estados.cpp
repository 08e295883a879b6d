// The official statements from balances, and from the books of a quarter.
#include "oficial/estados.h"

#include "soporte/libros.h"

namespace {

const QString kMascara = QStringLiteral("#,##0.00");

QString importe(const EstadoOficial& estado, int orden) {
  return Format(importeDeLinea(estado, orden), kMascara);
}

// Each account goes to one line: that of its longest prefix, by its side where the line asks for
// it.
TEST(Estados, CadaCuentaVaASuLinea) {
  for (const QStringList& f : leeCsv("lineasdeestado.csv")) {
    SCOPED_TRACE(f.join(';').toStdString());
    const double saldo = f[1].toDouble();
    const bool resultados = f[2] == "Resultados";
    const EstadoOficial estado =
        calculaEstado(resultados ? Estado::Resultados : Estado::Balance, {{f[0], saldo}});
    EXPECT_EQ(importe(estado, f[3].toInt()), f[4]);
    EXPECT_TRUE(estado.sinLinea.isEmpty());
    // And only there: the totals hold it once.
    if (resultados) {
      EXPECT_EQ(importe(estado, lineaestado::kResultado), f[4]);
    } else {
      EXPECT_DOUBLE_EQ(importeDeLinea(estado, lineaestado::kActivo) -
                           importeDeLinea(estado, lineaestado::kPasivo),
                       saldo);
    }
  }
}

TEST(Estados, LasLineasVaciasSoloSalenSiSePiden) {
  const EstadoOficial estado =
      calculaEstado(Estado::Balance, {{"43000001", 0.004}}, {{"17000001", -3}});
  QList<int> cortas, todas;
  for (const LineaDeEstado& linea : estado.lineas) {
    if (seMuestra(linea, kMascara, false)) cortas << linea.orden;
    if (seMuestra(linea, kMascara, true)) todas << linea.orden;
  }
  EXPECT_EQ(cortas, (QList<int>{10, 90, 210, 220, 360, 380, 390, 470, 610}));
  EXPECT_TRUE(todas.contains(120) && todas.contains(240));
  EXPECT_FALSE(todas.contains(130) || todas.contains(600));  // those are there when used
}

// Sweeping the results and closing the year changes no statement; the months limit it.
TEST(Estados, LosSaldosSonLosDeAntesDelCierre) {
  Libros libros;
  libros.asientaTrimestre();
  const auto empresa = libros.abre();
  const Saldos viejos = saldosDelPeriodo(*empresa, 1, 12);
  int linea = 9000;
  for (const auto& [subcuenta, importe, tipo] :
       {std::tuple("60000001", -500.0, "B"), {"12900001", 500.0, "B"}, {"57200001", -100.0, "C"}})
    libros.inserta("Diario", lineaDe(++linea, 900, QDate(2024, 3, 31), subcuenta, importe,
                                     {{"TipoDiario", tipo}}));
  libros.motor.flush();
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("60000001"), viejos.value("60000001"));
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("12900001"), 0);
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("57200001"), viejos.value("57200001"));
  EXPECT_NE(saldosDelPeriodo(*empresa, 1, 1).value("57200001"), viejos.value("57200001"));
  EXPECT_TRUE(saldosDelPeriodo(*empresa, 12, 12).isEmpty() ||
              saldosDelPeriodo(*empresa, 12, 12).value("57200001") == 0);
}

}  // namespace
