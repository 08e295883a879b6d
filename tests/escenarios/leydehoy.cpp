// A company of 2024 from an empty folder to what it files, by the keyboard: the plan of 2007, its
// quarter's invoices, the 303 and the 347 with their files byte by byte, the register books, the
// official statements.
#include "accounts/plan2007.h"
#include "escenarios/cuaderno.h"
#include "escenarios/herramientas.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/libroimpreso.h"

namespace {

class LeyDeHoy : public PorElMenu {
 protected:
  LeyDeHoy() : PorElMenu(Carpetas) { reloj.ponEn(QDate(2024, 4, 2)); }

  // The third choice of the plans; PYMES is the model that stands there.
  void creaLaEmpresa() {
    t = std::make_unique<Teclado>(empiezaEmpresa(ctx, guion, "Comercial Ejemplo", {}, "2"));
    ponPlantillas(ctx);
    EXPECT_TRUE(plan2007De(*abreBase()).sigue);
    EXPECT_EQ(valor("Select Descripcion from Cuentas where Cuenta='217'"),
              "Equipos para procesos de información");
    // Customers and suppliers have a card in this office.
    for (const char* cuenta : {"400", "430"})
      cambia(QString("Select * from Cuentas where Cuenta='%1'").arg(cuenta), "DatosAuxiliares",
             true);
    for (const char* codigo : {"10000001", "21700001", "57200001", "60000001", "62100001",
                               "70000001", "75200001", "47200001", "47700001"})
      if (valor(QString("Select * from Subcuentas where Subcuenta='%1'").arg(codigo)).isEmpty())
        tecleaSubcuenta(*t, guion, codigo, QString("Cuenta ") + codigo);
    for (const QStringList& tercero : leeCsv("leydehoy/terceros.csv")) creaTercero(tercero);
    // The capital, in the bank.
    teclea({{}, "02/01/2024", "57200001", "Capital", "10000", {}});
    teclea({{}, {}, "10000001", "Capital", {}, "10000"});
  }
  void creaTercero(const QStringList& tercero) {
    t->enfoca("TxtSubcuenta");
    t->teclea(QString(tercero[0]).replace("0000", "."));
    guion.esperaPregunta(
        "El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ", true, "Error");
    guion.esperaDialogo("FrmSubCuentas", [&](Teclado& alta) {
      guion.esperaDialogo("FrmDatosAuxiliares", [&](Teclado& ficha) {
        rellena(ficha,
                {{"TxtNif", tercero[2]}, {"TxtCodigoPostal", tercero[3]}, {"TxtPais", tercero[4]}});
        ficha.mnemonico('a');
      });
      tecleaNombre(alta, tercero[1]);
    });
    t->intro();
    t->atras();
  }
  void tecleaFacturas() {
    herramienta("MnuTiposPorFechas", [&](Teclado& d) {
      d.escribe("TxtFecha", "01/03/2024");
      guion.esperaMensaje("Tipos puestos en los códigos 09, 10, 11, 12, 13, 14, 15, 16, 17, 18",
                          "Tipos de IVA");
      d.pulsa("CmdPoner");
      d.escape();
    });
    for (const QStringList& f : leeCsv("leydehoy/facturas.csv"))
      herramienta(qPrintable(f[0]), [&](Teclado& d) {
        rellena(d, {{"TxtCodigoProveedor", f[1].mid(3)},
                    {"TxtNumFactura", f[2]},
                    {"TxtFecha", f[3]},
                    {"TxtBase", f[4]},
                    {"TxtIva", f[5]}});
        if (!f[6].isEmpty()) rellena(d, {{"TxtContrapartida", f[6]}});
        d.tab();
        EXPECT_EQ(d.textoDe("LblAvisoTipo"), "");
        acepta(d);
      });
    herramienta("MnuIntercomunitario", [&](Teclado& d) {
      rellena(d, {{"TxtFecha", "2203"}, {"TxtIva", "09"}, {"TxtImporteIva", "84"}});
      EXPECT_EQ(d.textoDe("LblAvisoTipo"), "");
      acepta(d);
    });
    // A line on each side, and none without an amount.
    EXPECT_EQ(fila("Select Count(NLinea) from Diario where TipoFactura='I'"), "2");
  }
  // The landlord's invoice bears a retention: its row says so by hand.
  void tecleaRetencion() {
    herramienta("MnuDatosRegistros", [&](Teclado& d) {
      auto& tabla = d.control<TablaHoja>("GrdRegistros");
      const int columna = columnaDe(tabla, "Ret.");
      tabla.irA(filaDe(d, "GrdRegistros", 2, "C-4"), columna);
      d.enfoca("GrdRegistros");
      d.entra("s");
      EXPECT_EQ(tabla.textoDe(tabla.fila(), columna), "S");
      d.escape();
    });
  }
  void tecleaDeclarante(Teclado& d) {
    guion.esperaDialogo("FrmDeclarante", [](Teclado& dd) {
      dd.entra("b46554432");
      dd.tecla(Qt::Key_Down);
      dd.entra("Comercial Ejemplo, S.L.");
      acepta(dd);
    });
    d.pulsa("CmdDeclarante");
  }
  static int filaDe(Teclado& d, const char* tabla, int columna, const QString& texto) {
    const TablaHoja& hoja = d.control<TablaHoja>(tabla);
    for (int f = 0; f < hoja.model()->rowCount(); ++f)
      if (hoja.textoDe(f, columna).trimmed() == texto) return f;
    ADD_FAILURE() << texto.toStdString();
    return 0;
  }
  static int columnaDe(const QAbstractItemView& tabla, const QString& titulo) {
    int columna = 0;
    while (tabla.model()->headerData(columna, Qt::Horizontal).toString() != titulo) ++columna;
    return columna;
  }
  QString salida(const QString& nombre) { return ficheros_.filePath(nombre); }

