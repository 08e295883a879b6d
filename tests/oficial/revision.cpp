// One planted fault of each kind, each found once and where it stands; and books that are right.
#include "oficial/revision.h"

#include <gtest/gtest.h>

#include "engine/filas.h"
#include "oficial/declarante.h"
#include "soporte/libros.h"
#include "soporte/textos.h"

namespace {

class Revision : public testing::Test {
 protected:
  void SetUp() override {
    libros.asientaTrimestre();
    empresa = libros.abre();
  }
  QStringList hallados() {
    QStringList lista;
    for (const Hallazgo& h : revisa(*empresa, 2024, "#,##0.00"))
      lista += h.control + "|" + h.donde() + "|" + "DSEAFR"[int(h.sitio)] + "|" + h.texto;
    return lista;
  }
  void enPlan(const QString& subcuenta, const QString& campo, const QString& valor) {
    const auto fila =
        empresa->OpenRecordset("Select * from Subcuentas where Subcuenta='" + subcuenta + "'");
    fila->Edit();
    fila->Fields(campo) = valor;
    fila->Update();
  }
  void inserta(const QString& tabla, const std::vector<std::pair<QString, Variant>>& valores) {
    const auto filas = empresa->OpenRecordset(tabla);
    filas->AddNew();
    completa(*filas, [&] {
      for (const auto& [campo, valor] : valores) filas->Fields(campo) = valor;
    });
  }
  void linea(int asiento, const QString& subcuenta, double importe, QDate dia,
             const QString& registro = {}) {
    inserta("Diario", {{"NLinea", ++ultima},
                       {"NAsiento", asiento},
                       {"Fecha", dia},
                       {"Subcuenta", subcuenta},
                       {"DH", importe < 0 ? "H" : "D"},
                       {"Importe", importe},
                       {"ApunteIVA", registro}});
  }
  void registro(const QString& codigo, const QString& quien, const QString& factura, int asiento,
                double iva) {
    inserta("RSIVA", {{"Codigo", codigo},
                      {"CliPro", quien},
                      {"Factura", factura},
                      {"Asiento", asiento},
                      {"IVA", iva},
                      {"Recargo", 0},
                      {"CtaIVA", codigo.startsWith('S') ? "47200001" : "47700001"},
                      {"CtaRE", codigo.startsWith('S') ? "47500001" : "47300001"}});
  }
  // A register row whose quota its lines bear out, or not.
  void factura(const QString& codigo, const QString& quien, const QString& numero, int asiento,
               double iva, double enDiario) {
    registro(codigo, quien, numero, asiento, iva);
    const QDate dia(2024, 3, 31);
    linea(asiento, iva < 0 ? "47700001" : "47200001", enDiario, dia, codigo);
    linea(asiento, quien, -enDiario, dia, codigo);
  }

  Libros libros;
  std::unique_ptr<Database> empresa;
  int ultima = 90000;
};

TEST_F(Revision, LosLibrosDelTrimestreEstanBien) {
  EXPECT_EQ(hallados().join("\n").toStdString(), "");
}

TEST_F(Revision, CadaFaltaSeEncuentraUnaVezYDondeEsta) {
  enPlan("40000001", "Nif", "B46554433");
  enPlan("57200001", "Descripcion", "Banco Duero ES81 9991 0025 1100 0012 3456");
  enPlan("57200002", "Descripcion", "Caja Rural es08-9992-0007-5902-0005-4322");
  enPlan("40000002", "Direccion", "Ronda 2, paga en 9991 0025 00 0000123456");
  Declarante declarante(*empresa);
  declarante.pon("Nif", "B46554432");
  declarante.pon("Iban", "ES8199910025110000123457");
  declarante.graba(*empresa);
  const QDate dia(2024, 3, 31);
  factura("S0000000001", "40000003", "A-7", 201, 21, 21);
  factura("S0000000002", "40000003", "a 7", 202, 10, 10);
  factura("S0000000003", "40000002", "A-7", 203, 4, 4.5);
  factura("R0000000001", "43000005", "24/001", 204, -21, -21);
  factura("R0000000002", "43000005", "24/004", 205, -21, -21);
  registro("R0000000003", "43000005", "24/005", 0, -9);
  linea(301, "57000001", -90000, dia);
  linea(301, "10000001", 0, dia);
  linea(301, "60000001", 90000, dia);
  linea(302, "62999999", 5, dia);
  linea(302, "60000001", -5, dia);
  linea(303, "60000001", 3, dia);
  linea(304, "60000001", 1, QDate(2023, 12, 31));
  linea(304, "70000001", -1, dia);
  inserta("Subcuentas",
          {{"Subcuenta", "99000001"}, {"Cuenta", "990"}, {"Descripcion", "De orden"}});
  linea(305, "99000001", 2, dia);
  linea(305, "60000001", -2, dia);
  const QStringList lista = hallados();
  const QStringList esperadas = {
      "NIF|40000001|S|40000001 Suministros Ebro, S.L.: el NIF B46554433 no es correcto",
      "IBAN|57200002|S|57200002 Caja Rural es08-9992-0007-5902-0005-4322: la cuenta "
      "es08-9992-0007-5902-0005-4322 no es correcta",
      "IBAN|40000002|S|40000002 Textiles Martín e Hijos: la cuenta 9991 0025 00 0000123456 no es "
      "correcta",
      "IBAN||D|El IBAN del declarante, ES8199910025110000123457, no es correcto",
      "Facturas repetidas|202|F|La factura a 7 de 40000003 Papelera del Norte, S.A. está también "
      "en el asiento 201",
      "Huecos en la serie|204|F|Falta la factura 24/002 a 24/003, tras la 24/001",
      "Registro y diario|203|F|Registro S0000000003, factura A-7: la cuota es 4,00 y sus partidas "
      "suman 4,50",
      "Registro y diario|R0000000003|R|Registro R0000000003, factura 24/005: la cuota es -9,00 y "
      "sus partidas suman 0,00",
      "Saldos al revés|57000001|E|57000001 Caja: saldo acreedor de 75.782,00",
      "Subcuentas sin nombre|62999999|E|Hay partidas de la subcuenta «62999999», que no existe",
      "Asientos descuadrados|303|A|El asiento 303 no cuadra: diferencia de 3,00",
      "Fechas de otro año|304|A|Una partida de 60000001 es del 31/12/2023",
      "Sin línea en los estados|99000001|E|99000001 De orden: no está en ninguna línea del balance "
      "ni de resultados"};
  for (const QString& esperada : esperadas)
    EXPECT_EQ(lista.count(esperada), 1) << esperada.toStdString() << "\n en \n"
                                        << lista.join("\n").toStdString();
  EXPECT_EQ(lista.size(), esperadas.size()) << lista.join("\n").toStdString();
}

TEST(HuecosDeSerie, ElAnoNoEsElNumero) {
  const auto huecos = [](const QStringList& facturas) {
    QStringList textos;
    for (const auto& [antes, falta] : huecosDeSerie(facturas, 2024)) textos += antes + "<" + falta;
    return textos.join("; ");
  };
  EXPECT_EQ(huecos({"A/1", "A/2", "A/5"}), "A/2<A/3 a A/4");
  EXPECT_EQ(huecos({"1/24", "3/24", "9/24"}), "1/24<2/24; 3/24<4/24 a 8/24");
  EXPECT_EQ(huecos({"2024-001", "2024-003", "R-1", "sin número", ""}), "2024-001<2024-002");
  EXPECT_EQ(huecos({"24/24", "24/23", "24/25"}), "");
}

}  // namespace
