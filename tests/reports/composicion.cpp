// Templates and pages, on small paper where every break can be counted.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "foundation/data/datacontrol.h"
#include "foundation/data/errorejecucion.h"
#include "foundation/rutas.h"
#include "reports/errores.h"
#include "reports/exporta.h"
#include "reports/impreso.h"

using namespace reports;

namespace {

const char* const kBase = R"([informe]
titulo = Prueba
papel = 100x60
margenes = 5 5 5 5
[origen Diario]
columnas = NLinea, NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe
desde = Diario
orden = Subcuenta, NLinea
)";

TEST(Plantilla, lasDefectuosasDicenLaLineaYElMotivo) {
  const struct {
    const char* resto;
    const char* motivo;
  } casos[] = {
      {"[detalle]\nalto = 4\n0 20 izq \"{Importe\"\n", "línea 11, falta }"},
      {"[detalle]\nalto = 4\n0 20 izq \"{Importe:moneda}\"\n", "línea 11, formato «moneda»"},
      {"[detalle]\nalto = cuatro\n", "línea 10, número «cuatro»"},
      {"[detalle]\nalto = 4\n0 20 arriba \"x\"\n", "línea 11, alineación «arriba»"},
      {"[detalle]\nalto = 4\n0 20 izq negra \"x\"\n", "línea 11, «negra»"},
      {"[detalle]\nalto = 4\n80 20 izq \"x\"\n", "se sale de la página"},
      {"[detalle]\nalto = 60\n", "no caben en la página"},
      {"[pie Cuenta]\nalto = 4\n", "línea 9, sección desconocida [pie Cuenta]"},
      {"[grupo G]\nsalto = quizá\n", "línea 10, sí o no, no «quizá»"},
      {"[detalle]\nalto = 4\n[pie informe]\nalto = 4\n0 9 der \"{suma(Importe, G)}\"\n",
       "línea 13, no hay grupo «G»"},
      {"[hoja]\n\"A\" {Importe}\n", "línea 10, columna de hoja"},
      {"[informe]\npapel = folio\n", "línea 10, papel «folio»"},
      {"[informe]\nincluye = ../otra.inc\n", "línea 10, ruta en incluye"},
      {"", "falta [detalle]"},
  };
  for (const auto& c : casos) {
    try {
      leePlantilla(QString::fromUtf8(kBase) + QString::fromUtf8(c.resto),
                   [](const QString&) { return QString(); });
      ADD_FAILURE() << c.motivo;
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kPlantillaDefectuosa);
      EXPECT_TRUE(e.descripcion().contains(QString::fromUtf8(c.motivo)))
          << e.what() << " sin " << c.motivo;
    }
  }
}

class Composicion : public testing::Test {
 protected:
  // Lines of two subcuentas by turns of three, with amounts of 1, 2, 3... on the debe.
  void SetUp() override {
    DataControl diario(libros.motor);
    diario.bind(libros.rutaEmpresa(), QStringLiteral("Diario"));
    for (int i = 1; i <= kLineas; ++i) {
      diario.AddNew();
      diario.Fields("NLinea") = i;
      diario.Fields("NAsiento") = (i - 1) / 4 + 1;
      diario.Fields("Fecha") = QDate(2024, 1, 1 + i % 28);
      diario.Fields("Subcuenta") = i <= kPrimeras ? "57200001" : "43000001";
      diario.Fields("Descripcion") = QStringLiteral("Línea ñ %1").arg(i);
      diario.Fields("DH") = i % 2 ? "D" : "H";
      diario.Fields("Importe") = i % 2 ? i : -i;
      diario.Update();
    }
  }

  Impreso abre(const QString& bandas) {
    const QString ruta = libros.dirDatos() + QStringLiteral("prueba.rpt");
    QFile f(rutaSistema(ruta));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write((QString::fromUtf8(kBase) + bandas).toUtf8());
    f.close();
    return Impreso(libros, ruta, {});
  }
  static constexpr int kLineas = 26;
  static constexpr int kPrimeras = 8;  // in the second subcuenta by code
  Libros libros;
};

