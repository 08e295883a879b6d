// A shop's year by keys, from its plan to the next year's opening: invoices, receipts, payrolls,
// stocks and result regularised, its books printed, closed, reopened by its date and closed again.
// After each step the journal, the trial balance and the main window are what the test reckons.
#include "escenarios/librosimpresos.h"

namespace {

const QString kAno = "Ejemplo 2024";
const QString kSiguiente = "Ejemplo 2025";
const QString kFin = "31/12/2024";

using Campos = std::vector<std::pair<const char*, QString>>;
using Saldados = std::vector<std::pair<QString, double>>;  // subcuenta and amount

class UnAno : public LibrosImpresos {
 protected:
  // The lines that an asiento adds to the journal.
  void anota(int asiento, const QString& fecha, const QString& concepto, const Saldados& lineas) {
    for (const auto& [subcuenta, importe] : lineas) {
      const int numero = libro.empty() ? 0 : libro.rbegin()->first + 1;
      libro[numero] = {asiento, fecha, subcuenta, concepto, importe};
    }
  }
  // What each subcuenta comes to, with its name.
  Saldos saldos() const {
    std::vector<Linea> lineas;
    for (const auto& [numero, linea] : libro) lineas.push_back(linea);
    Saldos todos = saldosDe(lineas);
    for (auto& [codigo, uno] : todos) uno.titulo = nombres.at(codigo);
    return todos;
  }
  QString limite() const { return valor("Select NoModificar from Empresa"); }
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
  void creaConPlan(const QString& nombre, const QString& ejercicio,
                   const std::function<void(Teclado&)>& plan) {
    herramienta("MnuNuevaEmpresa", [&](Teclado& alta) {
      rellena(alta, {{"TxtAñoContable", ejercicio}});
      tecleaEmpresa(alta, guion, nombre, plan);
    });
    pasaA(nombre);
    cambia("Select * from Empresa", "Nif", "12345678");
  }
  // In the order of the year.
  void creaElPlan();
  void factura(const char* entrada, const Campos& campos);
  void facturas();
  void recibo(Teclado& lista, const Campos& campos);
  void recibos();
  void nomina(int asiento, const QString& fecha);
  void regularizaExistencias();
  void imprimeResultados();
  void regularizaResultadoDesdeElBalance();
  void imprimeDiario();
  void imprimeLibros();
  void cierraElAno();
  void reabreYVuelveACerrar();
  void abreElSiguiente();

  std::map<QString, QString> nombres;  // of the subcuentas
  Saldos antesDelCierre;
};

void UnAno::creaElPlan() {
  creaConPlan(kAno, "2024", [](Teclado& crear) { crear.mnemonico('a'); });
  t->enfoca("TxtSubcuenta");
  tecleaPlanTrimestre(ctx, guion, *t);
  for (const QStringList& f : leeCsv("trimestre/subcuentas.csv")) nombres[f[0]] = f[1];
  for (const auto& [codigo, nombre] : {std::pair("61000001", "Variación de existencias"),
                                       std::pair("12900000", "Resultado del ejercicio")}) {
    tecleaSubcuenta(*t, guion, codigo, nombre);
    nombres[codigo] = nombre;
  }
  asientaDiarioTrimestre(motor, ctx.sesion.rutaEmpresa());
  t->pulsa("CmdRecargar");
  libro.clear();
  for (const QStringList& f : leeCsv("trimestre/diario-trimestre.csv")) {
    const double debe = f[4].isEmpty() ? 0 : Variant(f[4]).number();
    const double haber = f[5].isEmpty() ? 0 : Variant(f[5]).number();
    anota(f[0].toInt(), f[1], f[3], {{f[2], debe - haber}});
  }
  comprueba();
}

void UnAno::factura(const char* entrada, const Campos& campos) {
  herramienta(entrada, [&](Teclado& d) {
    rellena(d, campos);
    acepta(d);
  });
}

void UnAno::facturas() {
  factura("MnuGrabarIVASoportado", {{"TxtCodigoProveedor", "00003"},
                                    {"TxtNumFactura", "A-118"},
                                    {"TxtFecha", "1505"},
                                    {"TxtBase", "1250"},
                                    {"TxtIva", "03"}});
  anota(121, "15/05/2024", "De su fra.A-118 Papelera del Norte, S.A.",
        {{"60000001", 1250}, {"47200001", 200}, {"40000003", -1450}});
  factura("MnuIVARepercutido", {{"TxtCodigoProveedor", "00001"},
                                {"TxtNumFactura", "91"},
                                {"TxtFecha", "2506"},
                                {"TxtBase", "840"},
                                {"TxtIva", "03"}});
  anota(122, "25/06/2024", "De su fra.91 Almacenes Ruiz",
        {{"70000001", -840}, {"47700001", -134.4}, {"43000001", 974.4}});
  factura("MnuGrabarIVASoportado", {{"TxtCodigoProveedor", "00002"},
                                    {"TxtNumFactura", "77/24"},
                                    {"TxtFecha", "2009"},
                                    {"TxtBase", "310.5"},
                                    {"TxtIva", "07"}});
  anota(123, "20/09/2024", "De su fra.77/24 Textiles Martín e Hijos",
        {{"60000001", 310.5}, {"47200001", 49.68}, {"47500001", 12.42}, {"40000002", -372.6}});
  comprueba();
  // What is in the warehouse was bought by the entry line.
  t->enfoca("TxtSubcuenta");
  tecleaLinea(*t, guion, ctx.sesion, {{}, "30/06/2024", "30000001", "Mercaderías", "500,25", {}},
              true);
  tecleaLinea(*t, guion, ctx.sesion, {{}, "30/06/2024", "57200001", "Mercaderías", {}, "500,25"},
              false);
  anota(124, "30/06/2024", "Mercaderías", {{"30000001", 500.25}, {"57200001", -500.25}});
  comprueba();
}

void UnAno::recibo(Teclado& lista, const Campos& campos) {
  guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
    rellena(r, campos);
    acepta(r);
  });
  lista.pulsa("CmdAltas");
}

