// A line of the journal as it is typed, before it is one: texts of fields.
//
// The same for every form with an entry line; what they write differs in nothing but the side.
#pragma once

#include <QString>

#include "journal/apunte.h"

struct LineaTecleada {
  QString asiento;
  QString fecha;  // "dd/mm/yyyy"
  QString subcuenta;
  QString concepto;
  QString importe;  // as the field shows it, under the company's mask; positive
};

// Whether one of the five is empty or the amount is zero. An amount that is no number isn't
// missing: it fails when the line is made.
bool faltanDatos(const LineaTecleada& linea, const QString& mascara);

// The line on one side, 'D' debe or 'H' haber, its amount signed. An amount that is no number, or
// that bears a minus already and goes to the haber, is handed on as text, which no amount column
// takes (3421). Raises 6 for an amount of 10^12 or more.
Apunte apunteEn(QChar lado, const LineaTecleada& linea, const QString& mascara);

// An amount of 10^12 or more, beyond which sums would not be exact to the cent.
bool esDemasiado(double importe);
void compruebaImporte(double importe);  // raises 6 for one
