// How a cell of a grid is painted and edited. Only for the sources of Rejilla.
#pragma once

#include <QStyledItemDelegate>

class ModeloRejilla;
class Rejilla;

class CeldaRejilla : public QStyledItemDelegate {
 public:
  CeldaRejilla(const ModeloRejilla& modelo, Rejilla* rejilla);

  // The decimals of a column of amounts stand under each other, whatever its mask writes behind
  // them.
  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
             const QModelIndex& indice) const override;
  // A plain field that takes as many characters as the column; whatever else doesn't fit is told by
  // the engine.
  QWidget* createEditor(QWidget* padre, const QStyleOptionViewItem& opcion,
                        const QModelIndex& indice) const override;

 private:
  const ModeloRejilla& modelo_;
};
