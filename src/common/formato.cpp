#include "common/formato.h"

#include <charconv>
#include <cmath>
#include <QHash>
#include <QVarLengthArray>
#include <vector>

#include "common/conversion.h"

namespace {

constexpr int kSignificantDigits = 15;

// A number as its significant digits: 0.DIGITS times ten to the power of `point`. The sign is
// apart.
struct Digits {
  char digit[kSignificantDigits + 1] = {};
  int count = 0;
  int point = 0;

  bool isZero() const { return count == 0; }
  // The digit at a place: 0 is the units, 1 the tens, -1 the tenths.
  char at(int place) const {
    const int i = point - 1 - place;
    return i >= 0 && i < count ? digit[i] : '0';
  }
};

Digits significantDigits(double value) {
  Digits d;
  value = std::fabs(value);
  if (value == 0 || !std::isfinite(value)) return d;
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value,
                                 std::chars_format::scientific, kSignificantDigits - 1)
                       .ptr;
  const char* c = buffer;
  for (; *c != 'e'; ++c)
    if (*c != '.') d.digit[d.count++] = *c;
  ++c;
  if (*c == '+') ++c;
  std::from_chars(c, end, d.point);
  ++d.point;
  return d;
}

// Half away from zero, to so many decimals.
void roundTo(Digits& d, int decimals) {
  const int keep = d.point + decimals;
  if (keep < 0) {
    d.count = 0;
  } else if (keep < d.count) {
    bool carry = d.digit[keep] >= '5';
    d.count = keep;
    for (int i = keep - 1; carry && i >= 0; --i) {
      carry = d.digit[i] == '9';
      d.digit[i] = carry ? '0' : static_cast<char>(d.digit[i] + 1);
    }
    if (carry) {
      d.digit[0] = '1';
      d.count = 1;
      ++d.point;
    }
  }
  while (d.count > 0 && d.digit[d.count - 1] == '0') --d.count;
}

enum class Piece { Literal, Zero, Hash, Point, Percent, Day, Month, Year };

struct Token {
  Piece piece;
  QString text;  // of a literal
  int width;     // letters of a part of a date
};

// What a section writes before its first digit and after its last one, blanks around left out.
struct Ends {
  QString before;
  QString after;
  bool operator==(const Ends&) const = default;
};

struct Section {
  std::vector<Token> tokens;
  Ends ends;
  qsizetype point = 0;  // index of the decimal sign, or the end
  int decimals = 0;
  int percents = 0;
  bool grouped = false;
  bool hasDigits = false;
};

struct Mask {
  std::vector<Section> sections;
  bool ofDates = false;
  QString zero;  // as it writes it, blanks around left out

  const Section* section(size_t i) const {
    return i < sections.size() && !sections[i].tokens.empty() ? &sections[i] : nullptr;
  }
};

void addLiteral(Section& section, QChar c) {
  if (section.tokens.empty() || section.tokens.back().piece != Piece::Literal)
    section.tokens.push_back({Piece::Literal, {}, 0});
  section.tokens.back().text += c;
}

void addDatePart(Section& section, Piece piece) {
  if (!section.tokens.empty() && section.tokens.back().piece == piece)
    ++section.tokens.back().width;
  else
    section.tokens.push_back({piece, {}, 1});
}

// Adds one sign of a mask that stands outside quotes.
void addSign(Section& section, QChar c, bool ofDates) {
  switch (c.unicode()) {
    case u'0':
    case u'#':
      section.tokens.push_back({c == u'0' ? Piece::Zero : Piece::Hash, {}, 0});
      section.hasDigits = true;
      return;
    case u'.':
      if (ofDates) break;
      section.tokens.push_back({Piece::Point, {}, 0});
      return;
    case u',':
      if (ofDates) break;
      section.grouped = true;
      return;
    case u'%':
      section.tokens.push_back({Piece::Percent, {}, 0});
      ++section.percents;
      return;
    case u'd':
    case u'm':
    case u'y':
      if (!ofDates) break;
      addDatePart(section, c == u'd' ? Piece::Day : c == u'm' ? Piece::Month : Piece::Year);
      return;
    default:
      break;
  }
  addLiteral(section, c);
}

void measure(Section& section) {
  section.point = static_cast<qsizetype>(section.tokens.size());
  for (size_t i = 0; i < section.tokens.size(); ++i) {
    const Piece piece = section.tokens[i].piece;
    if (piece == Piece::Point && section.point == static_cast<qsizetype>(section.tokens.size()))
      section.point = static_cast<qsizetype>(i);
    if (static_cast<qsizetype>(i) > section.point && (piece == Piece::Zero || piece == Piece::Hash))
      ++section.decimals;
  }
}

Ends endsOf(const Section& section) {
  Ends ends;
  bool digits = false;
  for (const Token& token : section.tokens) {
    if (token.piece == Piece::Literal) {
      (digits ? ends.after : ends.before) += token.text;
    } else {
      digits = true;
      ends.after.clear();  // a literal among the digits
    }
  }
  return {ends.before.trimmed(), ends.after.trimmed()};
}

