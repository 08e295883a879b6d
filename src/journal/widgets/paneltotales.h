// The twelve captions of totals: the journal, the subcuenta, the asiento and the marked asiento,
// each with its debe, its haber and its descuadre.
//
// They are texts by the company's mask, and what reads as zero is square: the tolerance is that of
// the mask's decimals. A descuadre that isn't zero stands out.
#pragma once

#include <array>
#include <QString>

#include "journal/totales.h"

class QLabel;
class QWidget;

class PanelTotales {
 public:
  enum Fila { Total, Cuenta, Asiento, Marcado };

  // Takes the labels TxtTotalDebe ... TxtMarcadoDescuadre of the form.
  void tomaTextos(const QWidget& formulario);

  void poner(Fila fila, const Totales& totales, const QString& mascara);
  void ponerCero(Fila fila, const QString& mascara) { poner(fila, {}, mascara); }
  void ponerCero(const QString& mascara);  // all twelve

  QString descuadre(Fila fila) const;
  // Whether the caption of the descuadre is the mask's zero.
  bool cuadra(Fila fila, const QString& mascara) const;

 private:
  std::array<std::array<QLabel*, 3>, 4> textos_ = {};
};
