// A company of the plan of 1990 put on that of 2007.
#include "oficial/conversion.h"

#include "soporte/libros.h"

namespace {

class ConversionA2007 : public testing::Test, protected Libros {
 protected:
  std::unique_ptr<Database> empresa = abre();
  const QDate hoy{2024, 4, 1};
  const Avance callado = [](int, int) {};

  void subcuenta(const QString& codigo, double importe = 0) {
    inserta("Subcuentas", subcuentaDe(codigo, 'N' + codigo));
    if (importe != 0) apunta(codigo, importe);
  }
  void apunta(const QString& codigo, double importe) {
    inserta("Diario", lineaDe(++linea_, 1, QDate(2024, 1, 5), codigo, importe));
  }
  static QString nuevoDe(const QList<FilaConversion>& filas, const QString& codigo) {
    const auto fila = std::ranges::find(filas, codigo, &FilaConversion::codigo);
    return fila == filas.end() ? "no está" : fila->nuevo + (fila->dudosa ? "?" : "");
  }
  // What a file holds that may change.
  QStringList todo() {
    return filas("Select * from Diario order by NLinea") + filas("Select * from Subcuentas") +
           filas("Select * from Cuentas") + filas("Select * from Empresa") +
           filas("Select * from Nivel02");
  }

 private:
  int linea_ = 0;
};

TEST_F(ConversionA2007, LaPropuestaDejaPorDecidirLoDudoso) {
  for (const char* codigo :
       {"40200001", "40300001", "40400009", "24000001", "24012345", "25100001", "25600001",
        "11100001", "20000001", "21300001", "58000001", "55400001"})
    subcuenta(codigo, 10);
  apunta("22300007", 5);  // a line without its subcuenta
  const auto filas = proponeConversion(*empresa, Modelo2007::Pymes);
  for (const QStringList& f : leeCsv("propuesta2007.csv"))
    EXPECT_EQ(nuevoDe(filas, f[0]), f[1]) << qPrintable(f[0]);
  EXPECT_EQ(nuevoDe(proponeConversion(*empresa, Modelo2007::Normal), "21300001"), "20400001");
  const auto fila = std::ranges::find(filas, QString("24000001"), &FilaConversion::codigo);
  EXPECT_EQ(fila->nombre, "N24000001");
  EXPECT_EQ(fila->lineas, 1);
  EXPECT_EQ(fila->saldo, 10);
}

TEST_F(ConversionA2007, LasFaltasSeDicenAntesDeEscribir) {
  for (const char* codigo : {"20000001", "21500001", "40200001", "57000001"}) subcuenta(codigo, 1);
  Conversion conversion{Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)};
  const auto pon = [&](const QString& codigo, const QString& nuevo) {
    std::ranges::find(conversion.filas, codigo, &FilaConversion::codigo)->nuevo = nuevo;
  };
  pon("21500001", "2060001");
  pon("40200001", "57000001");
  pon("57000001", "99900001");
  EXPECT_EQ(
      faltasDeConversion(*empresa, conversion),
      (QStringList{"20000001: falta decidir su código nuevo", "21500001: 2060001 no tiene 8 cifras",
                   "57000001: la cuenta 999 no está en el plan"}));
  pon("57000001", "57000001");
  EXPECT_TRUE(faltasDeConversion(*empresa, conversion)
                  .contains("57000001: 57000001 es ya el código nuevo de 40200001"));
}

// One action decides what nothing uses; what is used can't be deleted.
TEST_F(ConversionA2007, LasNoUsadasSeDecidenDeUnaVez) {
  for (const char* codigo : {"20000001", "20000002", "11100001", "11100009", "55400001"})
    subcuenta(codigo);
  apunta("20000002", 5);
  inserta("Recibos", {{"Subcuenta", "11100009"}, {"Importe", 5.0}});
  Conversion conversion{Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)};
  const auto fila = [&](const char* codigo) -> FilaConversion& {
    return *std::ranges::find(conversion.filas, QString(codigo), &FilaConversion::codigo);
  };
  EXPECT_EQ(decideNoUsadas(conversion.filas), 3);
  EXPECT_EQ(decideNoUsadas(conversion.filas), 0);
  EXPECT_TRUE(fila("20000001").seBorra);  // no counterpart
  EXPECT_EQ(fila("55400001").nuevo, "55400001");
  EXPECT_FALSE(fila("11100001").corriente.isEmpty());
  EXPECT_EQ(fila("11100001").nuevo, fila("11100001").corriente);
  for (const char* codigo : {"20000002", "11100009"}) EXPECT_FALSE(fila(codigo).decidida());
  fila("20000002").seBorra = true;
  fila("11100009").nuevo = fila("11100009").corriente;
  EXPECT_EQ(faltasDeConversion(*empresa, conversion),
            QStringList("20000002: se usa, no puede borrarse"));
  fila("20000002").seBorra = false;
  fila("20000002").nuevo = "20300002";
  ASSERT_TRUE(faltasDeConversion(*empresa, conversion).isEmpty());
  EXPECT_EQ(convierteA2007(motor, *empresa, conversion, hoy, callado).borradas, 1);
  EXPECT_EQ(filas("Select * from Subcuentas where Subcuenta='20000001'").size(), 0);
}

TEST_F(ConversionA2007, LasCuentasPropiasYSusNombresSeQuedan) {
  const std::tuple<const char*, const char*, bool> cuentas[] = {
      {"402", "Proveedores del grupo", true}, {"572", "Mis bancos", false}, {"888", "Mía", false}};
  for (const auto& [cuenta, nombre, ficha] : cuentas)
    inserta("Cuentas", {{"Cuenta", cuenta}, {"Descripcion", nombre}, {"DatosAuxiliares", ficha}});
  subcuenta("40200001");
  subcuenta("88800001", 3);
  const Conversion conversion{Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)};
  EXPECT_TRUE(faltasDeConversion(*empresa, conversion).isEmpty());
  convierteA2007(motor, *empresa, conversion, hoy, callado);
  const auto cuenta = [this](const char* codigo) {
    return filas("Select Descripcion, DatosAuxiliares from Cuentas where Cuenta='" +
                 QString(codigo) + "'")
        .value(0);
  };
  EXPECT_EQ(cuenta("403"), "Proveedores, empresas del grupo|Verdadero");
  EXPECT_EQ(cuenta("402"), "");
  EXPECT_EQ(cuenta("572"), "Mis bancos|Falso");
  EXPECT_EQ(cuenta("888"), "Mía|Falso");
}

// A failure half-way leaves the file as it was, also what the engine had written of it.
TEST_F(ConversionA2007, LoQueFallaNoDejaNada) {
  asientaTrimestre();
  motor.flush();
  Conversion conversion{Modelo2007::Pymes, proponeConversion(*empresa, Modelo2007::Pymes)};
  const QStringList antes = todo();
  int vistas = 0;
  const Avance falla = [&](int, int) {
    motor.breathe();
    motor.flush();
    if (++vistas == 200) empresa->OpenRecordset("no existe");
  };
  EXPECT_ERROR(err::kOrigenDesconocido, convierteA2007(motor, *empresa, conversion, hoy, falla));
  EXPECT_EQ(todo(), antes);
  EXPECT_FALSE(plan2007De(*empresa).sigue);
  EXPECT_FALSE(motor.pending());
  // Two codes that become one are seen by their sums at the latest.
  conversion.filas[0].nuevo = conversion.filas[1].nuevo;
  EXPECT_NE(numeroDeError([&] { convierteA2007(motor, *empresa, conversion, hoy, callado); }), 0);
  EXPECT_EQ(todo(), antes);
}

}  // namespace
