#include "foundation/formato.h"

#include <gtest/gtest.h>

namespace {

const QString kImporte = QStringLiteral("#,##0.00 ;-#,##0.00");

TEST(Formato, Importes) {
  const struct {
    double valor;
    const char* mascara;
    const char* esperado;
  } casos[] = {
      {0, "#,##0.00 ;-#,##0.00", "0,00 "},
      {1234567.8, "#,##0.00 ;-#,##0.00", "1.234.567,80 "},
      {999.995, "#,##0.00 ;-#,##0.00", "1.000,00 "},
      {-1234.5, "#,##0.00 ;-#,##0.00", "-1.234,50"},
      // Half away from zero, on the number as written and not on its binary neighbour.
      {1.005, "0.00", "1,01"},
      {-1.005, "0.00", "-1,01"},
      {2.675, "0.00", "2,68"},
      {0.1 + 0.2, "0.00000000000000000", "0,30000000000000000"},
      {1.115 * 100, "0.0", "111,5"},
      {123456789012.345, "#,##0.00", "123.456.789.012,35"},
      {0.5, "0", "1"},
      {0.4999, "0", "0"},
      // What rounds to zero is a plain zero: no sign, first section.
      {-0.004, "#,##0.00 ;-#,##0.00", "0,00 "},
      {-0.004, "0.00", "0,00"},
      {0.004, "0.00;-0.00;nada", "nada"},
      {-0.005, "#,##0.00 ;-#,##0.00", "-0,01"},
      {-5, "0;;nada", "-5"},
      // Digits that are there or not.
      {0, "#", ""},
      {0.5, "#.##", ",5"},
      {5, "#.##", "5,"},
      {7, "000", "007"},
      {1234, "0,000,000", "0.001.234"},
      {1234.5, "#,##0.0##", "1.234,5"},
      {1234, "00\\-00", "12-34"},
      {12345, "00\\-00", "123-45"},
      {0.163, "0.0%", "16,3%"},
      {3, "0 \"unidades #\"", "3 unidades #"},
      {3, "0 €", "3 €"},
      {-3, "(0)", "-(3)"},
      {1e20, "#,##0", "100.000.000.000.000.000.000"},
      {1e-20, "0.00", "0,00"},
      {-2.3e-13, "0.00", "0,00"},
      {9.996, "#,##0.00", "10,00"},
      {0.096, "0.0", "0,1"},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(Format(caso.valor, QString::fromUtf8(caso.mascara)), QString::fromUtf8(caso.esperado))
        << caso.valor << " con " << caso.mascara;
  }
}

TEST(Formato, TextosYNulos) {
  const struct {
    Variant valor;
    const char* esperado;
  } casos[] = {
      {"1.234,5", "1.234,50 "}, {"-7", "-7,00"}, {" 12,345 ", "12,35 "},
      {"0", "0,00 "},           {"", ""},        {Variant(), ""},
      {"Caja", "Caja"},         {"--5", "--5"},  {Variant(12), "12,00 "},
  };
  for (const auto& caso : casos)
    EXPECT_EQ(Format(caso.valor, kImporte), QString::fromUtf8(caso.esperado));
  EXPECT_EQ(Format(Variant(), QStringLiteral("0;-0;0;\"sin dato\"")), QStringLiteral("sin dato"));
}

TEST(Formato, Fechas) {
  const struct {
    const char* mascara;
    const char* esperado;
  } casos[] = {
      {"dd/mm/yyyy", "01/09/2003"},         {"m-d-yy", "9-1-03"},   {"mmm", "sep"},
      {"d mmmm yyyy", "1 septiembre 2003"}, {"\"dia\" d", "dia 1"}, {"yyyymmdd", "20030901"},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(Format(QDate(2003, 9, 1), QString::fromUtf8(caso.mascara)),
              QString::fromUtf8(caso.esperado))
        << caso.mascara;
    EXPECT_EQ(Format("1/9/2003", QString::fromUtf8(caso.mascara)), QString::fromUtf8(caso.esperado))
        << caso.mascara;
  }
  EXPECT_EQ(Format("30/02/2003", QStringLiteral("dd/mm/yyyy")), QStringLiteral("30/02/2003"));
  const char* const cortos[] = {"ene", "feb", "mar", "abr", "may", "jun",
                                "jul", "ago", "sep", "oct", "nov", "dic"};
  for (int mes = 1; mes <= 12; ++mes)
    EXPECT_EQ(Format(QDate(2024, mes, 1), QStringLiteral("mmm")), QLatin1String(cortos[mes - 1]));
}

TEST(Formato, NumeroAlPrincipioDeUnTexto) {
  const struct {
    const char* texto;
    double valor;
  } casos[] = {{"03", 3},     {"12 Diciembre", 12}, {" 1 2.5x", 12.5}, {"7,5", 7},
               {"-4", -4},    {"Enero", 0},         {"", 0},           {"-", 0},
               {"1.2.3", 1.2}};
  for (const auto& caso : casos)
    EXPECT_EQ(Val(QString::fromUtf8(caso.texto)), caso.valor) << caso.texto;
}

}  // namespace
