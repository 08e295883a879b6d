// The statement that reads a book's rows: the template's clauses with the selection inside them, so
// that choosing, grouping and sorting are the engine's work.
#pragma once

#include "reports/formula.h"
#include "reports/plantilla.h"

namespace reports {

struct Consulta {
  Origen origen;         // the one that the selection names; the first when it names none
  QStringList columnas;  // each expression of the list
  std::vector<Formula::Parte> condiciones;  // that a row must meet, all of them
  QString teniendo;                         // that a group must
  QString codigos;                          // the range of codes selected, for its reader

  QString sentencia(const QString& ademas = {}) const;
  // The rows with some of the columns only, and where each of them then stands (-1 for one left
  // out). A source that groups, or whose columns can't be told apart, keeps them all. `ademas` is
  // one more condition, as it is above.
  QString sentenciaCorta(const std::vector<int>& solo, std::vector<int>* sitio,
                         const QString& ademas = {}) const;
  // Something else about the same rows: `lista` of those that meet `ademas` too, and the clauses
  // that follow.
  QString sentenciaDe(const QString& lista, const QString& ademas, const QString& cola) const;

 private:
  QString sentenciaDe(const QStringList& lista, const QString& ademas) const;
};

// `seleccion` and `grupos` are selections as dialogs write them, or empty. Raises kFormulaRechazada
// when one isn't well formed or names what no source of the template has.
Consulta consultaDe(const Plantilla& plantilla, const QString& seleccion, const QString& grupos);

}  // namespace reports
