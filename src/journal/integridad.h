// The tools that go through the whole journal and put its dates and numbers in order.
//
// They write line by line, as everything here does: what was done before a failure stays.
#pragma once

#include <QDate>
#include <QString>

#include "journal/avance.h"

class Database;

// What to tell before a tool takes invoices along: how many lines name a row of the register that
// isn't there, and of which asientos; empty when there is none. `asientos` is the condition on
// their numbers: "= 12", ">= 1".
QString avisoSinRegistro(Database& empresa, const QString& asientos);

// Gives every line of an asiento the date of its earliest line, brought into the working year.
// A day that this year doesn't have (29/02) becomes `hoy`, as a typed date would.
void unificaFechas(Database& empresa, int anoActual, QDate hoy, const Avance& avance);

// Renumbers the asientos from number `desde` on, in order of date and then of number, starting at
// `desde`; the register rows of their invoices follow, and so does the company's counter. Lines of
// one asiento with different dates get several numbers: the sort is by date first.
// Returns the next free number.
int renumeraDiario(Database& empresa, int desde, const Avance& avance);
