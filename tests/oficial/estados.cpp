// The official statements from balances, and from the books of a quarter.
#include "oficial/estados.h"

#include <gtest/gtest.h>

#include "common/formato.h"
#include "soporte/libros.h"

namespace {

const QString kMascara = QStringLiteral("#,##0.00");

QString importe(const EstadoOficial& estado, int orden) {
  return Format(importeDeLinea(estado, orden), kMascara);
}

// Each account goes to one line: that of its longest prefix, by its side where the line asks for
// it.
TEST(Estados, CadaCuentaVaASuLinea) {
  const struct {
    const char* subcuenta;
    double saldo;
    Estado estado;
    int linea;
    const char* importe;
  } casos[] = {
      {"20600001", 100, Estado::Balance, 20, "100,00"},
      {"28000001", -40, Estado::Balance, 20, "-40,00"},
      {"28100001", -40, Estado::Balance, 30, "-40,00"},
      {"24030001", 7, Estado::Balance, 50, "7,00"},
      {"24050001", 7, Estado::Balance, 60, "7,00"},
      {"24000001", 7, Estado::Balance, 60, "7,00"},  // not opened by its four digits
      {"55100001", 9, Estado::Balance, 180, "9,00"},
      {"55100001", -9, Estado::Balance, 520, "9,00"},
      {"55240001", -9, Estado::Balance, 530, "9,00"},
      {"10300001", 5, Estado::Balance, 260, "-5,00"},
      {"10340001", 5, Estado::Balance, 520, "-5,00"},
      {"60000001", 30, Estado::Balance, 320, "-30,00"},
      {"60000001", 30, Estado::Resultados, 40, "-30,00"},
      {"69300001", 3, Estado::Resultados, 20, "-3,00"},
      {"69310001", 3, Estado::Resultados, 40, "-3,00"},
      {"70600001", 2, Estado::Resultados, 10, "-2,00"},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.subcuenta) + ' ' + std::to_string(c.saldo));
    const EstadoOficial estado = calculaEstado(c.estado, {{c.subcuenta, c.saldo}});
    EXPECT_EQ(importe(estado, c.linea), c.importe);
    EXPECT_TRUE(estado.sinLinea.isEmpty());
    // And only there: the totals hold it once.
    if (c.estado == Estado::Resultados) {
      EXPECT_EQ(importe(estado, lineaestado::kResultado), c.importe);
    } else {
      EXPECT_DOUBLE_EQ(importeDeLinea(estado, lineaestado::kActivo) -
                           importeDeLinea(estado, lineaestado::kPasivo),
                       c.saldo);
    }
  }
}

TEST(Estados, LoQueNoTieneLineaSeDice) {
  const Saldos saldos = {{"11100001", -5}, {"55300001", 8}, {"57200001", 20}, {"05000000", 1}};
  const EstadoOficial estado = calculaEstado(Estado::Balance, saldos, {{"13300001", 4}});
  EXPECT_EQ(estado.sinLinea, (Saldos{{"11100001", -5}, {"55300001", 8}, {"05000000", 1}}));
  EXPECT_EQ(estado.sinLineaAnterior, (Saldos{{"13300001", 4}}));
  EXPECT_EQ(importe(estado, lineaestado::kActivo), "20,00");
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

// The quarter's own books, with the accounts that have another code in 2007 under that one.
TEST(Estados, ElTrimestreCuadra) {
  Libros libros;
  libros.asientaTrimestre();
  QHash<QString, QString> nuevas;
  for (const QStringList& fila : leeCsv("trimestre/de1990a2007.csv")) nuevas[fila[0]] = fila[1];
  const auto empresa = libros.abre();
  Saldos saldos;
  const Saldos viejos = saldosDelPeriodo(*empresa, 1, 12);
  for (auto it = viejos.cbegin(); it != viejos.cend(); ++it) {
    const QString nueva = nuevas.value(it.key().left(3), it.key().left(3));
    saldos[nueva + it.key().mid(nueva.size())] += it.value();
  }
  const EstadoOficial balance = calculaEstado(Estado::Balance, saldos);
  EXPECT_EQ(importe(balance, lineaestado::kActivo), "114.320,41");
  EXPECT_EQ(importe(balance, lineaestado::kPasivo), "114.320,41");
  EXPECT_EQ(importe(balance, lineaestado::kResultadoEnBalance), "12.100,98");
  EXPECT_EQ(importe(calculaEstado(Estado::Resultados, saldos), lineaestado::kResultado),
            "12.100,98");
  EXPECT_EQ(Format(resultadoDe(saldos), kMascara), "12.100,98");
  EXPECT_TRUE(balance.sinLinea.isEmpty());

  // Sweeping the results and closing the year changes neither statement; the months limit them.
  const auto diario = empresa->OpenRecordset("Diario");
  const auto asienta = [&](const QString& subcuenta, double importe, const char* tipo) {
    diario->AddNew();
    diario->Fields("NLinea") = 9000 + diario->rowTotal();
    diario->Fields("Fecha") = QDate(2024, 3, 31);
    diario->Fields("Subcuenta") = subcuenta;
    diario->Fields("DH") = importe > 0 ? "D" : "H";
    diario->Fields("Importe") = importe;
    diario->Fields("TipoDiario") = tipo;
    diario->Update();
  };
  asienta("60000001", -500, "B");
  asienta("12900001", 500, "B");
  asienta("57200001", -100, "C");
  libros.motor.flush();
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("60000001"), viejos.value("60000001"));
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("12900001"), 0);
  EXPECT_EQ(saldosDelPeriodo(*empresa, 1, 12).value("57200001"), viejos.value("57200001"));
  EXPECT_NE(saldosDelPeriodo(*empresa, 1, 1).value("57200001"), viejos.value("57200001"));
  EXPECT_TRUE(saldosDelPeriodo(*empresa, 12, 12).isEmpty() ||
              saldosDelPeriodo(*empresa, 12, 12).value("57200001") == 0);
}

}  // namespace
