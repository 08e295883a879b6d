// The open company in the session.
#pragma once

#include "common/sesion.h"

class Recordset;

// Reads the one row of Empresa into the session. A field that can't be read, a Null among them,
// leaves what the session held, without a word: a damaged row must not keep anybody from the books.
// Only FechaNoModificar is emptied first, since a company without that limit holds a Null.
void leeEmpresa(Recordset& empresa, Sesion& sesion);

// A company is closed when nothing before the last day of its year may be changed.
bool empresaCerrada(const Sesion& sesion);
