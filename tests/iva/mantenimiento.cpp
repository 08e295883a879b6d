// The tools that put registers and journal in step, row by row.
#include "iva/mantenimientoiva.h"

#include "soporte/libros.h"
#include "soporte/otropuesto.h"

namespace {

const QString kMascara = "#,##0.00 ;-#,##0.00";
const QString kRegistro = "Select Codigo, Asiento, CliPro from RSIVA order by Asiento, CliPro";
const QString kLineas = "Select NAsiento, Subcuenta, ApunteIVA from Diario order by NLinea";
const QString kContadores = "Select NLinIVAS, NLinIVAR from Empresa";

class MantenimientoIVA : public testing::Test, protected Libros {
 protected:
  void fila(const char* codigo, int asiento, const char* fecha, const char* tercero,
            const char* contrapartida) {
    inserta("RSIVA", {{"Codigo", codigo},
                      {"Asiento", asiento},
                      {"Fecha", fecha},
                      {"CliPro", tercero},
                      {"CtaCon", contrapartida}});
  }
  void linea(int asiento, const char* subcuenta, double importe, const Variant& apunte) {
    inserta("Diario", lineaDe(++lineas, asiento, "05/02/2024", subcuenta, importe,
                              {{"ApunteIVA", apunte}, {"FacturaZuri", "Z-1"}}));
  }
  void compara(const QString& fuente, const QStringList& esperado) {
    EXPECT_EQ(filas(fuente).join('\n'), esperado.join('\n'));
  }
  bool mantiene(TareaIVA tarea, const QString& cuenta = {}) {
    return mantieneIVA(*base, tarea, cuenta, kMascara, [](int, int) {});
  }

