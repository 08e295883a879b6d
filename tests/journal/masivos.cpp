#include "journal/masivos.h"

#include <gtest/gtest.h>

#include "foundation/data/errorejecucion.h"
#include "foundation/data/recordset.h"
#include "soporte/libros.h"

namespace {

const QString kLineas = "Select NAsiento, Fecha, Subcuenta, Importe from Diario order by NLinea";

class MasivosTest : public testing::Test {
 protected:
  void linea(int asiento, const char* fecha, const char* subcuenta, double importe,
             const Variant& iva = {}) {
    const auto diario = empresa_->OpenRecordset("Diario");
    diario->AddNew();
    diario->Fields("NLinea") = nLinea_++;
    diario->Fields("NAsiento") = asiento;
    diario->Fields("Fecha") = fecha;
    diario->Fields("Subcuenta") = subcuenta;
    diario->Fields("Descripcion") = "Compra de género";
    diario->Fields("DH") = importe < 0 ? "H" : "D";
    diario->Fields("Importe") = importe;
    diario->Fields("ApunteIVA") = iva;
    diario->Update();
  }
  void registro(const char* codigo, int asiento) {
    const auto rsiva = empresa_->OpenRecordset("RSIVA");
    rsiva->AddNew();
    rsiva->Fields("Codigo") = codigo;
    rsiva->Fields("Asiento") = asiento;
    rsiva->Fields("Factura") = "A-7";
    rsiva->Update();
  }
  void contadores(int asiento, int linea, int ivas) {
    const auto empresa = empresa_->OpenRecordset("Empresa");
    empresa->Edit();
    empresa->Fields("Asiento") = asiento;
    empresa->Fields("NLinDiario") = linea;
    empresa->Fields("NLinIVAS") = ivas;
    empresa->Update();
  }
  int cambia(const CambioMasivo& cambio) {
    try {
      cambiaDatos(*empresa_, cambio, [](int, int) {});
      return 0;
    } catch (const ErrorEjecucion& e) {
      return e.numero();
    }
  }
  CambioMasivo delAno(CampoCambio campo, const char* localizar, const char* cambiar) {
    return {campo, localizar, cambiar, "01/01/2024", "31/12/2024", false};
  }

