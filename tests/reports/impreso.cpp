#include "reports/impreso.h"

#include <gtest/gtest.h>

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
                     libro_.titulo = titulo;
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
  if (!libro_.paginas.isEmpty()) return libro_.paginas;
  const QTemporaryDir carpeta;
  const QString pdf = carpeta.filePath(QStringLiteral("libro.pdf"));
  TareaPdf tarea(documento_, pdf, libro_.titulo, 1, INT_MAX);
  while (tarea.paso()) continue;
  libro_.paginas = paginasDePdf(pdf);
  return libro_.paginas;
}

QStringList Impreso::lineas() {
  paginas();
  return libro_.lineas();
}

QString Impreso::linea(const QString& comienzo, int pagina) {
  paginas();
  return libro_.linea(comienzo, pagina);
}

QStringList textosDe(const Pagina& pagina) {
  QStringList todos;
  for (const Texto& t : pagina.textos) todos << t.texto.trimmed();
  return todos;
}
