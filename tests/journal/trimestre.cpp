// A quarter of real-looking books, posted line by line and compared with balances that another
// accounting program worked out.
#include <gtest/gtest.h>

#include <QMap>

#include "foundation/data/datacontrol.h"
#include "foundation/formato.h"
#include "journal/apunte.h"
#include "journal/totales.h"
#include "soporte/libros.h"

namespace {

struct Saldo {
  double debe = 0;
  double haber = 0;
};

class Trimestre : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    libros_ = new Libros;
    libros_->asientaTrimestre();
  }
  static void TearDownTestSuite() {
    delete libros_;
    libros_ = nullptr;
  }

  static QString importe(double valor) { return Format(valor, QStringLiteral("0.00")); }

  // Adds up the sums of a query under the code that `clave` makes of each row, so that queries by
  // month or by level can be compared with the yearly figures.
  static QMap<QString, Saldo> sumas(const QString& fuente, const QString& codigo, int largo) {
    const auto base = libros_->abre();
    const auto filas = base->OpenRecordset(fuente);
    QMap<QString, Saldo> suma;
    for (; !filas->Eof(); filas->MoveNext()) {
      Saldo& saldo = suma[filas->Fields(codigo).text().left(largo)];
      saldo.debe += filas->Fields(QStringLiteral("SumaDeDebe")).number();
      saldo.haber += filas->Fields(QStringLiteral("SumaDeHaber")).number();
    }
    return suma;
  }

  // The expected balances, by the first `largo` digits of the subcuenta.
  static QMap<QString, Saldo> esperados(int largo, const QString& grupos) {
    QMap<QString, Saldo> suma;
    for (const QStringList& fila : leeCsv(QStringLiteral("trimestre/saldos-trimestre.csv"))) {
      if (!grupos.contains(fila[0][0])) continue;
      Saldo& saldo = suma[fila[0].left(largo)];
      saldo.debe += Variant(fila[1]).number();
      saldo.haber -= Variant(fila[2]).number();
    }
    return suma;
  }

  static void compara(const QMap<QString, Saldo>& hay, const QMap<QString, Saldo>& debe,
                      const char* consulta) {
    EXPECT_EQ(hay.keys(), debe.keys()) << consulta;
    for (auto it = debe.begin(); it != debe.end(); ++it) {
      EXPECT_EQ(importe(hay[it.key()].debe), importe(it->debe))
          << consulta << ' ' << it.key().toStdString();
      EXPECT_EQ(importe(hay[it.key()].haber), importe(it->haber))
          << consulta << ' ' << it.key().toStdString();
    }
  }

  static Libros* libros_;
};

Libros* Trimestre::libros_ = nullptr;