// Fifty millimetres of page: five of heading, five of foot, and lines of five between.
const char* const kBandas = R"([cabecera pagina]
alto = 5
0 40 izq "Hoja {pagina}/{paginas}"
[pie pagina]
alto = 5
0 40 izq "pagina {suma(Importe)}"
[grupo Cuenta]
por = Subcuenta
repite = si
[cabecera Cuenta]
alto = 5
0 60 izq "Cuenta {Subcuenta} {continua}"
[detalle]
alto = 5
0 20 izq "{NLinea}"
20 30 der "{suma(Importe, Cuenta)}"
50 30 der "{Importe:acreedor}"
[pie Cuenta]
alto = 5
0 60 izq "total {Subcuenta} {suma(Importe)}"
[sigue Cuenta]
alto = 5
0 60 izq "sigue {suma(Importe)}"
[anterior Cuenta]
alto = 5
0 60 izq "anterior {suma(Importe)}"
[pie informe]
alto = 5
0 60 izq "todo {suma(Importe)}"
)";

// The lines of a page, each with its texts from left to right.
QString renglones(Impreso& libro, int numero) {
  const auto pagina = libro.documento().pagina(numero);
  std::map<int, QString> porAltura;
  for (const Texto& t : pagina->textos) porAltura[t.y] += t.texto.trimmed() + u' ';
  QString todos;
  for (const auto& [y, texto] : porAltura) todos += texto.trimmed() + u'\n';
  return todos;
}

TEST_F(Composicion, cortesSumasYCabeceras) {
  Impreso libro = abre(QString::fromUtf8(kBandas));
  EXPECT_TRUE(renglones(libro, 1).startsWith(u"Hoja 1/…\n"));  // not counted yet
  libro.documento().cuenta();
  const QString sigue = QStringLiteral("Cuenta 43000001 (continuación)\nanterior ");
  const QString segunda = QStringLiteral("Cuenta 57200001 (continuación)\nanterior ");
  const QStringList paginas{
      "Hoja 1/7\nCuenta 43000001\n9 9,00\n10 -1,00 10,00\n11 10,00\n12 -2,00 12,00\n13 11,00\n"
      "sigue 11,00\npagina 11,00\n",
      "Hoja 2/7\n" + sigue +
          "11,00\n14 -3,00 14,00\n15 12,00\n16 -4,00 16,00\n17 13,00\n"
          "sigue 13,00\npagina 2,00\n",
      "Hoja 3/7\n" + sigue +
          "13,00\n18 -5,00 18,00\n19 14,00\n20 -6,00 20,00\n21 15,00\n"
          "sigue 15,00\npagina 2,00\n",
      "Hoja 4/7\n" + sigue +
          "15,00\n22 -7,00 22,00\n23 16,00\n24 -8,00 24,00\n25 17,00\n"
          "sigue 17,00\npagina 2,00\n",
      "Hoja 5/7\n" + sigue +
          "17,00\n26 -9,00 26,00\ntotal 43000001 -9,00\n"
          "Cuenta 57200001\n1 1,00\nsigue 1,00\npagina -25,00\n",
      "Hoja 6/7\n" + segunda +
          "1,00\n2 -1,00 2,00\n3 2,00\n4 -2,00 4,00\n5 3,00\n"
          "sigue 3,00\npagina 2,00\n",
      "Hoja 7/7\n" + segunda +
          "3,00\n6 -3,00 6,00\n7 4,00\n8 -4,00 8,00\n"
          "total 57200001 -4,00\ntodo -13,00\npagina -7,00\n"};
  ASSERT_EQ(libro.documento().paginas(), paginas.size());
  // Alone and in any order, and one after another, pages are the same.
  for (const int n : {6, 1, 5, 7, 2, 4, 3}) {
    EXPECT_EQ(renglones(libro, n).toStdString(), paginas[n - 1].toStdString());
  }
  Recorrido recorrido(libro.documento());
  Pagina pagina;
  for (int n = 1; n <= 7; ++n) {
    ASSERT_TRUE(recorrido.siguiente(&pagina));
    EXPECT_EQ(textosDe(pagina), textosDe(*libro.documento().pagina(n)));
  }
  EXPECT_FALSE(recorrido.siguiente(&pagina));
  EXPECT_EQ(libro.documento().pagina(8), nullptr);
}

TEST_F(Composicion, cadaGrupoEnSuPaginaYCabecerasConSusFilas) {
  QString bandas = QString::fromUtf8(kBandas);
  Impreso salto = abre(QString(bandas).replace("repite = si", "repite = si\nsalto = si"));
  salto.documento().cuenta();
  EXPECT_TRUE(renglones(salto, 5).endsWith(u"total 43000001 -9,00\npagina -26,00\n"));
  EXPECT_TRUE(renglones(salto, 6).contains(u"\nCuenta 57200001\n1 1,00\n"));

  // With four lines to keep together, the second group no longer fits under the first one's
  // total.
  Impreso junto = abre(QString(bandas).replace("repite = si", "repite = si\njunto = 4"));
  junto.documento().cuenta();
  EXPECT_EQ(renglones(junto, 5),
            QStringLiteral("Hoja 5/7\nCuenta 43000001 (continuación)\nanterior 17,00\n"
                           "26 -9,00 26,00\ntotal 43000001 -9,00\npagina -26,00\n"));
}