  QTemporaryDir ficheros_;

  void el303();
  void abreLaFacturaDeUnaCasilla(Teclado& d);
  void el347();
  void tecleaElLocal(Teclado& d);
  void losLibros();
  void losEstados();
};

// --- the 303 ------------------------------------------------------------------------------------

// Position by position against the published table of the first half of 2024.
void compruebaFichero303(const QByteArray& fichero) {
  ASSERT_EQ(fichero.size(), 3767);
  QHash<QString, QByteArray> esperado;
  for (const QStringList& f : leeCsv("leydehoy/303.csv")) esperado.insert(f[0], f[1].toLatin1());
  QSet<QString> vistos;
  qsizetype pagina = 0, fin = 0;
  for (const QStringList& fila : leeCsv("modelo303-2024.csv")) {
    if (fila[0] != "2024A") continue;
    if (fila[2] == "1") pagina = fin;
    const bool cierre = fila[1] == "99";
    const int desde = cierre ? 1 : fila[3].toInt(), largo = fila[5].toInt();
    const QString clave = fila[7].isEmpty() ? fila.last() : fila[7];
    const bool numero = fila[6] == "Num" || fila[6] == "N";
    QByteArray debe = cierre               ? "</T303020241T0000>"
                      : !fila[8].isEmpty() ? fila[8].toLatin1()
                                           : esperado.value(clave);
    vistos << clave;
    if (debe.isEmpty()) debe = QByteArray(largo, numero ? '0' : ' ');
    EXPECT_EQ(fichero.mid(pagina + desde - 1, largo), debe.leftJustified(largo))
        << qPrintable(fila[1] + ' ' + fila.last());
    fin = pagina + desde - 1 + largo;
  }
  EXPECT_EQ(fin, fichero.size());
  for (const QString& clave : esperado.keys())
    EXPECT_TRUE(vistos.contains(clave)) << clave.toStdString();
}

// From a casilla to its rows and from there to the invoice, by Enter.
void LeyDeHoy::abreLaFacturaDeUnaCasilla(Teclado& d) {
  d.control<TablaHoja>("GrdCasillas").irA(filaDe(d, "GrdCasillas", 0, "15"), 0);
  guion.esperaDialogo("FrmDatosRegistros", [&](Teclado& filas) {
    const TablaHoja& tabla = filas.control<TablaHoja>("GrdRegistros");
    ASSERT_EQ(tabla.model()->rowCount(), 1);
    EXPECT_EQ(tabla.textoDe(0, 2) + tabla.textoDe(0, 6), "V-3R1");
    guion.esperaDialogo("FrmIVASR", [&](Teclado& factura) {
      EXPECT_EQ(factura.forma().windowTitle(), "Asiento de IVA Repercutido (Modificación)");
      EXPECT_EQ(factura.textoDe("TxtBase").trimmed(), "-200,50");
      factura.escape();
    });
    filas.intro();
    EXPECT_EQ(filas.enfocado(), "GrdRegistros");
    filas.escape();
  });
  d.enfoca("GrdCasillas");
  d.intro();
}

void LeyDeHoy::el303() {
  herramienta("MnuModelo303", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtPeriodo"), "1T");
    tecleaDeclarante(d);
    const auto total = [&](const char* casilla) {
      return d.control<TablaHoja>("GrdCasillas").textoDe(filaDe(d, "GrdCasillas", 0, casilla), 4);
    };
    EXPECT_EQ(total("07"), "8.000,00");
    EXPECT_EQ(total("71"), "-577,11");
    EXPECT_FALSE(d.control<QPlainTextEdit>("TxtAvisos").toPlainText().contains("Cuenta 47"));
    // Typed by hand: it counts; a wrong one is refused and leaves the cell as it was.
    d.control<TablaHoja>("GrdCasillas").irA(filaDe(d, "GrdCasillas", 0, "110"), 3);
    d.enfoca("GrdCasillas");
    guion.esperaMensaje(errorEnCaja(5, "La casilla 110 no puede ser negativa"), "Librano");
    d.entra("-5");
    d.entra("100");
    EXPECT_EQ(total("87"), "100,00");
    abreLaFacturaDeUnaCasilla(d);
    d.pulsa("CmdImprimir");
    const LibroImpreso impreso = leeVista(guion);
    EXPECT_EQ(impreso.linea("71 "), "71 Resultado -577,11");
    EXPECT_EQ(impreso.linea("110 "),
              "110 Cuotas a compensar pendientes de periodos anteriores 100,00 a mano");
    guion.esperaFichero(salida("303.txt"));
    guion.esperaMensaje("Fichero hecho. Cuando lo haya presentado, dé el periodo por presentado.");
    d.pulsa("CmdFichero");
    EXPECT_EQ(guion.propuesto, "B46554432_2024_1T.303");
    guion.esperaPregunta("¿Dar por presentado el 1T con resultado -577,11 (C)?", true);
    d.pulsa("CmdPresentar");
    d.elige("TxtPeriodo", "2T");
    EXPECT_EQ(total("110"), "677,11");
    d.escape();
  });
  compruebaFichero303(contenidoDe(salida("303.txt")));
}

