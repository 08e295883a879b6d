// Records of fixed width against the official layouts: lengths, known slices, what doesn't fit.
#include "oficial/registrofijo.h"

#include "oficial/tablafija.h"
#include "soporte/prueba.h"

namespace {

TEST(RegistroFijo, CadaDisenoMideLoSuyo) {
  const std::pair<const char*, int> paginas[] = {
      {"00", 328}, {"01", 1581}, {"03", 1017}, {"DID", 823}, {"99", 18}};
  for (const char* diseno : {"2024A", "2024B", "2025", "2026"})
    for (const auto& [pagina, largo] : paginas)
      EXPECT_EQ(escribeRegistro(DisenoFijo("303.csv", diseno), pagina, {}).size(), largo)
          << diseno << ' ' << pagina;
  EXPECT_EQ(DisenoFijo("303.csv", "2024B").longitud("04"), 998);
  for (const char* diseno : {"2014", "2025"})
    for (const char* registro : {"declarante", "declarado", "inmueble"})
      EXPECT_EQ(escribeRegistro(DisenoFijo("347.csv", diseno), registro, {}).size(), 500);
  // The number of a grant: six zeros or six blanks, by year.
  EXPECT_EQ(escribeRegistro(DisenoFijo("347.csv", "2014"), "declarado", {}).mid(299, 6), "      ");
  EXPECT_EQ(escribeRegistro(DisenoFijo("347.csv", "2025"), "declarado", {}).mid(299, 6), "000000");
  EXPECT_ERROR(err::kElementoNoEncontrado, DisenoFijo("303.csv", "1999"));
}

TEST(RegistroFijo, CadaClaseDeCampoSeAjustaALoSuyo) {
  const DisenoFijo diseno("347.csv", "2014");
  const ValoresFijos valores = {{"NIF del declarado", "1234567L"},
                                {"Apellidos y nombre o razón social", "Peña Muñoz,  Luisa Ágata"},
                                {"Importe anual de las operaciones", qint64{-484000}},
                                {"Operaciones 2T", qint64{726000}},
                                {"Código provincia", "5"}};
  const QByteArray r = escribeRegistro(diseno, "declarado", valores);
  EXPECT_EQ(r.mid(17, 9), "01234567L");
  EXPECT_EQ(r.mid(26, 9), "         ");
  EXPECT_EQ(r.mid(35, 40).trimmed(), QStringLiteral("PEÑA MUÑOZ, LUISA AGATA").toLatin1());
  EXPECT_EQ(r.mid(76, 2), "05");
  EXPECT_EQ(r.mid(82, 16), "N000000000484000");
  EXPECT_EQ(r.mid(167, 16), " 000000000726000");
  const auto leidos = leeRegistro(diseno, "declarado", QString::fromLatin1(r));
  EXPECT_EQ(leidos["Operaciones 2T"], "000000000726000");
  EXPECT_EQ(leidos["NIF del declarado"], "01234567L");
  const auto no = [&](const char* campo, const Variant& valor) {
    return numeroDeError([&] { escribeRegistro(diseno, "declarado", {{campo, valor}}); });
  };
  EXPECT_EQ(no("Código provincia", "123"), err::kLlamadaNoValida);
  EXPECT_EQ(no("Código provincia", "A"), err::kLlamadaNoValida);
  EXPECT_EQ(no("Importe percibido en metálico", qint64{-1}), err::kLlamadaNoValida);
  EXPECT_EQ(no("NIF del declarado", "B465544321"), err::kLlamadaNoValida);
}

TEST(RegistroFijo, LosImportesVanEnCentimosYLosTextosSinTildes) {
  const std::pair<double, qint64> importes[] = {
      {1.005, 101}, {-1.005, -101}, {0.1 + 0.2, 30}, {1234567.89, 123456789}, {2.675, 268}};
  for (const auto& [importe, centimos] : importes) EXPECT_EQ(centimosDe(importe), centimos);
  EXPECT_ERROR(err::kDesbordamiento, centimosDe(1e15));
  EXPECT_EQ(textoOficial("Güell «Ça va» & Cía., S.L. nº 1"), "GUELL ÇA VA & CIA., S.L. N 1");
}

TEST(TablasFijas, ProvinciasYPaisesPorSusNombres) {
  EXPECT_EQ(codigoDeProvincia("50001", "Madrid"), "50");
  EXPECT_EQ(codigoDeProvincia("", " a coruña "), "15");
  EXPECT_EQ(codigoDeProvincia("99001", "Orense"), "32");
  EXPECT_EQ(codigoDeProvincia("", "Burdeos"), "");
  EXPECT_EQ(paisDe("").codigo, "ES");
  EXPECT_EQ(paisDe("GRECIA").prefijo, "EL");
  EXPECT_EQ(paisDe("usa").codigo, "US");
  EXPECT_FALSE(paisDe("Reino Unido").deLaUnion());
  EXPECT_TRUE(paisDe("Atlántida").codigo.isEmpty());
}

}  // namespace
