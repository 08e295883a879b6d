// What the year-end's screens refuse, and how a step that fails leaves the books and the screen.

#include "escenarios/herramientas.h"

namespace {

class FinDeAno : public DiarioDelTrimestre {
 protected:
  FinDeAno() { altaSubcuentas(); }
  // Those that the end of the year needs besides the quarter's.
  void altaSubcuentas() {
    for (const char* codigo : {"30000002", "61000001", "12900000"})
      inserta("Subcuentas", subcuentaDe(codigo, codigo));
  }
  QString limite() const { return valor("Select NoModificar from Empresa"); }
  // A step that fails: the engine's words in a box, and the dialog as it was.
  void falla(Teclado& d, const QString& texto) {
    guion.esperaMensaje(texto, "Librano", [&] {
      EXPECT_FALSE(t->visible("Bar"));
      EXPECT_TRUE(d.control<QPushButton>("CmdAceptar").isEnabled());
      EXPECT_TRUE(d.control<QPushButton>("CmdCancelar").isEnabled());
    });
    acepta(d);
  }
};

// Dates are compared by their texts, day first; the stocks refuse the limit's own too.
TEST_F(FinDeAno, NieganFechasPorSuTexto) {
  ctx.sesion.FechaNoModificar = "15/02/2024";
  const QString aviso = "Usted no puede modificar ningun apunte anterior a la fecha 15/02/2024";
  const struct {
    const char *entrada, *campo;
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
  const QString sinFila = errorEnCaja(3021);
  const auto base = abreBase();
  const auto borra = [&](const QString& lineas) {
    const auto diario = base->OpenRecordset("Select * from Diario where " + lineas);
    for (; !diario->Eof(); diario->MoveNext()) diario->Delete();
    motor.flush();
  };
  // A year without income: the expenses stay swept, and both numbers are used up.
  borra("Subcuenta like '7*'");
  herramienta("MnuRegularizacionPG", [&](Teclado& pg) {
    falla(pg, sinFila);
    EXPECT_GT(Variant(valor("Select Sum(Importe) from Diario where Subcuenta='12900000'")).number(),
              0);
    EXPECT_EQ(valor("Select Asiento from Empresa"), "123");
    pg.escape();
  });
  borra("NAsiento >= 0");
  herramienta("MnuCierre", [&](Teclado& cierre) {
    falla(cierre, sinFila);
    EXPECT_EQ(limite(), "");
    cierre.escape();
  });
  inserta("Diario", lineaDe(5000, 1, {}, "30000002", -5));
  base->OpenRecordset("Select * from Subcuentas where Subcuenta='61000001'")->Delete();
  motor.flush();
  herramienta("MnuRegularizacionStock", [&](Teclado& stocks) {
    EXPECT_EQ(stocks.textoDe("TxtExistenciasIniciales"), "-5,00");
    EXPECT_EQ(stocks.textoDe("LblSubcuentaCompras"), "No está en el plan de subcuentas");
    stocks.llega("GridExtracto");
    stocks.tecla(Qt::Key_End);
    falla(stocks, errorEnCaja(3421, "--5,00") +
                      " La regularización no está entera en el diario: revise el asiento " +
                      valor("Select Asiento from Empresa") + '.');
    EXPECT_EQ(lee().size(), 2u);
    stocks.escape();
  });
  creaEmpresa(empresa("Sin fichero"));
  motor.DeleteDatabase(ctx.sesion.rutaEmpresa("Sin fichero"));
  herramienta("MnuApertura", [&](Teclado& apertura) {
    apertura.elige("TxtEmpresaCerrada", "Sin fichero");
    falla(apertura, errorEnCaja(3024, ctx.sesion.rutaEmpresa("Sin fichero")));
    apertura.escape();
  });
}

// Each step over a file that another station holds, and over a full disk; then it goes through.
TEST_F(FinDeAno, CadaPasoQueFallaSePuedeRepetir) {
  creaEmpresa(empresa("Otra"));
  const auto pasaA = [&](const char* nombre) {
    t->elige("TxtEmpresa", nombre);
    libro = lee();
  };
  const auto paso = [&](const char* entrada, const char* campo, const QString& texto, size_t lineas,
                        const std::function<void(Teclado&)>& prepara = {}) {
    SCOPED_TRACE(entrada);
    herramienta(entrada, [&](Teclado& d) {
      if (prepara) prepara(d);
      fallaAlAceptar(d, campo, texto);
      if (entrada == QString("MnuRegularizacionStock"))
        guion.esperaMensaje("Proceso realizado con exito", "Regularización de Stocks");
      acepta(d);
    });
    const size_t habia = libro.size();
    libro = lee();
    EXPECT_EQ(libro.size() - habia, lineas);
    comprueba();
  };
  const auto cuantas = [&](const char* grupos) {
    return filas("Select Subcuenta from SqlDiarioSaldosCuentasTotal where SubcuentaDos" +
                 QString(grupos))
        .size();
  };
  paso("MnuRegularizacionStock", "TxtExistenciasFinales", "7,00 ", 4, [](Teclado& d) {
    d.escribe("TxtExistenciasFinales", "7");
    d.llega("GridExtracto");
    d.tecla(Qt::Key_End);
  });
  // Left by the mouse, a code that isn't there asks nothing.
  herramienta("MnuRegularizacionPG", [](Teclado& d) {
    d.llega("TxtSubcuenta");
    d.tecla(Qt::Key_Home, Qt::ShiftModifier);
    d.teclea("12900099");
    d.pulsa("CmdCancelar");
  });
  paso("MnuRegularizacionPG", "TxtSubcuenta", "12900000", 2 * cuantas(">='6'"));
  paso("MnuCierre", "TxtAsiento", "99999999", cuantas("<='5' and SaldoFinal<>0"));
  const size_t cerradas = filas("Select NLinea from Diario where TipoDiario='C'").size();
  pasaA("Otra");
  altaSubcuentasTrimestre(*abreBase());
  altaSubcuentas();
  paso("MnuApertura", "TxtAsiento", "0", cerradas,
       [](Teclado& d) { d.elige("TxtEmpresaCerrada", "Comercial Ejemplo"); });
  pasaA("Comercial Ejemplo");
  paso("MnuInvertirCierre", "TxtNoModifica", "30/06/2024", 0,
       [](Teclado& d) { d.escribe("TxtNoModifica", "30/06/2024"); });
  EXPECT_EQ(limite(), "30/06/2024");
}

}  // namespace
