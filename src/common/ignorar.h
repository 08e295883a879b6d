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
