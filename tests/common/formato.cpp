// Amounts and dates as they are shown, and what is made of those that are typed.

#include <cmath>

#include "common/funciones.h"
#include "soporte/prueba.h"

namespace {

const char* const kImporte = "#,##0.00 ;-#,##0.00";

TEST(Formato, Importes) {
  const std::tuple<double, const char*, const char*> casos[] = {
      {0, kImporte, "0,00 "},
      {1234567.8, kImporte, "1.234.567,80 "},
      {999.995, kImporte, "1.000,00 "},
      {-1234.5, kImporte, "-1.234,50"},
      // Half away from zero, on the number as written and not on its binary neighbour.
      {1.005, "0.00", "1,01"},
      {-1.005, "0.00", "-1,01"},
      {0.1 + 0.2, "0.00000000000000000", "0,30000000000000000"},
      {1.115 * 100, "0.0", "111,5"},
      // What rounds to zero is a plain zero: no sign, first section.
      {-0.004, kImporte, "0,00 "},
      {0.004, "0.00;-0.00;nada", "nada"},
      {-0.005, kImporte, "-0,01"},
      {-5, "0;;nada", "-5"},
      // Digits that are there or not.
      {0, "#", ""},
      {0.5, "#.##", ",5"},
      {1234, "0,000,000", "0.001.234"},
      {1234.5, "#,##0.0##", "1.234,5"},
      {12345, "00\\-00", "123-45"},
      {0.163, "0.0%", "16,3%"},
      {3, "0 \"unidades #\"", "3 unidades #"},
      {-3, "(0)", "-(3)"},
      {1e20, "#,##0", "100.000.000.000.000.000.000"},
      {1e-20, "0.00", "0,00"}};
  for (const auto& [valor, mascara, esperado] : casos)
    EXPECT_EQ(Format(valor, mascara), esperado) << valor << " con " << mascara;
}

TEST(Formato, TextosYNulos) {
  const std::pair<Variant, const char*> casos[] = {
      {"1.234,5", "1.234,50 "}, {"-7", "-7,00"}, {" 12,345 ", "12,35 "},
      {"0", "0,00 "},           {"", ""},        {Variant(), ""},
      {"Caja", "Caja"},         {"--5", "--5"},  {Variant(12), "12,00 "}};
  for (const auto& [valor, esperado] : casos) EXPECT_EQ(Format(valor, kImporte), esperado);
  EXPECT_EQ(Format(Variant(), "0;-0;0;\"sin dato\""), "sin dato");
}

TEST(Formato, Fechas) {
  const std::pair<const char*, const char*> casos[] = {
      {"dd/mm/yyyy", "01/09/2003"},         {"m-d-yy", "9-1-03"},   {"mmm", "sep"},
      {"d mmmm yyyy", "1 septiembre 2003"}, {"\"dia\" d", "dia 1"}, {"yyyymmdd", "20030901"}};
  for (const auto& [mascara, esperado] : casos)
    for (const Variant& fecha : {Variant(QDate(2003, 9, 1)), Variant("1/9/2003")})
      EXPECT_EQ(Format(fecha, mascara), esperado) << mascara;
  EXPECT_EQ(Format("30/02/2003", "dd/mm/yyyy"), "30/02/2003");
}

// What a mask writes can be read back, and what is typed over half of it too.
TEST(Formato, ImportesDeVuelta) {
  const char* const kMascaras[] = {kImporte,
                                   "#,###",
                                   "0.00",
                                   "\"$\" #,##0.00",
                                   "#,##0.00 €;-#,##0.00 €",
                                   "#,##0.00 \"Pts\"",
                                   "#,##0.00;(#,##0.00)",
                                   "\"+\"0.00;\"-\"0.00;\"nada\"",
                                   "0.00 \"D\";0.00 \"H\";\"\"",
                                   "(0.00)"};
  for (const char* mascara : kMascaras)
    for (const double valor : {0.0, 5.0, -5.0, 1234567.25, -1234567.25}) {
      const QString texto = Format(valor, mascara);
      const double esperado = QString(mascara) == "#,###" ? std::round(valor) : valor;
      EXPECT_EQ(ImporteDe(texto, mascara), esperado) << texto.toStdString() << " con " << mascara;
    }
  const std::tuple<const char*, const char*, std::optional<double>> casos[] = {
      {"5", "\"$\" #,##0.00", 5},        {"$5", "\"$\" #,##0.00", 5},
      {"5,00 Pt", "0.00 \"Pts\"", 5},    {"(5", "#,##0.00;(#,##0.00)", std::nullopt},
      {"-5", "#,##0.00;(#,##0.00)", -5}, {"€ 5-", kImporte, -5},
      {"(5 €)", kImporte, -5},           {"", kImporte, std::nullopt},
      {"-", kImporte, std::nullopt},     {"--5", kImporte, std::nullopt},
      {"-+5", kImporte, std::nullopt},   {"(-5)", kImporte, std::nullopt},
      {"5 6", kImporte, std::nullopt},   {"5 $", kImporte, std::nullopt}};
  for (const auto& [texto, mascara, esperado] : casos)
    EXPECT_EQ(ImporteDe(texto, mascara), esperado) << texto << " con " << mascara;
}

TEST(Formato, NumeroAlPrincipioDeUnTexto) {
  const std::pair<const char*, double> casos[] = {
      {"03", 3},     {"12 Diciembre", 12}, {" 1 2.5x", 12.5}, {"7,5", 7},
      {"-4", -4},    {"Enero", 0},         {"", 0},           {"-", 0},
      {"1.2.3", 1.2}};
  for (const auto& [texto, valor] : casos) EXPECT_EQ(Val(texto), valor) << texto;
}

// What is no date is today, also of another year.
TEST(NormalizaFecha, CompletaLoTecleado) {
  const std::tuple<const char*, int, const char*> casos[] = {
      {"15", 2003, "15/03/2003"},     {"1502", 2003, "15/02/2003"},
      {"15x02", 2003, "15/02/2003"},  {"150299", 2003, "15/02/2099"},
      {"150203", 1999, "15/02/1903"}, {"1/2/2003", 2001, "01/02/2003"},
      {"2902", 2004, "29/02/2004"},   {"15/02/03", 2003, "15/02/2003"},
      {"2902", 2003, "09/03/2026"},   {"", 2003, "09/03/2026"},
      {"5", 2003, "09/03/2026"},      {"123", 2003, "09/03/2026"},
      {"32", 2003, "09/03/2026"},     {"1-2-03", 2003, "09/03/2026"},
      {"1/2", 2003, "01/02/2003"},    {"12/", 2003, "09/03/2026"}};
  for (const auto& [tecleado, ano, esperado] : casos)
    EXPECT_EQ(NormalizaFecha(tecleado, ano, QDate(2026, 3, 9)), esperado)
        << tecleado << " en " << ano;
}

TEST(ExpandeCodigo, RellenaElPunto) {
  const std::pair<const char*, const char*> casos[] = {
      {"43.7", "430000007"},        {"43.", "430000000"},
      {".7", "000000007"},          {"4300.00007", "430000007"},
      {"4.1.2", "4000001.2"},       {"430000007", "430000007"},
      {"4300000071", "4300000071"}, {"", ""}};
  for (const auto& [texto, codigo] : casos) EXPECT_EQ(ExpandeCodigo(texto, 9), codigo);
  EXPECT_EQ(numeroDeError([] { ExpandeCodigo("43000.00007", 9); }), err::kLlamadaNoValida);
}

TEST(SignosDecimales, SeCambianUnoPorOtro) {
  EXPECT_EQ(ComaAPunto("1,5,"), "1.5.");
  EXPECT_EQ(PuntoAComa("1.5."), "1,5,");
}

}  // namespace