void UnAno::recibos() {
  guion.esperaDialogo("FrmRecibosLista", [&](Teclado& lista) {
    recibo(lista, {{"TxtFechaVencimiento", "3107"},
                   {"TxtCuenta", "40.3"},
                   {"TxtFactura", "A-118"},
                   {"TxtTipo", "Letra"},
                   {"TxtContrapartida", "572.1"},
                   {"TxtImporte", "1450"}});
    recibo(lista, {{"TxtFechaVencimiento", "3108"},
                   {"TxtCuenta", "43.1"},
                   {"TxtFactura", "91"},
                   {"TxtTipo", "Pagaré"},
                   {"TxtTitulo", "Cobro fra. 91"},
                   {"TxtContrapartida", "572.2"},
                   {"TxtImporte", "974.4"}});
    recibo(lista, {{"TxtFechaVencimiento", "15/01/2025"},
                   {"TxtCuenta", "43.2"},
                   {"TxtFactura", "92"},
                   {"TxtTipo", "Letra"},
                   {"TxtTitulo", "Vence el año que viene"},
                   {"TxtContrapartida", "572.1"},
                   {"TxtImporte", "300"}});
    guion.esperaDialogo("FrmRecibosImpresos", [&](Teclado& d) {
      const LibroImpreso listado = lanza(d, "Listado de diario", ano());
      EXPECT_EQ(listado.linea("Total mes 7"), "Total mes 7/2024 1.450,00 0,00");
      EXPECT_EQ(listado.linea("Total mes 8"), "Total mes 8/2024 0,00 974,40");
      EXPECT_EQ(listado.linea("Total recibos"), "Total recibos 1.450,00 974,40");
      d.escape();
    });
    lista.pulsa("CmdImpresos");
    for (int vez = 0; vez < 2; ++vez) {
      lista.control<Rejilla>("Grid").mover(Rejilla::Primera);
      guion.esperaDialogo("FrmRecibos", [&](Teclado& r) { acepta(r); });
      lista.pulsa("CmdContabiliza");
    }
    lista.pulsa("CmdSalir");
  });
  t->pulsa("CmdRecibo");
  anota(125, "31/07/2024", "Letra De su Fra.A-118", {{"40000003", 1450}, {"57200001", -1450}});
  anota(126, "31/08/2024", "Cobro fra. 91", {{"57200002", 974.4}, {"43000001", -974.4}});
  comprueba();
  EXPECT_EQ(valor("Select Titulo from Recibos"), "Vence el año que viene");
}

