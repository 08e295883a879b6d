// Amounts in the cells of a table, with their decimals under each other.
#pragma once

#include <QStyledItemDelegate>

// Paints a cell whose text is an amount set by `mascara`.
void pintaImporte(QPainter* pintor, const QStyleOptionViewItem& celda, const QString& mascara);

// For the columns of amounts of a table that isn't a Rejilla, which does it by itself.
//   tabla.setItemDelegateForColumn(kSaldo, new CeldaImporte(sesion().MascaraImporte, &tabla));
class CeldaImporte : public QStyledItemDelegate {
 public:
  CeldaImporte(const QString& mascara, QObject* padre)
      : QStyledItemDelegate(padre), mascara_(mascara) {}
  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
             const QModelIndex& indice) const override;

 private:
  QString mascara_;
};
