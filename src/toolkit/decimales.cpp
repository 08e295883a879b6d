#include "toolkit/decimales.h"

#include <algorithm>

#include "common/formato.h"

namespace {

// What stands behind the last digit.
QString cola(const QString& importe) {
  auto fin = importe.size();
  while (fin > 0 && !importe[fin - 1].isDigit()) --fin;
  return importe.mid(fin);
}

// How much less `importe` has behind its decimals than the mask's widest, each as it is painted.
int leFalta(const QString& importe, const QString& mascara, const QFontMetrics& letra,
            QString (*pintado)(const QString&)) {
  const auto ancho = [&](const QString& texto) {
    return letra.horizontalAdvance(cola(pintado(texto)));
  };
  int mayor = 0;
  for (const double muestra : {1.0, -1.0, 0.0})
    mayor = std::max(mayor, ancho(Format(muestra, mascara)));
  return std::max(0, mayor - ancho(importe));
}

}  // namespace

QString sinBlancoFinal(const QString& importe) {
  auto fin = importe.size();
  while (fin > 0 && importe[fin - 1].isSpace()) --fin;
  return importe.left(fin);
}

int sangriaDecimal(const QString& importe, const QString& mascara, const QFontMetrics& letra) {
  return leFalta(importe, mascara, letra, sinBlancoFinal);
}

int margenDecimal(const QString& importe, const QString& mascara, const QFontMetrics& letra) {
  return leFalta(importe, mascara, letra, [](const QString& texto) { return texto; });
}
