// The twelve captions of totals: the journal, the subcuenta, the asiento and the marked asiento,
// each with its debe, its haber and its descuadre, beside the code or number that they are of.
//
// They are texts by the company's mask, and what reads as zero is square: the tolerance is that of
// the mask's decimals. A descuadre that isn't zero stands out.
#pragma once

#include <array>
#include <QString>

#include "journal/totales.h"

class EtiquetaImporte;
class QLabel;
class QWidget;

class PanelTotales {
 public:
  enum Fila { Total, Cuenta, Asiento, Marcado };

  // Takes the labels TxtTotalDebe ... TxtMarcadoDescuadre of the form, and LblFilaTotal ... before
  // them.
  void tomaTextos(const QWidget& formulario);
  // Makes room for amounts of this mask and for codes as long as this one.
  void ajustaAnchos(const QString& mascara, int digitosSubcuenta);

  // `clave` is the code of the subcuenta or the number of the asiento.
  void poner(Fila fila, const QString& clave, const Totales& totales, const QString& mascara);
  void ponerCero(Fila fila, const QString& mascara) { poner(fila, {}, {}, mascara); }
  void ponerCero(const QString& mascara);  // all twelve

  QString descuadre(Fila fila) const { return descuadres_[fila]; }
  // Whether the caption of the descuadre is the mask's zero.
  bool cuadra(Fila fila, const QString& mascara) const;

 private:
  std::array<std::array<EtiquetaImporte*, 3>, 4> textos_ = {};
  std::array<QLabel*, 4> rotulos_ = {};
  std::array<QString, 4> titulos_;  // "Cuenta", without a code
  std::array<QString, 4> descuadres_;
};
