#include "accounts/crearplan.h"

#include "accounts/plangeneral.h"
#include "soporte/libros.h"

namespace {

TEST(PlanGeneral, FilasDeCadaGrupoEnOrden) {
  QMap<char, int> filas;
  QString anterior;
  for (const CuentaDelPlan& cuenta : planGeneral()) {
    const QString codigo = cuenta.codigo;
    EXPECT_EQ(codigo.size(), 3);
    EXPECT_LT(anterior, codigo);
    EXPECT_LE(QString(cuenta.nombre).size(), 75);
    anterior = codigo;
    ++filas[cuenta.codigo[0]];
  }
  EXPECT_EQ(filas,
            (QMap<char, int>{
                {'1', 50}, {'2', 61}, {'3', 30}, {'4', 37}, {'5', 64}, {'6', 63}, {'7', 51}}));
}

TEST(CopiaPlan, SoloSeNiegaLaQueDifiereEnLasDosAnchuras) {
  Libros libros;
  const auto origen = libros.abre();
  EXPECT_TRUE(anchurasCopiables(*origen, 3, 8));
  EXPECT_TRUE(anchurasCopiables(*origen, 4, 8));
  EXPECT_TRUE(anchurasCopiables(*origen, 3, 9));
  EXPECT_FALSE(anchurasCopiables(*origen, 4, 9));
}

}  // namespace
