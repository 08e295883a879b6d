// The house's own rules, checked on its source: who includes whom, what core may not see, how long
// a file may be, and what must not be written.
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

const QStringList kCarpetas = {"foundation", "company", "accounts", "journal",  "reports",   "iva",
                               "cartera",    "payroll", "yearend",  "transfer", "commercial"};

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
  return nombre.startsWith(QLatin1String("frm")) || ruta.contains(QLatin1String("/toolkit/")) ||
         ruta.contains(QLatin1String("/widgets/"));
}

const QStringList kCodigo = {"*.cpp", "*.h"};

TEST(Estilo, UnaCarpetaSoloIncluyeLasDeSuIzquierda) {
  static const QRegularExpression incluye(R"(^\s*#include\s+"([a-z]+)/)");
  for (const Fichero& f : ficheros({"src"}, kCodigo)) {
    const qsizetype propia = kCarpetas.indexOf(f.ruta.section('/', 1, 1));
    if (propia < 0) continue;  // main.cpp sees them all
    for (const QString& linea : f.lineas) {
      const qsizetype ajena = kCarpetas.indexOf(incluye.match(linea).captured(1));
      EXPECT_LE(ajena, propia) << f.ruta.toStdString() << ": " << linea.toStdString();
    }
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
