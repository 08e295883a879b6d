// Asientos that don't square.
//
// The tolerance is the company's amount mask: both sums are rounded to it before they are added, so
// a difference smaller than its last decimal is square.
#pragma once

#include <functional>
#include <QString>

#include "journal/avance.h"

class Recordset;
class Variant;

// Debe plus haber (negative as stored), rounded and written by the mask. Null counts as zero.
QString restoDe(const Variant& debe, const Variant& haber, const QString& mascara);

// Goes through the rows of SqlSumaDiarioPorAsientos from the first to the last and calls
// `alEncontrar` with the number and the remainder of each asiento that doesn't square; it answers
// whether to go on.
void recorreDescuadres(Recordset& sumas, const QString& mascara, const Avance& avance,
                       const std::function<bool(int asiento, const QString& resto)>& alEncontrar);
