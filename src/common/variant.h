// One value as the tables and statements know it: Null, yes/no, long, double, date or text.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <variant>

// The type codes are those that the table builders write.
enum class FieldType { Boolean = 1, Long = 4, Double = 7, Date = 8, Text = 10 };

class Variant {
 public:
  Variant() = default;  // Null
  Variant(bool v) : v_(v) {}
  Variant(int v) : v_(static_cast<qint64>(v)) {}
  Variant(qint64 v) : v_(v) {}
  Variant(double v) : v_(v) {}
  Variant(QDate v);
  Variant(const QDateTime& v);  // seconds are the finest part kept
  Variant(const QString& v) : v_(v) {}
  Variant(const char* utf8) : v_(QString::fromUtf8(utf8)) {}

  bool isNull() const { return std::holds_alternative<std::monostate>(v_); }
  bool isText() const { return std::holds_alternative<QString>(v_); }
  bool isNumber() const;  // long or double
  bool isInteger() const { return std::holds_alternative<qint64>(v_); }
  bool isDate() const { return std::holds_alternative<QDateTime>(v_); }
  bool isBoolean() const { return std::holds_alternative<bool>(v_); }

  // Conversions for reading a value into a variable of a type. Null raises 94; a text that can't be
  // read as the type raises 13. Text forms are the Spanish ones: "1234,5", "15/02/2003",
  // "15/02/2003 10:30:00"; yes/no is "Verdadero" or "Falso", and -1 or 0 as a number.
  QString text() const;
  double number() const;
  qint64 toLong() const;  // rounds half to even as a conversion does; 6 beyond 32 bits
  QDate date() const;
  QDateTime dateTime() const;
  bool toBool() const;

  // The whole number as it is held, whatever its range: only if isInteger().
  qint64 integer() const { return std::get<qint64>(v_); }

  // As text(), with Null as empty text: for controls that show a field.
  QString display() const;

  // Equal in type and value; Null equals Null. For tests and caches, not for statements.
  bool operator==(const Variant& other) const { return v_ == other.v_; }

 private:
  std::variant<std::monostate, bool, qint64, double, QDateTime, QString> v_;
};

// Converts to a column's type, as an assignment to a field does: text to number by the Spanish
// rules, text to date day first, anything to text. Null stays Null. 3421 when it can't be done,
// 3421 for a long beyond 32 bits, 3163 for a text longer than `size` (0: no limit).
Variant convertTo(FieldType type, int size, const Variant& value);
