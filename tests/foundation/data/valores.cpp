#include <gtest/gtest.h>

#include "foundation/data/conversion.h"
#include "foundation/data/errorejecucion.h"
#include "foundation/data/variant.h"

namespace {

TEST(Valores, TextoANumero) {
  const struct {
    const char* texto;
    std::optional<double> esperado;
  } casos[] = {
      {"1234,5", 1234.5},
      {"1.234,50", 1234.5},
      {" 12 ", 12},
      {"5-", -5},
      {"-5", -5},
      {"- 5", -5},
      {"+5", 5},
      {",5", 0.5},
      {"0,", 0},
      {"01234.", 1234},
      {"0,07", 0.07},
      {"1234567,80", 1234567.8},
      {"", std::nullopt},
      {"--5", std::nullopt},
      {"-5-", std::nullopt},
      {"-", std::nullopt},
      {",", std::nullopt},
      {"1,2,3", std::nullopt},
      {"1,5.0", std::nullopt},
      {"1e5", std::nullopt},
      {"B1234", std::nullopt},
      {"1 2", std::nullopt},
      {"0x10", std::nullopt},
  };
  for (const auto& c : casos)
    EXPECT_EQ(parseNumber(QString::fromUtf8(c.texto)), c.esperado) << '"' << c.texto << '"';
}

TEST(Valores, TextoAFechaElDiaPrimero) {
  const struct {
    const char* texto;
    const char* esperado;  // empty: no date
  } casos[] = {
      {"15/02/2003", "15/02/2003"},
      {"2-1-2003", "02/01/2003"},
      {"01/02/03", "01/02/2003"},
      {"01/02/99", "01/02/1999"},
      {"2003-02-15", "15/02/2003"},
      {"29/02/2004", "29/02/2004"},
      {"15/02/2003 10:30", "15/02/2003 10:30:00"},
      {"15/02/2003 00:00:00", "15/02/2003"},
      {"29/02/2003", ""},
      {"30/02/2003", ""},
      {"02/13/2003", ""},
      {"15/02", ""},
      {"15/02/003", ""},
      {"123", ""},
      {"15/02/2003 25:00", ""},
      {"", ""},
  };
  for (const auto& c : casos) {
    const auto fecha = parseDate(QString::fromUtf8(c.texto));
    EXPECT_EQ(fecha ? dateText(*fecha) : QString(), QString::fromUtf8(c.esperado)) << c.texto;
  }
}

TEST(Valores, ElTextoDeUnNumeroVuelveASerElMismo) {
  for (const double valor : {0.0, -0.0, 1.0, -1234.5, 0.1 + 0.2, 1e15, 123456789012345.0, 1e20,
                             0.000001, -1e-10, 1234567.89}) {
    const auto vuelto = parseNumber(numberText(valor));
    ASSERT_TRUE(vuelto) << valor;
    EXPECT_NEAR(*vuelto, valor, std::abs(valor) * 1e-14) << valor;
  }
  EXPECT_EQ(numberText(0.1 + 0.2), "0,3");
  EXPECT_EQ(numberText(-0.0), "0");
}

// What each type of column makes of a value; a number alone is the error that it raises.
TEST(Valores, AsignarAUnCampoConvierteASuTipo) {
  const Variant fecha(QDate(2003, 2, 15));
  const struct {
    FieldType tipo;
    int ancho;
    Variant valor;
    Variant esperado;
    int error;
  } casos[] = {
      {FieldType::Double, 0, "1.234,5-", -1234.5, 0},
      {FieldType::Double, 0, "--5", {}, 3421},
      {FieldType::Double, 0, "", {}, 3421},
      {FieldType::Double, 0, std::numeric_limits<double>::infinity(), {}, 3421},
      {FieldType::Long, 0, "12", qint64{12}, 0},
      {FieldType::Long, 0, 2.5, qint64{2}, 0},
      {FieldType::Long, 0, 3.5, qint64{4}, 0},
      {FieldType::Long, 0, -2.5, qint64{-2}, 0},
      {FieldType::Long, 0, 2147483647.0, qint64{2147483647}, 0},
      {FieldType::Long, 0, 2147483648.0, {}, 3421},
      {FieldType::Long, 0, "B12345678", {}, 3421},
      {FieldType::Date, 0, "15/02/2003", fecha, 0},
      {FieldType::Date, 0, 37667, fecha, 0},
      {FieldType::Date, 0, "30/02/2003", {}, 3421},
      {FieldType::Boolean, 0, "Verdadero", true, 0},
      {FieldType::Boolean, 0, 0, false, 0},
      {FieldType::Boolean, 0, "quizá", {}, 3421},
      {FieldType::Text, 4, 12.5, "12,5", 0},
      {FieldType::Text, 3, "ñññ", "ñññ", 0},
      {FieldType::Text, 3, "ñññn", {}, 3163},
      {FieldType::Text, 10, fecha, "15/02/2003", 0},
      {FieldType::Long, 0, {}, {}, 0},
  };
  for (const auto& c : casos) {
    int error = 0;
    Variant resultado;
    try {
      resultado = convertTo(c.tipo, c.ancho, c.valor);
    } catch (const ErrorEjecucion& e) {
      error = e.numero();
    }
    EXPECT_EQ(error, c.error) << c.valor.display().toStdString();
    EXPECT_TRUE(resultado == c.esperado)
        << c.valor.display().toStdString() << " dio " << resultado.display().toStdString();
  }
}

TEST(Valores, LeerNuloOLoQueNoEsDelTipoDaSuError) {
  const auto numero = [](auto&& algo) {
    try {
      algo();
    } catch (const ErrorEjecucion& e) {
      return e.numero();
    }
    return 0;
  };
  EXPECT_EQ(numero([] { Variant().text(); }), err::kNuloNoValido);
  EXPECT_EQ(numero([] { Variant().number(); }), err::kNuloNoValido);
  EXPECT_EQ(numero([] { Variant("doce").number(); }), err::kTiposNoCoinciden);
  EXPECT_EQ(numero([] { Variant(3e9).toLong(); }), err::kDesbordamiento);
  EXPECT_EQ(Variant().display(), "");
  EXPECT_EQ(Variant(true).number(), -1);
  EXPECT_EQ(Variant(QDateTime(QDate(2003, 2, 15), QTime(10, 30))).text(), "15/02/2003 10:30:00");
}

}  // namespace
