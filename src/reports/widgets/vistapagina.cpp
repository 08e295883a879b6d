#include "reports/widgets/vistapagina.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include "reports/pintor.h"

using namespace reports;

namespace {
constexpr int kBorde = 12;
constexpr int kPasoDeRueda = 120;
constexpr int kLinea = 48;
}  // namespace

VistaPagina::VistaPagina(const Documento& documento, QWidget* padre)
    : QAbstractScrollArea(padre), documento_(documento) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Dark);
  viewport()->setAutoFillBackground(true);
  verticalScrollBar()->setSingleStep(kLinea);
  horizontalScrollBar()->setSingleStep(kLinea);
}

void VistaPagina::setPagina(std::shared_ptr<const Pagina> pagina) {
  const bool otra = !pagina_ || !pagina || pagina_->numero != pagina->numero;
  pagina_ = std::move(pagina);
  if (otra) {
    marcado_.reset();
    verticalScrollBar()->setValue(0);
  }
  viewport()->update();
}

void VistaPagina::setZoom(Ajuste ajuste, int porcentaje) {
  ajuste_ = ajuste;
  porcentaje_ = porcentaje;
  recoloca();
}

double VistaPagina::escala() const {
  const Plantilla& p = documento_.plantilla();
  // The room without scroll bars, so that one that comes and goes doesn't change the size.
  const QSize sitio = maximumViewportSize() - QSize(2 * kBorde, 2 * kBorde);
  const int barra = verticalScrollBar()->sizeHint().width();
  const double ancho = double(sitio.width() - barra) / p.anchoPapel;
  if (ajuste_ == Ajuste::Ancho) return std::max(ancho, 0.005);
  if (ajuste_ == Ajuste::Entera) {
    return std::max(
        std::min(double(sitio.width()) / p.anchoPapel, double(sitio.height()) / p.altoPapel),
        0.005);
  }
  return porcentaje_ / 100.0 * logicalDpiX() / kUnidadesPorPulgada;
}

int VistaPagina::porcentaje() const {
  return qRound(escala() * kUnidadesPorPulgada / logicalDpiX() * 100);
}

QSize VistaPagina::papel() const {
  const Plantilla& p = documento_.plantilla();
  return (QSizeF(p.anchoPapel, p.altoPapel) * escala()).toSize();
}

void VistaPagina::recoloca() {
  const QSize todo = papel() + QSize(2 * kBorde, 2 * kBorde);
  const QSize visible = viewport()->size();
  verticalScrollBar()->setRange(0, std::max(0, todo.height() - visible.height()));
  verticalScrollBar()->setPageStep(visible.height());
  horizontalScrollBar()->setRange(0, std::max(0, todo.width() - visible.width()));
  horizontalScrollBar()->setPageStep(visible.width());
  viewport()->update();
}

QPoint VistaPagina::origen() const {
  const QSize sobra = viewport()->size() - papel();
  const int x = std::max(kBorde, sobra.width() / 2), y = std::max(kBorde, sobra.height() / 2);
  return {x - horizontalScrollBar()->value(), y - verticalScrollBar()->value()};
}

void VistaPagina::marca(int texto) {
  if (!pagina_ || size_t(texto) >= pagina_->textos.size()) return;
  marcado_ = texto;
  const Texto& t = pagina_->textos[size_t(texto)];
  const QRectF sitio = QRectF(t.x, t.y, t.ancho, t.alto);
  const QRect visto((sitio.topLeft() * escala()).toPoint() + origen(),
                    (sitio.size() * escala()).toSize());
  const auto acerca = [](QScrollBar* barra, int desde, int hasta, int largo) {
    if (desde < 0) barra->setValue(barra->value() + desde - largo / 4);
    if (hasta > largo) barra->setValue(barra->value() + hasta - largo + largo / 4);
  };
  acerca(verticalScrollBar(), visto.top(), visto.bottom(), viewport()->height());
  acerca(horizontalScrollBar(), visto.left(), visto.right(), viewport()->width());
  viewport()->update();
}

void VistaPagina::paintEvent(QPaintEvent*) {
  QPainter p(viewport());
  const QRect hoja(origen(), papel());
  p.fillRect(hoja.translated(3, 3), QColor(0, 0, 0, 90));
  p.fillRect(hoja, Qt::white);
  if (!pagina_) return;
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  p.setClipRect(hoja);
  p.translate(hoja.topLeft());
  p.scale(escala(), escala());
  if (marcado_ && size_t(*marcado_) < pagina_->textos.size()) {
    const Texto& t = pagina_->textos[size_t(*marcado_)];
    p.fillRect(QRect(t.x, t.y, t.ancho, t.alto).adjusted(-20, -10, 20, 10), QColor(255, 221, 87));
  }
  pinta(p, *pagina_, documento_.tipografia());
}

void VistaPagina::resizeEvent(QResizeEvent* evento) {
  QAbstractScrollArea::resizeEvent(evento);
  recoloca();
}

// Moves within the page and, at its end, to the next or the previous one.
void VistaPagina::desplaza(int pixeles) {
  QScrollBar* const barra = verticalScrollBar();
  const int antes = barra->value();
  barra->setValue(antes + pixeles);
  if (barra->value() == antes) Q_EMIT pasa(pixeles > 0 ? 1 : -1);
}

void VistaPagina::wheelEvent(QWheelEvent* evento) {
  rueda_ += evento->angleDelta().y();
  const int pasos = rueda_ / kPasoDeRueda;
  rueda_ -= pasos * kPasoDeRueda;
  if (pasos == 0) return;
  if (evento->modifiers() & Qt::ControlModifier) {
    Q_EMIT pideZoom(porcentaje() + 10 * pasos);
  } else {
    desplaza(-pasos * 2 * kLinea);
  }
}

void VistaPagina::keyPressEvent(QKeyEvent* evento) {
  switch (evento->key()) {
    case Qt::Key_Down:
      return desplaza(kLinea);
    case Qt::Key_Up:
      return desplaza(-kLinea);
    case Qt::Key_Space:
      return desplaza(viewport()->height() - kLinea);
    default:
      QAbstractScrollArea::keyPressEvent(evento);
  }
}
