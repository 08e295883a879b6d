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
  const QStringList esperadas = lineasDeDatos("revision.txt");
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