// --- the 347 ------------------------------------------------------------------------------------

// Its records of 500, by the positions of their publication, counted from 1.
QByteArray esperadoDel347() {
  QByteArray registros;
  for (const QStringList& f : leeCsv("leydehoy/347.csv")) {
    if (f[1] == "1") registros += QByteArray(500, ' ') + "\r\n";
    registros.replace(registros.size() - 503 + f[1].toInt(), f[2].size(), f[2].toLatin1());
  }
  return registros;
}

// Its tenant and its rent are proposed; where it lies is typed.
void LeyDeHoy::tecleaElLocal(Teclado& d) {
  guion.esperaDialogo("FrmInmuebles347", [&](Teclado& locales) {
    locales.mnemonico('P');
    auto& tabla = locales.control<Rejilla>("GrdInmuebles");
    ASSERT_EQ(valor("Select Nif from Inmuebles347"), "J46070801");
    const std::pair<const char*, const char*> datos[] = {{"Sit.", "1"},
                                                         {"Ref. catastral", "9872023VH5797S0001WX"},
                                                         {"Nombre de la vía", "Mayor"},
                                                         {"Número", "12"},
                                                         {"Prov.", "46"},
                                                         {"C.P.", "46001"}};
    for (const auto& [titulo, texto] : datos) {
      locales.enfoca("GrdInmuebles");
      tabla.setCurrentIndex(tabla.model()->index(0, columnaDe(tabla, titulo)));
      locales.entra(texto);
    }
    locales.mnemonico('S');
  });
  d.pulsa("CmdLocales");
}