void UnAno::nomina(int asiento, const QString& fecha) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    rellena(d,
            {{"TxtFecha", fecha}, {"TxtSubSueldoBruto", "640.1"}, {"TxtImpSueldoBruto", "1500"}});
    const struct {
      const char *casilla, *subcuenta, *codigo;
      Campos importes;
    } conceptos[] = {
        {"ChkSSCargoEmpresa",
         "TxtSubSSCargoEmpresa",
         "642.1",
         {{"TxtImpSScargoEmpresa", "400.1"}, {"TxtSSCargoTrabajador", "95.2"}}},
        {"ChkOrganismosSSACreedora", "TxtSubOrganismosSSAcreedora", "476.1", {}},
        {"ChkRetenciones", "TxtSubRetenciones", "4751.1", {{"TxtImpImportes", "225"}}}};
    for (const auto& c : conceptos) {
      d.pulsa(c.casilla);
      EXPECT_EQ(d.enfocado(), c.subcuenta);
      rellena(d, {{c.subcuenta, c.codigo}});
      rellena(d, c.importes);
    }
    rellena(d, {{"TxtsubCaja", "572.1"}});
    acepta(d);
  });
  t->pulsa("Command13");
  for (const auto& [texto, importe] :
       {std::pair("64000001 Nomina ", 1500.0), std::pair("64200001 S.S.Emp+TR ", 400.1),
        std::pair("47600001 S.S.Acreedora ", -495.3), std::pair("47510001 Retencion ", -225.0),
        std::pair("57200001 Nomina ", -1179.8)})
    anota(asiento, fecha, QString(texto).mid(9) + "Sueldos y salarios",
          {{QString(texto).left(8), importe}});
  comprueba();
}

void UnAno::regularizaExistencias() {
  herramienta("MnuRegularizacionStock", [&](Teclado& stocks) {
    EXPECT_EQ(stocks.textoDe("TxtExistenciasIniciales"), "500,25 ");
    EXPECT_EQ(stocks.textoDe("TxtExistenciasFinales"), "0,00 ");
    EXPECT_EQ(stocks.textoDe("TxtSubcuentaCompras"), "61000001");
    EXPECT_EQ(stocks.textoDe("LblSubcuentaCompras"), "Variación de existencias");
    EXPECT_EQ(stocks.textoDe("TxtFechaAsiento"), kFin);
    rellena(stocks, {{"TxtExistenciasFinales", "820.5"}, {"TxtDescripcion", ""}});
    guion.esperaMensaje("Seleccione en la lista la subcuenta de existencias", "Error");
    stocks.pulsa("CmdAceptar");
    EXPECT_EQ(stocks.textoDe("TxtDescripcion"), "Regularización Stocks");
    EXPECT_EQ(stocks.enfocado(), "GridExtracto");
    stocks.tecla(Qt::Key_End);
    guion.esperaMensaje("Proceso realizado con exito", "Regularización de Stocks");
    acepta(stocks);
  });
  anota(129, kFin, "Regularización Stocks",
        {{"61000001", 500.25}, {"30000001", -500.25}, {"30000001", 820.5}, {"61000001", -820.5}});
  comprueba();
}

void UnAno::imprimeResultados() {
  dialogo("MnuPerdidasyGanancias", "Explotación (Perdidas y Ganancias)", [&](Teclado& d) {
    d.marca("OptTipo_3");
    const LibroImpreso libro = lanza(d, "Acumulados de IVA", meses);
    miraTotales(libro, saldos(), false);
    miraSubcuentas(libro, saldos(), "67");
    d.escape();
  });
}

