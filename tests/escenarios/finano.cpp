// The shop's year taken to its end and into the next one, by keys: stocks and result regularised,
// closed, reopened by its date, closed again, and the next year opened with what was closed.
#include <QPushButton>

#include "escenarios/herramientas.h"

namespace {

const QString kAyer = "Comercial Ejemplo";
const QString kHoy = "Ejemplo 2025";

class FinDeAno : public DiarioDelTrimestre {
 protected:
  FinDeAno() {
    for (const char* codigo : {"30000002", "61000001", "12900000"}) {
      inserta(
          "Subcuentas",
          {{"Subcuenta", codigo}, {"Cuenta", QString(codigo).left(3)}, {"Descripcion", codigo}});
    }
  }
  // What each subcuenta comes to, in cents; those of no balance aren't named.
  std::map<QString, qint64> saldos() const {
    std::map<QString, qint64> todos;
    for (const auto& [numero, linea] : lee())
      todos[linea.subcuenta] += qRound64(linea.importe * 100);
    std::erase_if(todos, [](const auto& saldo) { return saldo.second == 0; });
    return todos;
  }
  static std::map<QString, qint64> alReves(std::map<QString, qint64> saldos) {
    for (auto& [subcuenta, saldo] : saldos) saldo = -saldo;
    return saldos;
  }
  QStringList limite() const { return filas("Select NoModificar from Empresa")[0]; }
  bool cerrada() const {
    const bool si = t->visible("ImpEmp1");
    EXPECT_EQ(t->visible("ImpEmp2") && t->visible("ImpEmp3"), si);
    EXPECT_EQ(t->forma().findChild<QAction*>("MnuInvertirCierre")->isVisible(), si);
    return si;
  }
  // The lock and its marks come with the opening of a company.
  void pasaA(const QString& nombre) {
    t->elige("TxtEmpresa", nombre);
    EXPECT_EQ(ctx.sesion.EmpresaActual, nombre);
  }
  void creaElSiguiente() {
    herramienta("MnuNuevaEmpresa", [&](Teclado& alta) {
      rellena(alta, {{"TxtAñoContable", "2025"}});
      tecleaEmpresa(alta, guion, kHoy, [](Teclado& crear) {
        crear.mnemonico('e');
        crear.llega("TxtEmpresa");
        crear.tecla(Qt::Key_Home);
        EXPECT_EQ(crear.textoDe("TxtEmpresa"), kAyer);
        crear.mnemonico('s');
        crear.mnemonico('a');
      });
    });
  }
  // A step that fails: the engine's words in a box, and the dialog as it was.
  void falla(Teclado& d, const QString& texto) {
    guion.esperaMensaje(texto, "Librano", [&] {
      EXPECT_FALSE(t->visible("Bar"));
      EXPECT_TRUE(d.control<QPushButton>("CmdAceptar").isEnabled());
      EXPECT_TRUE(d.control<QPushButton>("CmdCancelar").isEnabled());
    });
    acepta(d);
  }

