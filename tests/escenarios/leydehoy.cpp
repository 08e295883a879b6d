// A company of 2024 from an empty folder to what it files, by the keyboard: the plan of 2007, its
// quarter's invoices, the 303 and the 347 with their files byte by byte, the register books, the
// official statements.
#include <QFile>
#include <QPlainTextEdit>
#include <QTemporaryDir>

#include "accounts/plan2007.h"
#include "escenarios/cuaderno.h"
#include "escenarios/herramientas.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/libroimpreso.h"
#include "soporte/textos.h"

namespace {

const QByteArray kNif = "B46554432";
const QString kDeclarante = "Comercial Ejemplo, S.L.";

// A third party and what its card says.
struct Tercero {
  const char *codigo, *nombre, *nif, *cp, *pais;
};
constexpr Tercero kTerceros[] = {
    {"43000001", "Ruiz Hermanos", "A28123453", "50001", ""},
    {"43000002", "Peña Muñoz, Luisa", "71727374B", "28001", ""},
    {"43000003", "Müller GmbH", "DE123456789", "", "Alemania"},
    {"43000004", "Taller Bajo", "J46070801", "46001", ""},
    {"40000003", "Papelera del Norte", "B08010209", "", ""},
    {"40000005", "Ibáñez y Cía", "E12345674", "08001", ""},
    {"40000006", "Casas, Ana", "10203040X", "46002", ""},
};

struct Factura {
  const char* entrada;
  const char *quien, *numero, *dia, *base, *tipo, *contrapartida;
};
// 21 % stands under 09, 10 % under 12, 5 % under 14, 0 % under 16.
constexpr Factura kFacturas[] = {
    {"MnuIVARepercutido", "43000001", "V-1", "1001", "3000", "09", ""},
    {"MnuIVARepercutido", "43000001", "V-2", "1502", "1000", "12", ""},
    {"MnuIVARepercutido", "43000002", "V-3", "1603", "-200,5", "09", ""},
    {"MnuIVARepercutido", "43000003", "V-4", "1703", "700", "16", ""},
    {"MnuIVARepercutido", "43000004", "V-5", "2003", "5000", "09", "75200001"},
    {"MnuGrabarIVASoportado", "40000003", "C-1", "2001", "5000", "09", ""},
    {"MnuGrabarIVASoportado", "40000005", "C-2", "2102", "100", "14", ""},
    {"MnuGrabarIVASoportado", "40000003", "C-3", "1002", "2000", "09", "21700001"},
    {"MnuGrabarIVASoportado", "40000006", "C-4", "2503", "4000", "09", "62100001"},
};

class LeyDeHoy : public PorElMenu {
 protected:
  LeyDeHoy() : PorElMenu(Carpetas) { reloj.ponEn(QDate(2024, 4, 2)); }

