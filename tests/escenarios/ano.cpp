#include "escenarios/ano.h"

void UnAno::creaLaEmpresa() {
  reloj.ponEn(QDate(2024, 1, 2));
  t = std::make_unique<Teclado>(empiezaEmpresa(ctx, guion, kAno, mirar));
  EXPECT_EQ(ctx.sesion.DigitosCuenta, 3);
  EXPECT_EQ(ctx.sesion.DigitosSubcuenta, 8);
  cambia("Select * from Empresa", "Nif", "12345678");
  ponPlantillas(ctx);
  for (const QStringList& f : leeCsv("trimestre/subcuentas.csv")) {
    nombres[f[0]] = f[1];
    if (valor("Select Cuenta from Subcuentas where Subcuenta='" + f[0] + "'").isEmpty())
      tecleaSubcuenta(*t, guion, f[0], f[1]);
  }
  for (const auto& [codigo, nombre] : {std::pair("61000001", "Variación de existencias"),
                                       std::pair("12900000", "Resultado del ejercicio")}) {
    tecleaSubcuenta(*t, guion, codigo, nombre);
    nombres[codigo] = nombre;
  }
}

// The totals answer at each line; its balances are those of another reckoning.
void UnAno::tecleaElTrimestre() {
  const QString mascara = ctx.sesion.MascaraImporte;
  double debe = 0, haber = 0;
  tecleaTrimestre(ctx, guion, static_cast<Formulario&>(t->forma()), [&](const LineaDiario& l) {
    (l.Debe.isEmpty() ? haber : debe) += numero(l.Debe) - numero(l.Haber);
    anota(l.Asiento.toInt(), l.Fecha, l.Concepto,
          {{l.Subcuenta, numero(l.Debe) - numero(l.Haber)}});
    ASSERT_EQ(t->textoDe("TxtAsiento"), l.Asiento);
    ASSERT_EQ(t->textoDe("TxtTotalDebe"), Format(debe, mascara)) << libro.size();
    ASSERT_EQ(t->textoDe("TxtTotalHaber"), Format(haber, mascara)) << libro.size();
  });
  EXPECT_EQ(rejilla().filas(), 312);
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa"), (Filas{{"121", "312"}}));
  // Neither ticked off nor of an invoice, and of the year itself.
  EXPECT_EQ(filas("Select NLinea from Diario where Punteo is null and ApunteIVA is null and "
                  "TipoDiario='1'")
                .size(),
            312u);
  comprueba();
  // On the screen, subcuenta by subcuenta, and by stored query.
  for (const QStringList& saldo : leeCsv("trimestre/saldos-trimestre.csv")) {
    const QString panel = saldo[0] == "Total" ? "Total" : "Cuenta";
    const QStringList esperado = {Format(numero(saldo[1]), mascara),
                                  Format(-numero(saldo[2]), mascara),
                                  Format(numero(saldo[3]), mascara)};
    if (panel == "Cuenta") {
      t->escribe("TxtSubcuenta", saldo[0]);
      QStringList guardado = filas(
          "Select SumaDeDebe, SumaDeHaber, SaldoFinal from "
          "[SqlSubcuentas con saldo] where Subcuenta='" +
          saldo[0] + "'")[0];
      for (QString& texto : guardado) texto = Format(texto, mascara);
      EXPECT_EQ(guardado, esperado) << qPrintable(saldo[0]);
    }
    QStringList visto;
    for (const char* columna : {"Debe", "Haber", "Descuadre"})
      visto << t->textoDe(qPrintable("Txt" + panel + columna));
    EXPECT_EQ(visto, esperado) << qPrintable(saldo[0]);
  }
  reloj.ponEn(QDate(2024, 4, 2));
}

// Fields by their order, with what is typed into them; an empty text leaves its field alone.
Campos enOrden(std::initializer_list<const char*> campos, const QStringList& textos) {
  Campos todos;
  for (const char* const& campo : campos)
    if (const QString& texto = textos.at(&campo - campos.begin()); !texto.isEmpty())
      todos.emplace_back(campo, texto);
  return todos;
}

void UnAno::factura(const char* entrada, const QStringList& textos) {
  herramienta(entrada, [&](Teclado& d) {
    rellena(d, enOrden({"TxtCodigoProveedor", "TxtNumFactura", "TxtFecha", "TxtBase", "TxtIva"},
                       textos));
    acepta(d);
  });
}

