// A quarter of 2024 by keys, from its rates to its returns: the invoices, the 303 and its file
// field by field, the year's 347 likewise, the letters, the register books.
#include <zip.h>

#include <QFile>
#include <QXmlStreamReader>

#include "escenarios/herramientas.h"
#include "oficial/registrofijo.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/libroimpreso.h"
#include "soporte/textos.h"

namespace {

using Campos = std::vector<std::pair<const char*, QString>>;

// Every field of a record is what is expected of it, or its constant, or empty.
void compruebaCampos(const DisenoFijo& diseno, const char* registro, const QByteArray& bytes,
                     QHash<QString, QByteArray> esperado) {
  for (const CampoFijo& c : diseno.campos(registro)) {
    const QByteArray hay = bytes.mid(c.desde - 1, c.longitud);
    const QByteArray vacio =
        QByteArray(c.longitud, c.tipo == TipoFijo::Letras || c.tipo == TipoFijo::Nif ? ' ' : '0');
    QByteArray debe = esperado.contains(c.clave())  ? esperado.take(c.clave())
                      : !c.fijo.isEmpty()           ? c.fijo.toLatin1()
                      : !c.defecto.isEmpty()        ? c.defecto.toLatin1()
                      : c.tipo == TipoFijo::Importe ? " " + vacio.mid(1)
                                                    : vacio;
    EXPECT_EQ(hay, debe.leftJustified(c.longitud)) << registro << ' ' << c.nombre.toStdString();
  }
  EXPECT_TRUE(esperado.isEmpty()) << qPrintable(esperado.keys().join(' '));
}

class Modelos : public DiarioDelTrimestre {
 protected:
  Modelos() {
    const QString base = "Select * from Subcuentas where Subcuenta=";
    const std::tuple<const char*, const char*, const char*, const char*> terceros[] = {
        {"43000001", "A28123453", "50001", ""},
        {"43000002", "71727374B", "28001", ""},
        {"43000003", "DE123456789", "", "Alemania"},
        {"40000003", "B08010209", "", ""},
        {"40000005", "E12345674", "08001", ""}};
    for (const auto& [codigo, nif, cp, pais] : terceros) {
      const QString fila = base + "'" + codigo + "'";
      if (valor(fila).isEmpty())
        inserta("Subcuentas", {{"Subcuenta", codigo},
                               {"Cuenta", QString(codigo).left(3)},
                               {"Descripcion", QString("Tercero ") + codigo}});
      cambia(fila, "Nif", nif);
      cambia(fila, "CP", cp);
      cambia(fila, "Pais", pais);
    }
  }
  void factura(const char* entrada, const Campos& campos) {
    herramienta(entrada, [&](Teclado& d) {
      rellena(d, campos);
      acepta(d);
    });
  }
  void venta(const QString& quien, const QString& numero, const QString& dia, const QString& base,
             const QString& tipo) {
    factura("MnuIVARepercutido", {{"TxtCodigoProveedor", quien.mid(3)},
                                  {"TxtNumFactura", numero},
                                  {"TxtFecha", dia},
                                  {"TxtBase", base},
                                  {"TxtIva", tipo}});
  }
  void compra(const QString& quien, const QString& numero, const QString& dia, const QString& base,
              const QString& tipo) {
    factura("MnuGrabarIVASoportado", {{"TxtCodigoProveedor", quien.mid(3)},
                                      {"TxtNumFactura", numero},
                                      {"TxtFecha", dia},
                                      {"TxtBase", base},
                                      {"TxtIva", tipo}});
  }
  // The rates of the year into free codes, and its invoices: 21 % is 09, 10 % 12, 5 % 14.
  void tecleaFacturas() {
    herramienta("MnuTiposPorFechas", [&](Teclado& d) {
      d.escribe("TxtFecha", "01/03/2024");
      guion.esperaMensaje("Tipos puestos en los códigos 09, 10, 11, 12, 13, 14, 15, 16, 17, 18",
                          "Tipos de IVA");
      d.pulsa("CmdPoner");
      d.escape();
    });
    ASSERT_EQ(valor("Select IVA from TiposIVA where Codigo='12'"), "10");
    venta("43000001", "V-1", "1001", "3000", "09");
    venta("43000001", "V-2", "1502", "1000", "12");
    venta("43000002", "V-3", "1603", "-200,5", "09");
    venta("43000003", "V-4", "1703", "700", "16");
    compra("40000003", "C-1", "2001", "5000", "09");
    compra("40000005", "C-2", "2102", "100", "14");
    herramienta("MnuIntercomunitario", [&](Teclado& d) {
      rellena(d, {{"TxtFecha", "2203"}, {"TxtIva", "09"}, {"TxtImporteIva", "84"}});
      acepta(d);
    });
  }
  void tecleaDeclarante(Teclado& d) {
    guion.esperaDialogo("FrmDeclarante", [](Teclado& dd) {
      dd.teclea("b46554432");
      dd.intro();
      dd.tecla(Qt::Key_Down);
      dd.teclea("Comercial Ejemplo, S.L.");
      dd.intro();
      dd.llega("CmdAceptar");
      dd.intro();
    });
    d.pulsa("CmdDeclarante");
  }
  static int filaDe(Teclado& d, const char* tabla, int columna, const QString& texto) {
    const TablaHoja& hoja = d.control<TablaHoja>(tabla);
    for (int f = 0; f < hoja.model()->rowCount(); ++f)
      if (hoja.textoDe(f, columna) == texto) return f;
    ADD_FAILURE() << texto.toStdString();
    return 0;
  }
  QByteArray leido(const QString& ruta) {
    QFile fichero(ruta);
    EXPECT_TRUE(fichero.open(QIODevice::ReadOnly));
    return fichero.readAll();
  }
  QString salida(const QString& nombre) { return carpetaDatos() + '/' + nombre; }
};

QByteArray diecisiete(qint64 centimos) {
  QByteArray cifras = QByteArray::number(std::abs(centimos)).rightJustified(17, '0');
  if (centimos < 0) cifras[0] = 'N';
  return cifras;
}

void compruebaFichero303(const QByteArray& f) {
  ASSERT_EQ(f.size(), 3767);
  const DisenoFijo diseno("303.csv", "2024A");
  compruebaCampos(diseno, "00", f.left(328),
                  {{"Ejercicio", "2024"}, {"Periodo", "1T"}, {"Versión del programa", "1.6 "}});
  compruebaCampos(diseno, "01", f.mid(328, 1581),
                  {{"NIF", "B46554432"},
                   {"Apellidos y nombre o razón social", "COMERCIAL EJEMPLO, S.L."},
                   {"Tipo de declaración", "C"},
                   {"Ejercicio", "2024"},
                   {"Periodo", "1T"},
                   {"07", diecisiete(300000)},
                   {"09", diecisiete(63000)},
                   {"04", diecisiete(100000)},
                   {"06", diecisiete(10000)},
                   {"10", diecisiete(40000)},
                   {"11", diecisiete(8400)},
                   {"14", diecisiete(-20050)},
                   {"15", diecisiete(-4211)},
                   {"27", diecisiete(77189)},
                   {"28", diecisiete(510000)},
                   {"29", diecisiete(105500)},
                   {"36", diecisiete(40000)},
                   {"37", diecisiete(8400)},
                   {"45", diecisiete(113900)},
                   {"46", diecisiete(-36711)}});
  compruebaCampos(diseno, "03", f.mid(328 + 1581, 1017),
                  {{"59", diecisiete(70000)},
                   {"64", diecisiete(-36711)},
                   {"65", "10000"},
                   {"66", diecisiete(-36711)},
                   {"69", diecisiete(-36711)},
                   {"71", diecisiete(-36711)},
                   {"110", diecisiete(10000)},
                   {"87", diecisiete(10000)}});
  compruebaCampos(diseno, "DID", f.mid(328 + 1581 + 1017, 823), {});
  compruebaCampos(diseno, "99", f.right(18), {{"Ejercicio", "2024"}, {"Periodo", "1T"}});
}

TEST_F(Modelos, ElTrimestreEnSu303YSuFichero) {
  ponPlantillas(ctx);
  tecleaFacturas();
  herramienta("MnuModelo303", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtPeriodo"), "1T");
    tecleaDeclarante(d);
    const auto total = [&](const char* casilla) {
      return d.control<TablaHoja>("GrdCasillas").textoDe(filaDe(d, "GrdCasillas", 0, casilla), 4);
    };
    EXPECT_EQ(total("07"), "3.000,00");
    EXPECT_EQ(total("10"), "400,00");
    EXPECT_EQ(total("15"), "-42,11");
    EXPECT_EQ(total("27"), "771,89");
    EXPECT_EQ(total("59"), "700,00");
    EXPECT_EQ(total("71"), "-367,11");
    // Typed by hand: it counts, a wrong one is refused and leaves it.
    auto& casillas = d.control<TablaHoja>("GrdCasillas");
    casillas.irA(filaDe(d, "GrdCasillas", 0, "110"), 3);
    d.enfoca("GrdCasillas");
    guion.esperaMensaje(
        "Error 5: " + ErrorEjecucion(5, "La casilla 110 no puede ser negativa").descripcion(),
        "Librano");
    d.teclea("-5");
    d.intro();
    d.teclea("100");
    d.intro();
    EXPECT_EQ(total("110"), "100,00");
    EXPECT_EQ(total("87"), "100,00");
    // The rows of a casilla, by Enter.
    casillas.irA(filaDe(d, "GrdCasillas", 0, "15"), 0);
    guion.esperaDialogo("FrmDatosRegistros", [&](Teclado& filas) {
      const TablaHoja& tabla = filas.control<TablaHoja>("GrdRegistros");
      EXPECT_EQ(tabla.model()->rowCount(), 1);
      EXPECT_EQ(tabla.textoDe(0, 2), "V-3");
      EXPECT_EQ(tabla.textoDe(0, 6), "R1");
      filas.escape();
    });
    d.enfoca("GrdCasillas");
    d.intro();
    d.pulsa("CmdImprimir");
    const LibroImpreso impreso = leeVista(guion);
    EXPECT_EQ(impreso.linea("71 "), "71 Resultado -367,11");
    EXPECT_EQ(impreso.linea("110 "),
              "110 Cuotas a compensar pendientes de periodos anteriores 100,00");
    const QString ruta = salida("303.txt");
    guion.esperaFichero(ruta);
    guion.esperaMensaje("Fichero hecho. Cuando lo haya presentado, dé el periodo por presentado.");
    d.pulsa("CmdFichero");
    EXPECT_EQ(guion.propuesto, "B46554432_2024_1T.303");
    guion.esperaPregunta("¿Dar por presentado el 1T con resultado -367,11 (C)?", true);
    d.pulsa("CmdPresentar");
    d.elige("TxtPeriodo", "2T");
    EXPECT_EQ(total("110"), "467,11");
    d.escape();
  });
  compruebaFichero303(leido(salida("303.txt")));
}

