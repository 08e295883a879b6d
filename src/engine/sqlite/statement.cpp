#include "engine/sqlite/statement.h"

#include <sqlite3.h>

#include "engine/sqlite/store.h"

namespace {

int twoDigits(const char* at) {
  return (at[0] - '0') * 10 + (at[1] - '0');
}

// "2003-02-15" and "2003-02-15 10:30:00" only; anything else is no date of ours.
QDateTime parseIso(const char* text, int length) {
  if (length != 10 && length != 19) return {};
  static const char shape[] = "dddd-dd-dd dd:dd:dd";
  for (int i = 0; i < length; ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    if (shape[i] == 'd' ? !digit : text[i] != shape[i]) return {};
  }
  const QDate date(twoDigits(text) * 100 + twoDigits(text + 2), twoDigits(text + 5),
                   twoDigits(text + 8));
  if (length == 10) return QDateTime(date, QTime(0, 0), Qt::UTC);
  return QDateTime(date, QTime(twoDigits(text + 11), twoDigits(text + 14), twoDigits(text + 17)),
                   Qt::UTC);
}

// Tools write one with each row: digit by digit it takes a tenth of what QDate::toString does.
QString isoText(const QDate& date) {
  int year = 0, month = 0, day = 0;
  date.getDate(&year, &month, &day);
  if (!date.isValid() || year < 0 || year > 9999) return date.toString(Qt::ISODate);
  QString text(10, u'-');
  const auto put = [&text](qsizetype first, qsizetype end, int number) {
    for (; end > first; number /= 10) text[--end] = QChar(u'0' + number % 10);
  };
  put(0, 4, year);
  put(5, 7, month);
  put(8, 10, day);
  return text;
}

}  // namespace

Statement::Statement(Statement&& other) noexcept
    : store_(other.store_),
      handle_(std::exchange(other.handle_, nullptr)),
      doing_(other.doing_),
      prepared_(other.prepared_) {}

Statement::~Statement() {
  if (!handle_) return;
  if (!prepared_) {
    sqlite3_finalize(handle_);
    return;
  }
  sqlite3_reset(handle_);
  sqlite3_clear_bindings(handle_);
  prepared_->busy = false;
}

Statement& Statement::bind(int parameter, const Variant& value) {
  if (value.isNull()) {
    sqlite3_bind_null(handle_, parameter);
  } else if (value.isText() || value.isDate()) {
    const QByteArray utf8 = (value.isDate() ? isoText(value.dateTime()) : value.text()).toUtf8();
    sqlite3_bind_text(handle_, parameter, utf8.constData(), static_cast<int>(utf8.size()),
                      SQLITE_TRANSIENT);
  } else if (value.isBoolean()) {
    sqlite3_bind_int(handle_, parameter, value.toBool() ? -1 : 0);
  } else if (value.isInteger()) {
    sqlite3_bind_int64(handle_, parameter, value.integer());
  } else {
    sqlite3_bind_double(handle_, parameter, value.number());
  }
  return *this;
}

Statement& Statement::bind(const QList<Variant>& values) {
  for (int i = 0; i < values.size(); ++i) bind(i + 1, values[i]);
  return *this;
}

bool Statement::step() {
  const int code = sqlite3_step(handle_);
  store_->returned();
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  // The words are taken before the reset, which may change them.
  const QString words = QString::fromUtf8(sqlite3_errmsg(store_->handle()));
  sqlite3_reset(handle_);
  store_->fail(code, doing_, words);
}

void Statement::execute() {
  while (step()) {
  }
  reset();
}

void Statement::reset() {
  sqlite3_reset(handle_);
}

bool Statement::writes() const {
  return sqlite3_stmt_readonly(handle_) == 0;
}

int Statement::columnCount() const {
  return sqlite3_column_count(handle_);
}

bool Statement::isNull(int column) const {
  return sqlite3_column_type(handle_, column) == SQLITE_NULL;
}

qint64 Statement::integer(int column) const {
  return sqlite3_column_int64(handle_, column);
}

QString Statement::text(int column) const {
  const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
  return QString::fromUtf8(utf8, sqlite3_column_bytes(handle_, column));
}

// The library finds the column once: no other thread uses this connection.
RawValue Statement::raw(int column) const {
  sqlite3_value* const value = sqlite3_column_value(handle_, column);
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return {RawValue::Kind::Whole, sqlite3_value_int64(value)};
    case SQLITE_FLOAT:
      return {RawValue::Kind::Real, 0, sqlite3_value_double(value)};
    default:
      break;
  }
  const auto* utf8 = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {RawValue::Kind::Text, sqlite3_value_bytes(value), 0, utf8};
}

Variant valueOf(const RawValue& raw, FieldType type) {
  switch (raw.kind) {
    case RawValue::Kind::Null:
      return {};
    case RawValue::Kind::Whole:
      if (type == FieldType::Boolean) return raw.whole != 0;
      return type == FieldType::Double ? Variant(static_cast<double>(raw.whole))
                                       : Variant(raw.whole);
    case RawValue::Kind::Real:
      return type == FieldType::Boolean ? Variant(raw.real != 0) : Variant(raw.real);
    case RawValue::Kind::Text:
      break;
  }
  const auto length = static_cast<int>(raw.whole);
  if (type == FieldType::Date) {
    const QDateTime date = parseIso(raw.text, length);
    if (date.isValid()) return date;
  }
  return QString::fromUtf8(raw.text, length);
}

QString isoText(const QDateTime& value) {
  const QTime time = value.time();
  QString text = isoText(value.date());
  if (time != QTime(0, 0)) text += u' ' + time.toString(QStringLiteral("HH:mm:ss"));
  return text;
}

QString bracketed(const QString& name) {
  return u'[' + name + u']';
}