void UnAno::facturas() {
  factura("MnuGrabarIVASoportado", {"00003", "A-118", "1505", "1250", "03"});
  anota(121, "15/05/2024", "De su fra.A-118 Papelera del Norte, S.A.",
        {{"60000001", 1250}, {"47200001", 200}, {"40000003", -1450}});
  factura("MnuIVARepercutido", {"00001", "91", "2506", "840", "03"});
  anota(122, "25/06/2024", "De su fra.91 Almacenes Ruiz",
        {{"70000001", -840}, {"47700001", -134.4}, {"43000001", 974.4}});
  factura("MnuGrabarIVASoportado", {"00002", "77/24", "2009", "310.5", "07"});
  anota(123, "20/09/2024", "De su fra.77/24 Textiles Martín e Hijos",
        {{"60000001", 310.5}, {"47200001", 49.68}, {"47500001", 12.42}, {"40000002", -372.6}});
  comprueba();
  // What is in the warehouse was bought by the entry line.
  t->enfoca("TxtSubcuenta");
  teclea({{}, "30/06/2024", "30000001", "Mercaderías", "500,25", {}});
  teclea({{}, {}, "57200001", "Mercaderías", {}, "500,25"});
  anota(124, "30/06/2024", "Mercaderías", {{"30000001", 500.25}, {"57200001", -500.25}});
  comprueba();
}

void UnAno::recibo(Teclado& lista, const QStringList& textos) {
  guion.esperaDialogo("FrmRecibos", [&](Teclado& r) {
    rellena(r, enOrden({"TxtFechaVencimiento", "TxtCuenta", "TxtFactura", "TxtTipo", "TxtTitulo",
                        "TxtContrapartida", "TxtImporte"},
                       textos));
    acepta(r);
  });
  lista.pulsa("CmdAltas");
}

