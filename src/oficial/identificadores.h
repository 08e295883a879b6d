// Tax numbers and bank accounts with check digits: NIF of persons, foreigners and entities, CCC and
// IBAN.
#pragma once

#include <QString>

// A number as it is compared and written in files: capitals, without blanks, hyphens, dots and
// bars.
//   normalizaIdentificador("b-46.554.432") == "B46554432"
QString normalizaIdentificador(const QString& texto);

enum class Comprobacion {
  Vacio,
  Bueno,
  // The figures are right, but the form isn't the usual one of that kind of entity.
  Dudoso,
  Malo,
};

// A Spanish NIF in any spelling: DNI (8 digits and a letter, zeros at the left may be missing), NIE
// (X, Y, Z), K, L, M, or the letter of an entity.
Comprobacion compruebaNif(const QString& texto);
// With the zeros that a DNI lacks, so that it takes nine places; others as normalizaIdentificador.
QString nifDeNueve(const QString& texto);

// A Spanish account of 20 digits. All zeros is no account.
Comprobacion compruebaCCC(const QString& texto);
// An IBAN of any country; a Spanish one must hold a good CCC too.
Comprobacion compruebaIBAN(const QString& texto);
// The account as its 20 digits from what a statement gives of it, 18 without the check digits.
QString cccDe(const QString& entidad, const QString& oficina, const QString& cuenta);
QString ibanDe(const QString& ccc);
