#include "journal/apunte.h"

#include <gtest/gtest.h>

#include "foundation/data/datacontrol.h"
#include "foundation/data/errorejecucion.h"
#include "soporte/libros.h"

namespace {

Apunte apunteDe(const char* importe) {
  Apunte apunte;
  apunte.NAsiento = "1";
  apunte.Fecha = "15/02/2024";
  apunte.Subcuenta = "57000001";
  apunte.Descripcion = "Cobro";
  apunte.DH = "D";
  apunte.Importe = importe;
  return apunte;
}

class ApunteTest : public testing::Test {
 protected:
  void SetUp() override {
    diario_.bind(libros_.rutaEmpresa(),
                 QStringLiteral("Select * from SqlDiarioPrincipalBlanco order by nasiento"));
    empresa_.bind(libros_.rutaEmpresa(), QStringLiteral("Select * from Empresa"));
  }
  int graba(const Apunte& apunte) {
    try {
      grabaApunte(diario_, empresa_, apunte);
      return 0;
    } catch (const ErrorEjecucion& e) {
      return e.numero();
    }
  }
  QString contador() {
    return libros_.filas(QStringLiteral("Select NLinDiario from Empresa")).join(u',');
  }
  QStringList lineas() {
    return libros_.filas(QStringLiteral("Select NLinea, Importe from Diario"));
  }

  Libros libros_;
  DataControl diario_{libros_.motor};
  DataControl empresa_{libros_.motor};
};

TEST_F(ApunteTest, UnaLineaQueNoEntraNoGastaNumero) {
  EXPECT_EQ(graba(apunteDe("1.250,50")), 0);
  EXPECT_EQ(graba(apunteDe("--5")), err::kConversionDeDatos);
  Apunte larga = apunteDe("1");
  larga.Subcuenta = "570000011";
  EXPECT_EQ(graba(larga), err::kTextoDemasiadoLargo);
  EXPECT_EQ(graba(apunteDe("-3")), 0);
  EXPECT_EQ(lineas(), (QStringList{QStringLiteral("0|1250,5"), QStringLiteral("1|-3")}));
  EXPECT_EQ(contador(), QStringLiteral("2"));
  EXPECT_EQ(diario_.Recordset().editMode(), Recordset::EditMode::None);
}

TEST_F(ApunteTest, UnNumeroOcupadoNoPisaLaLineaQueLoTiene) {
  EXPECT_EQ(graba(apunteDe("7")), 0);
  empresa_.Edit();
  empresa_.Fields(QStringLiteral("NLinDiario")) = 0;
  empresa_.Update();
  EXPECT_EQ(graba(apunteDe("8")), err::kClaveDuplicada);
  EXPECT_EQ(lineas(), QStringList{QStringLiteral("0|7")});
  EXPECT_EQ(contador(), QStringLiteral("0"));
}

}  // namespace
