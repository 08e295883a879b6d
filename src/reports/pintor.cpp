#include "reports/pintor.h"

#include <QGlyphRun>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "foundation/data/errorejecucion.h"
#include "foundation/rutas.h"

namespace reports {

void pinta(QPainter& pintor, const Pagina& pagina, const Tipografia& tipografia) {
  for (const Mancha& m : pagina.manchas) {
    pintor.fillRect(QRect(m.x, m.y, m.ancho, m.alto), QColor::fromHslF(0, 0, m.gris / 100.F));
  }
  pintor.setPen(Qt::black);
  for (size_t i = 0; i < pagina.tramos.size(); ++i) {
    const Tramo& t = pagina.tramos[i];
    if (t.glifos.isEmpty()) continue;
    QGlyphRun todos;
    todos.setRawFont(tipografia.fuente(i));
    todos.setGlyphIndexes(t.glifos);
    todos.setPositions(t.sitios);
    pintor.drawGlyphRun(QPointF(0, 0), todos);
  }
}

QPageLayout papelDe(const Plantilla& p) {
  const bool apaisado = p.anchoPapel > p.altoPapel;
  const QSizeF vertical =
      QSizeF(std::min(p.anchoPapel, p.altoPapel), std::max(p.anchoPapel, p.altoPapel)) * 72 /
      kUnidadesPorPulgada;
  return QPageLayout(QPageSize(vertical, QPageSize::Point, {}, QPageSize::FuzzyMatch),
                     apaisado ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
}

bool guardaPdf(Documento& documento, const QString& ruta, const QString& titulo, int desde,
               int hasta, const Avance& avance) {
  QSaveFile fichero(ruta);
  if (!fichero.open(QIODevice::WriteOnly)) {
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
  }
  bool sigue = true;
  {
    QPdfWriter pdf(&fichero);
    pdf.setTitle(titulo);
    pdf.setCreator(QStringLiteral("Librano"));
    pdf.setResolution(kUnidadesPorPulgada);
    pdf.setPageLayout(papelDe(documento.plantilla()));
    QPainter pintor(&pdf);
    documento.recorre(desde, hasta, [&](const Pagina& p) {
      if (p.numero > desde) pdf.newPage();
      pinta(pintor, p, documento.tipografia());
      sigue =
          !avance || avance(p.numero - desde + 1, std::min(hasta, documento.paginas()) - desde + 1);
      return sigue;
    });
  }
  if (!sigue) {
    fichero.cancelWriting();
    return false;
  }
  if (!fichero.commit()) throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
  return true;
}

}  // namespace reports
