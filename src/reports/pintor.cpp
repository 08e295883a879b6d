#include "reports/pintor.h"

#include <QGlyphRun>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "common/errorejecucion.h"
#include "common/rutas.h"

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

struct TareaPdf::Privado {
  explicit Privado(const QString& ruta) : fichero(ruta) {}
  QSaveFile fichero;
  std::unique_ptr<QPdfWriter> pdf;
  QPainter pintor;
};

TareaPdf::TareaPdf(std::shared_ptr<Documento> documento, const QString& ruta, const QString& titulo,
                   int desde, int hasta)
    : TareaPaginas(std::move(documento), desde, hasta), p_(std::make_unique<Privado>(ruta)) {
  if (!p_->fichero.open(QIODevice::WriteOnly)) {
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
  }
  p_->pdf = std::make_unique<QPdfWriter>(&p_->fichero);
  p_->pdf->setTitle(titulo);
  p_->pdf->setCreator(QStringLiteral("Librano"));
  p_->pdf->setResolution(kUnidadesPorPulgada);
  p_->pdf->setPageLayout(papelDe(this->documento().plantilla()));
  p_->pintor.begin(p_->pdf.get());
}

TareaPdf::~TareaPdf() {
  if (p_->pintor.isActive()) p_->pintor.end();
}

void TareaPdf::pon(const Pagina& pagina, bool primera) {
  if (!primera) p_->pdf->newPage();
  pinta(p_->pintor, pagina, documento().tipografia());
}

void TareaPdf::acaba() {
  p_->pintor.end();
  p_->pdf.reset();
  if (!p_->fichero.commit()) {
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(p_->fichero.fileName()));
  }
}

}  // namespace reports
