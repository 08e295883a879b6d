// Statements of the bank: the example as its figures are known, the ways in which banks depart from
// the norm, and what must not be taken.
#include "oficial/norma43.h"

#include "soporte/libros.h"

namespace {

QByteArray ejemplo() {
  return contenidoDe(rutaDato("banco/extracto-norma43.txt"));
}

QString faltas(const QByteArray& fichero) {
  QStringList textos;
  const LecturaNorma43 leido = leeNorma43(fichero);
  for (const AvisoDeLinea& e : leido.errores) textos += e.entero();
  for (const AvisoDeLinea& a : leido.avisos) textos += "(" + a.entero() + ")";
  return textos.join("; ");
}

// The example with a piece of one line replaced; positions count from 1.
QByteArray con(int linea, int desde, const QByteArray& texto) {
  QList<QByteArray> lineas = ejemplo().split('\n');
  lineas[linea - 1].replace(desde - 1, texto.size(), texto);
  return lineas.join('\n');
}

TEST(Norma43, ElExtractoDeEjemploDaSusConceptos) {
  const LecturaNorma43 leido = leeNorma43(ejemplo());
  ASSERT_EQ(leido.cuentas.size(), 2u);
  EXPECT_EQ(leido.cuentas[0].movimientos.at(6).concepto,
            "CORETEXTILES MARTIN E HIJOS ES72000A28123453 MANDATO-000045 RECIBO FACTURA 2024/118 "
            "VENCIMIENTO 31-01-2024 REF-118 TIENDA DE MUESTRA S.L.");
  EXPECT_EQ(leido.cuentas[0].movimientos.at(5).valor, QDate(2024, 1, 27));
  EXPECT_EQ(leido.cuentas[1].movimientos.at(2).comun, "98");
  EXPECT_EQ(faltas(ejemplo()), "");
}

TEST(Norma43, LoQueCadaBancoHaceASuManeraSeLeeIgual) {
  const QByteArray base = ejemplo();
  const QString texto = QString::fromLatin1(base);
  const auto igual = [&](const QByteArray& fichero) {
    const LecturaNorma43 leido = leeNorma43(fichero);
    EXPECT_TRUE(leido.errores.isEmpty()) << faltas(fichero).toStdString();
    return leido.cuentas.size() == 2 &&
           leido.cuentas[0].movimientos[0].concepto == "TRANSFERENCIA EMITIDA CALZADOS IBAÑEZ" &&
           leido.cuentas[1].final == 59056;
  };
  EXPECT_TRUE(igual(texto.toUtf8()));
  EXPECT_TRUE(igual("\xEF\xBB\xBF" + texto.toUtf8()));
  EXPECT_TRUE(igual(QByteArray(base).replace('\xD1', '\xA5')));
  EXPECT_TRUE(igual(QByteArray(base).replace("\r\n", "\n") + '\x1A'));
  QByteArray cortado;
  for (QByteArray linea : base.split('\n')) {
    while (!linea.isEmpty() && isspace(linea.back())) linea.chop(1);
    cortado += linea + '\n';
  }
  EXPECT_TRUE(igual(cortado));
  EXPECT_TRUE(igual(base.left(base.lastIndexOf("88999"))));
  EXPECT_EQ(faltas(base.left(base.lastIndexOf("88999"))),
            "(Línea 36: falta el final del fichero (88))");
  EXPECT_EQ(faltas(con(36, 21, "000036")), "(Línea 36: el final del fichero se cuenta a sí mismo)");
  EXPECT_EQ(faltas(con(24, 60, "00000006571428")),
            "(Línea 24: el saldo final es 65714,28 y con los movimientos sale 65714,29)");
}

TEST(Norma43, LoQueNoCuadraSeDicePorSuLinea) {
  for (const QStringList& c : leeCsv("banco/faltas.csv")) {
    const QString dicho = faltas(con(c[0].toInt(), c[1].toInt(), c[2].toLatin1()));
    EXPECT_TRUE(dicho.startsWith(c[3])) << dicho.toStdString() << " y no " << c[3].toStdString();
  }
  EXPECT_EQ(faltas(ejemplo() + "22"), "Línea 37: hay datos después del final del fichero (88)");
  EXPECT_EQ(faltas({}), "Línea 1: el fichero está vacío");
}

}  // namespace
