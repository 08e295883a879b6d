// Tax numbers and accounts with check digits: made-up ones, right and wrong.
#include "oficial/identificadores.h"

#include "soporte/prueba.h"

namespace {

TEST(Identificadores, LosBuenosPasanYLosMalosNo) {
  const QHash<QString, Comprobacion (*)(const QString&)> comprueba = {
      {"NIF", compruebaNif}, {"CCC", compruebaCCC}, {"IBAN", compruebaIBAN}};
  const QHash<QString, Comprobacion> respuestas = {{"bueno", Comprobacion::Bueno},
                                                   {"malo", Comprobacion::Malo},
                                                   {"dudoso", Comprobacion::Dudoso}};
  for (const QString& linea : lineasDeDatos("identificadores.txt")) {
    const QString clase = linea.section(": ", 0, 0);
    for (const QString& texto : linea.section(": ", 1).split(' '))
      EXPECT_EQ(comprueba[clase.section(' ', 0, 0)](texto), respuestas[clase.section(' ', 1)])
          << texto.toStdString();
  }
  EXPECT_EQ(compruebaNif(" b-46.554.432 "), Comprobacion::Bueno);
  EXPECT_EQ(compruebaNif("  "), Comprobacion::Vacio);
  EXPECT_EQ(nifDeNueve("1.234.567-l"), "01234567L");
  EXPECT_EQ(ibanDe(cccDe("9991", "0025", "0000123456")), "ES8199910025110000123456");
}

}  // namespace
