#include "foundation/data/lang/libro.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTextStream>

namespace {

QString cellText(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return QStringLiteral("Null");
    case SQLITE_FLOAT:
      return QString::number(sqlite3_column_double(statement, column), 'g', 15);
    default:
      break;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return *text ? QString::fromUtf8(text) : QStringLiteral("''");
}

}  // namespace

Libro::Libro(bool withSums) {
  sqlite3_open(":memory:", &db_);
  registerFunctions(db_);
  QFile file(QStringLiteral(LIBRANO_DATOS "/sentencias/libro.txt"));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
  QTextStream stream(&file);
  while (!stream.atEnd()) readLine(stream.readLine());
  if (withSums) addSums();
  run(
      QStringLiteral("CREATE INDEX i1 ON [Diario] ([NAsiento]); CREATE INDEX i2 ON [Diario] "
                     "([Subcuenta]); CREATE UNIQUE INDEX i3 ON [Subcuentas] ([Subcuenta])"));
}

Libro::~Libro() {
  sqlite3_close(db_);
}

void Libro::readLine(const QString& line) {
  if (line.isEmpty() || line.startsWith(u'#')) return;
  const QString rest = line.section(QStringLiteral(": "), 1);
  if (line.startsWith(u"tabla ")) {
    filling_ = line.section(u':', 0, 0).mid(6);
    createTable(rest);
  } else if (line.startsWith(u"consulta ")) {
    const QString name = line.section(u':', 0, 0).mid(9);
    queries_[name.toCaseFolded()] = rest;
    queryNames_ << name;
  } else {
    QStringList values;
    for (const QString& cell : line.trimmed().split(QStringLiteral(" | "))) {
      const bool bare = cell == u"Null" || cell == u"''";
      values << (bare ? cell : u'\'' + cell + u'\'');
    }
    run(QStringLiteral("INSERT INTO [%1] VALUES (%2)").arg(filling_, values.join(u',')));
  }
}

void Libro::createTable(const QString& definition) {
  struct Kind {
    QString word;
    FieldType type;
    QString declared;
  };
  static const Kind kinds[] = {
      {QStringLiteral("largo"), FieldType::Long, QStringLiteral("INTEGER")},
      {QStringLiteral("doble"), FieldType::Double, QStringLiteral("REAL")},
      {QStringLiteral("sino"), FieldType::Boolean, QStringLiteral("INTEGER")},
      {QStringLiteral("fecha"), FieldType::Date, QStringLiteral("TEXT")},
      {QStringLiteral("texto"), FieldType::Text, QStringLiteral("TEXT COLLATE NOCASE")}};
  Table table;
  table.name = filling_;
  QStringList columns;
  for (const QString& column : definition.split(QStringLiteral(", "))) {
    const QStringList words = column.split(u' ');
    for (const Kind& kind : kinds) {
      if (kind.word != words[1]) continue;
      table.columns.push_back({words[0], kind.type, words.value(2).toInt()});
      columns << u'[' + words[0] + QStringLiteral("] ") + kind.declared;
    }
  }
  run(QStringLiteral("CREATE TABLE [%1] (%2)").arg(filling_, columns.join(u',')));
  tables_[filling_.toCaseFolded()] = table;
}

void Libro::addSums() {
  const std::vector<QStringList> keys = {
      {},
      {QStringLiteral("NAsiento")},
      {QStringLiteral("Subcuenta")},
      {QStringLiteral("Subcuenta"), QStringLiteral("Month(Fecha)")}};
  for (const QStringList& key : keys) {
    RunningSums sums;
    sums.sumsTable = QStringLiteral("sumas_%1").arg(sums_.size());
    sums.baseTable = QStringLiteral("Diario");
    sums.sideColumn = QStringLiteral("DH");
    sums.amountColumn = QStringLiteral("Importe");
    sums.keys = key;
    QStringList columns;
    for (const QString& name : key) {
      const bool text = name == u"Subcuenta";
      sums.keyColumns << (name.startsWith(u"Month") ? QStringLiteral("mes") : name);
      columns << u'[' + sums.keyColumns.back() + u']' +
                     QLatin1String(text ? " TEXT COLLATE NOCASE" : " INTEGER");
    }
    columns << QStringLiteral("n INTEGER") << QStringLiteral("d INTEGER")
            << QStringLiteral("h INTEGER");
    if (!key.isEmpty()) {
      columns << QStringLiteral("PRIMARY KEY (%1)").arg(sums.keyColumns.join(u','));
    }
    sums.countColumn = QStringLiteral("n");
    sums.debitColumn = QStringLiteral("d");
    sums.creditColumn = QStringLiteral("h");
    run(QStringLiteral("CREATE TABLE [%1] (%2)").arg(sums.sumsTable, columns.join(u',')));
    sums_.push_back(sums);
  }
  sum();
}

