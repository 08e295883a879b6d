// Writing rows, as every part that builds or copies tables does it.
#pragma once

#include "engine/recordset.h"

// Runs the sets of an edit that has just begun, and its Update. If any of them fails the edit is
// dropped and the failure goes on to the caller. `filas` is a Recordset or a DataControl.
template <class Filas, class Cambios>
void completa(Filas& filas, Cambios&& cambios) {
  try {
    cambios();
    filas.Update();
  } catch (...) {
    filas.CancelUpdate();
    throw;
  }
}

// Sets every field of the row being written in `destino` from the current row of `origen`, by
// ordinal.
inline void copiaCampos(Recordset& origen, Recordset& destino) {
  for (int i = 0; i < origen.FieldCount(); ++i) destino.Fields(i) = origen.Fields(i).Value();
}