TEST_F(Modelos, El347DelAnoConSusCartas) {
  ponPlantillas(ctx);
  tecleaFacturas();
  herramienta("MnuModelo347", [&](Teclado& d) {
    tecleaDeclarante(d);
    const TablaHoja& tabla = d.control<TablaHoja>("GrdTerceros");
    ASSERT_EQ(tabla.model()->rowCount(), 2);
    EXPECT_EQ(tabla.textoDe(0, 0) + tabla.textoDe(0, 1), "AB08010209");
    EXPECT_EQ(tabla.textoDe(0, 5), "Falta la provincia");
    EXPECT_EQ(tabla.textoDe(1, 6), "4.730,00");
    d.control<TablaHoja>("GrdTerceros").irA(0, 3);
    d.enfoca("GrdTerceros");
    d.teclea("8");
    guion.esperaMensaje("Error 3421: " + ErrorEjecucion(3421, "«8» no vale").descripcion(),
                        "Librano");
    d.intro();
    d.teclea("08");
    d.intro();
    EXPECT_EQ(tabla.textoDe(0, 5), "");
    guion.esperaFichero(salida("347.txt"));
    guion.esperaMensaje("Fichero hecho con 2 declarados", "Modelo 347");
    d.pulsa("CmdFichero");
    d.pulsa("CmdCartas");
    const LibroImpreso cartas = leeVista(guion);
    EXPECT_EQ(cartas.paginas.size(), 2);
    EXPECT_FALSE(cartas.linea("Total del año 4.730,00", 2).isEmpty());
    d.escape();
  });
  const QByteArray f = leido(salida("347.txt"));
  ASSERT_EQ(f.size(), 3 * 502);
  const DisenoFijo diseno("347.csv", "2014");
  const auto registro = [&](int n) {
    EXPECT_EQ(f.mid(n * 502 + 500, 2), "\r\n");
    return f.mid(n * 502, 500);
  };
  compruebaCampos(diseno, "declarante", registro(0),
                  {{"Ejercicio", "2024"},
                   {"NIF del declarante", "B46554432"},
                   {"Apellidos y nombre o razón social", "COMERCIAL EJEMPLO, S.L."},
                   {"Número identificativo", "3470000000001"},
                   {"Número total de personas y entidades", "000000002"},
                   {"Importe total anual", " 000000001078000"}});
  const auto nombre = [&](const char* codigo) {
    return textoOficial(valor(QString("Select Descripcion from Subcuentas where Subcuenta='") +
                              codigo + "'"))
        .toLatin1();
  };
  compruebaCampos(diseno, "declarado", registro(1),
                  {{"Ejercicio", "2024"},
                   {"NIF del declarante", "B46554432"},
                   {"NIF del declarado", "B08010209"},
                   {"Apellidos y nombre o razón social", nombre("40000003")},
                   {"Código provincia", "08"},
                   {"Clave operación", "A"},
                   {"Importe anual de las operaciones", " 000000000605000"},
                   {"Operaciones 1T", " 000000000605000"}});
  compruebaCampos(diseno, "declarado", registro(2),
                  {{"Ejercicio", "2024"},
                   {"NIF del declarante", "B46554432"},
                   {"NIF del declarado", "A28123453"},
                   {"Apellidos y nombre o razón social", nombre("43000001")},
                   {"Código provincia", "50"},
                   {"Clave operación", "B"},
                   {"Importe anual de las operaciones", " 000000000473000"},
                   {"Operaciones 1T", " 000000000473000"}});
}

