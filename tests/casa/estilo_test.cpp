// The house's own rules, checked on its source: who includes whom, what core may not see, how long
// a file may be, and what must not be written.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

// The rooms of the house, in order: each includes only those before it.
const QStringList kCuartos = {"common",  "engine/lang", "engine",   "engine/sqlite", "toolkit",
                              "start",   "company",     "accounts", "journal",       "reports",
                              "iva",     "cartera",     "payroll",  "yearend",       "transfer",
                              "oficial", "commercial"};

// What still points upwards. The list may only shrink.
const QStringList kHaciaArriba = {
    "engine/dbengine.cpp -> engine/sqlite/connection.h",
    "engine/rowreader.cpp -> engine/sqlite/connection.h",
    "engine/rowset.h -> engine/sqlite/connection.h",
};

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
    const QString base = QStringLiteral(LIBRANO_FUENTES "/");
    QDirIterator it(base + raiz, filtros, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      QFile f(it.next());
      if (!f.open(QIODevice::ReadOnly)) continue;
      lista.append({f.fileName().mid(base.size()), QString::fromUtf8(f.readAll()).split('\n')});
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
  QStringList pendientes = kHaciaArriba;
  for (const Fichero& f : ficheros({"src"}, kCodigo)) {
    const QString ruta = f.ruta.mid(4);
    const qsizetype propio = cuartoDe(ruta);
    for (const QString& linea : f.lineas) {
      const QString otra = incluye.match(linea).captured(1);
      if (propio < 0 || cuartoDe(otra) <= propio) continue;  // main.cpp sees them all
      EXPECT_TRUE(pendientes.removeOne(ruta + " -> " + otra))
          << ruta.toStdString() << " -> " << otra.toStdString();
    }
  }
  EXPECT_TRUE(pendientes.isEmpty()) << "mended: " << pendientes.join(", ").toStdString();
}

TEST(Estilo, LaBibliotecaDeFicherosSoloSeVeEnSuCuarto) {
  for (const Fichero& f : ficheros({"src"}, kCodigo)) {
    if (f.ruta.startsWith(QLatin1String("src/engine/sqlite/"))) continue;
    for (const QString& linea : f.lineas)
      EXPECT_FALSE(linea.contains(QLatin1String("#include <sqlite3"))) << f.ruta.toStdString();
  }
}

TEST(Estilo, ElNucleoNoVeVentanas) {
  static const QRegularExpression ventanas(
      R"re(^\s*#include\s+(<(QtWidgets/|QtPrintSupport/|QWidget|QDialog|QMainWindow|QApplication|QMessageBox|Q(?!StringView|ByteArrayView|PageLayout|TextLayout)\w*(Button|Box|View|Edit|Label|Layout)>)|"[a-z/]*(toolkit/|widgets/|/frm)))re");
  for (const Fichero& f : ficheros({"src"}, kCodigo)) {
    if (esDeFormularios(f.ruta) || f.ruta == QLatin1String("src/main.cpp")) continue;
    if (f.ruta.endsWith(QLatin1String("/registro.cpp"))) continue;
    for (const QString& linea : f.lineas)
      EXPECT_FALSE(ventanas.match(linea).hasMatch())
          << f.ruta.toStdString() << ": " << linea.toStdString();
  }
}

TEST(Estilo, LosFicherosNoCrecenSinFin) {
  for (const Fichero& f : ficheros({"src", "tests", "bench", "fuzz"}, kCodigo)) {
    const bool formulario = f.ruta.startsWith(QLatin1String("src/")) &&
                            f.ruta.section('/', -1).startsWith(QLatin1String("frm"));
    EXPECT_LE(f.lineas.size() - 1, formulario ? 400 : 600) << f.ruta.toStdString();
  }
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
  for (const Fichero& f :
       ficheros({"src", "tests", "bench", "fuzz", "docs", "impresos", "cmake"}, filtros)) {
    for (qsizetype i = 0; i < f.lineas.size(); ++i)
      EXPECT_FALSE(prohibidas.match(f.lineas[i]).hasMatch())
          << f.ruta.toStdString() << ":" << i + 1 << ": " << f.lineas[i].toStdString();
  }
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
