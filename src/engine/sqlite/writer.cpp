// Rows written, one by one, with the checks that the file's own engine doesn't make.
#include <algorithm>

#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"

namespace {

// From so many rows on it pays to bring the sums up at the end of the group.
constexpr int kManyRows = 64;

// A row number is never used twice, or a recordset that still names a deleted row would show
// another.
QString nextRowSql(const QString& table) {
  return QStringLiteral(
             "SELECT max(coalesce((SELECT max(rowid) FROM %1), 0), "
             "coalesce((SELECT Ultima FROM librano_filas WHERE Tabla = ?1), 0)) + 1")
      .arg(bracketed(table));
}

QString noteLastRowSql(const QString& table) {
  return QStringLiteral(
             "INSERT OR REPLACE INTO librano_filas SELECT ?1, ?2 "
             "WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE rowid > ?2)")
      .arg(bracketed(table));
}

// Whether the engine deals out the table's row numbers.
bool ownRowNumbers(const Schema& schema, const QString& table) {
  return schema.hasOwnTables() && !schema.rowNumberIsColumn(table);
}

// The value that the row will have in a column of its primary key.
Variant keyValue(const Schema& schema, const QString& table, const QString& column,
                 const Values& values) {
  if (const Variant* value = values.find(column)) return *value;
  for (const Field& field : schema.definition(table)->Fields)
    if (field.Name == column) return defaultValue(field);
  return {};
}

}  // namespace

// `key` is 0 for a row that is being added.
void FileStore::checkKey(const Written& written, Key key, const Values& values) {
  for (const QString& column : written.primary) {
    if (key != 0 && !values.contains(column)) continue;
    const Variant value = keyValue(*schema(), written.table, column, values);
    if (value.isNull()) throw ErrorEjecucion(err::kClaveNula, column);
    if (value.isText() && written.primary.size() == 1)
      checkTwin(written.table, column, value.text(), key);
  }
}

// The file's index takes PEÑA and Peña for two keys: it knows the case of the plain letters only.
void FileStore::checkTwin(const QString& table, const QString& column, const QString& value,
                          Key key) {
  if (std::all_of(value.begin(), value.end(), [](QChar c) { return c.unicode() < 0x80; })) return;
  Statement twin =
      prepare(QStringLiteral(
                  "SELECT 1 FROM %1 WHERE mayusculas(%2) = mayusculas(?1) AND rowid <> ?2 LIMIT 1")
                  .arg(bracketed(table), bracketed(column)));
  twin.bind({value, key});
  if (twin.step()) throw ErrorEjecucion(err::kClaveDuplicada);
}

// `key` is the first parameter, where there is one.
void FileStore::write(const QString& sql, std::optional<Key> key, const Values& values) {
  Statement statement = prepareOwn(sql, Doing::Writing);
  int place = 0;
  if (key) statement.bind(++place, *key);
  for (const auto& [column, value] : values) statement.bind(++place, value);
  statement.execute();
}

// Tools write the same columns row after row: the texts made last are kept.
const FileStore::Written& FileStore::inserting(const QString& table, const Values& values) {
  const auto now = schema();
  if (inserting_.serves(table, values, *now)) return inserting_;
  const QStringList columns = values.columns();
  const bool numbered = ownRowNumbers(*now, table);
  QStringList names, marks;
  if (numbered) names += QStringLiteral("rowid");
  for (const QString& column : columns) names += bracketed(column);
  for (qsizetype i = 1; i <= names.size(); ++i) marks += u'?' + QString::number(i);
  QString sql = QStringLiteral("INSERT INTO ") + bracketed(table);
  sql += names.isEmpty()
             ? QStringLiteral(" DEFAULT VALUES")
             : QStringLiteral(" (") + names.join(QStringLiteral(", ")) +
                   QStringLiteral(") VALUES (") + marks.join(QStringLiteral(", ")) + u')';
  inserting_ = {table, columns,
                sql,   numbered ? nextRowSql(table) : QString(),
                now,   now->primaryColumns(table)};
  return inserting_;
}

// Within a group nobody else deals them out, so only the first is looked for.
Key FileStore::nextRow(const Written& written) {
  if (nextRow_.first == written.table) return nextRow_.second;
  Statement next = prepare(written.nextRowSql);
  next.bind(1, written.table).step();
  return next.integer(0);
}

Key FileStore::insert(const QString& table, const Values& values) {
  if (groupChanges_ >= kManyRows) sums_.gather();
  const Written& written = inserting(table, values);
  checkKey(written, 0, values);
  sums_.refuseTooLarge(table, values);
  std::optional<Key> dealt;
  if (!written.nextRowSql.isEmpty()) dealt = nextRow(written);
  write(written.sql, dealt, values);
  touched(table);
  const Key key = dealt ? *dealt : lastRowNumber();
  if (dealt && schema()->foreignTriggers().isEmpty())  // which may add rows too
    nextRow_ = {table, key + 1};
  sums_.moved({}, sums_.countsAdded(table, key, values));
  return key;
}

const FileStore::Written& FileStore::updating(const QString& table, const Values& values) {
  const auto now = schema();
  if (updating_.serves(table, values, *now)) return updating_;
  const QStringList columns = values.columns();
  QStringList sets;
  for (const QString& column : columns)
    sets += bracketed(column) + QStringLiteral(" = ?") + QString::number(sets.size() + 2);
  updating_ = {table,
               columns,
               QStringLiteral("UPDATE ") + bracketed(table) + QStringLiteral(" SET ") +
                   sets.join(QStringLiteral(", ")) + QStringLiteral(" WHERE rowid = ?1"),
               {},
               now,
               now->primaryColumns(table)};
  return updating_;
}

bool FileStore::update(const QString& table, Key key, const Values& values) {
  if (groupChanges_ >= kManyRows) sums_.gather();
  if (values.isEmpty()) return true;
  const Written& written = updating(table, values);
  checkKey(written, key, values);
  sums_.refuseTooLarge(table, values);
  const auto before = sums_.countsOf(table, key, written.columns);
  write(written.sql, key, values);
  if (changedRows() == 0) return false;
  touched(table);
  if (!before.empty()) sums_.moved(before, sums_.countsWritten(table, key, values, before));
  return true;
}

bool FileStore::remove(const QString& table, Key key) {
  if (groupChanges_ >= kManyRows) sums_.gather();
  const auto before = sums_.countsOf(table, key);
  write(QStringLiteral("DELETE FROM ") + bracketed(table) + QStringLiteral(" WHERE rowid = ?1"),
        key, {});
  if (changedRows() == 0) return false;
  touched(table);
  sums_.moved(before, {});
  if (ownRowNumbers(*schema(), table))
    prepareOwn(noteLastRowSql(table), Doing::Writing).bind({table, key}).execute();
  return true;
}
