#include "engine/lang/lexer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <QDateTime>

#include "common/errorejecucion.h"

namespace lang {
namespace {

struct Keyword {
  QStringView text;
  Word word;
};

constexpr Keyword kKeywords[] = {
    {u"ALL", Word::All},         {u"AND", Word::And},
    {u"AS", Word::As},           {u"ASC", Word::Asc},
    {u"BETWEEN", Word::Between}, {u"BY", Word::By},
    {u"DESC", Word::Desc},       {u"DISTINCT", Word::Distinct},
    {u"DISTINCTROW", Word::All}, {u"FALSE", Word::False},
    {u"FROM", Word::From},       {u"GROUP", Word::Group},
    {u"HAVING", Word::Having},   {u"IN", Word::In},
    {u"INNER", Word::Inner},     {u"IS", Word::Is},
    {u"JOIN", Word::Join},       {u"LEFT", Word::Left},
    {u"LIKE", Word::Like},       {u"NOT", Word::Not},
    {u"NULL", Word::Null},       {u"ON", Word::On},
    {u"OR", Word::Or},           {u"ORDER", Word::Order},
    {u"OUTER", Word::Outer},     {u"RIGHT", Word::Right},
    {u"SELECT", Word::Select},   {u"TRUE", Word::True},
    {u"WHERE", Word::Where},
};

Word wordOf(QStringView text) {
  if (text.size() < 2 || text.size() > 11) return Word::None;
  const char16_t first = text.front().toUpper().unicode();
  for (const Keyword& keyword : kKeywords) {
    if (keyword.text.front().unicode() == first && sameName(keyword.text, text)) {
      return keyword.word;
    }
  }
  return Word::None;
}

bool startsName(QChar c) {
  return c.isLetter() || c == u'_';
}
bool continuesName(QChar c) {
  return c.isLetterOrNumber() || c.isMark() || c == u'_';
}
bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

class Reader {
 public:
  explicit Reader(QStringView source) : source_(source) {}

  Token next() {
    while (at_ < source_.size() && source_[at_].isSpace()) ++at_;
    if (at_ == source_.size()) return {};
    const QChar c = source_[at_];
    if (startsName(c)) return name();
    if (isDigit(c) || (c == u'.' && isDigit(peek(1)))) return number();
    if (c == u'\'' || c == u'"') return enclosed(TokenKind::Text, c);
    if (c == u'[') return enclosed(TokenKind::Name, u']');
    if (c == u'#') return enclosed(TokenKind::Date, c);
    return symbol();
  }

 private:
  QChar peek(qsizetype ahead) const {
    return at_ + ahead < source_.size() ? source_[at_ + ahead] : QChar();
  }

  Token name() {
    const qsizetype start = at_;
    while (at_ < source_.size() && continuesName(source_[at_])) ++at_;
    const QStringView text = source_.sliced(start, at_ - start);
    return {TokenKind::Name, text, wordOf(text)};
  }

  Token number() {
    const qsizetype start = at_;
    while (isDigit(peek(0))) ++at_;
    if (peek(0) == u'.') ++at_;
    while (isDigit(peek(0))) ++at_;
    if (peek(0).toLower() == u'e') {
      const qsizetype sign = peek(1) == u'+' || peek(1) == u'-' ? 1 : 0;
      if (isDigit(peek(1 + sign))) {
        at_ += 1 + sign;
        while (isDigit(peek(0))) ++at_;
      }
    }
    return {TokenKind::Number, source_.sliced(start, at_ - start)};
  }

  Token enclosed(TokenKind kind, QChar end) {
    const qsizetype start = ++at_;
    const qsizetype found = source_.indexOf(end, start);
    if (found < 0 || (kind == TokenKind::Name && found == start)) {
      throw ErrorEjecucion(err::kErrorDeSintaxis, source_.sliced(start - 1).toString());
    }
    at_ = found + 1;
    return {kind, source_.sliced(start, found - start), Word::None, true};
  }

  Token symbol() {
    static constexpr QStringView kSymbols[] = {u"<>", u"<=", u">=", u"=", u"<", u">", u"(", u")",
                                               u",",  u".",  u"+",  u"-", u"*", u"/", u"&", u";"};
    for (const QStringView symbol : kSymbols) {
      if (source_.sliced(at_).startsWith(symbol)) {
        const Token token{TokenKind::Symbol, source_.sliced(at_, symbol.size())};
        at_ += symbol.size();
        return token;
      }
    }
    throw ErrorEjecucion(err::kErrorDeSintaxis, source_.sliced(at_).toString());
  }

  QStringView source_;
  qsizetype at_ = 0;
};

bool hasOtherLetters(QStringView text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 0x80; });
}

// The century nearest the company's year; of two equally near, the later.
int fullYear(int year, int ano) {
  int full = ano - ano % 100 + year;
  if (full - ano > 50) full -= 100;
  if (ano - full >= 50) full += 100;
  return full;
}

}  // namespace

