#include "toolkit/decimales.h"

#include <algorithm>

#include "common/formato.h"

namespace {

// What stands behind the last digit.
QString cola(const QString& importe) {
  const QString texto = sinBlancoFinal(importe);
  auto fin = texto.size();
  while (fin > 0 && !texto[fin - 1].isDigit()) --fin;
  return texto.mid(fin);
}

}  // namespace

QString sinBlancoFinal(const QString& importe) {
  auto fin = importe.size();
  while (fin > 0 && importe[fin - 1].isSpace()) --fin;
  return importe.left(fin);
}

int sangriaDecimal(const QString& importe, const QString& mascara, const QFontMetrics& letra) {
  int mayor = 0;
  for (const double muestra : {1.0, -1.0, 0.0})
    mayor = std::max(mayor, letra.horizontalAdvance(cola(Format(muestra, mascara))));
  return std::max(0, mayor - letra.horizontalAdvance(cola(importe)));
}
