// The house's own rules, checked on its source: who includes whom, what core may not see, how long
// a file may be, and what must not be written.
#include "soporte/prueba.h"

namespace {

// The rooms of the house, in order: each includes only those before it.
const QStringList kCuartos = {"common",  "engine/lang", "engine",   "engine/sqlite", "toolkit",
                              "start",   "company",     "accounts", "journal",       "reports",
                              "iva",     "cartera",     "payroll",  "yearend",       "transfer",
                              "oficial", "commercial"};

// The gate in the engine's border: the one file above it that names what keeps the books.
const QString kPuerta = "engine/defaultdriver.cpp", kTrasLaPuerta = "engine/sqlite/driver.h";

// The place of the room that a path under src lies in, by the longest name that fits; -1 for none.
qsizetype cuartoDe(const QString& ruta) {
  qsizetype mejor = -1;
  for (qsizetype i = 0; i < kCuartos.size(); ++i) {
    const bool dentro = ruta.startsWith(kCuartos[i] + '/');
    if (dentro && (mejor < 0 || kCuartos[i].size() > kCuartos[mejor].size())) mejor = i;
  }
  return mejor;
}

struct Fichero {
  QString ruta;  // relative to the source
  QStringList lineas;
};

QList<Fichero> ficheros(const QStringList& raices, const QStringList& filtros) {
  QList<Fichero> lista;
  for (const QString& raiz : raices) {
    const QString base = rutaFuente({});
    QDirIterator it(base + raiz, filtros, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString ruta = it.next();
      lista.append({ruta.mid(base.size()), QString::fromUtf8(contenidoDe(ruta)).split('\n')});
    }
  }
  return lista;
}

bool esDeFormularios(const QString& ruta) {
  const QString nombre = ruta.section('/', -1);
  return nombre.startsWith(QLatin1String("frm")) ||
         ruta.startsWith(QLatin1String("src/toolkit/")) ||
         ruta.contains(QLatin1String("/widgets/"));
}

const QStringList kCodigo = {"*.cpp", "*.h"};

TEST(Estilo, UnCuartoSoloIncluyeLosAnteriores) {
  static const QRegularExpression incluye(R"re(^\s*#include\s+"([a-z/_]+[.]h)")re");
  for (const Fichero& f : ficheros({"src"}, kCodigo)) {
    const QString ruta = f.ruta.mid(4);
    const qsizetype propio = cuartoDe(ruta);
    for (const QString& linea : f.lineas) {
      const QString otra = incluye.match(linea).captured(1);
      if (propio < 0 || cuartoDe(otra) <= propio) continue;  // main.cpp sees them all
      EXPECT_TRUE(ruta == kPuerta && otra == kTrasLaPuerta)
          << ruta.toStdString() << " -> " << otra.toStdString();
    }
  }
}

// No line is like that, but in the files that may have it.
void sinLineas(
    const QList<Fichero>& todos, const QRegularExpression& prohibida,
    const std::function<bool(const QString& ruta)>& puede = [](auto&) { return false; }) {
  for (const Fichero& f : todos) {
    if (puede(f.ruta)) continue;
    for (qsizetype i = 0; i < f.lineas.size(); ++i)
      EXPECT_FALSE(prohibida.match(f.lineas[i]).hasMatch())
          << f.ruta.toStdString() << ":" << i + 1 << ": " << f.lineas[i].toStdString();
  }
}

TEST(Estilo, LaBibliotecaDeFicherosSoloSeVeEnSuCuarto) {
  sinLineas(ficheros({"src"}, kCodigo), QRegularExpression("#include <sqlite3"),
            [](const QString& ruta) { return ruta.startsWith("src/engine/sqlite/"); });
}

TEST(Estilo, ElNucleoNoVeVentanas) {
  static const QRegularExpression ventanas(
      R"re(^\s*#include\s+(<(QtWidgets/|QtPrintSupport/|QWidget|QDialog|QMainWindow|QApplication|QMessageBox|Q(?!StringView|ByteArrayView|PageLayout|TextLayout)\w*(Button|Box|View|Edit|Label|Layout)>)|"[a-z/]*(toolkit/|widgets/|/frm)))re");
  sinLineas(ficheros({"src"}, kCodigo), ventanas, [](const QString& ruta) {
    return esDeFormularios(ruta) || ruta == "src/main.cpp" || ruta.endsWith("/registro.cpp");
  });
}

TEST(Estilo, LosFicherosNoCrecenSinFin) {
  for (const Fichero& f : ficheros({"src", "tests", "bench", "fuzz"}, kCodigo)) {
    const bool formulario = f.ruta.startsWith(QLatin1String("src/")) &&
                            f.ruta.section('/', -1).startsWith(QLatin1String("frm"));
    EXPECT_LE(f.lineas.size() - 1, formulario ? 400 : 600) << f.ruta.toStdString();
  }
}

