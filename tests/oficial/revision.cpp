// One planted fault of each kind, each found once and where it stands; and books that are right.
#include "oficial/revision.h"

#include "oficial/faltas.h"
#include "soporte/libros.h"

namespace {

class Revision : public testing::Test, protected Libros {
 protected:
  Revision() { asientaTrimestre(); }
  QStringList hallados() {
    QStringList lista;
    for (const Hallazgo& h : revisa(*abre(), 2024, "#,##0.00"))
      lista += h.control + "|" + h.donde() + "|" + "DSEAFR"[int(h.sitio)] + "|" + h.texto;
    return lista;
  }
};

TEST_F(Revision, CadaFaltaSeEncuentraUnaVezYDondeEsta) {
  const Faltas plantadas(*abre());
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