void LeyDeHoy::el347() {
  herramienta("MnuModelo347", [&](Teclado& d) {
    const TablaHoja& tabla = d.control<TablaHoja>("GrdTerceros");
    ASSERT_EQ(tabla.model()->rowCount(), 3);
    EXPECT_EQ(tabla.textoDe(0, 0) + tabla.textoDe(0, 1), "AB08010209");
    EXPECT_EQ(tabla.textoDe(0, 5), "Falta la provincia");
    EXPECT_EQ(tabla.textoDe(1, 6), "4.730,00");
    EXPECT_EQ(tabla.textoDe(2, 5), "Arrendamiento de local");
    // What is missing is told before the file, which can still be left.
    guion.esperaPregunta(
        "Papelera del Norte: Falta la provincia\nTaller Bajo: falta el local que se le arrienda"
        "\n\n¿Desea hacer el fichero?",
        false, "Modelo 347");
    d.pulsa("CmdFichero");
    d.control<TablaHoja>("GrdTerceros").irA(0, 3);
    d.enfoca("GrdTerceros");
    d.teclea("8");
    guion.esperaMensaje(errorEnCaja(3421, "«8» no vale"), "Librano");
    d.intro();
    d.entra("08");
    EXPECT_EQ(tabla.textoDe(0, 5), "");
    tecleaElLocal(d);
    guion.esperaFichero(salida("347.txt"));
    guion.esperaMensaje("Fichero hecho. Declarados: 3. Locales: 1", "Modelo 347");
    d.pulsa("CmdFichero");
    d.pulsa("CmdCartas");
    const LibroImpreso cartas = leeVista(guion);
    ASSERT_EQ(cartas.paginas.size(), 3);
    EXPECT_FALSE(cartas.linea("Total del año 4.730,00", 2).isEmpty());
    d.escape();
  });
  EXPECT_EQ(contenidoDe(salida("347.txt")).split('\n'), esperadoDel347().split('\n'));
}

// --- the register books -------------------------------------------------------------------------

void LeyDeHoy::losLibros() {
  const QString ruta = salida("libros.xlsx");
  herramienta("MnuLibrosRegistro", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblResumen"), "Expedidas: 5. Recibidas: 5. Avisos: 2");
    EXPECT_EQ(d.control<TablaHoja>("GrdAvisos").textoDe(0, 2), "Falta el NIF");
    guion.esperaFichero(ruta);
    guion.esperaMensaje("Libros hechos", "Libros registro");
    d.pulsa("CmdAceptar");
    EXPECT_EQ(guion.propuesto, "2024B46554432CCOMERCIALEJEMPLOSL.xlsx");
    d.escape();
  });
  Cuaderno cuaderno(ruta);
  EXPECT_EQ(cuaderno.hojas(), (QStringList{"EXPEDIDAS", "RECIBIDAS", "BIENES-INVERSIÓN"}));
  const QHash<QString, QString> hojas[] = {cuaderno.celdas(1), cuaderno.celdas(2),
                                           cuaderno.celdas(3)};
  for (const QStringList& f : leeCsv("leydehoy/libros.csv"))
    EXPECT_EQ(hojas[f[0].toInt() - 1][f[1]], f[2]) << qPrintable(f.join(' '));
  // The first row of EXPEDIDAS has these cells and no others.
  EXPECT_EQ(QStringList(hojas[0].keys()).filter(QRegularExpression("^[A-Z]+4$")).size(), 15);
}

// --- the statements -----------------------------------------------------------------------------

void LeyDeHoy::losEstados() {
  const auto imprime = [&](const char* entrada, const QString& titulo) {
    LibroImpreso libro;
    herramienta(entrada, [&](Teclado& d) {
      EXPECT_EQ(d.control<QPlainTextEdit>("LblAvisos").toPlainText().section('.', 0, 0),
                "El balance cuadra, el resultado es el mismo en los dos estados y todas las "
                "cuentas tienen su línea");
      d.pulsa("CmdAceptar");
      libro = leeVista(guion);
      d.escape();
    });
    EXPECT_EQ(libro.titulo, titulo);
    return libro;
  };
  const LibroImpreso balance = imprime("MnuBalancePymes", "Balance (PYMES)");
  const LibroImpreso resultados = imprime("MnuResultadosPymes", "Pérdidas y ganancias (PYMES)");
  for (const QStringList& f : leeCsv("leydehoy/estados.csv")) {
    const LibroImpreso& libro = f[0] == "balance" ? balance : resultados;
    EXPECT_EQ(libro.linea(f[1].section(' ', 0, 2)), f[1]);
  }
}

TEST_F(LeyDeHoy, DeUnaCarpetaVaciaALoQueSePresenta) {
  creaLaEmpresa();
  tecleaFacturas();
  tecleaRetencion();
  el303();
  el347();
  losLibros();
  losEstados();
}

}  // namespace