void UnAno::recibos() {
  guion.esperaDialogo("FrmRecibosLista", [&](Teclado& lista) {
    recibo(lista, {"3107", "40.3", "A-118", "Letra", "", "572.1", "1450"});
    recibo(lista, {"3108", "43.1", "91", "Pagaré", "Cobro fra. 91", "572.2", "974.4"});
    recibo(lista, {"15/01/2025", "43.2", "92", "Letra", kLargo, "572.1", "300"});
    guion.esperaDialogo("FrmRecibosImpresos", [&](Teclado& d) {
      const LibroImpreso listado = lanza(d, "Listado de diario", ano());
      EXPECT_EQ(listado.linea("Total mes 7"), "Total mes 7/2024 1.450,00 0,00");
      EXPECT_EQ(listado.linea("Total mes 8"), "Total mes 8/2024 0,00 974,40");
      EXPECT_EQ(listado.linea("Total recibos"), "Total recibos 1.450,00 974,40");
      EXPECT_EQ(listado.linea("31/07"),
                "31/07/2024 Papelera del Norte, S.A. Letra De su Fra.A-118 A-118 Letra " +
                    nombres["57200001"] + " 1.450,00");
      EXPECT_EQ(listado.linea("15/01"), QString());
      // To its end, a long title goes on in the next line.
      d.enfoca("TxtHasta");
      rellena(d, {{"TxtHasta", "15/01/2025"}});
      const QString todo = lanza(d, "Listado de diario", "Desde : 01/01/2024 ~ Hasta : 15/01/2025")
                               .lineas()
                               .join(u' ');
      for (const QString& palabra : kLargo.split(' ')) EXPECT_TRUE(todo.contains(palabra));
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
  EXPECT_EQ(valor("Select Titulo from Recibos"), kLargo);
}

// By the keyboard: a check mark put with the space bar goes on to its subcuenta; Enter passes it
// by.
void UnAno::nomina(int asiento, const QString& fecha) {
  guion.esperaDialogo("FrmNomina", [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), "Asiento contable de tipo nomina ( Automátizado )");
    EXPECT_EQ(d.textoDe("TxtApunteN"), "<Auto>");
    const auto enter = [&](const QString& texto) { d.entra(texto); };
    const auto escrito = [&](double importe) { return Format(importe, ctx.sesion.MascaraImporte); };
    EXPECT_EQ(d.textoDe("TxtImpRenumeracionesPP"), escrito(0));
    EXPECT_EQ(d.enfocado(), "TxtFecha");
    for (const QString& texto : {fecha, QString(), QString("640.1"), QString("1500")}) enter(texto);
    EXPECT_EQ(d.textoDe("LblSubSueldoBruto"), "Sueldos y salarios");
    EXPECT_EQ(d.enfocado(), "ChkSSCargoEmpresa");
    EXPECT_EQ(d.textoDe("TxtImpCaja"), escrito(1500));
    d.tecla(Qt::Key_Space);
    EXPECT_EQ(d.enfocado(), "TxtSubSSCargoEmpresa");
    for (const char* texto : {"642.1", "400.1", "95.2"}) enter(texto);
    EXPECT_EQ(d.textoDe("TxtImpOrganismosSSAcreedora"), escrito(495.3));
    d.tecla(Qt::Key_Space);
    for (const char* texto : {"476.1", ""}) enter(texto);
    EXPECT_EQ(d.enfocado(), "ChkRetenciones");
    d.tecla(Qt::Key_Space);
    // Looked for by name, in the plan.
    esperaPlan("H.P. ret");
    d.tecla(Qt::Key_F2);
    EXPECT_EQ(d.textoDe("LblSubRetenciones"), "H.P. retenciones I.R.P.F.");
    for (const char* texto : {"", "225"}) enter(texto);
    EXPECT_EQ(d.enfocado(), "ChkAnticipos");
    d.intro();
    d.intro();
    EXPECT_EQ(d.enfocado(), "TxtsubCaja");
    enter("572.1");
    enter("1");  // a net can't be forced
    EXPECT_EQ(d.textoDe("TxtImpCaja"), escrito(1179.8));
    EXPECT_EQ(d.enfocado(), "CmdAceptar");
    d.intro();
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
    EXPECT_EQ(stocks.textosDe({"TxtExistenciasIniciales", "TxtExistenciasFinales",
                               "TxtSubcuentaCompras", "LblSubcuentaCompras", "TxtFechaAsiento"}),
              (QStringList{"500,25 Fr", "", "61000001", "Variación de existencias", kFin}));
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
    EXPECT_EQ(d.textosDe({"TxtFecha", "TxtDescripcion", "TxtSubcuenta", "LblSubcuenta"}),
              (QStringList{kFin, "Pérd.y ganan.", "12900000", "Resultado del ejercicio"}));
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

void UnAno::cierraElAno() {
  antesDelCierre = saldos();
  herramienta("MnuCierre", [&](Teclado& cierre) {
    EXPECT_EQ(cierre.textosDe({"TxtFecha", "TxtDescripcion", "TxtAsiento"}),
              (QStringList{kFin, "Asiento de cierre", "99999999"}));
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
  EXPECT_EQ(valor("Select Titulo from Recibos"), kLargo);
  const auto cierre = std::exchange(libro, {});
  siguiente = 0;
  herramienta("MnuApertura", [&](Teclado& apertura) {
    EXPECT_EQ(apertura.textosDe({"TxtFecha", "TxtDescripcion", "TxtAsiento"}),
              (QStringList{"01/01/2025", "Asiento de apertura", "0"}));
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

void UnAno::creaElSiguiente() {
  herramienta("MnuNuevaEmpresa", [&](Teclado& alta) {
    rellena(alta, {{"TxtAñoContable", "2025"}});
    tecleaEmpresa(alta, guion, kSiguiente, [&](Teclado& crear) {
      crear.mnemonico('e');
      crear.llega("TxtEmpresa");
      crear.tecla(Qt::Key_Down);
      EXPECT_EQ(crear.textoDe("TxtEmpresa"), kAno);
      crear.mnemonico('s');
      crear.mnemonico('r');
      crear.mnemonico('a');
    });
  });
  pasaA(kSiguiente);
  cambia("Select * from Empresa", "Nif", "12345678");
}

void UnAno::recorre() {
  creaLaEmpresa();
  tecleaElTrimestre();
  facturas();
  // Shown with letters behind, with brackets for negatives, and with nothing for zero.
  ctx.sesion.MascaraImporte = "#,##0.00 \"Fr\";(#,##0.00 \"Fr\");#";
  t->control<Rejilla>("GrdApuntes").setMascara(ctx.sesion.MascaraImporte);
  recibos();
  nomina(127, "30/06/2024");
  nomina(128, "31/12/2024");
  regularizaExistencias();
  imprimeResultados();
  regularizaResultadoDesdeElBalance();
  cierraElAno();
  creaElSiguiente();
  reabreYVuelveACerrar();
  abreElSiguiente();
}

TEST_F(UnAno, DeUnaCarpetaVaciaALaAperturaDelSiguiente) {
  recorre();
}
