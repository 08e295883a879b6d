// How the values of a book are shown, and how its sums are kept.
#pragma once

#include <QString>

#include "common/variant.h"
#include "reports/plantilla.h"

namespace reports {

// Sums are whole numbers of millionths: they depend neither on the order of adding nor on the
// machine.
qint64 millonesimas(double importe);  // 6 beyond nine million million
qint64 sumado(qint64 a, qint64 b);    // 6 likewise
double importeDe(qint64 millonesimas);

class Muestra {
 public:
  explicit Muestra(const QString& mascara);

  QString importe(double valor, Formato formato) const;
  QString valor(const Variant& valor, Formato formato) const;
  // Whether the company's mask shows an amount as it shows zero.
  bool esCero(double importe) const;

 private:
  QString mascara_;
  QString cero_;
};

}  // namespace reports
