#include "reports/impreso.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "foundation/rutas.h"
#include "reports/pintor.h"

using namespace reports;

namespace {
struct Quince : Reloj {
  QDate hoy() const override { return QDate(2024, 4, 15); }
};
}  // namespace

QString carpetaImpresos() {
  return rutaPrograma(QStringLiteral(LIBRANO_FUENTES)) + QStringLiteral("\\impresos\\");
}

Impreso::Impreso(Libros& libros, const QString& plantilla, const QString& seleccion,
                 const QString& limites, const QString& grupos) {
  const Quince reloj;
  Informe informe(libros.motor, reloj,
                  {[] { return QStringList{QStringLiteral("PDF")}; },
                   [this](std::shared_ptr<Documento> documento, const QString& titulo) {
                     documento_ = std::move(documento);
                     titulo_ = titulo;
                   }});
  informe.WindowTitle = QStringLiteral("Listado");
  informe.ReportFileName = plantilla.contains(u'\\') ? plantilla : carpetaImpresos() + plantilla;
  informe.DataFiles(0) = libros.rutaEmpresa();
  informe.SelectionFormula = seleccion;
  informe.GroupSelectionFormula = grupos;
  if (!limites.isEmpty()) {
    informe.ParameterFields(0) = QStringLiteral("Limites;") + limites + QStringLiteral(";True");
  }
  informe.PrintReport();
}

const QList<QStringList>& Impreso::paginas() {
  if (!paginas_.isEmpty()) return paginas_;
  const QTemporaryDir carpeta;
  const QString pdf = carpeta.filePath(QStringLiteral("libro.pdf"));
  TareaPdf tarea(documento_, pdf, titulo_, 1, INT_MAX);
  while (tarea.paso()) continue;
  QProcess lector;
  lector.start(QStringLiteral("pdftotext"), {"-layout", "-enc", "UTF-8", pdf, "-"});
  lector.waitForFinished();
  EXPECT_EQ(lector.exitCode(), 0) << lector.readAllStandardError().toStdString();
  QStringList textos = QString::fromUtf8(lector.readAllStandardOutput()).split(u'\f');
  textos.removeLast();  // what follows the last page
  for (const QString& texto : textos) {
    QStringList lineas;
    for (const QString& l : texto.split(u'\n')) {
      if (!l.trimmed().isEmpty()) lineas << l.simplified();
    }
    paginas_ << lineas;
  }
  return paginas_;
}

QStringList Impreso::lineas() {
  QStringList todas;
  for (const QStringList& p : paginas()) todas << p;
  return todas;
}

QString Impreso::linea(const QString& comienzo, int pagina) {
  for (const QString& l : pagina ? paginas().at(pagina - 1) : lineas()) {
    if (l.startsWith(comienzo)) return l;
  }
  return {};
}

QStringList textosDe(const Pagina& pagina) {
  QStringList todos;
  for (const Texto& t : pagina.textos) todos << t.texto.trimmed();
  return todos;
}
