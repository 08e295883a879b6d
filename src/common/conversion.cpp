#include "common/conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <QVarLengthArray>

namespace {

const QDate kFirstDay(1899, 12, 30);
constexpr int kSecondsADay = 24 * 60 * 60;

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

// A run of at most `most` digits, taken from the front of `text`.
std::optional<int> takeDigits(QStringView& text, int most) {
  int n = 0, value = 0;
  while (n < text.size() && n < most && isDigit(text[n])) {
    value = value * 10 + text[n].digitValue();
    ++n;
  }
  if (n == 0) return std::nullopt;
  text = text.mid(n);
  return value;
}

bool takeSign(QStringView& text, QStringView signs) {
  if (text.isEmpty() || !signs.contains(text.front())) return false;
  text = text.mid(1);
  return true;
}

std::optional<QTime> parseTime(QStringView text) {
  int part[3] = {0, 0, 0};
  for (int i = 0; i < 3; ++i) {
    const auto value = takeDigits(text, 2);
    if (!value) return std::nullopt;
    part[i] = *value;
    if (text.isEmpty()) {
      const QTime time(part[0], part[1], part[2]);
      return i > 0 && time.isValid() ? std::optional(time) : std::nullopt;
    }
    if (!takeSign(text, u":")) return std::nullopt;
  }
  return std::nullopt;
}

int fullYear(int year, qsizetype digits) {
  if (digits > 2) return year;
  return year + (year < 30 ? 2000 : 1900);
}

}  // namespace

std::optional<double> parseNumber(QStringView text) {
  text = text.trimmed();
  bool negative = false;
  if (text.size() > 1 && text.front() == u'(' && text.back() == u')') {
    const auto inside = parseNumber(text.mid(1, text.size() - 2));
    if (!inside || *inside < 0) return std::nullopt;
    return -*inside;
  }
  const auto takeEuro = [&text] {
    if (text.startsWith(u'€')) {
      text = text.mid(1).trimmed();
    } else if (text.endsWith(u'€')) {
      text = text.chopped(1).trimmed();
    } else {
      return false;
    }
    return true;
  };
  const bool euro = takeEuro();
  const auto isSign = [](QChar c) { return c == u'-' || c == u'+'; };
  if (!text.isEmpty() && isSign(text.front())) {
    negative = text.front() == u'-';
    text = text.mid(1).trimmed();
  } else if (!text.isEmpty() && isSign(text.back())) {
    negative = text.back() == u'-';
    text = text.chopped(1).trimmed();
  }
  if (!euro) takeEuro();
  QVarLengthArray<char, 64> plain;
  bool digits = false, comma = false;
  for (const QChar c : text) {
    if (isDigit(c)) {
      digits = true;
      plain.append(static_cast<char>(c.unicode()));
    } else if (c == u',' && !comma) {
      comma = true;
      plain.append('.');
    } else if (c != u'.' || comma) {
      return std::nullopt;
    }
  }
  if (!digits) return std::nullopt;
  double value = 0;
  const auto read = std::from_chars(plain.begin(), plain.end(), value);
  if (read.ec != std::errc() || !std::isfinite(value)) return std::nullopt;
  return negative ? -value : value;
}

std::optional<QDateTime> parseDate(QStringView text) {
  text = text.trimmed();
  const qsizetype blank = text.indexOf(u' ');
  QTime time(0, 0);
  if (blank >= 0) {
    const auto parsed = parseTime(text.mid(blank + 1).trimmed());
    if (!parsed) return std::nullopt;
    time = *parsed;
    text = text.left(blank);
  }
  int part[3];
  qsizetype width[3];
  for (int i = 0; i < 3; ++i) {
    const qsizetype before = text.size();
    const auto value = takeDigits(text, 4);
    if (!value) return std::nullopt;
    part[i] = *value;
    width[i] = before - text.size();
    if (i < 2 && !takeSign(text, u"/-")) return std::nullopt;
  }
  if (!text.isEmpty() || width[1] > 2) return std::nullopt;
  const bool yearFirst = width[0] == 4;
  if (!yearFirst && (width[0] > 2 || width[2] == 3)) return std::nullopt;
  if (yearFirst && width[2] > 2) return std::nullopt;
  const QDate date = yearFirst ? QDate(part[0], part[1], part[2])
                               : QDate(fullYear(part[2], width[2]), part[1], part[0]);
  if (!date.isValid() || date.year() < 100) return std::nullopt;
  return QDateTime(date, time, Qt::UTC);
}

QString numberText(double value) {
  if (value == 0 || !std::isfinite(value)) return QStringLiteral("0");
  const int exponent = static_cast<int>(std::floor(std::log10(std::fabs(value))));
  const int decimals = std::clamp(14 - exponent, 0, 300);
  QString text = QString::number(value, 'f', decimals);
  if (decimals > 0) {
    while (text.endsWith(u'0')) text.chop(1);
    if (text.endsWith(u'.')) text.chop(1);
  }
  return text.replace(u'.', u',');
}

QString dateText(const QDateTime& value) {
  const bool midnight = value.time() == QTime(0, 0);
  return value.toString(midnight ? QStringLiteral("dd/MM/yyyy")
                                 : QStringLiteral("dd/MM/yyyy HH:mm:ss"));
}

double dateSerial(const QDateTime& value) {
  return static_cast<double>(kFirstDay.daysTo(value.date())) +
         value.time().msecsSinceStartOfDay() / 1000.0 / kSecondsADay;
}

std::optional<QDateTime> dateFromSerial(double serial) {
  // The range of dates that fit in four digits of year.
  if (!(serial > -657434.0 && serial < 2958466.0)) return std::nullopt;
  const double day = std::floor(serial);
  const auto seconds = static_cast<qint64>(std::round((serial - day) * kSecondsADay));
  return QDateTime(kFirstDay.addDays(static_cast<qint64>(day)), QTime(0, 0), Qt::UTC)
      .addSecs(seconds);
}

double roundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}
