// The rows of a book as a spreadsheet or as separated text, with amounts as numbers and debits and
// credits as the book shows them.
#pragma once

#include "reports/documento.h"

namespace reports {

// Both write the file whole or not at all, as system paths: false when `avance` (told of rows)
// cancels it, 75 when it can't be written.

// A workbook; a sheet holds a million rows and what is over goes to the next.
bool exportaXlsx(const Documento& documento, const QString& ruta, const Avance& avance);

// Semicolons, decimal comma, UTF-8 with its mark: what a Spanish spreadsheet opens by a double
// click.
bool exportaCsv(const Documento& documento, const QString& ruta, const Avance& avance);

}  // namespace reports