// What stands in a workbook: the cells of each sheet by their names, as its XML tells them.
class Cuaderno {
 public:
  explicit Cuaderno(const QString& ruta) {
    int fallo = 0;
    zip_ = zip_open(QFile::encodeName(ruta).constData(), ZIP_RDONLY, &fallo);
    EXPECT_NE(zip_, nullptr);
    QXmlStreamReader xml(entrada("xl/sharedStrings.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"t")
        textos_ += xml.readElementText();
  }
  ~Cuaderno() { zip_close(zip_); }
  QStringList hojas() {
    QStringList nombres;
    QXmlStreamReader xml(entrada("xl/workbook.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"sheet")
        nombres += xml.attributes().value("name").toString();
    return nombres;
  }
  // Texts between quotes, numbers as they stand.
  QHash<QString, QString> celdas(int hoja) {
    QHash<QString, QString> lista;
    QXmlStreamReader xml(entrada(QStringLiteral("xl/worksheets/sheet%1.xml").arg(hoja)));
    QString nombre;
    bool texto = false;
    while (!xml.atEnd()) {
      if (xml.readNext() != QXmlStreamReader::StartElement) continue;
      if (xml.name() == u"c") {
        nombre = xml.attributes().value("r").toString();
        texto = xml.attributes().value("t") == u"s";
      } else if (xml.name() == u"v") {
        const QString valor = xml.readElementText();
        lista.insert(nombre, texto ? '\'' + textos_.value(valor.toInt()) + '\'' : valor);
      }
    }
    return lista;
  }

 private:
  QByteArray entrada(const QString& nombre) {
    zip_file_t* const f = zip_fopen(zip_, nombre.toUtf8().constData(), 0);
    QByteArray todo(1 << 20, 0);
    todo.resize(f ? qsizetype(zip_fread(f, todo.data(), zip_uint64_t(todo.size()))) : 0);
    if (f) zip_fclose(f);
    return todo;
  }
  zip_t* zip_ = nullptr;
  QStringList textos_;
};

TEST_F(Modelos, LosLibrosRegistroEnHojaDeCalculo) {
  tecleaFacturas();
  const QString ruta = salida("libros.xlsx");
  herramienta("MnuLibrosRegistro", [&](Teclado& d) {
    tecleaDeclarante(d);
    EXPECT_EQ(d.textoDe("LblResumen"), "Expedidas: 4. Recibidas: 3. Avisos: 2");
    EXPECT_EQ(d.control<TablaHoja>("GrdAvisos").textoDe(0, 2), "Falta el NIF");
    guion.esperaFichero(ruta);
    guion.esperaMensaje("Libros hechos", "Libros registro");
    d.pulsa("CmdAceptar");
    EXPECT_EQ(guion.propuesto, "2024B46554432CCOMERCIALEJEMPLOSL.xlsx");
    d.escape();
  });
  Cuaderno cuaderno(ruta);
  EXPECT_EQ(cuaderno.hojas(), (QStringList{"EXPEDIDAS", "RECIBIDAS", "BIENES-INVERSIÓN"}));
  const auto comprueba = [](const QHash<QString, QString>& hay, const QString& fila,
                            const std::vector<std::pair<const char*, const char*>>& celdas) {
    QStringList suyas;
    for (auto it = hay.cbegin(); it != hay.cend(); ++it)
      if (it.key().endsWith(fila) && !it.key().chopped(fila.size()).back().isDigit())
        suyas += it.key().chopped(fila.size());
    for (const auto& [columna, valor] : celdas) {
      EXPECT_EQ(hay.value(columna + fila), QString::fromUtf8(valor))
          << columna << fila.toStdString();
      suyas.removeOne(QString(columna));
    }
    EXPECT_TRUE(suyas.isEmpty()) << qPrintable(suyas.join(' '));
  };
  const auto expedidas = cuaderno.celdas(1), recibidas = cuaderno.celdas(2);
  EXPECT_EQ(expedidas["AJ2"], "'Referencia Externa'");
  EXPECT_EQ(recibidas["AP2"], "'Referencia Externa'");
  EXPECT_EQ(cuaderno.celdas(3)["AN2"], "'Referencia Externa'");
  const QByteArray ruiz = ('\'' +
                           textoOficial(valor("Select Descripcion from Subcuentas where "
                                              "Subcuenta='43000001'")) +
                           '\'')
                              .toUtf8();
  comprueba(expedidas, "4",
            {{"A", "2024"},
             {"B", "'1T'"},
             {"C", "'A'"},
             {"D", "'03'"},
             {"F", "'F1'"},
             {"I", "45301"},
             {"L", "'V-1'"},
             {"P", "'A28123453'"},
             {"Q", ruiz.constData()},
             {"R", "'01'"},
             {"S", "'S1'"},
             {"U", "3630"},
             {"V", "3000"},
             {"W", "21"},
             {"X", "630"}});
  EXPECT_EQ(expedidas["F6"] + expedidas["V6"], "'R1'-200.5");
  EXPECT_EQ(expedidas["T7"] + expedidas["N7"] + expedidas["P7"] + expedidas["O7"],
            "'E5''02''DE123456789'");
  EXPECT_EQ(recibidas["N4"] + recibidas["N6"], "'1''3'");
  EXPECT_EQ(recibidas["T6"] + recibidas["AA6"] + recibidas["AC6"] + recibidas["Z6"],
            "'09'40084400");
}

}  // namespace