TEST_F(Trimestre, LosSaldosDeCadaConsulta) {
  const struct {
    const char* consulta;
    const char* codigo;
    int largo;
    const char* grupos;
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
  for (const auto& caso : casos) {
    compara(sumas(QLatin1String(caso.consulta), QLatin1String(caso.codigo), caso.largo),
            esperados(caso.largo, QLatin1String(caso.grupos)), caso.consulta);
  }
}

TEST_F(Trimestre, LosTotalesDelDiario) {
  EXPECT_EQ(libros_->filas(QStringLiteral("SqlSumaDiario")),
            QStringList{QStringLiteral("294827,54|-294827,54")});
  EXPECT_EQ(libros_->filas(QStringLiteral("SqlDiarioPrincipal")).size(), 312);
  EXPECT_EQ(libros_->filas(QStringLiteral("SqlDiarioPrincipalBlanco")).size(), 312);
  EXPECT_EQ(libros_->filas(QStringLiteral("SqlSumaDiarioPorAsientos")).size(), 120);
}

TEST_F(Trimestre, LosSaldosDeMesSeparanDeudorYAcreedor) {
  // A month's balance is on one side only, and both columns keep the sign of the journal.
  const auto base = libros_->abre();
  for (const char* consulta :
       {"SqlSumasSaldosN1", "SqlSumasSaldosN2", "SqlSumasSaldosN3", "SqlSumasSaldosN4"}) {
    const auto filas = base->OpenRecordset(QLatin1String(consulta));
    QString anterior;
    for (; !filas->Eof(); filas->MoveNext()) {
      const double saldo = filas->Fields(QStringLiteral("SumaDeSaldo")).number();
      const double deudor = filas->Fields(QStringLiteral("SDeudor")).number();
      const double acreedor = filas->Fields(QStringLiteral("SAcreedor")).number();
      EXPECT_EQ(importe(saldo), importe(filas->Fields(QStringLiteral("SumaDeDebe")).number() +
                                        filas->Fields(QStringLiteral("SumaDeHaber")).number()));
      EXPECT_EQ(importe(deudor), importe(std::max(saldo, 0.0)));
      EXPECT_EQ(importe(acreedor), importe(std::min(saldo, 0.0)));
      const QString codigo = filas->Fields(0).text();
      EXPECT_LE(anterior, codigo) << consulta;
      anterior = codigo;
      const int mes = static_cast<int>(filas->Fields(QStringLiteral("Mes")).toLong());
      EXPECT_TRUE(mes >= 1 && mes <= 3);
    }
  }
}

TEST_F(Trimestre, LosDescuadresSonRestosDeDobles) {
  // The list compares a sum of doubles with zero exactly: what it shows is less than a cent.
  for (const QString& fila : libros_->filas(QStringLiteral("SqlDiarioBuscaDescuadres")))
    EXPECT_EQ(importe(Variant(fila.section(u'|', 1)).number()), QStringLiteral("0,00"))
        << fila.toStdString();
}

TEST_F(Trimestre, LosTotalesDeLaPantalla) {
  DataControl total(libros_->motor);
  const QString ruta = libros_->rutaEmpresa();
  const auto texto = [](const std::optional<Totales>& t) {
    return t ? importe(t->Debe) + u'|' + importe(t->Haber) + u'|' + importe(t->Descuadre)
             : QStringLiteral("nada");
  };
  EXPECT_EQ(texto(totalDiario(total, ruta)), QStringLiteral("294827,54|-294827,54|0,00"));
  EXPECT_EQ(texto(totalCuenta(total, ruta, QStringLiteral("57200001"))),
            QStringLiteral("113465,55|-44046,29|69419,26"));
  EXPECT_EQ(texto(totalCuenta(total, ruta, QStringLiteral("99999999"))),
            QStringLiteral("0,00|0,00|0,00"));
  EXPECT_EQ(texto(totalAsiento(total, ruta, QStringLiteral("1"))),
            QStringLiteral("60000,00|-60000,00|0,00"));
  EXPECT_EQ(texto(totalAsiento(total, ruta, QStringLiteral("999"))),
            QStringLiteral("0,00|0,00|0,00"));
  // What can't be read leaves the screen as it was.
  EXPECT_EQ(texto(totalAsiento(total, ruta, {})), QStringLiteral("nada"));
  EXPECT_EQ(texto(totalCuenta(total, ruta, QStringLiteral("D'Or"))), QStringLiteral("nada"));
  EXPECT_EQ(texto(totalDiario(total, ruta + u'x')), QStringLiteral("nada"));
}

TEST_F(Trimestre, LosContadoresQuedanEnElSiguiente) {
  EXPECT_EQ(libros_->filas(QStringLiteral("Select Asiento, NLinDiario from Empresa")),
            QStringList{QStringLiteral("121|312")});
  EXPECT_EQ(
      libros_->filas(QStringLiteral(
          "Select NLinea, NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe, Punteo, "
          "ApunteIVA, TipoFactura, TipoDiario from Diario where NLinea < 2")),
      (QStringList{QStringLiteral("0|1|02/01/2024|57200001|Aportación inicial|D|60000|-|-|-|1"),
                   QStringLiteral("1|1|02/01/2024|10000001|Aportación inicial|H|-60000|-|-|-|1")}));
}

}  // namespace