  Libros libros_;
  std::unique_ptr<Database> empresa_ = libros_.abre();
  int nLinea_ = 0;
};

TEST_F(MasivosTest, DuplicaConSuFacturaYBajoLosNumerosSiguientes) {
  linea(4, "10/02/2024", "60000001", 100, "S0000000041");
  linea(4, "10/02/2024", "47200001", 16, "S0000000041");
  linea(4, "10/02/2024", "40000001", -116, "S0000000041");
  registro("S0000000041", 4);
  contadores(9, 3, 41);
  ASSERT_TRUE(duplicaAsiento(*empresa_, *empresa_, 4, "15/03/2024", 8, false));
  EXPECT_EQ(libros_.filas(kLineas),
            (QStringList{"4|10/02/2024|60000001|100", "4|10/02/2024|47200001|16",
                         "4|10/02/2024|40000001|-116", "9|15/03/2024|60000001|100",
                         "9|15/03/2024|47200001|16", "9|15/03/2024|40000001|-116"}));
  EXPECT_EQ(libros_.filas("Select Codigo, Asiento, FechaC, Factura from RSIVA order by Codigo"),
            (QStringList{"S0000000041|4|-|A-7", "S0000000042|9|15/03/2024|A-7"}));
  EXPECT_EQ(libros_.filas("Select ApunteIVA from Diario where NAsiento=9"),
            (QStringList{"S0000000042", "S0000000042", "S0000000042"}));
  EXPECT_EQ(libros_.filas("Select Asiento, NLinDiario, NLinIVAS from Empresa"),
            QStringList{"10|6|42"});
}

TEST_F(MasivosTest, DuplicaEnOtraEmpresaYBorraElOriginal) {
  libros_.creaEmpresa(Libros::datosPorDefecto("Otra", 3, 8));
  libros_.creaEmpresa(Libros::datosPorDefecto("Ancha", 3, 9));
  linea(4, "10/02/2024", "57000001", 50);
  linea(4, "11/02/2024", "70000001", -50);
  EXPECT_FALSE(duplicaAsiento(*empresa_, *libros_.abre("Ancha"), 4, "", 8, true));
  EXPECT_EQ(libros_.filas(kLineas).size(), 2);
  // A text that is no date leaves each line its own.
  ASSERT_TRUE(duplicaAsiento(*empresa_, *libros_.abre("Otra"), 4, "31/02", 8, true));
  EXPECT_EQ(libros_.filas(kLineas), QStringList{});
  EXPECT_EQ(libros_.filas(kLineas, "Otra"),
            (QStringList{"1|10/02/2024|57000001|50", "1|11/02/2024|70000001|-50"}));
}

TEST_F(MasivosTest, CambiaLoQueEncuentraEntreLasFechas) {
  linea(1, "10/02/2024", "60000001", 100);
  linea(1, "10/02/2024", "40000001", -100);
  linea(2, "20/05/2024", "60000001", 100);
  CambioMasivo cambio = delAno(CampoCambio::Subcuenta, "60000001", "60100001");
  cambio.fechaHasta = "31/03/2024";
  EXPECT_EQ(cambia(cambio), 0);
  EXPECT_EQ(libros_.filas("Select Subcuenta from Diario order by NLinea"),
            (QStringList{"60100001", "40000001", "60000001"}));
  EXPECT_EQ(cambia(delAno(CampoCambio::Descripcion, "compra*", "Género")), 0);
  EXPECT_EQ(libros_.filas("Select NLinea from Diario where Descripcion='Género'").size(), 3);
  EXPECT_EQ(cambia(delAno(CampoCambio::Fecha, "20/05/2024", "21/05/2024")), 0);
  EXPECT_EQ(libros_.filas("Select Fecha from Diario where NAsiento=2"), QStringList{"21/05/2024"});
}

TEST_F(MasivosTest, LoQueNoPuedeCambiarseTieneSuNumero) {
  linea(1, "10/02/2024", "60000001", 100);
  linea(2, "10/02/2024", "60000001", 200);
  EXPECT_EQ(cambia(delAno(CampoCambio::NAsiento, "77", "1")), err::kSinRegistroActivo);
  EXPECT_EQ(cambia(delAno(CampoCambio::NAsiento, "", "1")), err::kErrorDeSintaxis);
  EXPECT_EQ(cambia(delAno(CampoCambio::Subcuenta, "O'Brien", "1")), err::kErrorDeSintaxis);
  EXPECT_EQ(cambia(delAno(CampoCambio::Importe, "100,50", "1")), err::kErrorDeSintaxis);
  EXPECT_EQ(cambia(delAno(CampoCambio::NAsiento, "1", "uno")), err::kConversionDeDatos);
  EXPECT_EQ(libros_.filas(kLineas),
            (QStringList{"1|10/02/2024|60000001|100", "2|10/02/2024|60000001|200"}));
}

TEST_F(MasivosTest, EliminarPorUnDatoSeLlevaElAsientoEntero) {
  linea(1, "10/02/2024", "60000001", 100);
  linea(1, "10/02/2024", "60000001", 20);
  linea(1, "10/02/2024", "40000001", -120);
  linea(2, "10/02/2024", "57000001", 7);
  CambioMasivo cambio = delAno(CampoCambio::Subcuenta, "60000001", "");
  cambio.eliminar = true;
  EXPECT_EQ(cambia(cambio), 0);
  EXPECT_EQ(libros_.filas(kLineas), QStringList{"2|10/02/2024|57000001|7"});
}

TEST_F(MasivosTest, EliminarUnAsientoSeLlevaSusRegistros) {
  linea(1, "10/02/2024", "60000001", 100, "S0000000001");
  linea(1, "10/02/2024", "40000001", -100, "S0000000001");
  linea(2, "10/02/2024", "60000001", 100, "S0000000002");
  registro("S0000000001", 1);
  registro("S0000000002", 2);
  eliminaAsiento(*empresa_, 1, [](int, int) {});
  EXPECT_EQ(libros_.filas(kLineas), QStringList{"2|10/02/2024|60000001|100"});
  EXPECT_EQ(libros_.filas("Select Codigo from RSIVA"), QStringList{"S0000000002"});
}

}  // namespace
