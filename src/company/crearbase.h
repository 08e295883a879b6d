// Building the file of a company: its tables, its seed rows and its stored queries.
//
// A company is one file for one accounting year. The same routine builds the file of a new company
// and the empty one into which an old company is copied row by row.
#pragma once

#include <QString>

#include "company/datosempresa.h"

class DBEngine;
class Database;

// Makes the file `ruta` with codes of `digitosCuenta` and `digitosSubcuenta` digits. With `nuevo` 1
// it also writes the company's row and its special subcuentas from `datos`, and the rows a new
// company begins with; otherwise only the levels of the plan, the sides of the balance and the
// kinds of receipt. Raises 3204 when the file exists and 3022 when two of the special subcuentas
// share a code: the file then stays as far as it was built. All of it is written when it returns.
void CrearBase(DBEngine& motor, const QString& ruta, int digitosCuenta, int digitosSubcuenta,
               int nuevo, const DatosEmpresa& datos = {});

// The same with `nuevo` 0, without the indexes and sums that make its journal quick: they are made
// sooner by aligeraBase once the rows are in.
void creaBaseVacia(DBEngine& motor, const QString& ruta, int digitosCuenta, int digitosSubcuenta);
void aligeraBase(Database& base);