// A function with a body, as the formatter leaves it: it begins and ends at the left margin.
struct Funcion {
  QString firma;  // to its opening brace, on one line
  qsizetype lineas;
};

QList<Funcion> funciones(const QStringList& lineas) {
  static const QRegularExpression empieza(
      R"re(^(?!namespace|struct|class|enum|using|template|[}#/\s]).*[(])re");
  static const QRegularExpression acaba(R"re([;{]\s*$)re");
  QList<Funcion> lista;
  for (qsizetype i = 0; i < lineas.size(); ++i) {
    if (!empieza.match(lineas[i]).hasMatch()) continue;
    qsizetype fin = i;
    while (fin + 1 < lineas.size() && !lineas[fin].isEmpty() &&
           !acaba.match(lineas[fin]).hasMatch())
      ++fin;
    if (!lineas[fin].endsWith('{')) continue;
    const QString firma = lineas.mid(i, fin - i + 1).join(' ').simplified();
    const qsizetype primera = i;
    while (i + 1 < lineas.size() && !lineas[i].startsWith('}')) ++i;
    lista.append({firma, i - primera + 1});
  }
  return lista;
}

// How many parameters a signature takes: commas of its own parentheses, none of what is inside.
int parametros(const QString& firma) {
  int hondo = 0, comas = 0;
  const QString desde = firma.mid(firma.indexOf('(') + 1);
  if (desde.startsWith(')')) return 0;
  for (const QChar c : desde) {
    if (c == ')' && hondo == 0) break;
    if (QStringLiteral("(<{[").contains(c)) ++hondo;
    if (QStringLiteral(")>}]").contains(c)) --hondo;
    if (c == ',' && hondo == 0) ++comas;
  }
  return comas + 1;
}

// What takes more than five still. The list may only shrink.
const QStringList kMuchosParametros = {
    "void CrearBase(",
    "void bucle(",
};

TEST(Estilo, LasFuncionesCabenEnUnaPantalla) {
  static const QRegularExpression constructor(R"re(^(Frm\w+)::\1[(])re");
  int vistas = 0;
  for (const Fichero& f : ficheros({"src", "tests", "bench", "fuzz"}, {"*.cpp"})) {
    for (const Funcion& funcion : funciones(f.lineas)) {
      ++vistas;
      const bool deForma = constructor.match(funcion.firma).hasMatch();
      const std::string donde = (f.ruta + ": " + funcion.firma.left(80)).toStdString();
      EXPECT_LE(funcion.lineas, deForma ? 40 : 70) << donde;
      const bool conocida = std::ranges::any_of(
          kMuchosParametros, [&](const QString& f) { return funcion.firma.startsWith(f); });
      EXPECT_TRUE(conocida || parametros(funcion.firma) <= 5) << donde;
    }
  }
  EXPECT_GT(vistas, 1500);  // else they are no longer recognised
}

// Members end in "_": the screen of a form and the Data controls that it holds.
TEST(Estilo, LosMiembrosAcabanEnSubrayado) {
  static const QRegularExpression suelto(
      R"re(^\s*(std::unique_ptr<Ui::\w+> \w*[^_\W]|DataControl \w*[^_\W]);)re");
  sinLineas(ficheros({"src"}, {"*.h"}), suelto);
}

TEST(Estilo, NadaQuedaPorHacerNiSeEscribeDondeNoDebe) {
  // Split so that this file doesn't find itself.
  static const QRegularExpression prohibidas(
      "\\b(TO"
      "DO|FIX"
      "ME|XX"
      "X|HA"
      "CK)\\b|(?i:\\bspec"
      "ification\\b|\\bPart"
      "e? [0-9]+\\.[0-9])");
  const QStringList filtros = {"*.cpp", "*.h", "*.ui", "*.md", "*.txt", "*.cmake", "*.rpt"};
  sinLineas(ficheros({"src", "tests", "bench", "fuzz", "docs", "impresos", "cmake"}, filtros),
            prohibidas);
}

TEST(Estilo, LasPantallasNoLlevanPosicionesFijasNiConexiones) {
  for (const Fichero& f : ficheros({"src"}, {"*.ui"})) {
    const QString texto = f.lineas.join('\n');
    EXPECT_FALSE(texto.contains(QLatin1String("<connections>"))) << f.ruta.toStdString();
    // Only the form itself may tell where it stands; its children live in layouts.
    EXPECT_LE(texto.count(QLatin1String("name=\"geometry\"")), 1) << f.ruta.toStdString();
  }
}

}  // namespace