  // The third choice of the plans; PYMES is the model that stands there.
  void creaLaEmpresa() {
    t = std::make_unique<Teclado>(empiezaEmpresa(ctx, guion, "Comercial Ejemplo", {}, "2"));
    ponPlantillas(ctx);
    const auto empresa = motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
    EXPECT_TRUE(plan2007De(*empresa).sigue);
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
    for (const Tercero& tercero : kTerceros) creaTercero(tercero);
    // The capital, in the bank.
    tecleaLinea(*t, guion, ctx.sesion, {{}, "02/01/2024", "57200001", "Capital", "10000", {}},
                true);
    tecleaLinea(*t, guion, ctx.sesion, {{}, "02/01/2024", "10000001", "Capital", {}, "10000"},
                false);
  }
  void creaTercero(const Tercero& tercero) {
    t->enfoca("TxtSubcuenta");
    t->teclea(QString(tercero.codigo).replace("0000", "."));
    guion.esperaPregunta(
        "El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ", true, "Error");
    guion.esperaDialogo("FrmSubCuentas", [&](Teclado& alta) {
      guion.esperaDialogo("FrmDatosAuxiliares", [&](Teclado& ficha) {
        rellena(
            ficha,
            {{"TxtNif", tercero.nif}, {"TxtCodigoPostal", tercero.cp}, {"TxtPais", tercero.pais}});
        ficha.mnemonico('a');
      });
      tecleaNombre(alta, QString::fromUtf8(tercero.nombre));
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
    for (const Factura& f : kFacturas)
      herramienta(f.entrada, [&](Teclado& d) {
        rellena(d, {{"TxtCodigoProveedor", QString(f.quien).mid(3)},
                    {"TxtNumFactura", f.numero},
                    {"TxtFecha", f.dia},
                    {"TxtBase", f.base},
                    {"TxtIva", f.tipo}});
        if (*f.contrapartida) rellena(d, {{"TxtContrapartida", f.contrapartida}});
        d.tab();
        EXPECT_EQ(d.textoDe("LblAvisoTipo"), "");
        acepta(d);
      });
    herramienta("MnuIntercomunitario", [&](Teclado& d) {
      rellena(d, {{"TxtFecha", "2203"}, {"TxtIva", "09"}, {"TxtImporteIva", "84"}});
      EXPECT_EQ(d.textoDe("LblAvisoTipo"), "");
      acepta(d);
    });
  }
  // The landlord's invoice bears a retention: its row says so by hand.
  void tecleaRetencion() {
    herramienta("MnuDatosRegistros", [&](Teclado& d) {
      auto& tabla = d.control<TablaHoja>("GrdRegistros");
      int columna = 0;
      while (tabla.model()->headerData(columna, Qt::Horizontal).toString() != "Ret.") ++columna;
      tabla.irA(filaDe(d, "GrdRegistros", 2, "C-4"), columna);
      d.enfoca("GrdRegistros");
      d.teclea("s");
      d.intro();
      EXPECT_EQ(tabla.textoDe(tabla.fila(), columna), "S");
      d.escape();
    });
  }
  void tecleaDeclarante(Teclado& d) {
    guion.esperaDialogo("FrmDeclarante", [](Teclado& dd) {
      dd.teclea("b46554432");
      dd.intro();
      dd.tecla(Qt::Key_Down);
      dd.teclea(kDeclarante);
      dd.intro();
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
  QByteArray leido(const QString& ruta) {
    QFile fichero(ruta);
    EXPECT_TRUE(fichero.open(QIODevice::ReadOnly));
    return fichero.readAll();
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

QByteArray diecisiete(qint64 centimos) {
  QByteArray cifras = QByteArray::number(std::abs(centimos)).rightJustified(17, '0');
  if (centimos < 0) cifras[0] = 'N';
  return cifras;
}

// What the file must hold, by casilla or by name; the rest is its constant, zeros or blanks.
QHash<QString, QByteArray> esperadoDel303() {
  QHash<QString, QByteArray> lista = {
      {"Ejercicio", "2024"},
      {"Periodo", "1T"},
      {"Versión del programa", "1.6"},
      {"NIF", kNif},
      {"Apellidos y nombre o razón social", "COMERCIAL EJEMPLO, S.L."},
      {"Tipo de declaración", "C"},
      {"Tributa exclusivamente en régimen simplificado", "3"},
      {"65", "10000"}};
  for (const char* no :
       {"Tributación exclusivamente foral", "Inscrito en el registro de devolución mensual",
        "Autoliquidación conjunta", "Acogido al criterio de caja",
        "Destinatario de operaciones con criterio de caja", "Opción por prorrata especial",
        "Revocación de prorrata especial", "Concurso de acreedores en el periodo",
        "SII voluntario"})
    lista.insert(no, "2");
  const std::pair<const char*, qint64> casillas[] = {
      {"07", 800000}, {"09", 168000}, {"04", 100000}, {"06", 10000},  {"10", 40000},
      {"11", 8400},   {"14", -20050}, {"15", -4211},  {"27", 182189}, {"28", 910000},
      {"29", 189500}, {"30", 200000}, {"31", 42000},  {"36", 40000},  {"37", 8400},
      {"45", 239900}, {"46", -57711}, {"59", 70000},  {"64", -57711}, {"66", -57711},
      {"69", -57711}, {"71", -57711}, {"110", 10000}, {"87", 10000}};
  for (const auto& [casilla, centimos] : casillas) lista.insert(casilla, diecisiete(centimos));
  return lista;
}

// Position by position against the published table of the first half of 2024.
void compruebaFichero303(const QByteArray& fichero) {
  ASSERT_EQ(fichero.size(), 3767);
  QFile tabla(QStringLiteral(LIBRANO_DATOS "/modelo303-2024.csv"));
  ASSERT_TRUE(tabla.open(QIODevice::ReadOnly));
  QHash<QString, QByteArray> esperado = esperadoDel303();
  QSet<QString> vistos;
  qsizetype pagina = 0, fin = 0;
  while (!tabla.atEnd()) {
    const QStringList fila = QString::fromUtf8(tabla.readLine()).trimmed().split(';');
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
    guion.esperaMensaje(
        "Error 5: " + ErrorEjecucion(5, "La casilla 110 no puede ser negativa").descripcion(),
        "Librano");
    d.teclea("-5");
    d.intro();
    d.teclea("100");
    d.intro();
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
  compruebaFichero303(leido(salida("303.txt")));
}

// --- the 347 ------------------------------------------------------------------------------------

QByteArray conSigno(qint64 centimos) {
  return (centimos < 0 ? "N" : " ") +
         QByteArray::number(std::abs(centimos)).rightJustified(15, '0');
}

// A record of 500, by the positions of its publication, counted from 1.
class Registro347 {
 public:
  explicit Registro347(char tipo) : bytes_(500, ' ') {
    pon(1, QByteArray(1, tipo) + "3472024" + kNif);
  }
  Registro347& pon(int desde, const QByteArray& texto) {
    bytes_.replace(desde - 1, texto.size(), texto);
    return *this;
  }
  const QByteArray& bytes() const { return bytes_; }

 private:
  QByteArray bytes_;
};

QByteArray declarado(const Tercero& t, const char* provincia, char clave, qint64 importe,
                     bool local = false) {
  Registro347 r('2');
  r.pon(18, t.nif).pon(36, QString::fromUtf8(t.nombre).toUpper().replace(u'Á', u'A').toLatin1());
  r.pon(76, "D").pon(77, provincia).pon(82, QByteArray(1, clave)).pon(83, conSigno(importe));
  if (local) r.pon(100, "X");
  r.pon(101, QByteArray(15, '0')).pon(116, conSigno(0)).pon(132, "0000").pon(284, conSigno(0));
  for (int q = 0; q < 4; ++q)
    r.pon(136 + 32 * q, conSigno(q == 0 ? importe : 0)).pon(152 + 32 * q, conSigno(0));
  return r.bytes();
}

void compruebaFichero347(const QByteArray& f) {
  const QByteArray cabeza = Registro347('1')
                                .pon(18, "COMERCIAL EJEMPLO, S.L.")
                                .pon(58, "T000000000")
                                .pon(108, "3470000000001")
                                .pon(123, QByteArray(13, '0'))
                                .pon(136, "000000003")
                                .pon(145, conSigno(1925000))
                                .pon(161, "000000001")
                                .pon(170, conSigno(605000))
                                .bytes();
  const QByteArray local = Registro347('2')
                               .pon(18, "J46070801")
                               .pon(36, "TALLER BAJO")
                               .pon(76, "I")
                               .pon(99, conSigno(605000))
                               .pon(115, "1")
                               .pon(116, "9872023VH5797S0001WX")
                               .pon(146, "MAYOR")
                               .pon(199, "00012")
                               .pon(322, "00000")
                               .pon(327, "46")
                               .pon(329, "46001")
                               .bytes();
  QByteArrayList registros = {cabeza,
                              declarado(kTerceros[4], "08", 'A', 847000),
                              declarado(kTerceros[0], "50", 'B', 473000),
                              declarado(kTerceros[3], "46", 'B', 605000, true),
                              local,
                              ""};
  EXPECT_EQ(f.split('\n').size(), registros.size());
  for (qsizetype i = 0; i + 1 < registros.size(); ++i)
    EXPECT_EQ(f.mid(502 * i, 502), registros[i] + "\r\n") << i;
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
      int columna = 0;
      while (tabla.model()->headerData(columna, Qt::Horizontal).toString() !=
             QString::fromUtf8(titulo))
        ++columna;
      locales.enfoca("GrdInmuebles");
      tabla.setCurrentIndex(tabla.model()->index(0, columna));
      locales.teclea(texto);
      locales.intro();
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
    guion.esperaMensaje("Error 3421: " + ErrorEjecucion(3421, "«8» no vale").descripcion(),
                        "Librano");
    d.intro();
    d.teclea("08");
    d.intro();
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
  compruebaFichero347(leido(salida("347.txt")));
}

// --- the register books -------------------------------------------------------------------------

// A row of a sheet has these cells and no others.
void compruebaFila(const QHash<QString, QString>& hay, const QString& fila,
                   const std::vector<std::pair<const char*, const char*>>& celdas) {
  QStringList suyas;
  for (auto it = hay.cbegin(); it != hay.cend(); ++it)
    if (it.key().endsWith(fila) && !it.key().chopped(fila.size()).back().isDigit())
      suyas += it.key().chopped(fila.size());
  for (const auto& [columna, valor] : celdas) {
    EXPECT_EQ(hay.value(columna + fila), QString::fromUtf8(valor)) << columna << fila.toStdString();
    suyas.removeOne(QString(columna));
  }
  EXPECT_TRUE(suyas.isEmpty()) << qPrintable(suyas.join(' '));
}

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
  const auto expedidas = cuaderno.celdas(1), recibidas = cuaderno.celdas(2),
             bienes = cuaderno.celdas(3);
  EXPECT_EQ(expedidas["AJ2"], "'Referencia Externa'");
  EXPECT_EQ(recibidas["AP2"], "'Referencia Externa'");
  EXPECT_EQ(bienes["AN2"], "'Referencia Externa'");
  compruebaFila(expedidas, "4",
                {{"A", "2024"},
                 {"B", "'1T'"},
                 {"C", "'A'"},
                 {"D", "'03'"},
                 {"F", "'F1'"},
                 {"I", "45301"},
                 {"L", "'V-1'"},
                 {"P", "'A28123453'"},
                 {"Q", "'RUIZ HERMANOS'"},
                 {"R", "'01'"},
                 {"S", "'S1'"},
                 {"U", "3630"},
                 {"V", "3000"},
                 {"W", "21"},
                 {"X", "630"}});
  EXPECT_EQ(expedidas["F6"] + expedidas["V6"], "'R1'-200.5");
  EXPECT_EQ(expedidas["T7"] + expedidas["N7"] + expedidas["P7"] + expedidas["O7"],
            "'E5''02''DE123456789'");
  EXPECT_EQ(recibidas["N4"] + recibidas["N8"], "'1''5'");
  EXPECT_EQ(recibidas["K5"] + recibidas["U5"], "'C-3''S'");
  EXPECT_EQ(recibidas["T7"] + recibidas["AA7"] + recibidas["AC7"] + recibidas["Z7"],
            "'09'40084400");
  EXPECT_EQ(bienes["S4"] + bienes["J4"] + bienes["AB4"] + bienes["AD4"], "'C-3'200021420");
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
  const struct {
    const LibroImpreso& libro;
    const char* linea;
  } lineas[] = {{balance, "II. Inmovilizado material 11200 2.000,00"},
                {balance, "1. Clientes por ventas y prestaciones de servicios 12380 11.237,39"},
                {balance, "3. Otros deudores 12390 2.399,00"},
                {balance, "TOTAL ACTIVO (A + B) 10000 25.636,39"},
                {balance, "VII. Resultado del ejercicio 21700 399,50"},
                {balance, "1. Proveedores 32580 13.415,00"},
                {balance, "2. Otros acreedores 32590 1.821,89"},
                {balance, "TOTAL PATRIMONIO NETO Y PASIVO (A + B + C) 30000 25.636,39"},
                {resultados, "1. Importe neto de la cifra de negocios 40100 4.499,50"},
                {resultados, "4. Aprovisionamientos 40400 -5.100,00"},
                {resultados, "5. Otros ingresos de explotación 40500 5.000,00"},
                {resultados, "7. Otros gastos de explotación 40700 -4.000,00"},
                {resultados, "D) RESULTADO DEL EJERCICIO 49500 399,50"}};
  for (const auto& [libro, linea] : lineas)
    EXPECT_EQ(libro.linea(QString::fromUtf8(linea).section(' ', 0, 2)).toStdString(), linea);
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
