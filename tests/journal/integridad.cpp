#include "journal/integridad.h"

#include <gtest/gtest.h>

#include "foundation/data/recordset.h"
#include "journal/descuadres.h"
#include "soporte/libros.h"

namespace {

const QString kMascara = "#,##0.00 ;-#,##0.00";

struct Linea {
  int asiento;
  const char* fecha;
  double importe;
  const char* iva = nullptr;
};

class IntegridadTest : public testing::Test {
 protected:
  void escribe(const std::vector<Linea>& lineas) {
    const auto diario = empresa_->OpenRecordset("Diario");
    for (const Linea& l : lineas) {
      diario->AddNew();
      diario->Fields("NLinea") = nLinea_++;
      diario->Fields("NAsiento") = l.asiento;
      diario->Fields("Fecha") = l.fecha;
      diario->Fields("Subcuenta") = "57000001";
      diario->Fields("DH") = l.importe < 0 ? "H" : "D";
      diario->Fields("Importe") = l.importe;
      if (l.iva) diario->Fields("ApunteIVA") = l.iva;
      diario->Update();
    }
  }
  QStringList diario(const QString& campos) {
    return libros_.filas("Select " + campos + " from Diario order by NLinea");
  }
  static void sinAvance(int, int) {}

  Libros libros_;
  std::unique_ptr<Database> empresa_ = libros_.abre();
  int nLinea_ = 0;
};

TEST_F(IntegridadTest, RenumeraPorFechaYLasFacturasSiguen) {
  escribe({{3, "05/01/2024", 10},
           {5, "07/01/2024", 10, "S0000000001"},
           {5, "07/01/2024", -10},
           {9, "09/01/2024", 10}});
  const auto rsiva = empresa_->OpenRecordset("RSIVA");
  rsiva->AddNew();
  rsiva->Fields("Codigo") = "S0000000001";
  rsiva->Fields("Asiento") = 5;
  rsiva->Update();
  EXPECT_EQ(renumeraDiario(*empresa_, 1, sinAvance), 4);
  EXPECT_EQ(diario("NAsiento"), (QStringList{"1", "2", "2", "3"}));
  EXPECT_EQ(libros_.filas("Select Asiento from RSIVA"), QStringList{"2"});
  EXPECT_EQ(libros_.filas("Select Asiento from Empresa"), QStringList{"4"});
}

TEST_F(IntegridadTest, UnAsientoConDosFechasSeParteYLosAnterioresNoSeTocan) {
  escribe(
      {{1, "01/01/2024", 5}, {4, "20/01/2024", 10}, {4, "02/01/2024", -10}, {6, "10/01/2024", 1}});
  EXPECT_EQ(renumeraDiario(*empresa_, 4, sinAvance), 7);
  EXPECT_EQ(diario("NAsiento"), (QStringList{"1", "6", "4", "5"}));
}

TEST_F(IntegridadTest, LasFechasSeUnenEnLaPrimeraYEnElAno) {
  escribe(
      {{1, "03/02/2024", 10}, {1, "01/02/2024", -10}, {2, "15/06/2019", 5}, {2, "16/06/2019", -5}});
  unificaFechas(*empresa_, 2024, QDate(2024, 11, 3), sinAvance);
  EXPECT_EQ(diario("Fecha"), (QStringList{"01/02/2024", "01/02/2024", "15/06/2024", "15/06/2024"}));
  // A leap day that the year hasn't got becomes today, as a typed one does.
  escribe({{3, "29/02/2024", 1}});
  unificaFechas(*empresa_, 2023, QDate(2023, 11, 3), sinAvance);
  EXPECT_EQ(diario("Fecha").last(), "03/11/2023");
}

TEST_F(IntegridadTest, LosDescuadresSeMidenConLaMascara) {
  escribe({{1, "01/01/2024", 10},
           {1, "01/01/2024", -10.004},
           {2, "01/01/2024", 10},
           {2, "01/01/2024", -9.5},
           {3, "01/01/2024", -7}});
  const auto sumas =
      empresa_->OpenRecordset("Select * from SqlSumaDiarioPorAsientos order by nasiento");
  QStringList hallados;
  recorreDescuadres(*sumas, kMascara, sinAvance, [&](int asiento, const QString& resto) {
    hallados.append(QString::number(asiento) + ": " + resto);
    return true;
  });
  EXPECT_EQ(hallados, (QStringList{"2: 0,50 ", "3: -7,00"}));
}

}  // namespace
