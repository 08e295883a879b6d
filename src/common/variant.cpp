#include "common/variant.h"

#include <cmath>
#include <limits>

#include "common/conversion.h"
#include "common/errorejecucion.h"

namespace {

QDateTime wholeSeconds(const QDateTime& v) {
  const QTime t = v.time();
  return QDateTime(v.date(), QTime(t.hour(), t.minute(), t.second()), Qt::UTC);
}

std::optional<bool> parseBool(const QString& text) {
  const QString plain = text.trimmed();
  if (plain.compare(QStringLiteral("Verdadero"), Qt::CaseInsensitive) == 0) return true;
  if (plain.compare(QStringLiteral("Falso"), Qt::CaseInsensitive) == 0) return false;
  if (const auto number = parseNumber(plain)) return *number != 0;
  return std::nullopt;
}

bool fitsLong(double rounded) {
  return rounded >= std::numeric_limits<qint32>::min() &&
         rounded <= std::numeric_limits<qint32>::max();
}

}  // namespace

Variant::Variant(QDate v) {
  if (v.isValid()) v_ = QDateTime(v, QTime(0, 0), Qt::UTC);
}

Variant::Variant(const QDateTime& v) {
  if (v.isValid()) v_ = wholeSeconds(v);
}

bool Variant::isNumber() const {
  return std::holds_alternative<qint64>(v_) || std::holds_alternative<double>(v_);
}

QString Variant::text() const {
  if (isNull()) throw ErrorEjecucion(err::kNuloNoValido);
  if (isText()) return std::get<QString>(v_);
  if (isBoolean())
    return std::get<bool>(v_) ? QStringLiteral("Verdadero") : QStringLiteral("Falso");
  if (isDate()) return dateText(std::get<QDateTime>(v_));
  if (const auto* whole = std::get_if<qint64>(&v_)) return QString::number(*whole);
  return numberText(std::get<double>(v_));
}

QString Variant::display() const {
  return isNull() ? QString() : text();
}

double Variant::number() const {
  if (isNull()) throw ErrorEjecucion(err::kNuloNoValido);
  if (const auto* whole = std::get_if<qint64>(&v_)) return static_cast<double>(*whole);
  if (const auto* real = std::get_if<double>(&v_)) return *real;
  if (isBoolean()) return std::get<bool>(v_) ? -1 : 0;
  if (isDate()) return dateSerial(std::get<QDateTime>(v_));
  const auto number = parseNumber(std::get<QString>(v_));
  if (!number) throw ErrorEjecucion(err::kTiposNoCoinciden, std::get<QString>(v_));
  return *number;
}

qint64 Variant::toLong() const {
  const double rounded = roundHalfEven(number());
  if (!fitsLong(rounded)) throw ErrorEjecucion(err::kDesbordamiento);
  return static_cast<qint64>(rounded);
}

QDate Variant::date() const {
  return dateTime().date();
}

QDateTime Variant::dateTime() const {
  if (isNull()) throw ErrorEjecucion(err::kNuloNoValido);
  if (isDate()) return std::get<QDateTime>(v_);
  const auto parsed = isText() ? parseDate(std::get<QString>(v_)) : dateFromSerial(number());
  if (!parsed) throw ErrorEjecucion(err::kTiposNoCoinciden, text());
  return *parsed;
}

bool Variant::toBool() const {
  if (isBoolean()) return std::get<bool>(v_);
  if (!isText()) return number() != 0;
  const auto parsed = parseBool(std::get<QString>(v_));
  if (!parsed) throw ErrorEjecucion(err::kTiposNoCoinciden, std::get<QString>(v_));
  return *parsed;
}

Variant convertTo(FieldType type, int size, const Variant& value) {
  if (value.isNull()) return {};
  try {
    switch (type) {
      case FieldType::Boolean:
        return value.toBool();
      case FieldType::Long:
        return value.toLong();
      case FieldType::Double:
        if (!std::isfinite(value.number())) throw ErrorEjecucion(err::kDesbordamiento);
        return value.number();
      case FieldType::Date:
        return value.dateTime();
      case FieldType::Text:
        break;
    }
  } catch (const ErrorEjecucion&) {
    throw ErrorEjecucion(err::kConversionDeDatos, value.text());
  }
  const QString text = value.text();
  if (size > 0 && text.size() > size) throw ErrorEjecucion(err::kTextoDemasiadoLargo, text);
  return text;
}
