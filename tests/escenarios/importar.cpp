// The books of other packages brought into the quarter's, by keys.
#include <sqlite3.h>
#include <atomic>
#include <thread>

#include "escenarios/herramientas.h"
#include "soporte/tabladbf.h"

namespace {

// Another station that posts line by line, as soon as the file is free for a moment.
class Vecino {
 public:
  explicit Vecino(const QString& ruta) : hilo_([this, ruta] { asienta(ruta.toUtf8()); }) {
    for (int i = 0; i < 10'000 && puestas_ == 0; ++i) QThread::msleep(1);
  }
  ~Vecino() { acaba(); }
  // How many lines it has posted.
  int acaba() {
    basta_ = true;
    if (hilo_.joinable()) hilo_.join();
    return puestas_;
  }

 private:
  void asienta(const QByteArray& ruta) {
    sqlite3* base = nullptr;
    sqlite3_open(ruta.constData(), &base);
    const auto espera = [](void* basta, int) {
      QThread::msleep(1);
      return *static_cast<std::atomic<bool>*>(basta) ? 0 : 1;
    };
    sqlite3_busy_handler(base, espera, &basta_);
    const auto haz = [base](const char* sql) {
      return sqlite3_exec(base, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    for (; !basta_; QThread::msleep(10)) {
      if (haz("BEGIN IMMEDIATE; INSERT INTO Diario(NLinea, NAsiento, Fecha, Subcuenta, "
              "Descripcion, DH, Importe) SELECT NLinDiario, 400, (SELECT max(Fecha) FROM Diario), "
              "'57000001', 'Otro', 'D', 1 FROM Empresa; "
              "UPDATE Empresa SET NLinDiario = NLinDiario + 1; COMMIT"))
        ++puestas_;
      else
        haz("ROLLBACK");
    }
    sqlite3_close(base);
  }

  std::atomic<bool> basta_ = false;
  std::atomic<int> puestas_ = 0;
  std::thread hilo_;
};

class Importar : public DiarioDelTrimestre {
 protected:
  // An installation with two companies, "01" and "2"; the path of its program.
  QString instalaContaplus() {
    const QString donde = carpetaDatos() + "/GrupoSP/";
    EscritorDbf({{"COD", 'C', 2}, {"NOMBRE", 'C', 30}})
        .registro({"01", "Se\xA4ores"})
        .registro({"99", "Borrada"}, true)
        .registro({"2", "Otra"})
        .graba(donde + "emp/EMPRESA.DBF", 2);
    EscritorDbf({{"COD", 'C', 12},
                 {"TITULO", 'C', 40},
                 {"NIF", 'C', 15},
                 {"DOMICILIO", 'C', 35},
                 {"POBLACION", 'C', 25},
                 {"PROVINCIA", 'C', 20},
                 {"CODPOSTAL", 'C', 5}})
        .registro({"57000001", "No entra: ya existe"})
        .registro({"43009999", "Mu\xF1oz", "B1", "Mayor, 1", "Toledo", "Toledo", "45001"})
        .graba(donde + "EMP01/Subcta.dbf");
    return rutaPrograma(donde + "Contaplw.exe");
  }
  static EscritorDbf diarioContaplus() { return EscritorDbf(columnasDeDiario()); }
  static QList<QByteArray> linea(const QByteArray& asiento, const QByteArray& subcuenta,
                                 const QByteArray& debe, const QByteArray& haber,
                                 const QByteArray& serie = {}) {
    return {asiento,     "20240215", subcuenta, "43009999", {},
            "Importado", {},         {},        {},         "16.00",
            "0.00",      "F-9",      {},        {},         serie.isEmpty() ? "" : "P",
            serie,       debe,       haber,     "100.00"};
  }
  void importa(int asiento, const std::vector<std::pair<QString, double>>& lineas) {
    anota(asiento, "15/02/2024", "Importado", lineas);
  }
  void eligeContaplus(Teclado& d, const QString& programa, const QString& empresa) {
    guion.esperaFichero(rutaSistema(programa));
    d.llega("CmdLocalizaContaplus");
    d.intro();
    EXPECT_EQ(d.textoDe("TxtEmpresa"), "");
    d.elige("TxtEmpresa", empresa);
  }
  static void marca(Teclado& d, std::initializer_list<const char*> casillas) {
    for (const char* casilla : casillas) alterna(d, casilla);
  }
  static QString deContanet(const char* fichero) {
    return rutaPrograma(rutaDato(QString("contanet/") + fichero));
  }
};

TEST_F(Importar, ContaplusTraePlanDiarioYRegistro) {
  const QString programa = instalaContaplus();
  diarioContaplus()
      .registro(linea("500", "43009999", "116.00", "0.00", "V"))
      .registro(linea("500", "70000001", "0.00", "100.00"))
      .registro(linea("9", "1", "1", "0"), true)
      .registro(linea("500", "47700001", "0.00", "16.00"))
      .registro(linea("200", "60000001", "0.00", "0.00", "C"))
      .graba(carpetaDatos() + "/GrupoSP/EMP01/diario.DBF");
  const int antes = libro.rbegin()->first;
  herramienta("MnuImportContaplus", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblDestino"), "Comercial Ejemplo (2024)");
    eligeContaplus(d, programa, "01 - Señores");
    marca(d, {"ChkPlan", "ChkDiario", "ChkIva"});
    guion.esperaMensaje("Proceso terminado con exito", "Fín");
    acepta(d);
  });
  importa(500, {{"43009999", 116}, {"70000001", -100}, {"47700001", -16}});
  importa(200, {{"60000001", 0}});
  auto hay = lee();
  EXPECT_TRUE(hay.at(antes + 4).alHaber() || hay.at(antes + 4).importe == 0);
  hay.erase(antes + 4);
  libro.erase(antes + 4);
  EXPECT_EQ(hay, libro);
  EXPECT_EQ(valor("Select Asiento from Empresa"), "201");
  EXPECT_EQ(valor("Select NLinDiario from Empresa"), QString::number(antes + 5));
  EXPECT_EQ(filas("Select Descripcion, Cuenta, Nif, Direccion, Poblacion, CP from Subcuentas where "
                  "Subcuenta='43009999'"),
            (Filas{{"Muñoz", "430", "B1", "Mayor, 1", "Toledo", "45001"}}));
  EXPECT_NE(valor("Select Descripcion from Subcuentas where Subcuenta='57000001'"),
            "No entra: ya existe");
  EXPECT_EQ(filas("Select Codigo, CliPro, Factura, Base, Asiento, Fecha, CtaCon from RSIVA order "
                  "by Codigo"),
            (Filas{{"R0000000001", "43009999", "F-9", "-100", "500", "15/02/2024", "60000001"},
                   {"S0000000001", "43009999", "F-9", "100", "200", "15/02/2024", "60000001"}}));
  EXPECT_EQ(
      filas("Select NAsiento, ApunteIVA, Punteo from Diario where ApunteIVA <> '' order by NLinea"),
      (Filas{{"500", "R0000000001", "X"},
             {"500", "R0000000001", ""},
             {"500", "R0000000001", ""},
             {"200", "S0000000001", "X"}}));
  EXPECT_FALSE(t->visible("Bar"));
}

TEST_F(Importar, ContaplusNiegaLoQueFaltaYDejaLoEscrito) {
  const QString programa = instalaContaplus();
  const QString noEs = "El directorio de contaplus no es el correcto";
  herramienta("MnuImportContaplus", [&](Teclado& d) {
    guion.esperaMensaje("Especifique un directorio de contaplus", "Error");
    acepta(d);
    for (const char* otra : {"C:\\x", "/nada/de/nada/Contaplw.exe"}) {
      d.llega("TxtDirectorioContaplus");
      d.teclea(otra);
      guion.esperaMensaje(noEs, "Error");
      d.tab();
      EXPECT_EQ(d.textoDe("TxtDirectorioContaplus"), "");
    }
    guion.esperaFichero(std::nullopt);
    d.pulsa("CmdLocalizaContaplus");
    d.escribe("TxtDirectorioContaplus", programa);
    d.tab();
    guion.esperaMensaje("Especifique una empresa de contaplus", "Error");
    acepta(d);
    // The journal of this company isn't there, and the plan is: what was read of it stays.
    d.elige("TxtEmpresa", "01 - Señores");
    marca(d, {"ChkPlan", "ChkDiario"});
    guion.esperaMensaje(
        errorEnCaja(53, QString(programa).replace("Contaplw.exe", "EMP01\\Diario.dbf")), "Librano");
    acepta(d);
    EXPECT_EQ(valor("Select Cuenta from Subcuentas where Subcuenta='43009999'"), "430");
    EXPECT_TRUE(t->visible("Bar"));
    // A line that can't be posted ends it there, and tells its record; the counters are right.
    diarioContaplus()
        .registro(linea("500", "57000001", "5.00", "0.00"))
        .registro(linea("501", "57000001", "0.00", "-5.00"))
        .graba(carpetaDatos() + "/GrupoSP/EMP01/diario.DBF");
    marca(d, {"ChkPlan"});
    guion.esperaMensaje("Error 3421: " + ErrorEjecucion(err::kConversionDeDatos, "--5")
                                             .en("Diario.dbf, registro 2")
                                             .descripcion(),
                        "Librano");
    acepta(d);
    d.escape();
  });
  importa(500, {{"57000001", 5}});
  comprueba();
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa"),
            (Filas{{"501", QString::number(siguiente)}}));
}

// Another station posts line by line while the journal comes in.
TEST_F(Importar, LoQueOtroPuestoAsientaEntretantoQueda) {
  constexpr int kLineas = 18'000;  // several turns for the other one
  const QString programa = instalaContaplus();
  EscritorDbf diario = diarioContaplus();
  for (int i = 0; i < kLineas; ++i) {
    const QByteArray asiento = QByteArray::number(500 + i / 2);
    diario.registro(linea(asiento, "57000001", i % 2 ? "0.00" : "0.10", i % 2 ? "0.10" : "0.00"));
  }
  diario.graba(carpetaDatos() + "/GrupoSP/EMP01/diario.DBF");
  motor.flush();
  Vecino otro(rutaSistema(ctx.sesion.rutaEmpresa()));
  herramienta("MnuImportContaplus", [&](Teclado& d) {
    eligeContaplus(d, programa, "01 - Señores");
    marca(d, {"ChkDiario"});
    guion.esperaMensaje("Proceso terminado con exito", "Fín", [&] { otro.acaba(); });
    acepta(d);
  });
  t->tecla(Qt::Key_F5);
  const auto cuenta = [this](const QString& cuales) {
    return valor("Select Count(NLinea) from Diario where " + cuales).toLongLong();
  };
  EXPECT_EQ(cuenta("Descripcion='Importado'"), kLineas);
  EXPECT_EQ(cuenta("Descripcion='Otro'"), otro.acaba());
  const auto limite = [this](const char* cual, const char* de) {
    return valor(QString("Select %1(NLinea) from Diario where Descripcion='%2'").arg(cual, de));
  };
  EXPECT_GT(cuenta("Descripcion='Otro' and NLinea>" + limite("Min", "Importado") + " and NLinea<" +
                   limite("Max", "Importado")),
            0);
  libro = lee();
  EXPECT_EQ(valor("Select NLinDiario from Empresa"), QString::number(libro.rbegin()->first + 1));
  comprueba();
}

TEST_F(Importar, ContanetTraeSusCuatroFicheros) {
  herramienta("MnuImportContanet", [&](Teclado& d) {
    marca(d, {"ChkPlan", "ChkDiario", "ChkDatos", "ChkIva"});
    rellena(d, {{"TxtPlan", deContanet("plan.csv")},
                {"TxtDiario", deContanet("diario.csv")},
                {"TxtIva", deContanet("iva.csv")}});
    guion.esperaFichero(rutaDato("contanet/datos.csv"));
    d.pulsa("CmdDatos");
    EXPECT_EQ(d.textoDe("TxtDatos"), deContanet("datos.csv"));
    acepta(d);
  });
  importa(500, {{"57000001", 10.5}, {"57000001", -10.5}});
  comprueba();
  EXPECT_EQ(valor("Select Asiento from Empresa"), "501");
  EXPECT_EQ(filas("Select Descripcion, Cuenta, Nif, Direccion, Poblacion from Subcuentas where "
                  "Subcuenta='44009999'"),
            (Filas{{"Ibáñez, S.L.", "440", "B2", "Mayor,\r\n2", "Toledo"}}));
  EXPECT_EQ(filas("Select Descripcion, GrupoN, SubGrupoN from Cuentas where Cuenta='999'"),
            (Filas{{"Otra cuenta", "9", "99"}}));
  EXPECT_EQ(
      filas("Select Codigo, Base, TipoIVA, Asiento, FechaC, Fecha, CtaCon from RSIVA order by "
            "Codigo"),
      (Filas{{"R0000000001", "-10,5", "03", "500", "16/02/2024", "16/02/2024", "70000001"},
             {"S0000000001", "7", "", "501", "", "01/02/2024", "60000001"}}));
  EXPECT_EQ(filas("Select ApunteIVA from Diario where NAsiento=500"),
            (Filas{{"R0000000001"}, {"R0000000001"}}));
}

// The trap is set until a first record of the plan or the addresses has been read.
TEST_F(Importar, ContanetPasaPorAltoSoloAlPrincipio) {
  const QString malo = deContanet("malo.csv");
  herramienta("MnuImportContanet", [&](Teclado& d) {
    marca(d, {"ChkPlan", "ChkDiario"});
    // With neither plan nor failures told: the file that isn't there is passed over too.
    rellena(d, {{"TxtPlan", "C:\\no\\esta.csv"}, {"TxtDiario", malo}});
    acepta(d);
  });
  anota(500, {}, "Importado", {{"57000001", 5}});
  importa(501, {{"57000001", 6}});
  EXPECT_EQ(lee(), libro);
  EXPECT_EQ(valor("Select Asiento from Empresa"), "502");
  herramienta("MnuImportContanet", [&](Teclado& d) {
    marca(d, {"ChkPlan", "ChkDiario"});
    rellena(d, {{"TxtPlan", deContanet("unaenelplan.csv")}, {"TxtDiario", malo}});
    guion.esperaMensaje(errorEnCaja(3421, "no es fecha"), "Librano");
    acepta(d);
    EXPECT_TRUE(d.visible("Bar"));
    d.escape();
  });
  EXPECT_EQ(lee(), libro);
  EXPECT_EQ(valor("Select Descripcion from Subcuentas where Subcuenta='44009999'"), "Una");
}

}  // namespace