  std::unique_ptr<Database> base = abre();
  int lineas = 0;
};

// Numbers follow the dates; all the lines of an asiento take its code, the later one where it has
// two; rows whose counter account is one of IVA stay, and so does what wasn't chosen.
TEST_F(MantenimientoIVA, RenumeraPorFechas) {
  fila("S0000000007", 1, "10/03/2024", "40000001", "60000001");
  fila("S0000000001", 2, "05/01/2024", "40000002", "60000001");
  fila("S0000000002", 2, "06/01/2024", "40000003", "62900001");
  fila("S0000000011", 3, "01/01/2024", "47200001", "47700001");
  fila("R0000000009", 4, "07/01/2024", "43000001", "70000001");
  for (const int asiento : {1, 2, 3, 4}) linea(asiento, "57200001", 1, "vieja");
  linea(5, "57200001", 1, Variant());
  renumeraIVA(*base, {.repercutido = false, .soportado = true}, [](int, int) {});
  compara(kRegistro, {"S0000000003|1|40000001", "S0000000001|2|40000002", "S0000000002|2|40000003",
                      "S0000000011|3|47200001", "R0000000009|4|43000001"});
  compara(kLineas, {"1|57200001|S0000000003", "2|57200001|S0000000002", "3|57200001|vieja",
                    "4|57200001|vieja", "5|57200001|-"});
  compara(kContadores, {"3|0"});
  renumeraIVA(*base, {.repercutido = true, .soportado = true}, [](int, int) {});
  compara(kContadores, {"3|1"});
  compara("Select Codigo from RSIVA where Asiento=4", {"R0000000001"});
}

TEST_F(MantenimientoIVA, EliminaPorCuentaLosAsientosEnteros) {
  fila("S0000000001", 1, "05/01/2024", "40000001", "60000001");
  fila("S0000000002", 1, "05/01/2024", "40000002", "60000001");
  fila("R0000000001", 2, "05/01/2024", "43000001", "70000001");
  linea(1, "60000001", 100, "S0000000001");
  linea(1, "60000001", 50, "S0000000002");
  linea(1, "40000001", -150, "S0000000001");
  linea(2, "70000001", -10, "R0000000001");
  EXPECT_FALSE(mantiene(TareaIVA::EliminaPorCuenta, "60000009"));
  EXPECT_TRUE(mantiene(TareaIVA::EliminaPorCuenta, "60000001"));
  compara(kLineas, {"2|70000001|R0000000001"});
  // One row goes with an asiento, whatever it holds.
  compara(kRegistro, {"S0000000002|1|40000002", "R0000000001|2|43000001"});
}

TEST_F(MantenimientoIVA, EliminaLoQueNoTienePareja) {
  EXPECT_FALSE(mantiene(TareaIVA::EliminaIVASinAsiento));
  EXPECT_FALSE(mantiene(TareaIVA::EliminaLineasSinIVA));
  fila("S0000000001", 1, "05/01/2024", "40000001", "60000001");
  fila("S0000000002", 2, "05/01/2024", "40000002", "60000001");
  linea(1, "60000001", 100, "s0000000001");  // codes compare without case
  linea(3, "60000001", 50, "S0000000009");
  linea(3, "40000001", -50, Variant());
  EXPECT_TRUE(mantiene(TareaIVA::EliminaIVASinAsiento));
  compara(kRegistro, {"S0000000001|1|40000001"});
  EXPECT_TRUE(mantiene(TareaIVA::EliminaLineasSinIVA));
  compara(kLineas, {"1|60000001|s0000000001", "3|40000001|-"});
}

TEST_F(MantenimientoIVA, CreaElRegistroDeSusAsientos) {
  EXPECT_FALSE(mantiene(TareaIVA::CreaIVADeDiario));
  const auto asiento = [&](int numero, const char* codigo, double base, double cuota, double re,
                           bool compra) {
    const int signo = compra ? 1 : -1;
    linea(numero, compra ? "60000001" : "70000001", signo * base, codigo);
    if (cuota != 0) linea(numero, compra ? "47200001" : "47700001", signo * cuota, codigo);
    if (re != 0) linea(numero, compra ? "47200002" : "47700002", signo * re, codigo);
    linea(numero, compra ? "40000001" : "43000001", -signo * (base + cuota + re), codigo);
  };
  cambia("Empresa", "IVASRE", "47200002");
  cambia("Empresa", "IVARRE", "47700002");
  asiento(1, "S0000000001", 100, 7, 0, true);
  asiento(2, "S0000000002", 200, 32, 8, true);
  asiento(3, "R0000000001", 50, 8, 0, false);
  asiento(4, "R0000000002", 60, 12.6, 0, false);  // 21 per cent is no rate of this table
  linea(5, "60000001", 10, Variant());            // no invoice
  EXPECT_TRUE(mantiene(TareaIVA::CreaIVADeDiario));
  const QString filasNuevas =
      "Select Codigo, CliPro, Factura, Base, TipoIVA, Asiento, CtaIVA, Fecha, CtaRE, CtaCon, IVA, "
      "Neto from RSIVA order by Asiento";
  const QString fecha = "|05/02/2024|";
  const QStringList creadas = {
      "S0000000001|40000001|Z-1|100|02|1|47200001" + fecha + "47200002|60000001|-|-",
      "S0000000002|40000001|Z-1|200|07|2|47200001" + fecha + "47200002|60000001|-|-",
      "R0000000001|43000001|Z-1|-50|03|3|47700001" + fecha + "47700002|70000001|-|-",
      "R0000000002|43000001|Z-1|-60|99|4|47700001" + fecha + "47700002|70000001|-|-"};
  compara(filasNuevas, creadas);
  EXPECT_TRUE(mantiene(TareaIVA::CreaIVADeDiario));  // nothing is made twice
  compara(filasNuevas, creadas);
}

// The first row that the file refuses ends it all: the others would wait in turn, and be told done.
TEST_F(MantenimientoIVA, AcabaCuandoElFicheroNoTomaNada) {
  for (int i = 1; i <= 3; ++i)
    fila(qPrintable(QString("S000000000%1").arg(i)), i, "05/01/2024", "40000001", "60000001");
  motor.flush();
  motor.setLockTimeout(30);
  int filasMiradas = 0;
  const auto elimina = [&] {
    mantieneIVA(*base, TareaIVA::EliminaIVASinAsiento, {}, kMascara,
                [&](int, int) { ++filasMiradas; });
  };
  {
    OtroPuesto otro(rutaSistema(rutaEmpresa()), "BEGIN IMMEDIATE;");
    EXPECT_EQ(numeroDeError(elimina), err::kRegistroBloqueado);
    EXPECT_EQ(filasMiradas, 1);
  }
  EXPECT_EQ(filas(kRegistro).size(), 3);
  elimina();
  compara(kRegistro, {});
}

}  // namespace
