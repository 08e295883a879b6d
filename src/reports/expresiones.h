// The expressions of a template's source, told apart by their words: which ones a list holds, what
// names they use, and whether two say the same.
#pragma once

#include <QString>
#include <QStringList>

namespace reports {

// The expressions of a list, as written. All raise 3075 for what is no expression.
//   partesDe("A, IIf(B>0,B,0) AS C") == {"A", "IIf(B>0,B,0) AS C"}
QStringList partesDe(const QString& lista);

// The name given by AS, empty without one.
QString aliasDe(const QString& expresion);

// The expression without it.
QString sinAlias(const QString& expresion);

// Whether an expression uses a name, other than to give it.
bool nombra(const QString& expresion, const QString& nombre);

// The same words, whatever the case of names, their brackets, blanks, and the parentheses around
// the whole: "([Sql347].[CliPro])" and "Sql347.CliPro".
bool mismaExpresion(const QString& a, const QString& b);

}  // namespace reports
