// The statement that reads a book's rows: the template's clauses with the selection inside them, so
// that choosing, grouping and sorting are the engine's work.
#pragma once

#include "reports/plantilla.h"

namespace reports {

struct Consulta {
  const Origen* origen = nullptr;  // the one that the selection names; the first when it names none
  QString sentencia;
};

// `seleccion` and `grupos` are selections as dialogs write them, or empty. Raises kFormulaRechazada
// when one isn't well formed or names what no source of the template has.
Consulta consultaDe(const Plantilla& plantilla, const QString& seleccion, const QString& grupos);

}  // namespace reports
