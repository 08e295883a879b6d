// How amounts and dates are shown, and the only rounding there is.
//
// Every amount on a screen or in a book passes through Format with the company's mask, and the test
// for zero is a comparison with Format("0", mask): so the tolerance is that of the mask's decimals.
// Always Spanish, whatever the machine's settings.
#pragma once

#include <optional>
#include <QString>

#include "common/variant.h"

// The value under a mask, which is either of numbers or of dates.
//
// Numbers: up to four sections separated by ";" (positive and zero; negative; zero; Null), made of
// `0` (digit, always), `#` (digit, if there is one), `.` (prints the decimal comma), `,` among the
// digits (prints points as thousands), `%` (a hundredfold), and literals: blanks and other
// characters as they stand, anything in double quotes or after a backslash. Without a section for
// negatives they take the first and a minus. Rounds half away from zero on the 15 significant
// digits; what rounds to zero has no sign.
//   Format(1234.5, "#,##0.00 ;-#,##0.00") == "1.234,50 "      Format(1.005, "0.00") == "1,01"
// Dates: d, dd, m, mm, mmm ("ene"), mmmm ("enero"), yy, yyyy.
//   Format(QDate(2003, 2, 1), "m-d-yy") == "2-1-03"
//
// A text that is a number (or a date, under a mask of dates) is taken as one; any other comes back
// as it is. Empty text gives empty text, and so does Null unless the mask has a fourth section.
QString Format(const Variant& value, const QString& mask);

// The amount that a text stands for in a field under a mask: typed freely, or written by Format
// with that mask and read back. Besides what EsNumerico takes, that is whatever the mask itself
// writes: its currency sign or other literals at either end, the look of its section for negatives,
// and its zero, which may be no text at all. Nothing if it is no amount.
//   ImporteDe("(5,00 Pts)", "#,##0.00 \"Pts\";(#,##0.00 \"Pts\")") == -5
//   ImporteDe("", "#,###") == 0        ImporteDe("", "0.00") == nullopt
std::optional<double> ImporteDe(const QString& text, const QString& mask);

// The number that a text begins with, blanks skipped and a point before the decimals; 0 without
// one.
//   Val("03 Marzo") == 3
double Val(const QString& text);

// Whether a text can be read as an amount ("1.234,5-", "(5 €)") or as a date ("15/02/2003").
bool EsNumerico(const QString& text);
bool EsFecha(const QString& text);
