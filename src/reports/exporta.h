// The rows of a book as a spreadsheet or as separated text, with amounts as numbers and debits and
// credits as the book shows them.
#pragma once

#include "reports/tarea.h"

namespace reports {

// Both write the file whole or not at all, to a system path; 75 when it can't be written.

// A workbook; a sheet holds a million rows and what is over goes to the next.
std::unique_ptr<Tarea> exportaXlsx(std::shared_ptr<Documento> documento, const QString& ruta);

// Semicolons, decimal comma, UTF-8 with its mark: what a Spanish spreadsheet opens by a double
// click.
std::unique_ptr<Tarea> exportaCsv(std::shared_ptr<Documento> documento, const QString& ruta);

}  // namespace reports
