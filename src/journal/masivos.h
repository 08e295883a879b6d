// The tools that change many lines at once: duplicating an asiento, replacing or deleting by a
// condition, deleting an asiento.
#pragma once

#include <QString>

#include "journal/avance.h"

class Database;
class DBEngine;

struct Duplicado {
  int asiento = 0;
  QString fecha;             // as typed
  int digitosSubcuenta = 0;  // of the company that it is in
  bool eliminar = false;
};

// Copies an asiento, with the register row of its invoice, under the next numbers of `destino`,
// which may be the same company. With a `fecha` that is a date all its lines take it; otherwise
// each keeps its own. `eliminar` deletes the original afterwards, register row included; the copy
// is on the disk by then, so that no accident loses the asiento. False, with nothing written, when
// the codes of the two companies have different widths. Both are of `motor`.
bool duplicaAsiento(DBEngine& motor, Database& origen, Database& destino,
                    const Duplicado& duplicado);

// The fields that can be looked for and replaced, in the order of the list on screen.
enum class CampoCambio { NAsiento, Fecha, Subcuenta, Descripcion, Importe };

struct CambioMasivo {
  CampoCambio campo = CampoCambio::NAsiento;
  QString localizar;  // value to find; wildcards are allowed in a description
  QString cambiar;    // new value; not used when deleting
  QString fechaDesde;
  QString fechaHasta;
  bool eliminar = false;  // the whole asiento of each line found goes, its register rows don't
};

// The lines that a change is about. The values stand in it as typed.
QString sentenciaDeCambio(const CambioMasivo& cambio);

// How the engine will read what is typed in a change, for the user to see before it is done: the
// value to find and the limits stand in a statement, where a point is the decimal sign and a date
// may be taken month first; the new value is assigned to its field, where a point is nothing. Empty
// for an empty field. Amounts by `mascara`; `ano` is the company's.
//   importe "12.5" is found as "se buscará 12,50" and kept as "se guardará 125,00"
struct LecturaDeCambio {
  QString localizar;
  QString cambiar;
  QString desde;
  QString hasta;
};
LecturaDeCambio lecturaDe(const CambioMasivo& cambio, const QString& mascara, int ano);

// The amount that a new value is kept as. 3421 for what is no number.
double importeNuevo(const QString& texto);

// Raises 3021 when no line is found, 3075 for a value that can't stand in a statement, 3421 for a
// new value that doesn't fit the field. What was done before stays.
void cambiaDatos(Database& empresa, const CambioMasivo& cambio, const Avance& avance);

// Deletes every line of an asiento and the register rows that its lines name.
void eliminaAsiento(Database& empresa, int asiento, const Avance& avance);
