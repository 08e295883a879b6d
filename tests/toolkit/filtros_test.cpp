// Which keys a field takes, by the text after the key.
#include "toolkit/filtros.h"

#include "soporte/prueba.h"

namespace {

constexpr const char* kLlana = "#,##0.00 ;-#,##0.00";
constexpr const char* kEuros = "#,##0.00 €;(#,##0.00 €)";
constexpr const char* kDolares = "$ #,##0.00;-$ #,##0.00";
constexpr const char* kSinCeros = "#,###";

TEST(Filtros, LaTeclaSustituyeALoSeleccionado) {
  const std::tuple<Edicion, const char*, const char*> casos[] = {{{"1234", 4, 1, 2}, "9", "194"},
                                                                 {{"0,00 ", 5, 0, 5}, "5", "5"},
                                                                 {{"12", 1, -1, 0}, "-", "1-2"},
                                                                 {{"", 0, -1, 0}, "4300", "4300"}};
  for (const auto& [antes, tecla, despues] : casos) EXPECT_EQ(textoTras(antes, tecla), despues);
  EXPECT_TRUE(soloQuita("12-34", "1234"));
  EXPECT_TRUE(soloQuita("5 €", ""));
  EXPECT_FALSE(soloQuita("1234", "5-"));
  EXPECT_FALSE(soloQuita("12", "12"));
}

TEST(Filtros, AdmitenLoQueElCampoEspera) {
  const struct {
    Filtro filtro;
    const char* mascara;
    QStringList si;
    QStringList no;
  } casos[] = {
      {Filtro::Digitos, "", {"", "0", "12", "007"}, {"-", "+", "12-", "1,5", "43.7", "12 ", "a"}},
      {Filtro::Codigo, "", {"43.7", "43.", "43000007"}, {"43.7.", "4300002 ", "-4", "4,5", "4a"}},
      {Filtro::Importe,
       kLlana,
       {"-", "-5", ",", ",5", "5,", "1.234,50 ", "(", "(5", "(5)", "5 €"},
       {"5-", "--5", "5,,", "1,2,", "5 $", "5 6", "x", "(-"}},
      {Filtro::ImporteSinSigno, kLlana, {"5", "0,00 ", "1.234,5"}, {"-", "5-", "+5", "(5", "5a"}},
      {Filtro::Importe, kEuros, {"5 €", "(5 €)", "5, €", "-5"}, {"5 € 5", "5 Pts"}},
      {Filtro::ImporteSinSigno, kDolares, {"$ 5", "5", "$", "$ 1.234,50"}, {"5 €5", "€$", "-$ 5"}},
      {Filtro::ImporteSinSigno, kSinCeros, {"5", "1.234"}, {"-"}},
      {Filtro::Ninguno, "", {"-x 5"}, {}}};
  for (const auto& caso : casos) {
    for (const QString& texto : caso.si)
      EXPECT_TRUE(admite(caso.filtro, texto, caso.mascara))
          << texto.toStdString() << " con " << caso.mascara;
    for (const QString& texto : caso.no)
      EXPECT_FALSE(admite(caso.filtro, texto, caso.mascara))
          << texto.toStdString() << " con " << caso.mascara;
  }
}

}  // namespace
