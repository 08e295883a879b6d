#include "toolkit/celdarejilla.h"

#include <QLineEdit>

#include "toolkit/celdaimporte.h"
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
  pintaImporte(pintor, celda, modelo_.mascara(indice.column()));
}

QWidget* CeldaRejilla::createEditor(QWidget* padre, const QStyleOptionViewItem&,
                                    const QModelIndex& indice) const {
  auto* campo = new QLineEdit(padre);
  campo->setFrame(false);
  if (const int largo = modelo_.largo(indice.column()); largo > 0) campo->setMaxLength(largo);
  Q_EMIT static_cast<Rejilla*>(parent())->editorAbierto(campo);
  return campo;
}
