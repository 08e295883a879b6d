// What the stored queries of invoices and balances show, row by row.

#include "soporte/libros.h"

namespace {

class Consultas : public testing::Test, protected Libros {
 protected:
  Consultas() {
    anade("Subcuentas", {"40000001", "400", "Suministros Ebro, S.L.", "Calle Mayor, 1"});
    anade("Subcuentas", {"43000001", "430", "Almacenes Ruiz"});
    anade("Subcuentas", {"57200001", "572", "Banco Duero"});
  }
  // A row of texts from the first field on; an empty one leaves its field alone.
  void anade(const QString& tabla, const QStringList& textos) {
    const auto base = abre();
    const auto filas = base->OpenRecordset(tabla);
    filas->AddNew();
    for (int i = 0; i < textos.size(); ++i)
      if (!textos[i].isEmpty()) filas->Fields(i) = textos[i];
    filas->Update();
  }
  void compara(const QString& fuente, const QStringList& esperadas) {
    EXPECT_EQ(filas(fuente).join('\n').toStdString(), esperadas.join('\n').toStdString());
  }
};

TEST_F(Consultas, ElRegistroDeIvaYLaDeclaracionAnual) {
  anade("RSIVA", {"S0000000002", "40000001", "F-2", "50", "03", "8", "47200001", "10/02/2024",
                  "09/01/2024", "", "60000001", "8", "0", "16", "0", "58"});
  anade("RSIVA", {"S0000000001", "40000001", "F-2", "100,5", "03", "5", "47200001", "10/01/2024",
                  "09/01/2024", "", "60000001", "16,08", "0", "16", "0", "116,58"});
  anade("RSIVA", {"R0000000001", "43000001", "1", "-200", "07", "6", "47700001", "11/01/2024",
                  "11/03/2024", "47300001", "70000001", "-32", "-8", "16", "4", "-240"});
  // An unknown customer leaves the books without its invoice.
  anade("RSIVA", {"R0000000002", "43009999", "2", "-1", "07", "7"});

  compara("SqlIva",
          {"R|R0000000001|43000001|Almacenes Ruiz|-|1|6|47700001|11/01/2024|11/03/2024|47300001|"
           "70000001|-200|07|Normal C/R|-200|16|-32|4|-8|-240",
           "S|S0000000001|40000001|Suministros Ebro, S.L.|-|F-2|5|47200001|10/01/2024|09/01/2024|-|"
           "60000001|100,5|03|Normal S/R|100,5|16|16,08|0|0|116,58",
           "S|S0000000002|40000001|Suministros Ebro, S.L.|-|F-2|8|47200001|10/02/2024|09/01/2024|-|"
           "60000001|50|03|Normal S/R|50|16|8|0|0|58"});
  compara("Select Codigo, Neto from SqlIva where TipoSR='R' and FechaC >=#1-11-24#",
          {"R0000000001|-240"});
  // The month is that of the invoice, and the bases of one invoice and rate are one.
  compara("Sql347",
          {"40000001|Suministros Ebro, S.L.|1|F-2|150,5|16|0|Calle Mayor, 1|-|-|-|-|-|-|-|-",
           "43000001|Almacenes Ruiz|3|1|-200|16|4|-|-|-|-|-|-|-|-|-"});
}

TEST_F(Consultas, UnApunteSinSubcuentaOSinNivelFaltaEnSusBalances) {
  anade("Cuentas", {"572", "Bancos", "5", "57"});
  anade("Cuentas", {"430", "Clientes", "4"});
  anade("Diario", {"0", "1", "02/01/2024", "57200001", "Cobro", "D", "10"});
  anade("Diario", {"1", "1", "02/01/2024", "43000001", "Cobro", "H", "-7"});
  anade("Diario", {"2", "1", "02/01/2024", "99999999", "Cobro", "H", "-3"});
  compara("SqlSumaDiario", {"10|-10"});
  compara("Select Subcuenta, SDeudor, SAcreedor from SqlSumasSaldosN4",
          {"43000001|0|-7", "57200001|10|0"});
  compara("Select Cuenta, SumaDeSaldo from SqlSumasSaldosN3", {"430|-7", "572|10"});
  compara("Select NNivel, SumaDeSaldo, Mes from SqlSumasSaldosN2", {"57|10|1"});
  compara("Select NNivel, SumaDeSaldo from SqlSumasSaldosN1", {"5|10"});
  compara("SqlDiarioBuscaDescuadres", {});
  anade("Diario", {"3", "2", "02/01/2024", "57200001", "Suelto", "D", "0,01"});
  compara("SqlDiarioBuscaDescuadres", {"2|0,01"});
}

}  // namespace
