// Templates and pages, on small paper where every break can be counted.

#include "reports/errores.h"
#include "reports/exporta.h"
#include "reports/impreso.h"
#include "soporte/libros.h"

using namespace reports;

namespace {

QString plantilla(const char* fichero) {
  return QString::fromUtf8(contenidoDe(rutaDato(QString("impresos/") + fichero)));
}

// The sheet and its lines, without bands.
const QString kBase = plantilla("base.rpt");

TEST(Plantilla, LasDefectuosasDicenLaLineaYElMotivo) {
  for (const QStringList& c : casosDeDatos("impresos/defectuosas.txt", "mala")) {
    try {
      leePlantilla(kBase + QString(c[0]).replace('|', '\n'),
                   [](const QString&) { return QString(); });
      ADD_FAILURE() << qPrintable(c[1]);
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kPlantillaDefectuosa);
      EXPECT_TRUE(e.descripcion().contains(c[1])) << e.what() << qPrintable(" sin " + c[1]);
    }
  }
}

class Composicion : public testing::Test {
 protected:
  // Lines of two subcuentas, with amounts of 1, -2, 3...
  void SetUp() override {
    DataControl diario(libros.motor);
    diario.bind(libros.rutaEmpresa(), "Diario");
    for (int i = 1; i <= kLineas; ++i)
      anade(diario.Recordset(), lineaDe(i, (i - 1) / 4 + 1, QDate(2024, 1, 1 + i % 28),
                                        i <= kPrimeras ? "57200001" : "43000001", i % 2 ? i : -i,
                                        {{"Descripcion", i == 9 ? R"(con "comillas"; y más)"
                                                                : QString("Línea ñ %1").arg(i)}}));
  }

  std::shared_ptr<Documento> abre(const QString& bandas, const QString& base = kBase) {
    const QString ruta = libros.dirDatos() + "prueba.rpt";
    haceFichero(rutaSistema(ruta), (base + bandas).toUtf8());
    return abreLibro(libros.motor, libros.rutaEmpresa(), ruta);
  }
  static constexpr int kLineas = 16;
  static constexpr int kPrimeras = 6;  // in the second subcuenta by code
  Libros libros;
};

// Fifty millimetres of page: five of heading, five of foot, and lines of five between.
const QString kBandas = plantilla("cortes.rpt");

// The lines of a page, each with its texts from left to right.
QString renglones(Documento& libro, int numero) {
  const auto pagina = libro.pagina(numero);
  std::map<int, QString> porAltura;
  for (const Texto& t : pagina->textos) porAltura[t.y] += t.texto.trimmed() + ' ';
  QString todos;
  for (const auto& [y, texto] : porAltura) todos += texto.trimmed() + '\n';
  return todos;
}

TEST_F(Composicion, CortesSumasYCabeceras) {
  const auto libro = abre(kBandas);
  EXPECT_TRUE(renglones(*libro, 1).startsWith("Hoja 1/…\n"));  // not counted yet
  libro->cuenta();
  const QStringList paginas = (lineasDeDatos("impresos/cortes.txt").join('\n') + '\n')
                                  .split(QRegularExpression("(?=Hoja)"), Qt::SkipEmptyParts);
  ASSERT_EQ(libro->paginas(), paginas.size());
  // Alone and in any order, and one after another, pages are the same.
  for (const int n : {4, 1, 5, 2, 3}) EXPECT_EQ(renglones(*libro, n), paginas[n - 1]);
  Recorrido recorrido(*libro);
  Pagina pagina;
  for (int n = 1; n <= 5; ++n) {
    ASSERT_TRUE(recorrido.siguiente(&pagina));
    EXPECT_EQ(textosDe(pagina), textosDe(*libro->pagina(n)));
  }
  EXPECT_FALSE(recorrido.siguiente(&pagina));
  EXPECT_EQ(libro->pagina(6), nullptr);

  const auto salto = abre(QString(kBandas).replace("repite = si", "repite = si\nsalto = si"));
  EXPECT_TRUE(renglones(*salto, 3).endsWith("total 43000001 -5,00\npagina -16,00\n"));
  EXPECT_TRUE(renglones(*salto, 4).contains("\nCuenta 57200001\n1 1,00\n"));
  // With four lines to keep together, the second group no longer fits under the first one's
  // total.
  const auto junto = abre(QString(kBandas).replace("repite = si", "repite = si\njunto = 4"));
  EXPECT_TRUE(renglones(*junto, 3).endsWith("total 43000001 -5,00\npagina -16,00\n"));
}

