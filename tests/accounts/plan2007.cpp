// The plan of 2007 as it is sown.
#include "accounts/plan2007.h"

#include "soporte/libros.h"

namespace {

// A name that doesn't fit is shortened by words: never cut, and never that of another account.
TEST(Plan2007, LosNombresCabenYNoSeConfunden) {
  for (const Modelo2007 modelo : {Modelo2007::Normal, Modelo2007::Pymes})
    for (const int digitos : {3, 4, 5}) {
      QSet<QString> codigos;
      for (const CuentaDe2007& cuenta : cuentasDe2007(modelo, digitos)) {
        EXPECT_EQ(cuenta.codigo.size(), digitos);
        EXPECT_FALSE(codigos.contains(cuenta.codigo)) << qPrintable(cuenta.codigo);
        codigos.insert(cuenta.codigo);
        EXPECT_LE(cuenta.nombre.size(), 75) << qPrintable(cuenta.codigo);
        EXPECT_GE(cuenta.nombre.size(), 4);
        EXPECT_EQ(cuenta.nombre, cuenta.nombre.simplified());
      }
      // Where a company's screens look for them by themselves.
      const CuentasIVA suyas = CalculaCuentas(digitos, digitos + 5);
      for (const QString& codigo :
           {suyas.IVASSub, suyas.IVASPro, suyas.IVASCom, suyas.IVARSub, suyas.IVARCli,
            suyas.IVARVen, suyas.IVASRE, suyas.IVARRE, QString("12900000"), QString("61000000")})
        EXPECT_TRUE(codigos.contains(codigo.left(digitos))) << qPrintable(codigo);
    }
  for (const CuentaDe2007& subgrupo : subgruposDe2007(Modelo2007::Normal))
    EXPECT_LE(subgrupo.nombre.size(), 80) << qPrintable(subgrupo.codigo);
  EXPECT_EQ(abreviaNombre("Deudas a largo plazo", 20), "Deudas a largo plazo");
  EXPECT_EQ(abreviaNombre("Deudas a largo plazo", 19), "Deudas a l/p");
}

class Sembrado : public testing::Test, protected Libros {
 protected:
  std::unique_ptr<Database> empresa = abre();
  QString cuenta(const QString& codigo) {
    return filas("Select Descripcion from Cuentas where Cuenta='" + codigo + "'").value(0);
  }
};

TEST_F(Sembrado, LoQueEstaSeQuedaSiNoSePideOtraCosa) {
  const auto cuentas = empresa->OpenRecordset("Cuentas");
  for (const auto& [codigo, nombre] :
       {std::pair("210", "Gastos de I+D"), {"270", "Gastos de formalización"}})
    anade(*cuentas,
          {{"Cuenta", codigo}, {"Descripcion", nombre}, {"SubGrupoN", QString(codigo).left(2)}});
  estrenaPlan2007(*empresa, Modelo2007::Normal, 3, {2024, 1, 2});
  EXPECT_EQ(cuenta("210"), "Gastos de I+D");
  EXPECT_FALSE(plan2007De(*empresa).sigue);
  EXPECT_EQ(filas("Select * from Nivel02 where NNivel='27'").size(), 1);
  EXPECT_EQ(filas("Select ActPas from Nivel01 where NNivel='9'").value(0), "3");
  estrenaPlan2007(*empresa, Modelo2007::Normal, 3, {2024, 1, 2}, true);
  EXPECT_EQ(cuenta("210"), "Terrenos y bienes naturales");
  EXPECT_EQ(cuenta("270"), "Gastos de formalización");
  EXPECT_TRUE(plan2007De(*empresa).sigue);
}

}  // namespace
