// Tables of facts that come with the program: layouts of official files, rates with their dates,
// countries and provinces.
//
// Each is a text of semicolons whose first line names the columns. They are part of the program, so
// they can't be missing.
#pragma once

#include <QList>
#include <QStringList>

// The rows of one of them, without its first line. Raises 53 for a name that isn't there.
//   leeTablaFija("provincias.csv").first() == {"01", "Álava", "Araba"}
QList<QStringList> leeTablaFija(const QString& nombre);

// A text as it is looked for in them: without accents and case, single blanks.
//   llanoOficial("  Álava ") == "alava"
QString llanoOficial(const QString& texto);

// The two figures of a province by its postcode ("50001" gives "50") or, where that says nothing,
// by its name; empty when neither does.
QString codigoDeProvincia(const QString& codigoPostal, const QString& nombre);

// A country as tax forms know it. `prefijo` is that of its IVA numbers (EL for Greece), empty
// outside the Union.
struct Pais {
  QString codigo;
  QString prefijo;
  bool deLaUnion() const { return !prefijo.isEmpty(); }
  bool esEspana() const { return codigo == QLatin1String("ES"); }
};
// By its name or its two letters; Spain for an empty text. Without code for one that isn't known.
Pais paisDe(const QString& nombre);
// By the two letters with which an IVA number begins; without code if they are none.
Pais paisDePrefijo(const QString& prefijo);
