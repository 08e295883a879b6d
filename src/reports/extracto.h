// The running balance of a subcuenta's lines.
//
// It isn't only shown: each time an extract is built it is written into the journal's Saldo, and
// the printed ledger shows what stands there.
#pragma once

#include <QString>

class Database;

// The lines of one subcuenta over the whole year, in the order of the ledger.
QString sentenciaExtracto(const QString& subcuenta);

// Writes the running balance into every line of the subcuenta, from the first to the last. With a
// mask each line is rounded to its decimals before it is added, as the screen's extract does;
// without one the amounts are added as they are.
void escribeSaldos(Database& empresa, const QString& subcuenta, const QString& mascara);
