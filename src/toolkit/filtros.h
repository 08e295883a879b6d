// Which characters a field takes, without a window: a key is judged by the text that the field
// would hold after it, with the selection replaced.
#pragma once

#include <QString>

// What a field is for.
enum class Filtro {
  Ninguno,
  Digitos,          // the number of an asiento, a code that stands in full: digits and nothing else
  Codigo,           // a code with one dot that stands for its zeros
  Importe,          // an amount of either sign
  ImporteSinSigno,  // an amount whose side is told apart, or a number that counts something
};

// What stands in a field when a character is typed into it.
struct Edicion {
  QString texto;
  qsizetype cursor = 0;
  qsizetype seleccion = 0;  // first character selected
  qsizetype largo = 0;      // how many are; 0 for none
};

// The text after `insertado` has been typed or pasted: over the selection, or at the cursor.
//   textoTras({"1234", 4, 1, 2}, "9") == "194"
QString textoTras(const Edicion& antes, const QString& insertado);

// Whether one text comes from another by taking something away, which every field allows.
bool soloQuita(const QString& antes, const QString& ahora);

// Whether a field may hold a text while it is being typed: one that its purpose takes, or the
// beginning of one ("-", "(12", "5,"). An empty text always may. `mascara` is the company's, whose
// own currency sign and parentheses an amount may bear; empty where no mask rules.
bool admite(Filtro filtro, const QString& texto, const QString& mascara);