void Libro::sum() const {
  for (const RunningSums& sums : sums_) {
    QStringList keys = sums.keys;
    keys.replaceInStrings(QStringLiteral("Month(Fecha)"),
                          QStringLiteral("CAST(substr(Fecha,6,2) AS INTEGER)"));
    QStringList columns = keys;
    columns << QStringLiteral("COUNT(*)")
            << QStringLiteral(
                   "SUM(CASE WHEN DH='D' THEN CAST(round(Importe*1e6) AS INTEGER) ELSE 0 END)")
            << QStringLiteral(
                   "SUM(CASE WHEN DH='D' THEN 0 ELSE CAST(round(Importe*1e6) AS INTEGER) END)");
    run(QStringLiteral("DELETE FROM [%1]; INSERT INTO [%1] SELECT %2 FROM Diario %3")
            .arg(sums.sumsTable, columns.join(u','),
                 keys.isEmpty() ? QString() : QStringLiteral("GROUP BY ") + keys.join(u',')));
  }
}

const Catalog::Table* Libro::table(const QString& name) const {
  const auto found = tables_.find(name.toCaseFolded());
  return found == tables_.end() ? nullptr : &found->second;
}

std::optional<QString> Libro::queryText(const QString& name) const {
  const auto found = queries_.find(name.toCaseFolded());
  return found == queries_.end() ? std::nullopt : std::optional(found->second);
}

void Libro::run(const QString& sql) const {
  char* failure = nullptr;
  sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &failure);
  EXPECT_EQ(failure, nullptr) << failure << "\n" << sql.toStdString();
  sqlite3_free(failure);
}

sqlite3_stmt* Libro::prepared(const QString& sql, const QList<Variant>& params,
                              QString& failure) const {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
    failure = QString::fromUtf8(sqlite3_errmsg(db_)) + u'\n' + sql;
    return nullptr;
  }
  const int used =
      std::min(static_cast<int>(params.size()), sqlite3_bind_parameter_count(statement));
  for (int i = 0; i < used; ++i) {
    const Variant& value = params[i];
    if (value.isText()) {
      sqlite3_bind_text(statement, i + 1, value.text().toUtf8().constData(), -1, SQLITE_TRANSIENT);
    } else if (value == Variant(value.number())) {
      sqlite3_bind_double(statement, i + 1, value.number());
    } else {
      sqlite3_bind_int64(statement, i + 1, value.toLong());
    }
  }
  return statement;
}

QStringList Libro::rows(const QString& sql, const QList<Variant>& params) const {
  QString failure;
  sqlite3_stmt* statement = prepared(sql, params, failure);
  if (!statement) return {failure};
  QStringList all;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    QStringList cells;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) cells << cellText(statement, i);
    all << cells.join(QStringLiteral(" | "));
  }
  if (sqlite3_finalize(statement) != SQLITE_OK) all << QString::fromUtf8(sqlite3_errmsg(db_));
  return all;
}

QString Libro::explained(const QString& sql) const {
  QStringList steps;
  for (const QString& row : rows(QStringLiteral("EXPLAIN QUERY PLAN ") + sql)) {
    steps << row.section(QStringLiteral(" | "), 3);
  }
  return steps.join(QStringLiteral("; "));
}

QStringList Libro::read(const QString& source) const {
  const Plan plan = compile(source, *this, kAno);
  return rows(plan.wholeSql, plan.params);
}
