// The open company in the session.
#pragma once

#include "common/sesion.h"

class Recordset;

// Reads the one row of Empresa into the session. A field that can't be read, a Null among them,
// leaves what the session held, without a word: a damaged row must not keep anybody from the books.
// Only FechaNoModificar is emptied first, since a company without that limit holds a Null.
void leeEmpresa(Recordset& empresa, Sesion& sesion);

// The same for the company that was picked: the file that lies in its folder is its own. If the row
// bears another name, as after a folder was copied by hand, it takes the picked one, and so does
// the session, also where it can't be written: what is typed goes into this file and no other. The
// result is the other name, empty if there was none.
QString leeEmpresa(Recordset& empresa, Sesion& sesion, const QString& elegida);

// A company is closed when nothing before the last day of its year may be changed.
bool empresaCerrada(const Sesion& sesion);
