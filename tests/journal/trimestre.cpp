// The sums of each stored query over a quarter of real-looking books, compared with balances that
// another accounting program worked out.
#include <gtest/gtest.h>

#include <map>

#include "soporte/libros.h"

namespace {

using Sumas = std::map<QString, std::pair<qint64, qint64>>;  // debe and haber in cents, by code

void suma(Sumas& sumas, const QString& codigo, double debe, double haber) {
  auto& [d, h] = sumas[codigo];
  d += qRound64(debe * 100);
  h += qRound64(haber * 100);
}

TEST(Trimestre, LosSaldosDeCadaConsulta) {
  Libros libros;
  libros.asientaTrimestre();
  const auto base = libros.abre();
  const struct {
    const char* consulta;
    const char* codigo;
    int largo;
    QString grupos;
  } casos[] = {
      {"SqlSubcuentasSaldosCuentas", "Subcuenta", 8, "1234567"},
      {"SqlDiarioSaldosCuentasTotal", "Subcuenta", 8, "1234567"},
      {"SqlDiarioSaldosCuentasMeses", "Subcuenta", 8, "1234567"},
      {"SqlSubcuentas con saldo", "Subcuenta", 8, "1234567"},
      {"SqlSumasSaldosN4", "Subcuenta", 8, "1234567"},
      {"SqlSumasSaldosN3", "Cuenta", 3, "1234567"},
      {"SqlSumasSaldosN2", "NNivel", 2, "1234567"},
      {"SqlSumasSaldosN1", "NNivel", 1, "1234567"},
      {"SqlPerdidasyGanancias", "Subcuenta", 8, "67"},
      {"SqlBalance", "Subcuenta", 8, "12345"},
  };
  for (const auto& [consulta, codigo, largo, grupos] : casos) {
    Sumas esperadas;
    for (const QStringList& fila : leeCsv("trimestre/saldos-trimestre.csv")) {
      if (!grupos.contains(fila[0][0])) continue;
      suma(esperadas, fila[0].left(largo), Variant(fila[1]).number(), -Variant(fila[2]).number());
    }
    Sumas hay;
    const auto filas = base->OpenRecordset(consulta);
    for (; !filas->Eof(); filas->MoveNext()) {
      const double debe = filas->Fields("SumaDeDebe").number();
      const double haber = filas->Fields("SumaDeHaber").number();
      suma(hay, filas->Fields(codigo).text().left(largo), debe, haber);
      // Where a month is told apart, its balance is on one side only, with the journal's sign.
      if (!QString(consulta).startsWith("SqlSumasSaldosN")) continue;
      EXPECT_NEAR(filas->Fields("SDeudor").number(), std::max(debe + haber, 0.0), 0.001);
      EXPECT_NEAR(filas->Fields("SAcreedor").number(), std::min(debe + haber, 0.0), 0.001);
    }
    EXPECT_EQ(hay, esperadas) << consulta;
  }
  // The list compares a sum of doubles with zero exactly: what it shows is less than a cent.
  for (const QString& fila : libros.filas("SqlDiarioBuscaDescuadres"))
    EXPECT_NEAR(Variant(fila.section(u'|', 1)).number(), 0, 0.005) << fila.toStdString();
}

}  // namespace
