#include "toolkit/celdarejilla.h"

#include <QApplication>
#include <QLineEdit>

#include "toolkit/decimales.h"
#include "toolkit/modelorejilla.h"

CeldaRejilla::CeldaRejilla(const ModeloRejilla& modelo, Rejilla* rejilla)
    : QStyledItemDelegate(rejilla), modelo_(modelo) {}

void CeldaRejilla::paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
                         const QModelIndex& indice) const {
  if (modelo_.columnas()[indice.column()].tipo != Columna::Tipo::Importe) {
    return QStyledItemDelegate::paint(pintor, opcion, indice);
  }
  QStyleOptionViewItem celda = opcion;
  initStyleOption(&celda, indice);
  const QString importe = celda.text;
  const auto& estilo = *(celda.widget ? celda.widget->style() : QApplication::style());
  celda.text.clear();
  estilo.drawControl(QStyle::CE_ItemViewItem, &celda, pintor, celda.widget);
  // Over the cell with its colours, without a second focus frame.
  celda.text = sinBlancoFinal(importe);
  celda.state &= ~QStyle::State_HasFocus;
  celda.rect.adjust(
      0, 0, -sangriaDecimal(importe, modelo_.mascara(indice.column()), celda.fontMetrics), 0);
  estilo.drawControl(QStyle::CE_ItemViewItem, &celda, pintor, celda.widget);
}

QWidget* CeldaRejilla::createEditor(QWidget* padre, const QStyleOptionViewItem&,
                                    const QModelIndex& indice) const {
  auto* campo = new QLineEdit(padre);
  campo->setFrame(false);
  if (const int largo = modelo_.largo(indice.column()); largo > 0) campo->setMaxLength(largo);
  Q_EMIT static_cast<Rejilla*>(parent())->editorAbierto(campo);
  return campo;
}
