// One advance for work made of several steps, each of which tells its own.
#pragma once

#include "engine/advance.h"

// The advance of step `paso` of `pasos` equally long ones.
//   copia(..., tramo(avance, 0, 2)); comprueba(..., tramo(avance, 1, 2));
inline Advance tramo(const Advance& avance, int paso, int pasos) {
  constexpr int kPartes = 1000;
  if (!avance) return {};
  return [avance, paso, pasos](int hecho, int total) {
    avance(kPartes * paso + static_cast<int>(qint64{kPartes} * hecho / qMax(1, total)),
           kPartes * pasos);
  };
}
