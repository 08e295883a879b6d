// The selection of a book: which lines, and which groups, it shows.
//
// Dialogs write selections as text, with the values as the user typed them. A selection is read
// into a tree and leaves it only as a condition of the statement that reads the book's rows, so the
// files' engine does the choosing. A quote inside a value can't be told from the end of the text
// and makes a selection that isn't well formed: it is refused, never taken for something else.
//
// Grammar (no case in words and names):
//   selection   and, or, not, parentheses; no selection at all takes every line
//   comparison  = <> < <= > >= between two operands, at least one of them not a constant
//   operand     {Tabla.Campo} (blanks allowed), {@Formula} of the template, 'text', 12.5,
//               date(2004,1,31), Left(text,3), Sum({Tabla.Campo},{Tabla.Grupo}) in group selections
#pragma once

#include <functional>
#include <memory>
#include <QDate>
#include <QString>
#include <QStringList>
#include <vector>

class Formula {
 public:
  enum class Clase { Lineas, Grupos };

  // A field as a selection names it: {SqlDiarioPrincipal.Fecha}, or {@Mes} with an empty table.
  struct Referencia {
    QString tabla;
    QString campo;
  };
  // Gives the expression of the statement that stands for a field. `agrupa`: it is the group of a
  // sum. Raises kFormulaRechazada for a field that the book doesn't have.
  using Traduce = std::function<QString(const Referencia& campo, bool agrupa)>;

  // Raises kFormulaRechazada when the text isn't a selection, 13 for date() of an impossible day.
  explicit Formula(const QString& texto, Clase clase = Clase::Lineas);
  ~Formula();
  Formula(Formula&&) noexcept;

  bool vacia() const { return raiz_ == nullptr; }
  // The tables and queries named, each once, as first written.
  QStringList tablas() const;
  // The codes asked for, as their reader is told: "000 a 999" for the texts between which a field
  // must lie, "43000001" for the one that it must be; empty when none are.
  QString codigos() const;
  // The condition for WHERE or HAVING; empty for no selection.
  //   Formula("{D.Fecha}>=date(2004,1,31)").condicion(t) == "([D].[Fecha] >= #1/31/2004#)"
  QString condicion(const Traduce& traduce) const;

  // One of the conditions that a selection joins with "and", and the simpler ones of which any row
  // that it leaves out meets some; none of these where that can't be told.
  struct Parte {
    QString condicion;
    QStringList fuera;
  };
  //   Formula("{D.Fecha}>=date(2004,1,31)").partes(t) ==
  //       {{"([D].[Fecha] >= #1/31/2004#)", {"([D].[Fecha] < #1/31/2004#)", "([D].[Fecha] Is
  //       Null)"}}}
  std::vector<Parte> partes(const Traduce& traduce) const;

  struct Nodo;

 private:
  std::unique_ptr<Nodo> raiz_;
};

// date(year,month,day) for the text of a date box. 13 when the text is no date.
//   fechaDeFormula("01/02/2004") == "date(2004,2,1)"
QString fechaDeFormula(const QString& texto);