// As the print itself advises: regularise, and then print a balance that squares.
void UnAno::regularizaResultadoDesdeElBalance() {
  const auto pg = [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtFecha"), kFin);
    EXPECT_EQ(d.textoDe("TxtDescripcion"), "Pérd.y ganan.");
    EXPECT_EQ(d.textoDe("TxtSubcuenta"), "12900000");
    EXPECT_EQ(d.textoDe("LblSubcuenta"), "Resultado del ejercicio");
    // A code that isn't there asks the plan; one of another width posts nothing.
    const auto resultado = [&](const char* codigo) {
      d.llega("TxtSubcuenta");
      d.tecla(Qt::Key_Home, Qt::ShiftModifier);  // the caret stands at its end
      d.teclea(codigo);
    };
    resultado("1290");
    guion.esperaDialogo("FrmVisualizaPlan", [](Teclado& plan) { plan.escape(); });
    d.tab();
    guion.esperaMensaje("La subcuenta introducida no es correcta", "Error");
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    d.intro();
    resultado("129.");
    acepta(d);
  };
  const Saldos antes = saldos();
  dialogo("MnuBalanceSituacion", "Balance de situación (General)", [&](Teclado& d) {
    guion.esperaDialogo("FrmPerdidasyGanacias", pg);
    d.pulsa("CmdPG");
    for (const auto& [asiento, grupo] : {std::pair(130, '6'), std::pair(131, '7')}) {
      for (const auto& [codigo, s] : antes) {
        if (codigo[0] != grupo) continue;
        anota(asiento, kFin, "Pérd.y ganan.", {{codigo, -s.saldo}});
        anota(asiento, kFin, "Pérd.y ganan. " + codigo, {{"12900000", s.saldo}});
      }
    }
    comprueba();
    EXPECT_DOUBLE_EQ(suma(saldos(), "12").saldo, suma(antes, "6 7").saldo);
    d.marca("OptTipo_3");
    const LibroImpreso libro = lanza(d, "Balance de situación", meses);
    miraTotales(libro, saldos(), true);
    miraSubcuentas(libro, saldos(), "12345");
    EXPECT_EQ(libro.linea("Diferencia"), "Diferencia entre activo y pasivo 0,00");
    d.escape();
  });
  EXPECT_EQ(t->textoDe("TxtAsiento"), "131");
  EXPECT_EQ(valor("Select Asiento from Empresa"), "132");
}

void UnAno::imprimeDiario() {
  std::vector<Linea> lineas;
  for (const auto& [numero, linea] : libro) lineas.push_back(linea);
  dialogo("MnuImprimirDiario", "Imprimir diario", [&](Teclado& d) {
    miraDiario(lanza(d, "Listado de diario", ano()), lineas);
    d.escape();
  });
}

void UnAno::imprimeLibros() {
  dialogo("MnuSumasysaldos", "Sumas y saldos", [&](Teclado& d) {
    miraSumas(lanza(d, "Listado de sumas y saldos Cuentas", meses), saldos(), 3);
    d.marca("OptNivel_3");
    miraSumas(lanza(d, "Listado de sumas y saldos Subcuentas", meses), saldos(), 8);
    d.escape();
  });
  t->escribe("TxtSubcuenta", "57200001");
  herramienta("MnuExtractos", [&](Teclado& extracto) {
    guion.esperaDialogo("FrmExtractos", [&](Teclado& uno) {
      guion.esperaDialogo("FrmExtractoEntraCtas", [&](Teclado& d) {
        d.escribe("TxtSubcuentaDesde", "1.");
        d.escribe("TxtSubcuentaHasta", "79999999");
        miraMayor(lanza(d, "Listado de libro Mayor", ano()), saldos());
        d.escape();
      });
      uno.pulsa("CmdSeleccion");
    });
    extracto.tecla(Qt::Key_P, Qt::ControlModifier);
    extracto.escape();
  });
  herramienta("MnuLibroSR", [&](Teclado& d) {
    d.pulsa("OptLibro_2");
    const LibroImpreso libro = lanza(d, "Acumulados de IVA", meses);
    EXPECT_EQ(libro.lineas().filter("0000000"),
              (QStringList{
                  "R0000000001 25/06/2024 91 Almacenes Ruiz 840,00 16,00 134,40 0,00 0,00 974,40",
                  "S0000000001 15/05/2024 A-118 Papelera del Norte, S.A. 1.250,00 16,00 200,00 "
                  "0,00 0,00 1.450,00",
                  "S0000000002 20/09/2024 77/24 Textiles Martín e Hijos 310,50 16,00 49,68 4,00 "
                  "12,42 372,60"}));
    EXPECT_EQ(libro.lineas().filter("Total IVA"),
              (QStringList{"Total IVA repercutido 840,00 134,40 0,00 974,40",
                           "Total IVA soportado 1.560,50 249,68 12,42 1.822,60"}));
    d.escape();
  });
}

void UnAno::cierraElAno() {
  antesDelCierre = saldos();
  herramienta("MnuCierre", [&](Teclado& cierre) {
    EXPECT_EQ(cierre.textoDe("TxtFecha"), kFin);
    EXPECT_EQ(cierre.textoDe("TxtDescripcion"), "Asiento de cierre");
    EXPECT_EQ(cierre.textoDe("TxtAsiento"), "99999999");
    acepta(cierre);
  });
  for (const auto& [codigo, s] : antesDelCierre)
    if (s.saldo != 0) anota(99999999, kFin, "Asiento de cierre", {{codigo, -s.saldo}});
  comprueba();
  for (const auto& [codigo, s] : saldos()) EXPECT_EQ(s.saldo, 0) << qPrintable(codigo);
  EXPECT_EQ(limite(), kFin);
  EXPECT_FALSE(cerrada());
  imprimeDiario();
}

