// The tools that put the registers of IVA and the journal in step again.
//
// They write row by row: what was done before a failure stays.
#pragma once

#include <QString>

#include "journal/avance.h"

class Database;

// Which registers a renumbering is about.
struct RegistrosElegidos {
  bool repercutido = false;
  bool soportado = false;
};

// Numbers the rows of the chosen registers anew from 1, in order of invoice date, and gives the new
// codes to all the lines of each row's asiento; the counters of Empresa follow. The register of a
// row is told by its counter account, whose first digit is that of the company's sales or
// purchases: intra-community rows, whose counter account is one of IVA, stay as they are. Broken
// off half-way it can be run again. 3260, 3186 when another station holds the file.
void renumeraIVA(Database& empresa, RegistrosElegidos elegidos, const Avance& avance);

enum class TareaIVA {
  EliminaPorCuenta,      // the asientos with lines on an account, each with one row of the register
  EliminaIVASinAsiento,  // rows that no line of the journal names
  EliminaLineasSinIVA,   // lines that name a row that isn't there
  CreaIVADeDiario,       // rows for such lines of purchases and sales, from their asientos
};

// Runs a task; a row that can't be written is passed over and the next one follows. `cuenta` is the
// account of EliminaPorCuenta. False if there was nothing to look at.
bool mantieneIVA(Database& empresa, TareaIVA tarea, const QString& cuenta, const QString& mascara,
                 const Avance& avance);
