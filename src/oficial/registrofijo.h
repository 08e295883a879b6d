// Records of fixed width: the official layouts as tables, one writer and one reader of them.
//
// A layout is a set of records; a record is a row of fields that follow each other without gaps.
// What a field holds is its constant, or the value given for it under the number of its casilla or
// its name, or its default; without any of them blanks, or zeros in a number. Positions count from
// 1.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <vector>

#include "common/variant.h"

enum class TipoFijo {
  Letras,    // A, An: at the left, blanks at the right, cut at the width
  Numero,    // Num: digits at the right, zeros at the left
  ConSigno,  // N: as a number, a negative one begins with "N"
  Importe,   // a place for the sign ("N" or blank), then digits
  Nif,       // at the right, zeros at the left; blanks without one
};

struct CampoFijo {
  QString registro;
  int desde = 0;
  int longitud = 0;
  TipoFijo tipo = TipoFijo::Letras;
  QString casilla;  // its number in the form, if it has one
  QString fijo;     // the constant
  QString formula;  // of a casilla that is computed from others: "27-45"
  QString defecto;
  QString nombre;

  // What its value is given under.
  const QString& clave() const { return casilla.isEmpty() ? nombre : casilla; }
};

// Values by CampoFijo::clave(): texts, or whole numbers, which are cents where the field is an
// amount.
using ValoresFijos = QHash<QString, Variant>;

class DisenoFijo {
 public:
  // The records of one layout in one of the tables ("303.csv", "2024A"). 53 without the table;
  // 3265 without the layout, or one whose fields leave a gap.
  DisenoFijo(const QString& tabla, const QString& diseno);

  const QString& nombre() const { return nombre_; }
  bool tiene(const QString& registro) const { return registros_.contains(registro); }
  const std::vector<CampoFijo>& campos(const QString& registro) const;  // 3265
  int longitud(const QString& registro) const;

 private:
  QString nombre_;
  QHash<QString, std::vector<CampoFijo>> registros_;
};

// One record in ISO-8859-1, as long as the layout says. Texts are written in capitals without
// accents nor signs that the offices refuse. 5, with the field's name, for a number that doesn't
// fit, a negative one where there is no place for a sign, or a text with letters in a number.
QByteArray escribeRegistro(const DisenoFijo& diseno, const QString& registro,
                           const ValoresFijos& valores);

// The fields of a record that was read, by their keys, blanks at the ends dropped. The text is the
// record decoded, padded with blanks when it has lost them at its end. Numbers come as the digits
// that stand there.
QHash<QString, QString> leeRegistro(const DisenoFijo& diseno, const QString& registro,
                                    const QString& texto);

// A name as official files take it: capitals, no accents on vowels, only the signs that they let
// pass.
//   textoOficial("Peña & Núñez, S.L.") == "PEÑA & NUÑEZ, S.L."
QString textoOficial(const QString& texto);

// An amount in whole cents, half away from zero on its 15 significant digits. 6 beyond what an
// official file can hold.
qint64 centimosDe(double importe);
// And as the user reads them.
QString textoDeCentimos(qint64 centimos, const QString& mascara = QStringLiteral("#,##0.00"));

// Writes a file whole or not at all; 75 when it can't be written. `ruta` is a system path.
void escribeFichero(const QString& ruta, const QByteArray& contenido);
