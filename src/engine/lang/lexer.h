// The words of a statement, read once from left to right.
//
// Text stands between single or double quotes and has no escapes: a quote inside a value ends the
// text there, so the statement breaks instead of becoming another one.
#pragma once

#include <optional>
#include <QDateTime>
#include <QString>
#include <vector>

#include "common/variant.h"

namespace lang {

enum class Word {
  None,
  All,
  And,
  As,
  Asc,
  Between,
  By,
  Desc,
  Distinct,
  False,
  From,
  Group,
  Having,
  In,
  Inner,
  Is,
  Join,
  Left,
  Like,
  Not,
  Null,
  On,
  Or,
  Order,
  Outer,
  Right,
  Select,
  True,
  Where
};

// What a literal is: a text that reads as a number may later be compared with one, and a word has
// letters beyond the plain alphabet (ñ, accented ones), which a store's indexes may not know the
// case of. Statements share a plan only where their literals are of the same kinds.
enum class LiteralKind { Long, Double, Text, NumericText, Date, Word };

enum class TokenKind { End, Name, Number, Text, Date, Symbol };

struct Token {
  TokenKind kind = TokenKind::End;
  QStringView text;        // without quotes, brackets or number signs; symbols as written
  Word word = Word::None;  // of an unbracketed name
  bool enclosed = false;   // in quotes, brackets or number signs
  int parameter = -1;      // place among the literals that are taken out of the statement
  bool isSymbol(QStringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  bool isLiteral() const {
    return kind == TokenKind::Number || kind == TokenKind::Text || kind == TokenKind::Date;
  }
};

// All tokens, with one End at the end. The views point into `source`. 3075 for a character that
// belongs to no word or a text, name or date without its end.
std::vector<Token> tokens(QStringView source);

// True when the source is a statement and not the name of a table or query.
bool isStatement(QStringView source);
// The name of a table or query given as a source: without brackets around it and a final ";".
QString sourceName(QStringView source);

// Numbers the literals that may change without another plan: those of the condition, but for the
// patterns of Like. A statement that groups keeps all of its own, because its lists are matched
// literal by literal.
void numberLiterals(std::vector<Token>& tokens);

struct Literal {
  Variant value;
  LiteralKind kind = LiteralKind::Text;
};
// The value of a literal's token. 3075 for a date that is none.
Literal literalOf(const Token& token, int ano);

// A date literal: "m-d-yy", with the month first where that can be a month and the day first
// otherwise, or "yyyy-mm-dd"; any of "-/." between, a time "h:mm[:ss]" after a blank. A year of two
// digits takes the century that puts it nearest `ano`. Nothing for what is no date.
//   dateLiteral(u"2-1-03", 2003) == the first of February of 2003
std::optional<QDateTime> dateLiteral(QStringView text, int ano);

// The number that a text says, by the rules of an assignment to a number field.
bool readNumber(const QString& text, double& number);

// Names compare without case, in ñ and accented letters too.
inline bool sameName(QStringView a, QStringView b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace lang
