#include "reports/expresiones.h"

#include "engine/lang/lexer.h"

namespace reports {
namespace {
using lang::Token;
using lang::TokenKind;

using Tokens = std::vector<Token>;

// Without the one that marks the end.
Tokens palabrasDe(const QString& texto) {
  Tokens todas = lang::tokens(texto);
  todas.pop_back();
  return todas;
}

// Where the AS stands that names the expression; the end without one.
Tokens::const_iterator comoDe(const Tokens& t) {
  return t.size() > 2 && t[t.size() - 2].word == lang::Word::As ? t.end() - 2 : t.end();
}

int hondura(const Token& t) {
  return t.isSymbol(u"(") ? 1 : t.isSymbol(u")") ? -1 : 0;
}

// Whether the first parenthesis closes at the very end.
bool envuelta(const Tokens& t) {
  if (t.size() < 2 || !t.front().isSymbol(u"(")) return false;
  int abiertos = 0;
  for (size_t i = 0; i < t.size(); ++i) {
    abiertos += hondura(t[i]);
    if (abiertos == 0) return i == t.size() - 1;
  }
  return false;
}

Tokens desnuda(Tokens t) {
  while (envuelta(t)) t = Tokens(t.begin() + 1, t.end() - 1);
  return t;
}

// Names with what qualifies them as one: [Tabla].[Campo], Tabla.Campo and [Tabla.Campo].
QStringList unidas(const Tokens& tokens) {
  QStringList todas;
  bool une = false;
  for (const Token& t : tokens) {
    const QString texto = QString::number(int(t.kind)) + t.text.toString().toCaseFolded();
    if (t.isSymbol(u".") || une) {
      if (!todas.isEmpty()) todas.last() += t.text.toString().toCaseFolded();
    } else {
      todas << texto;
    }
    une = t.isSymbol(u".");
  }
  return todas;
}
}  // namespace

QStringList partesDe(const QString& lista) {
  QStringList todas;
  qsizetype desde = 0;
  int abiertos = 0;
  for (const Token& t : palabrasDe(lista)) {
    abiertos += hondura(t);
    if (abiertos != 0 || !t.isSymbol(u",")) continue;
    const qsizetype coma = t.text.data() - QStringView(lista).data();
    todas << lista.mid(desde, coma - desde).trimmed();
    desde = coma + 1;
  }
  const QString ultima = lista.mid(desde).trimmed();
  if (!ultima.isEmpty()) todas << ultima;
  return todas;
}

QString aliasDe(const QString& expresion) {
  const Tokens t = palabrasDe(expresion);
  return comoDe(t) == t.end() ? QString() : t.back().text.toString();
}

QString sinAlias(const QString& expresion) {
  const Tokens t = palabrasDe(expresion);
  const auto como = comoDe(t);
  if (como == t.end()) return expresion;
  return expresion.left(como->text.data() - QStringView(expresion).data()).trimmed();
}

bool nombra(const QString& expresion, const QString& nombre) {
  const Tokens t = palabrasDe(expresion);
  return std::any_of(t.begin(), comoDe(t), [&](const Token& uno) {
    return uno.kind == TokenKind::Name && lang::sameName(uno.text, nombre);
  });
}

bool mismaExpresion(const QString& a, const QString& b) {
  return unidas(desnuda(palabrasDe(a))) == unidas(desnuda(palabrasDe(b)));
}

}  // namespace reports