  // The steps of a year's end; `debido` is what the subcuentas must come to after each.
  void compraExistencias();
  void regularizaExistencias();
  void regularizaResultado();
  void cierraElAno();
  void reabreYVuelveACerrar();
  void abreElSiguiente();
  std::map<QString, qint64> debido;
};

void FinDeAno::compraExistencias() {
  for (const auto& [subcuenta, importe] :
       {std::pair("30000002", 500.25), std::pair("57200001", -500.25)}) {
    inserta("Diario", {{"NLinea", importe < 0 ? 1001 : 1000},
                       {"NAsiento", 121},
                       {"Fecha", "31/03/2024"},
                       {"Subcuenta", subcuenta},
                       {"DH", importe < 0 ? "H" : "D"},
                       {"Importe", importe}});
  }
  debido = saldos();
}

void FinDeAno::regularizaExistencias() {
  herramienta("MnuRegularizacionStock", [&](Teclado& stocks) {
    EXPECT_EQ(stocks.textoDe("TxtExistenciasIniciales"), "500,25 ");
    EXPECT_EQ(stocks.textoDe("TxtExistenciasFinales"), "0,00 ");
    EXPECT_EQ(stocks.textoDe("TxtSubcuentaCompras"), "61000001");
    EXPECT_EQ(stocks.textoDe("TxtFechaAsiento"), "31/12/2024");
    rellena(stocks, {{"TxtExistenciasFinales", "820.5"}, {"TxtDescripcion", ""}});
    guion.esperaMensaje("Seleccione en la lista la subcuenta de existencias", "Error");
    stocks.pulsa("CmdAceptar");
    EXPECT_EQ(stocks.textoDe("TxtDescripcion"), "Regularización Stocks");
    EXPECT_EQ(stocks.enfocado(), "GridExtracto");
    stocks.tecla(Qt::Key_End);
    guion.esperaMensaje("Proceso realizado con exito", "Regularización de Stocks");
    acepta(stocks);
  });
  debido["61000001"] = 50025 - 82050;
  debido["30000002"] = 82050;
  EXPECT_EQ(saldos(), debido);
}

void FinDeAno::regularizaResultado() {
  herramienta("MnuRegularizacionPG", [&](Teclado& pg) {
    EXPECT_EQ(pg.textoDe("TxtFecha"), "31/12/2024");
    EXPECT_EQ(pg.textoDe("TxtSubcuenta"), "12900000");
    EXPECT_EQ(pg.textoDe("LblSubcuenta"), "12900000");
    // A code that isn't there asks the plan; one of another width posts nothing.
    const auto resultado = [&](const char* codigo) {
      pg.llega("TxtSubcuenta");
      pg.tecla(Qt::Key_Home, Qt::ShiftModifier);  // the caret stands at its end
      pg.teclea(codigo);
    };
    resultado("1290");
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
    pg.tab();
    guion.esperaMensaje("La subcuenta introducida no es correcta", "Error");
    EXPECT_EQ(pg.enfocado(), "CmdAceptar");
    pg.intro();
    EXPECT_EQ(saldos(), debido);
    resultado("129.");
    acepta(pg);
  });
  EXPECT_EQ(t->textoDe("TxtAsiento"), "123");
  EXPECT_EQ(valor("Select Asiento from Empresa"), "124");
  qint64 resultado = 0;
  std::erase_if(debido, [&](const auto& saldo) {
    if (saldo.first < "6") return false;
    resultado += saldo.second;
    return true;
  });
  debido["12900000"] = resultado;
  EXPECT_EQ(saldos(), debido);
}

void FinDeAno::cierraElAno() {
  herramienta("MnuCierre", [&](Teclado& cierre) {
    EXPECT_EQ(cierre.textoDe("TxtFecha"), "31/12/2024");
    EXPECT_EQ(cierre.textoDe("TxtAsiento"), "99999999");
    acepta(cierre);
  });
  EXPECT_TRUE(saldos().empty());
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "0,00 ");
  EXPECT_EQ(limite(), QStringList("31/12/2024"));
  EXPECT_FALSE(cerrada());
}

void FinDeAno::reabreYVuelveACerrar() {
  EXPECT_FALSE(cerrada());
  pasaA(kAyer);
  EXPECT_TRUE(cerrada());
  herramienta("MnuInvertirCierre", [&](Teclado& fecha) {
    EXPECT_EQ(fecha.textoDe("TxtNoModifica"), "31/12/2024");
    rellena(fecha, {{"TxtNoModifica", ""}});
    fecha.tab();
    EXPECT_EQ(fecha.textoDe("TxtNoModifica"), "");
    rellena(fecha, {{"TxtNoModifica", "3006"}});
    acepta(fecha);
  });
  EXPECT_EQ(limite(), QStringList("30/06/2024"));
  EXPECT_TRUE(cerrada());
  pasaA(kHoy);
  pasaA(kAyer);
  EXPECT_FALSE(cerrada());
  const auto lineas = lee();
  herramienta("MnuCierre", [](Teclado& cierre) { acepta(cierre); });
  EXPECT_EQ(lee(), lineas);  // what stands at zero isn't closed again
  EXPECT_EQ(limite(), QStringList("31/12/2024"));
}

void FinDeAno::abreElSiguiente() {
  herramienta("MnuApertura", [&](Teclado& apertura) {
    EXPECT_EQ(apertura.textoDe("TxtFecha"), "01/01/2025");
    EXPECT_EQ(apertura.textoDe("TxtAsiento"), "0");
    guion.esperaMensaje("Seleccione una empresa de la lista", "Error");
    acepta(apertura);
    apertura.elige("TxtEmpresaCerrada", kHoy);
    guion.esperaMensaje("Usted no puede crear un asiento de apertura sobre la misma empresa",
                        "Error");
    acepta(apertura);
    EXPECT_TRUE(lee().empty());
    apertura.elige("TxtEmpresaCerrada", kAyer);
    acepta(apertura);
  });
  EXPECT_EQ(saldos(), debido);
  for (const auto& [numero, linea] : lee()) {
    EXPECT_EQ(linea.asiento, 0);
    EXPECT_EQ(linea.fecha, "01/01/2025");
    EXPECT_EQ(linea.concepto, "Asiento de apertura");
  }
  EXPECT_EQ(valor("Select Asiento from Empresa"), "1");
  EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), "0,00 ");
}

