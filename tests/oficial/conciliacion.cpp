// The example statement against the journal of its quarter, and made-up ones: what is matched, what
// is posted, what a second reading adds, and that a failure leaves nothing of itself.
#include "oficial/conciliacion.h"

#include "soporte/libros.h"

namespace {

const char* const kBanco = "99910025110000123456";
const char* const kRural = "99920007590200054321";
const Punteo kPunteo{"B", QDate(2024, 2, 1)};

class Concilia : public testing::Test {
 protected:
  void SetUp() override {
    libros.asientaTrimestre();
    empresa = libros.abre();
  }
  Importacion lee() {
    return importaNorma43(libros.motor, *empresa,
                          leeFicheroNorma43(rutaDato("banco/extracto-norma43.txt")));
  }
  void leeConSubcuentas() {
    lee();
    ponSubcuentaDeBanco(libros.motor, *empresa, kBanco, "57200001");
    ponSubcuentaDeBanco(libros.motor, *empresa, kRural, "57200002");
  }
  // "bank's day > books' day: amount" of each pair.
  static QString parejas(const Conciliacion& c, int dias = kDiasDeTolerancia) {
    QStringList lista;
    for (const auto& [m, a] : empareja(c, dias))
      lista += QStringLiteral("%1>%2:%3")
                   .arg(c.movimientos[m].operacion.day())
                   .arg(c.apuntes[a].fecha.day())
                   .arg(c.movimientos[m].centimos);
    return lista.join(' ');
  }
  Conciliacion concilia(const char* ccc = kBanco) { return leeConciliacion(*empresa, ccc); }

