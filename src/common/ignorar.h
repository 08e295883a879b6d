// Going on after a failure, where one bad value must not stop the rest.
#pragma once

#include "common/errorejecucion.h"

// Runs `paso` and forgets a run-time failure of it. True if it went through.
template <class Paso>
bool ignorando(Paso&& paso) {
  try {
    paso();
    return true;
  } catch (const ErrorEjecucion&) {
    return false;
  }
}

// Whether a failure is the file's and not the row's: one that takes nothing refuses every row in
// turn, and so does a user who has given up waiting for it.
inline bool esDelFichero(int numero) {
  switch (numero) {
    case err::kSinEspacio:
    case err::kSoloLectura:
    case err::kErrorDeDisco:
    case err::kOperacionCancelada:
    case err::kNoSePuedeGuardar:
    case err::kFicheroSustituido:
    case err::kRegistroBloqueado:
      return true;
    default:
      return false;
  }
}

// The same for one row among many: it is passed over if it can't be written, but a failure of the
// file goes on to the caller, so that no other row is lost without a word.
template <class Paso>
bool saltando(Paso&& paso) {
  try {
    paso();
    return true;
  } catch (const ErrorEjecucion& error) {
    if (esDelFichero(error.numero())) throw;
    return false;
  }
}
