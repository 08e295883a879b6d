// Amounts and dates as they are shown, and what is made of those that are typed.

#include <cmath>

#include "common/funciones.h"
#include "soporte/prueba.h"

namespace {

const char* const kImporte = "#,##0.00 ;-#,##0.00";

TEST(Formato, Importes) {
  for (const QStringList& c : casosDeDatos("formatos.txt", "importe"))
    EXPECT_EQ(Format(c[0].toDouble(), c[1]), c[2]) << qPrintable(c.join(' '));
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
  for (const QStringList& m : casosDeDatos("formatos.txt", "mascara"))
    for (const double valor : {0.0, 5.0, -5.0, 1234567.25, -1234567.25}) {
      const QString texto = Format(valor, m[0]);
      const double esperado = m[0] == "#,###" ? std::round(valor) : valor;
      EXPECT_EQ(ImporteDe(texto, m[0]), esperado) << qPrintable(texto + " con " + m[0]);
    }
  for (const QStringList& c : casosDeDatos("formatos.txt", "vuelta")) {
    const auto importe = ImporteDe(c[0], c[1]);
    EXPECT_EQ(importe ? Variant(*importe).text() : QString(), c[2]) << qPrintable(c.join(' '));
  }
}

TEST(Formato, NumeroAlPrincipioDeUnTexto) {
  for (const QStringList& c : casosDeDatos("formatos.txt", "numero"))
    EXPECT_EQ(Val(c[0]), c[1].toDouble()) << qPrintable(c[0]);
}

// What is no date is today, also of another year.
TEST(NormalizaFecha, CompletaLoTecleado) {
  for (const QStringList& c : casosDeDatos("formatos.txt", "fecha"))
    EXPECT_EQ(NormalizaFecha(c[0], c[1].toInt(), QDate(2026, 3, 9)), c[2])
        << qPrintable(c.join(' '));
}

TEST(ExpandeCodigo, RellenaElPunto) {
  for (const QStringList& c : casosDeDatos("formatos.txt", "codigo"))
    EXPECT_EQ(ExpandeCodigo(c[0], 9), c[1]);
  EXPECT_ERROR(err::kLlamadaNoValida, ExpandeCodigo("43000.00007", 9));
}

}  // namespace
