#include "journal/apunte.h"

#include "soporte/libros.h"

namespace {

// A full disk takes lines with it that were written before.
TEST(ApuntesEnSerieTest, LoQueSeDeshaceNoCuenta) {
  Libros libros;
  const QString contadores = "Select NLinDiario, Asiento from Empresa";
  const QStringList antes = libros.filas(contadores);
  const auto empresa = libros.abre();
  {
    ApuntesEnSerie serie(*empresa);
    serie.graba(apunteDe(500, "15/02/2024", "57000001", "Cobro", 1));
    libros.motor.discard();
  }
  EXPECT_EQ(libros.filas(contadores), antes);
  EXPECT_EQ(libros.filas("Select Count(*) from Diario"), QStringList("0"));
}

TEST(ApunteTest, UnaLineaQueNoEntraNiGastaNumeroNiPisaOtra) {
  Libros libros;
  DataControl diario(libros.motor), empresa(libros.motor);
  diario.bind(libros.rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
  empresa.bind(libros.rutaEmpresa(), "Select * from Empresa");
  const auto graba = [&](const char* subcuenta, const char* importe) {
    return numeroDeError([&] {
      grabaApunte(diario, empresa, apunteDe(1, "15/02/2024", subcuenta, "Cobro", importe));
    });
  };
  EXPECT_EQ(graba("57000001", "1.250,50"), 0);
  EXPECT_EQ(graba("57000001", "--5"), err::kConversionDeDatos);
  EXPECT_EQ(graba("570000011", "1"), err::kTextoDemasiadoLargo);
  EXPECT_EQ(graba("57000001", "-3"), 0);
  EXPECT_EQ(libros.filas("Select NLinDiario from Empresa"), QStringList("2"));
  EXPECT_EQ(diario.Recordset().editMode(), Recordset::EditMode::None);
  libros.cambia("Empresa", "NLinDiario", 0);
  EXPECT_EQ(graba("57000001", "8"), err::kClaveDuplicada);
  EXPECT_EQ(libros.filas("Select NLinDiario from Empresa"), QStringList("0"));
  EXPECT_EQ(libros.filas("Select NLinea, Importe from Diario"), (QStringList{"0|1250,5", "1|-3"}));
  // Counters that can be read but not written: no line stands without its number counted.
  empresa.bind(libros.rutaEmpresa(), "Select Empresa.NLinDiario + 2 as NLinDiario from Empresa");
  EXPECT_EQ(graba("57000001", "9"), err::kSoloLectura);
  EXPECT_EQ(libros.filas("Select Count(*) from Diario"), QStringList("2"));
  EXPECT_EQ(empresa.Recordset().editMode(), Recordset::EditMode::None);
}

}  // namespace
