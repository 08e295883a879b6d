// Texts as they stand inside statements and criteria.
//
// The statement language has no sign for a quote inside a quoted text: a text ends at the next
// quote of the kind it began with.
#pragma once

#include <QString>

// Between single quotes, as typed. One that holds a single quote breaks its statement, which is
// refused with 3075: for codes, dates and whatever a user types as part of a statement.
//   entreComillas("430") == "'430'"
inline QString entreComillas(const QString& texto) {
  return QLatin1Char('\'') + texto + QLatin1Char('\'');
}

// For names, which may well hold an apostrophe: one that does stands between double quotes. Only a
// name with both kinds breaks its statement.
//   nombreEntreComillas("D'Ors") == "\"D'Ors\""
inline QString nombreEntreComillas(const QString& nombre) {
  if (!nombre.contains(QLatin1Char('\''))) return entreComillas(nombre);
  return QLatin1Char('"') + nombre + QLatin1Char('"');
}
