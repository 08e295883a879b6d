#include "toolkit/etiquetaimporte.h"

#include <QPainter>
#include <QStyle>

#include "toolkit/decimales.h"

void EtiquetaImporte::setMascara(const QString& mascara) {
  mascara_ = mascara;
  update();
}

void EtiquetaImporte::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  drawFrame(&pintor);
  const QRect sitio =
      contentsRect().adjusted(0, 0, -sangriaDecimal(text(), mascara_, fontMetrics()), 0);
  style()->drawItemText(&pintor, sitio, static_cast<int>(alignment()), palette(), isEnabled(),
                        sinBlancoFinal(text()), foregroundRole());
}