// A mask of dates has letters of dates and no digits, quoted text apart.
bool isOfDates(const QString& mask) {
  bool quoted = false, letters = false;
  for (qsizetype i = 0; i < mask.size(); ++i) {
    const QChar c = mask[i];
    if (c == u'"') quoted = !quoted;
    if (quoted) continue;
    if (c == u'\\')
      ++i;
    else if (c == u'0' || c == u'#')
      return false;
    else if (c == u'd' || c == u'm' || c == u'y')
      letters = true;
  }
  return letters;
}

Mask parseMask(const QString& text) {
  Mask mask;
  mask.ofDates = isOfDates(text);
  mask.sections.emplace_back();
  bool quoted = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    Section& section = mask.sections.back();
    if (c == u'"')
      quoted = !quoted;
    else if (quoted)
      addLiteral(section, c);
    else if (c == u'\\' && i + 1 < text.size())
      addLiteral(section, text[++i]);
    else if (c == u';' && !mask.ofDates)
      mask.sections.emplace_back();
    else
      addSign(section, c, mask.ofDates);
  }
  for (Section& section : mask.sections) {
    measure(section);
    section.ends = endsOf(section);
  }
  return mask;
}

// The integer part, built from the units leftwards and so backwards. The leftmost placeholder takes
// all the digits that are left.
void appendInteger(QString& out, const Section& section, const Digits& d) {
  qsizetype placeholders = 0, zeros = 0;  // `zeros`: places that always show a digit
  for (qsizetype i = 0; i < section.point; ++i) {
    const Piece piece = section.tokens[static_cast<size_t>(i)].piece;
    if (piece != Piece::Zero && piece != Piece::Hash) continue;
    ++placeholders;
    if (piece == Piece::Zero || zeros > 0) ++zeros;
  }
  const int digits = d.isZero() ? 0 : std::max(0, d.point);
  const int shown = std::max<int>(digits, static_cast<int>(zeros));
  QVarLengthArray<QChar, 32> backwards;
  int place = 0;
  const auto put = [&] {
    if (section.grouped && place > 0 && place % 3 == 0) backwards.append(u'.');
    backwards.append(QLatin1Char(d.at(place++)));
  };
  for (qsizetype i = section.point; i-- > 0;) {
    const Token& token = section.tokens[static_cast<size_t>(i)];
    if (token.piece == Piece::Literal) {
      for (qsizetype k = token.text.size(); k-- > 0;) backwards.append(token.text[k]);
    } else if (token.piece == Piece::Percent) {
      backwards.append(u'%');
    } else {
      if (place < shown) put();
      if (--placeholders == 0)
        while (place < shown) put();
    }
  }
  std::reverse(backwards.begin(), backwards.end());
  out.append(backwards.constData(), backwards.size());
}

void appendDecimals(QString& out, const Section& section, const Digits& d) {
  int place = 0;
  const int last = d.point - d.count;  // place of the last digit that isn't zero
  for (size_t i = static_cast<size_t>(section.point); i < section.tokens.size(); ++i) {
    const Token& token = section.tokens[i];
    switch (token.piece) {
      case Piece::Point:
        if (static_cast<qsizetype>(i) == section.point) out += u',';
        break;
      case Piece::Zero:
        out += QLatin1Char(d.at(--place));
        break;
      case Piece::Hash:
        --place;
        if (!d.isZero() && place >= last) out += QLatin1Char(d.at(place));
        break;
      case Piece::Percent:
        out += u'%';
        break;
      default:
        out += token.text;
        break;
    }
  }
}

Digits digitsFor(const Section& section, double value) {
  Digits d = significantDigits(value);
  d.point += 2 * section.percents;
  roundTo(d, section.decimals);
  return d;
}

QString formatNumber(double value, const Mask& mask) {
  const Section* const first = mask.section(0);
  if (!first) return {};
  const Section* const negative = mask.section(1);
  const Section* section = value < 0 && negative ? negative : first;
  Digits d = digitsFor(*section, value);
  const bool zero = section->hasDigits ? d.isZero() : value == 0;
  if (zero) {
    section = mask.section(2) ? mask.section(2) : first;
    d = {};
  }
  QString out;
  out.reserve(32);
  if (value < 0 && !zero && section == first) out += u'-';
  appendInteger(out, *section, d);
  appendDecimals(out, *section, d);
  return out;
}

// A number without any sign of its own.
std::optional<double> unsignedNumber(const QString& text) {
  for (const QChar c : {u'-', u'+', u'(', u')'})
    if (text.contains(c)) return std::nullopt;
  return parseNumber(text);
}

// The number between the literals of a section, without a sign of its own.
std::optional<double> between(const Ends& ends, const QString& text) {
  const qsizetype digits = text.size() - ends.before.size() - ends.after.size();
  if (digits <= 0 || !text.startsWith(ends.before) || !text.endsWith(ends.after))
    return std::nullopt;
  return unsignedNumber(text.mid(ends.before.size(), digits));
}

