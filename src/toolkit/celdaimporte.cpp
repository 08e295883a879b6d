#include "toolkit/celdaimporte.h"

#include <QApplication>
#include <QWidget>

#include "toolkit/decimales.h"

void pintaImporte(QPainter* pintor, const QStyleOptionViewItem& celda, const QString& mascara) {
  QStyleOptionViewItem suya = celda;
  const auto& estilo = *(suya.widget ? suya.widget->style() : QApplication::style());
  suya.text.clear();
  estilo.drawControl(QStyle::CE_ItemViewItem, &suya, pintor, suya.widget);
  // Over the cell with its colours, without a second focus frame.
  suya.text = sinBlancoFinal(celda.text);
  suya.state &= ~QStyle::State_HasFocus;
  suya.rect.adjust(0, 0, -sangriaDecimal(celda.text, mascara, suya.fontMetrics), 0);
  estilo.drawControl(QStyle::CE_ItemViewItem, &suya, pintor, suya.widget);
}

void CeldaImporte::paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
                         const QModelIndex& indice) const {
  QStyleOptionViewItem celda = opcion;
  initStyleOption(&celda, indice);
  pintaImporte(pintor, celda, mascara_);
}