  Libros libros;
  std::unique_ptr<Database> empresa;
};

TEST_F(Concilia, LeerDosVecesNoAnadeNadaYLosGemelosSonDos) {
  EXPECT_EQ(lee().nuevos, 12);
  const Importacion otra = lee();
  EXPECT_EQ(otra.nuevos, 0);
  EXPECT_EQ(otra.repetidos, 12);
  LecturaNorma43 gemelos = leeFicheroNorma43(rutaDato("banco/extracto-norma43.txt"));
  gemelos.cuentas.resize(1);
  MovimientoBanco igual = gemelos.cuentas[0].movimientos[2];
  igual.ordinal = 1;
  gemelos.cuentas[0].movimientos.push_back(igual);
  EXPECT_EQ(importaNorma43(libros.motor, *empresa, gemelos).nuevos, 1);
  EXPECT_EQ(importaNorma43(libros.motor, *empresa, gemelos).nuevos, 0);
  // A statement that doesn't go on from where the last one ended.
  gemelos.cuentas[0].desde = QDate(2024, 2, 1);
  gemelos.cuentas[0].hasta = QDate(2024, 2, 29);
  EXPECT_EQ(importaNorma43(libros.motor, *empresa, gemelos).avisos.join("; "),
            "Cuenta 99910025110000123456: empieza con 79.117,23 y el extracto anterior acabó el "
            "31/01/2024 con 65.714,29");
  gemelos.errores.append({7, "mal"});
  EXPECT_ERROR(err::kLlamadaNoValida, importaNorma43(libros.motor, *empresa, gemelos));
}

TEST_F(Concilia, LoQueNoEstaEnLosLibrosSeAsientaPorSuRegla) {
  leeConSubcuentas();
  const Conciliacion c = concilia(kRural);
  recuerdaRegla(libros.motor, *empresa, {"Compra", "57000001"});
  recuerdaRegla(libros.motor, *empresa, {"compra TARJETA", "62700001"});
  EXPECT_EQ(ReglasBanco(*empresa).para(c.movimientos[1].concepto)->subcuenta, "62700001");
  EXPECT_FALSE(ReglasBanco(*empresa).para("Tarjetas de compras"));
  olvidaRegla(libros.motor, *empresa, "compra tarjeta");
  EXPECT_EQ(ReglasBanco(*empresa).para(c.movimientos[1].concepto)->subcuenta, "57000001");
  EXPECT_EQ(palabrasDeConcepto("RECIBO FRA 118 DE TEXTILES MARTIN"), "recibo fra textiles");

  const QStringList antes = libros.filas("Diario");
  // The second can't be posted: nor is the first.
  EXPECT_ERROR(
      err::kLlamadaNoValida,
      asientaMovimientos(libros.motor, *empresa, c, {{1, "62700001"}, {2, "99999999"}}, kPunteo));
  EXPECT_EQ(libros.filas("Diario"), antes);
  asientaMovimientos(libros.motor, *empresa, c, {{1, "62700001"}, {2, "62600001"}}, kPunteo);
  EXPECT_EQ(libros
                .filas("Select NAsiento, Fecha, Subcuenta, DH, Importe, Punteo from Diario where "
                       "NAsiento > 120 order by NLinea")
                .join(' '),
            "121|30/01/2024|57200002|H|-92,4|B 121|30/01/2024|62700001|D|92,4|- "
            "122|31/01/2024|57200002|D|35|B 122|31/01/2024|62600001|H|-35|-");
  EXPECT_ERROR(err::kLlamadaNoValida,
               asientaMovimientos(libros.motor, *empresa, c, {{1, "62700001"}}, kPunteo));
  Conciliacion despues = concilia(kRural);
  EXPECT_FALSE(despues.movimientos[1].pendiente());
  deshaceConciliacion(libros.motor, *empresa, despues, 1);
  EXPECT_TRUE(concilia(kRural).movimientos[1].pendiente());
  EXPECT_EQ(parejas(concilia(kRural), 0), "27>27:68296 30>30:-9240");
  EXPECT_EQ(parejas(concilia(kRural)), "27>27:68296 30>30:-9240");
}

TEST_F(Concilia, UnaParejaCambiadaEntretantoDejaTodasComoEstaban) {
  leeConSubcuentas();
  Conciliacion c = concilia();
  const std::vector<Pareja> todas = empareja(c);
  libros.cambia(
      "Select * from Diario where NLinea=" + QString::number(c.apuntes[todas.back().apunte].linea),
      "Importe", 1);
  EXPECT_ERROR(err::kLlamadaNoValida, aceptaParejas(libros.motor, *empresa, c, todas, kPunteo));
  EXPECT_TRUE(libros.filas("Select NLinea from Diario where Punteo='B'").isEmpty());
  EXPECT_EQ(libros.filas("Select Numero from MovimientosBanco where Apunte is Null").size(), 12);
  // A line that is deleted frees its movement.
  aceptaParejas(libros.motor, *empresa, c, {todas.front()}, kPunteo);
  empresa->OpenRecordset("Select * from Diario where Punteo='B'")->Delete();
  EXPECT_TRUE(concilia().movimientos[todas.front().movimiento].pendiente());
  EXPECT_ERROR(err::kLlamadaNoValida,
               ponSubcuentaDeBanco(libros.motor, *empresa, kRural, "57200001"));
}

TEST(Empareja, LosGemelosSeReparten) {
  Conciliacion c;
  const auto movimiento = [&](int dia) {
    MovimientoGuardado m;
    m.operacion = m.valor = QDate(2024, 5, dia);
    m.centimos = 100;
    c.movimientos.push_back(m);
  };
  for (const int dia : {3, 10, 10}) movimiento(dia);
  for (const int dia : {1, 8, 9, 10, 30})
    c.apuntes.push_back({dia, 1, QDate(2024, 5, dia), {}, 100, {}, 0});
  QString dicho;
  for (const auto& [m, a] : empareja(c))
    dicho += QStringLiteral("%1>%2 ").arg(m).arg(c.apuntes[a].linea);
  EXPECT_EQ(dicho, "0>1 1>10 2>9 ");
}

}  // namespace
