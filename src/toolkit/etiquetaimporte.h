// A label that shows an amount: in a .ui file a QLabel promoted to EtiquetaImporte, header
// "toolkit/etiquetaimporte.h". Its text is the amount as the mask writes it; labels of one column
// have their decimals under each other.
#pragma once

#include <QLabel>

class EtiquetaImporte : public QLabel {
  Q_OBJECT
 public:
  using QLabel::QLabel;
  // The mask that its texts are written by.
  void setMascara(const QString& mascara);

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  QString mascara_;
};