// The text without the literals of the mask's sections at its ends, also half of them: a currency
// sign that is being typed over.
QString withoutLiterals(const QString& text, const Mask& mask) {
  QString letters;
  for (const Section& section : mask.sections) letters += section.ends.before + section.ends.after;
  const auto belongs = [&](QChar c) {
    return c.isSpace() ||
           (letters.contains(c) && !c.isDigit() && !QStringView(u"-+,.()").contains(c));
  };
  qsizetype first = 0, last = text.size();
  while (first < last && belongs(text[first])) ++first;
  while (last > first && belongs(text[last - 1])) --last;
  return text.mid(first, last - first);
}

QString monthText(int month, int width) {
  static const char* const kNames[] = {"enero",      "febrero", "marzo",     "abril",
                                       "mayo",       "junio",   "julio",     "agosto",
                                       "septiembre", "octubre", "noviembre", "diciembre"};
  if (width <= 2) return QString::number(month).rightJustified(width, u'0');
  const QString name = QLatin1String(kNames[month - 1]);
  return width == 3 ? name.left(3) : name;
}

QString formatDate(QDate date, const Mask& mask) {
  QString out;
  for (const Token& token : mask.sections.front().tokens) {
    switch (token.piece) {
      case Piece::Day:
        out += QString::number(date.day()).rightJustified(std::min(token.width, 2), u'0');
        break;
      case Piece::Month:
        out += monthText(date.month(), token.width);
        break;
      case Piece::Year:
        out += token.width > 2 ? QString::number(date.year()).rightJustified(4, u'0')
                               : QString::number(date.year() % 100).rightJustified(2, u'0');
        break;
      default:
        out += token.text;
        break;
    }
  }
  return out;
}

// A number or a date.
QString written(const Variant& value, const QString& text, const Mask& mask) {
  if (text.isEmpty()) return value.display();
  return mask.ofDates ? formatDate(value.date(), mask) : formatNumber(value.number(), mask);
}

// Masks are few and used for every cell of a grid, so each is read once; and mostly it is the one
// used last.
const Mask& maskOf(const QString& text) {
  thread_local QHash<QString, Mask> known;
  thread_local auto last = known.constEnd();
  constexpr int kMost = 64;
  if (last != known.constEnd() && last.key() == text) return *last;
  last = known.constFind(text);
  if (last == known.constEnd()) {
    if (known.size() >= kMost) known.clear();
    Mask mask = parseMask(text);
    mask.zero = written(0.0, text, mask).trimmed();
    last = known.insert(text, mask);
  }
  return *last;
}

}  // namespace

QString Format(const Variant& value, const QString& mask) {
  const Mask& parsed = maskOf(mask);
  if (value.isNull()) {
    const Section* const ofNull = parsed.section(3);
    QString out;
    if (ofNull)
      for (const Token& token : ofNull->tokens) out += token.text;
    return out;
  }
  if (mask.isEmpty()) return value.display();
  if (!value.isText()) return written(value, mask, parsed);

  const QString text = value.text();
  if (parsed.ofDates) {
    const auto date = parseDate(text);
    return date ? formatDate(date->date(), parsed) : text;
  }
  const auto number = parseNumber(text);
  return number ? formatNumber(*number, parsed) : text;
}

std::optional<double> ImporteDe(const QString& text, const QString& mask) {
  const QString written = text.trimmed();
  const Mask& parsed = maskOf(mask);
  if (written == parsed.zero) return 0;
  const Section* const first = parsed.section(0);
  if (!first) return parseNumber(written);
  if (const Section* const second = parsed.section(1)) {
    const auto number = second->ends == first->ends ? std::nullopt : between(second->ends, written);
    if (number) return -*number;
  }
  // Without a section of their own, negatives get a minus before everything else.
  const bool minus = written.startsWith(u'-');
  const QString size = minus ? written.mid(1) : written;
  auto number = between(first->ends, size);
  if (!number && !minus) number = parseNumber(written);
  if (!number) number = unsignedNumber(withoutLiterals(size, parsed));
  if (!number) return std::nullopt;
  return minus ? -*number : *number;
}

double Val(const QString& text) {
  QByteArray number;
  bool digits = false, point = false;
  for (const QChar c : text) {
    if (c == u' ' || c == u'\t') continue;
    const bool digit = c >= u'0' && c <= u'9';
    const bool sign = number.isEmpty() && (c == u'-' || c == u'+');
    if (!digit && !sign && (c != u'.' || point)) break;
    digits = digits || digit;
    point = point || c == u'.';
    number += static_cast<char>(c.unicode());
  }
  return digits ? number.toDouble() : 0;
}

bool EsNumerico(const QString& text) {
  return parseNumber(text).has_value();
}

bool EsFecha(const QString& text) {
  return parseDate(text).has_value();
}