void UnAno::reabreYVuelveACerrar() {
  EXPECT_FALSE(cerrada());
  pasaA(kAno);
  EXPECT_TRUE(cerrada());
  // No line of a closed year can be changed.
  enLinea(1, 0);
  guion.esperaMensaje("Usted no puede modificar ningún apunte anterior a la fecha " + kFin,
                      "Error");
  t->intro();
  comprueba();
  herramienta("MnuInvertirCierre", [&](Teclado& fecha) {
    EXPECT_EQ(fecha.textoDe("TxtNoModifica"), kFin);
    rellena(fecha, {{"TxtNoModifica", ""}});
    fecha.tab();
    EXPECT_EQ(fecha.textoDe("TxtNoModifica"), "");
    rellena(fecha, {{"TxtNoModifica", "3006"}});
    acepta(fecha);
  });
  EXPECT_EQ(limite(), "30/06/2024");
  EXPECT_TRUE(cerrada());
  pasaA(kSiguiente);
  pasaA(kAno);
  EXPECT_FALSE(cerrada());
  herramienta("MnuCierre", [](Teclado& cierre) { acepta(cierre); });
  comprueba();  // what stands at zero isn't closed again
  EXPECT_EQ(limite(), kFin);
}

void UnAno::abreElSiguiente() {
  pasaA(kSiguiente);
  EXPECT_EQ(valor("Select Titulo from Recibos"), "Vence el año que viene");
  const auto cierre = libro;
  libro.clear();
  herramienta("MnuApertura", [&](Teclado& apertura) {
    EXPECT_EQ(apertura.textoDe("TxtFecha"), "01/01/2025");
    EXPECT_EQ(apertura.textoDe("TxtDescripcion"), "Asiento de apertura");
    EXPECT_EQ(apertura.textoDe("TxtAsiento"), "0");
    guion.esperaMensaje("Seleccione una empresa de la lista", "Error");
    acepta(apertura);
    apertura.elige("TxtEmpresaCerrada", kSiguiente);
    guion.esperaMensaje("Usted no puede crear un asiento de apertura sobre la misma empresa",
                        "Error");
    acepta(apertura);
    comprueba();
    apertura.elige("TxtEmpresaCerrada", kAno);
    acepta(apertura);
  });
  for (const auto& [numero, l] : cierre)
    if (l.asiento == 99999999)
      anota(0, "01/01/2025", "Asiento de apertura", {{l.subcuenta, -l.importe}});
  comprueba();
  EXPECT_EQ(valor("Select Asiento from Empresa"), "1");
  EXPECT_FALSE(cerrada());
  // To the cent, what the year was closed with.
  const Saldos apertura = saldos();
  for (const auto& [codigo, s] : antesDelCierre)
    EXPECT_EQ(apertura.count(codigo) ? apertura.at(codigo).saldo : 0, s.saldo)
        << qPrintable(codigo);
  ejercicio = "2025";
  dialogo("MnuBalanceSituacion", "Balance de situación (General)", [&](Teclado& d) {
    d.marca("OptTipo_3");
    const LibroImpreso libro = lanza(d, "Balance de situación", meses);
    miraTotales(libro, antesDelCierre, true);
    miraSubcuentas(libro, apertura, "12345");
    d.escape();
  });
}

TEST_F(UnAno, DelPlanALaAperturaDelSiguiente) {
  creaElPlan();
  facturas();
  recibos();
  nomina(127, "30/06/2024");
  nomina(128, "31/12/2024");
  regularizaExistencias();
  imprimeResultados();
  regularizaResultadoDesdeElBalance();
  imprimeLibros();
  cierraElAno();
  creaConPlan(kSiguiente, "2025", [](Teclado& crear) {
    crear.mnemonico('e');
    crear.llega("TxtEmpresa");
    crear.tecla(Qt::Key_Home);
    crear.tecla(Qt::Key_Down);
    EXPECT_EQ(crear.textoDe("TxtEmpresa"), kAno);
    crear.mnemonico('s');
    crear.mnemonico('r');
    crear.mnemonico('a');
  });
  reabreYVuelveACerrar();
  abreElSiguiente();
}

}  // namespace
