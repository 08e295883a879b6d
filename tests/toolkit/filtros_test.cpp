// Which keys a field takes, by the text after the key.
#include "toolkit/filtros.h"

#include "soporte/prueba.h"

namespace {

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
  for (const auto& [nombre, filtro] : {std::pair("digitos", Filtro::Digitos),
                                       {"codigo", Filtro::Codigo},
                                       {"importe", Filtro::Importe},
                                       {"sinsigno", Filtro::ImporteSinSigno}})
    for (const bool si : {true, false})
      for (const QStringList& c : casosDeDatos("filtros.txt", nombre + QString(si ? " sí" : " no")))
        for (const QString& texto : c.mid(1))
          EXPECT_EQ(admite(filtro, texto, c[0]), si) << qPrintable(texto + " con " + c[0]);
  EXPECT_TRUE(admite(Filtro::Ninguno, "-x 5", {}));
}

}  // namespace