TEST_F(FinDeAno, CierraUnAnoYAbreElSiguiente) {
  compraExistencias();
  regularizaExistencias();
  regularizaResultado();
  cierraElAno();
  creaElSiguiente();
  pasaA(kHoy);
  reabreYVuelveACerrar();
  pasaA(kHoy);
  abreElSiguiente();
}

// Dates are compared by their texts, day first; the stocks refuse the limit's own too.
TEST_F(FinDeAno, NieganFechasPorSuTexto) {
  ctx.sesion.FechaNoModificar = "15/02/2024";
  const QString aviso = "Usted no puede modificar ningun apunte anterior a la fecha 15/02/2024";
  const struct {
    const char* entrada;
    const char* campo;
    bool igual;
  } casos[] = {{"MnuRegularizacionStock", "TxtFechaAsiento", true},
               {"MnuRegularizacionPG", "TxtFecha", false},
               {"MnuCierre", "TxtFecha", false},
               {"MnuApertura", "TxtFecha", false}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.entrada);
    herramienta(caso.entrada, [&](Teclado& d) {
      const std::tuple<const char*, const char*, bool> fechas[] = {
          {"1412", "14/12/2024", true},
          {"1502", "15/02/2024", caso.igual},
          {"1601", "16/01/2024", false}};
      for (const auto& [tecleada, fecha, negada] : fechas) {
        rellena(d, {{caso.campo, tecleada}});
        if (negada) guion.esperaMensaje(aviso, "Error");
        d.tab();
        EXPECT_EQ(d.textoDe(caso.campo), negada ? "02/04/2024" : fecha);
      }
      d.escape();
    });
  }
}

TEST_F(FinDeAno, LoQueFallaDejaLoEscritoYSePuedeSeguir) {
  const QString sinFila = "Error 3021: " + ErrorEjecucion(err::kSinRegistroActivo).descripcion();
  const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto borra = [&](const QString& lineas) {
    const auto diario = base->OpenRecordset("Select * from Diario where " + lineas);
    for (; !diario->Eof(); diario->MoveNext()) diario->Delete();
    motor.flush();
  };
  // A year without income: the expenses stay swept, and both numbers are used up.
  borra("Subcuenta like '7*'");
  herramienta("MnuRegularizacionPG", [&](Teclado& pg) {
    falla(pg, sinFila);
    EXPECT_GT(saldos().at("12900000"), 0);
    EXPECT_EQ(valor("Select Asiento from Empresa"), "123");
    pg.escape();
  });
  borra("NAsiento >= 0");
  herramienta("MnuCierre", [&](Teclado& cierre) {
    falla(cierre, sinFila);
    EXPECT_EQ(limite(), QStringList(""));
    cierre.escape();
  });
  inserta(
      "Diario",
      {{"NLinea", 5000}, {"NAsiento", 1}, {"Subcuenta", "30000002"}, {"DH", "H"}, {"Importe", -5}});
  herramienta("MnuRegularizacionStock", [&](Teclado& stocks) {
    EXPECT_EQ(stocks.textoDe("TxtExistenciasIniciales"), "-5,00");
    stocks.llega("GridExtracto");
    stocks.tecla(Qt::Key_End);
    falla(stocks, "Error 3421: " + ErrorEjecucion(err::kConversionDeDatos, "--5,00").descripcion());
    EXPECT_EQ(lee().size(), 2u);
    stocks.escape();
  });
  creaEmpresa(empresa("Sin fichero"));
  motor.DeleteDatabase(ctx.sesion.rutaEmpresa("Sin fichero"));
  herramienta("MnuApertura", [&](Teclado& apertura) {
    apertura.elige("TxtEmpresaCerrada", "Sin fichero");
    falla(apertura, "Error 3024: " + ErrorEjecucion(err::kBaseNoEncontrada,
                                                    ctx.sesion.rutaEmpresa("Sin fichero"))
                                         .descripcion());
    apertura.escape();
  });
}

}  // namespace
