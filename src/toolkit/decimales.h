// Amounts under each other.
//
// A mask may write something behind the decimals of some amounts only: a blank, a sign, a bracket.
// A column is read by its decimals, so they must stand in one line all the same.
#pragma once

#include <QFontMetrics>
#include <QString>

// The amount as it is painted: a blank at its end takes no place.
QString sinBlancoFinal(const QString& importe);

// How far, in points of the letter, a text set by `mascara` stays from the right edge of its
// column, so that its decimals stand under those of any other amount of the mask.
//   under "0.00 ;(0.00)", "1,00 " stays by the width of the bracket and "(1,00)" by none
int sangriaDecimal(const QString& importe, const QString& mascara, const QFontMetrics& letra);

// The same for a field that is typed in, whose blanks take their place.
//   under "0.00 ;-0.00", "-1,00" stays by the width of the blank and "1,00 " by none
int margenDecimal(const QString& importe, const QString& mascara, const QFontMetrics& letra);