std::vector<Token> tokens(QStringView source) {
  std::vector<Token> all;
  all.reserve(48);
  Reader reader(source);
  do {
    all.push_back(reader.next());
  } while (all.back().kind != TokenKind::End);
  return all;
}

bool isStatement(QStringView source) {
  const QStringView text = source.trimmed();
  constexpr QStringView select = u"SELECT";
  return text.startsWith(select, Qt::CaseInsensitive) &&
         (text.size() == select.size() || !continuesName(text[select.size()]));
}

QString sourceName(QStringView source) {
  QStringView name = source.trimmed();
  if (name.endsWith(u';')) name = name.chopped(1).trimmed();
  if (name.startsWith(u'[') && name.endsWith(u']')) name = name.sliced(1).chopped(1);
  return name.toString();
}

void numberLiterals(std::vector<Token>& tokens) {
  size_t where = tokens.size();
  for (size_t i = 0; i < tokens.size(); ++i) {
    const Word word = tokens[i].word;
    if (word == Word::Group || word == Word::Having || word == Word::Distinct) return;
    if (word == Word::Where && where == tokens.size()) where = i;
  }
  int next = 0;
  for (size_t i = where; i < tokens.size() && tokens[i].word != Word::Order; ++i) {
    if (tokens[i].isLiteral() && tokens[i - 1].word != Word::Like) tokens[i].parameter = next++;
  }
}

Literal literalOf(const Token& token, int ano) {
  if (token.kind == TokenKind::Number) {
    bool isLong = false;
    const int whole = token.text.toInt(&isLong);
    if (isLong) return {Variant(whole), LiteralKind::Long};
    const double number = token.text.toDouble();
    if (!std::isfinite(number)) throw ErrorEjecucion(err::kErrorDeSintaxis, token.text.toString());
    return {Variant(number), LiteralKind::Double};
  }
  if (token.kind == TokenKind::Date) {
    const std::optional<QDateTime> date = dateLiteral(token.text, ano);
    if (!date) throw ErrorEjecucion(err::kErrorDeSintaxis, u'#' + token.text.toString() + u'#');
    return {Variant(*date), LiteralKind::Date};
  }
  const QString text = token.text.toString();
  double number = 0;
  if (readNumber(text, number)) return {Variant(text), LiteralKind::NumericText};
  return {Variant(text), hasOtherLetters(text) ? LiteralKind::Word : LiteralKind::Text};
}

std::optional<QDateTime> dateLiteral(QStringView text, int ano) {
  const QStringView trimmed = text.trimmed();
  const qsizetype blank = trimmed.indexOf(u' ');
  const QStringView day = blank < 0 ? trimmed : trimmed.first(blank);
  int parts[3] = {};
  qsizetype widths[3] = {};
  int count = 0;
  for (const QChar c : day) {
    if (isDigit(c)) {
      if (++widths[count] > 4) return std::nullopt;
      parts[count] = parts[count] * 10 + c.digitValue();
    } else if ((c == u'-' || c == u'/' || c == u'.') && widths[count] > 0 && count < 2) {
      ++count;
    } else {
      return std::nullopt;
    }
  }
  if (count != 2 || widths[2] == 0) return std::nullopt;

  QDate date;
  if (widths[0] > 2) {
    date = QDate(parts[0], parts[1], parts[2]);
  } else {
    const int year = widths[2] > 2 ? parts[2] : fullYear(parts[2], ano);
    const bool monthFirst = parts[0] >= 1 && parts[0] <= 12;
    date = monthFirst && QDate::isValid(year, parts[0], parts[1]) ? QDate(year, parts[0], parts[1])
                                                                  : QDate(year, parts[1], parts[0]);
  }
  if (!date.isValid()) return std::nullopt;
  if (blank < 0) return QDateTime(date, QTime(0, 0), Qt::UTC);

  const QString clock = trimmed.sliced(blank).trimmed().toString();
  QTime time = QTime::fromString(clock, QStringLiteral("H:mm:ss"));
  if (!time.isValid()) time = QTime::fromString(clock, QStringLiteral("H:mm"));
  if (!time.isValid()) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

bool readNumber(const QString& text, double& number) {
  // Most texts of a statement are words: they are told apart before the full reading.
  const QStringView trimmed = QStringView(text).trimmed();
  if (trimmed.isEmpty()) return false;
  const QChar first = trimmed.front();
  if (!isDigit(first) && !QStringView(u"+-.,").contains(first)) return false;
  try {
    const Variant converted = convertTo(FieldType::Double, 0, Variant(text));
    if (converted.isNull()) return false;
    number = converted.number();
    return true;
  } catch (const ErrorEjecucion&) {
    return false;
  }
}

}  // namespace lang