// Bands that depend on the row, lines that go on, and totals by a value whatever the order of the
// rows.
TEST_F(Composicion, CondicionesYResumenes) {
  const auto abreCon = [&](const char* donde) {
    const QString origen = ", IIf(NLinea>14,1,0) AS Aviso\ndesde = Diario\ndonde = ";
    return abre(plantilla("resumenes.rpt"),
                QString(kBase).replace("\ndesde = Diario", origen + donde));
  };
  QString todo;
  const auto libro = abreCon("NLinea>12 or NLinea<3");
  libro->cuenta();
  for (int n = 1; n <= libro->paginas(); ++n) todo += renglones(*libro, n);
  EXPECT_EQ(todo,
            "Línea ñ 13 13,00\nLínea ñ 14 -14,00\nLínea ñ 15,00\n15\nLínea ñ -16,00\n16\n"
            "por signo\nD 28,00\nH -30,00\ntotal -2,00\n"
            "Línea ñ 1 1,00\nLínea ñ 2 -2,00\npor signo\nD 1,00\nH -2,00\ntotal -1,00\n"
            "todos D 29,00\ntodos H -32,00\nfin -3,00\n");
  EXPECT_GT(libro->paginas(), 1);
  // Alone, a page in the middle of it all is the same.
  const QString ultima = renglones(*libro, libro->paginas());
  EXPECT_EQ(renglones(*abreCon("NLinea>12 or NLinea<3"), libro->paginas()), ultima);
  EXPECT_EQ(renglones(*abreCon("NLinea>99"), 1), "sin filas\nfin 0,00\n");
}

// What is drawn for one width fits any paper.
TEST(Plantilla, SeAjustaAlPapel) {
  const QString bandas = "[informe]\nancho = 180\n[detalle]\nalto = 10\n90 90 der \"{Importe}\"\n";
  const auto lee = [&](const char* papel) {
    return leePlantilla(QString(kBase).replace("papel = 100x60", papel) + bandas, {});
  };
  const struct {
    const char* papel;
    double x, alto;  // of the second half, and of its line
  } casos[] = {{"papel = 190x250", 90, 10},
               {"papel = A5", 69, 10 * 138 / 180.},
               {"papel = Carta", 102.95, 10},
               {"papel = A4\norientacion = apaisado", 143.5, 10}};
  for (const auto& c : casos) {
    const Plantilla p = lee(c.papel);
    EXPECT_NEAR(p.detalle.campos[0].x, unidadesDeMm(c.x), 2) << c.papel;
    EXPECT_NEAR(p.detalle.campos[0].ancho, unidadesDeMm(c.x), 2) << c.papel;
    EXPECT_NEAR(p.detalle.alto, unidadesDeMm(c.alto), 2) << c.papel;
  }
}

TEST_F(Composicion, RecortaYExporta) {
  const auto libro = abre(plantilla("recorta.rpt"));
  // A text that can't be small enough is cut, but found whole; an amount never is. A label without
  // its value is left out.
  const auto pagina = libro->pagina(1);
  const auto& textos = pagina->textos;
  EXPECT_EQ(textos.size(), 30U);
  EXPECT_TRUE(textos[0].texto.startsWith("Lín") && textos[0].texto.endsWith("…"))
      << qPrintable(textos[0].texto);
  EXPECT_EQ(textos[0].entero, "Línea ñ 7");
  EXPECT_EQ(textos[1].texto, "7,00");
  EXPECT_LE(textos[1].ancho, unidadesDeMm(2) + 1);

  // Without case and accents, and from the place found round to itself.
  const QDir carpeta(rutaSistema(libros.dirDatos()));
  const QString csv = carpeta.filePath("filas.csv");
  { const auto detenida = exportaCsv(libro, csv); }
  EXPECT_FALSE(QFile::exists(csv));
  const auto tarea = exportaCsv(libro, csv);
  while (tarea->paso()) continue;
  const QByteArray todo = contenidoDe(csv);
  EXPECT_EQ(todo.count("\r\n"), kLineas + 1);
  EXPECT_TRUE(
      todo.startsWith("\xEF\xBB\xBF"
                      "Línea;Fecha;Texto;Haber\r\n7;08/01/2024;Línea ñ 7;\r\n"
                      "8;09/01/2024;Línea ñ 8;8,00\r\n"
                      "9;10/01/2024;\"con \"\"comillas\"\"; y más\";\r\n"))
      << todo.constData();
  // Where nothing can be written it is told before any row is read.
  for (const auto exporta : {exportaCsv, exportaXlsx})
    EXPECT_ERROR(err::kErrorDeRuta, exporta(libro, carpeta.filePath("no/hay/filas")));
}

TEST_F(Composicion, SinImpresoraNoSeAbre) {
  const auto abre = [&] {
    abreInforme(libros.motor, libros.rutaEmpresa(), "SumSalN4.rpt",
                {[] { return QStringList(); },
                 [](const auto&, const QString&) { ADD_FAILURE() << "se ha mostrado"; }});
  };
  EXPECT_EQ(numeroDeError(abre), err::kSinImpresora);
}

}  // namespace
