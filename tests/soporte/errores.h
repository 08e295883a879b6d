// What the tests ask of failures.
#pragma once

#include "common/errorejecucion.h"

// The number of the error that something raises; 0 if it raises none.
template <typename F>
int numeroDeError(F&& algo) {
  try {
    algo();
  } catch (const ErrorEjecucion& e) {
    return e.numero();
  }
  return 0;
}

// What is done, which may hold commas, raises that error; 0 is for none.
#define EXPECT_ERROR(numero, ...) EXPECT_EQ(numeroDeError([&] { __VA_ARGS__; }), numero)

// An error as its box tells it.
inline QString errorEnCaja(int numero, const QString& detalle = {}) {
  return QString("Error %1: ").arg(numero) + ErrorEjecucion(numero, detalle).descripcion();
}