TEST_F(Composicion, loQueNoCabe) {
  Impreso libro =
      abre(QStringLiteral("[detalle]\nalto = 5\n0 9 izq \"{Descripcion}\"\n"
                          "15 2 der \"{Importe}\"\n20 30 izq \"Provincia {provincia}\"\n"));
  const QStringList textos = textosDe(*libro.documento().pagina(1));
  EXPECT_EQ(textos.size(), 20) << "a label without its value";
  EXPECT_TRUE(textos[0].endsWith(u"…") && textos[0].startsWith(u"Lín")) << textos[0].toStdString();
  EXPECT_TRUE(textos[1].contains(u'#') && !textos[1].contains(u'9')) << textos[1].toStdString();
}

TEST_F(Composicion, busquedaSinAcentosNiMayusculas) {
  Impreso libro = abre(QStringLiteral("[detalle]\nalto = 5\n0 60 izq \"{Descripcion}\"\n"));
  const auto busca = [&](const char* texto, TareaBusqueda::Sitio desde) {
    TareaBusqueda tarea(libro.compartido(), QString::fromUtf8(texto), desde);
    while (tarea.paso()) continue;
    return tarea.hallado();
  };
  const auto primera = busca("LINEA Ñ 15", {1, -1});
  ASSERT_TRUE(primera);
  const auto pagina = libro.documento().pagina(primera->pagina);
  EXPECT_EQ(pagina->textos[size_t(primera->texto)].texto, QStringLiteral("Línea ñ 15"));
  // From there on it comes round to the same one.
  const auto otra = busca("linea ñ 15", *primera);
  ASSERT_TRUE(otra);
  EXPECT_EQ(otra->pagina, primera->pagina);
  EXPECT_EQ(otra->texto, primera->texto);
  EXPECT_FALSE(busca("no está", {1, -1}));
}

TEST_F(Composicion, exportaLasFilas) {
  Impreso libro =
      abre(QStringLiteral("[detalle]\nalto = 5\n[hoja]\n\"Línea\" 8 {NLinea}\n\"Fecha\" 10 "
                          "{Fecha}\n\"Texto\" 30 {Descripcion}\n\"Haber\" 12 "
                          "{Importe:acreedor}\n"));
  DataControl diario(libros.motor);
  diario.bind(libros.rutaEmpresa(), QStringLiteral("Select * from Diario where NLinea = 11"));
  diario.Edit();
  diario.Fields("Descripcion") = "con \"comillas\"; y más";
  diario.Update();
  const QDir carpeta(rutaSistema(libros.dirDatos()));
  const QString csv = carpeta.filePath(QStringLiteral("filas.csv"));
  { const auto detenida = exportaCsv(libro.compartido(), csv); }
  EXPECT_FALSE(QFile::exists(csv));
  const auto tarea = exportaCsv(libro.compartido(), csv);
  while (tarea->paso()) continue;
  QFile f(csv);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  const QByteArray todo = f.readAll();
  EXPECT_TRUE(todo.startsWith("\xEF\xBB\xBF"));
  const QStringList lineas = QString::fromUtf8(todo).split(QStringLiteral("\r\n"));
  EXPECT_EQ(lineas.size(), kLineas + 2);
  EXPECT_EQ(lineas[0].toStdString(), "Línea;Fecha;Texto;Haber");
  EXPECT_EQ(lineas[1].toStdString(), "9;10/01/2024;Línea ñ 9;");
  EXPECT_EQ(lineas[2].toStdString(), "10;11/01/2024;Línea ñ 10;10,00");
  EXPECT_EQ(lineas[3].toStdString(), "11;12/01/2024;\"con \"\"comillas\"\"; y más\";");

  // Where nothing can be written it is told before any row is read.
  for (const auto exporta : {exportaCsv, exportaXlsx}) {
    try {
      exporta(libro.compartido(), carpeta.filePath(QStringLiteral("no/hay/filas")));
      ADD_FAILURE();
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kErrorDeRuta);
    }
  }
}

}  // namespace
