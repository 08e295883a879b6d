#include "engine/recordsetimpl.h"

#include "common/errorejecucion.h"
#include "engine/sqlite/schema.h"

namespace {

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

}  // namespace

Recordset::Impl::Impl(std::shared_ptr<Connection> connection, const QString& source,
                      Opening opening)
    : rows(connection, source, opening), connection_(std::move(connection)) {
  const auto& columns = rows.plan().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    ordinals_.insert(columns[i].name.toCaseFolded(), static_cast<int>(i));
  const auto schema = connection_->schema();
  hasOwnTables_ = schema->hasOwnTables();
  if (rows.plan().updatable) {
    primary_ = schema->primaryColumns(rows.plan().baseTable);
    ownRowNumbers_ = !schema->rowNumberIsColumn(rows.plan().baseTable);
    if (const TableDef* def = schema->definition(rows.plan().baseTable)) fields_ = def->Fields;
  }
  first();
}

int Recordset::Impl::ordinal(const QString& name) const {
  return ordinals_.value(name.toCaseFolded(), -1);
}

int Recordset::Impl::checked(int ordinal) const {
  if (ordinal < 0 || ordinal >= static_cast<int>(rows.plan().columns.size()))
    throw ErrorEjecucion(err::kElementoNoEncontrado, QString::number(ordinal));
  return ordinal;
}

// --- Position

void Recordset::Impl::first() {
  drop();
  place_ = Place::Before;
  position_ = -1;
  if (!forward()) place_ = Place::Nowhere;
}

bool Recordset::Impl::forward() {
  for (int next = position_ + 1; rows.has(next); ++next)
    if (!rows.isDeleted(next)) {
      stand(next);
      return true;
    }
  position_ = rows.total();
  place_ = Place::After;
  return false;
}

bool Recordset::Impl::backward() {
  const int from = place_ == Place::After ? rows.total() : position_;
  for (int next = from - 1; next >= 0; --next)
    if (!rows.isDeleted(next)) {
      stand(next);
      return true;
    }
  position_ = -1;
  place_ = Place::Before;
  return false;
}

void Recordset::Impl::stand(int position) {
  drop();
  position_ = position;
  place_ = Place::On;
  visited_ = std::max(visited_, position + 1);
}

void Recordset::Impl::last() {
  drop();
  place_ = Place::After;
  if (!backward()) {
    place_ = Place::Nowhere;
    throw ErrorEjecucion(err::kSinRegistroActivo);
  }
  visited_ = rows.total();
}

void Recordset::Impl::find(int match) {
  noMatch_ = match < 0;
  if (!noMatch_) stand(match);
}

int Recordset::Impl::current() const {
  if (place_ != Place::On) throw ErrorEjecucion(err::kSinRegistroActivo);
  return position_;
}

const Row& Recordset::Impl::currentRow() {
  const Row* row = rows.row(current());
  if (!row) throw ErrorEjecucion(err::kRegistroEliminado);
  return *row;
}

// --- Values

const Field* Recordset::Impl::base(int ordinal) const {
  const QString& name = column(ordinal).baseColumn;
  if (name.isEmpty()) return nullptr;
  for (const Field& field : fields_)
    if (field.Name == name) return &field;
  return nullptr;
}

Variant Recordset::Impl::value(int ordinal) {
  const auto at = static_cast<std::size_t>(ordinal);
  return mode_ == EditMode::None ? currentRow()[at] : edited_[at];
}

void Recordset::Impl::assign(int ordinal, const Variant& value) {
  if (mode_ == EditMode::None) throw ErrorEjecucion(err::kActualizarSinEditar);
  const OutputColumn& shown = column(ordinal);
  const Field* field = base(ordinal);
  if (!field) throw ErrorEjecucion(err::kSoloLectura, shown.name);
  const Variant converted = convertTo(field->Type, field->Size, value);
  if (converted.isText() && !field->AllowZeroLength && converted.text().isEmpty())
    throw ErrorEjecucion(err::kTextoVacio, shown.name);
  edited_[static_cast<std::size_t>(ordinal)] = converted;
  // A query may show a column twice: the last value set counts.
  changed_.insert(shown.baseColumn, converted);
}

// --- Changes

void Recordset::Impl::drop() {
  mode_ = EditMode::None;
  edited_.clear();
  changed_.clear();
}

void Recordset::Impl::addNew() {
  drop();
  if (!rows.plan().updatable) throw ErrorEjecucion(err::kSoloLectura);
  rows.total();
  connection_->beginGroup();
  mode_ = EditMode::Add;
  edited_.assign(rows.plan().columns.size(), Variant());
  for (std::size_t i = 0; i < edited_.size(); ++i)
    if (const Field* field = base(static_cast<int>(i))) edited_[i] = defaultValue(*field);
}

void Recordset::Impl::edit() {
  drop();
  const int position = current();
  if (!rows.plan().updatable) throw ErrorEjecucion(err::kSoloLectura);
  rows.total();
  connection_->beginGroup();
  const Row* row = rows.rowToChange(position);
  if (!row) throw ErrorEjecucion(err::kRegistroEliminado);
  edited_ = *row;
  mode_ = EditMode::InProgress;
}

int Recordset::Impl::update() {
  if (mode_ == EditMode::None) throw ErrorEjecucion(err::kActualizarSinEditar);
  connection_->beginGroup(Doing::Writing);
  const bool adding = mode_ == EditMode::Add;
  checkKey(adding);
  const int position = adding ? insert() : store();
  drop();
  return position;
}

void Recordset::Impl::checkKey(bool adding) const {
  for (const QString& column : primary_) {
    const bool set = changed_.contains(column);
    if (!set && !adding) continue;
    Variant value = changed_.value(column);
    for (const Field& field : fields_)
      if (!set && field.Name == column) value = defaultValue(field);
    if (value.isNull()) throw ErrorEjecucion(err::kClaveNula, column);
    if (value.isText() && primary_.size() == 1) checkTwin(column, value.text(), adding);
  }
}

// The file's index takes PEÑA and Peña for two keys: it knows the case of the plain letters only.
void Recordset::Impl::checkTwin(const QString& column, const QString& key, bool adding) const {
  if (std::all_of(key.begin(), key.end(), [](QChar c) { return c.unicode() < 0x80; })) return;
  Statement twin = connection_->prepare(
      QStringLiteral(
          "SELECT 1 FROM %1 WHERE mayusculas(%2) = mayusculas(?1) AND rowid <> ?2 LIMIT 1")
          .arg(bracketed(rows.plan().baseTable), bracketed(column)));
  twin.bind({key, adding ? qint64{0} : rows.key(current())});
  if (twin.step()) throw ErrorEjecucion(err::kClaveDuplicada);
}

int Recordset::Impl::insert() {
  const QString table = rows.plan().baseTable;
  QStringList columns, marks;
  QList<Variant> values;
  qint64 key = 0;
  if (ownRowNumbers_ && hasOwnTables_) {
    Statement next = connection_->prepare(nextRowSql(table));
    next.bind(1, table).step();
    key = next.integer(0);
    columns += QStringLiteral("rowid");
    values += key;
  }
  for (auto it = changed_.cbegin(); it != changed_.cend(); ++it) {
    columns += bracketed(it.key());
    values += it.value();
  }
  for (qsizetype i = 1; i <= values.size(); ++i) marks += u'?' + QString::number(i);
  QString sql = QStringLiteral("INSERT INTO ") + bracketed(table);
  sql += columns.isEmpty()
             ? QStringLiteral(" DEFAULT VALUES")
             : QStringLiteral(" (") + columns.join(QStringLiteral(", ")) +
                   QStringLiteral(") VALUES (") + marks.join(QStringLiteral(", ")) + u')';
  const bool wasCurrent = rows.isCurrent();
  connection_->prepare(sql, Doing::Writing).bind(values).execute();
  if (key == 0) key = connection_->lastRowNumber();
  connection_->touched(table);
  if (visited_ == rows.total()) ++visited_;
  return rows.added(wasCurrent, key);
}

int Recordset::Impl::store() {
  const int position = current();
  const QString table = rows.plan().baseTable;
  if (changed_.isEmpty()) return position;
  QStringList sets;
  QList<Variant> values{rows.key(position)};
  for (auto it = changed_.cbegin(); it != changed_.cend(); ++it) {
    values += it.value();
    sets += bracketed(it.key()) + QStringLiteral(" = ?") + QString::number(values.size());
  }
  const bool wasCurrent = rows.isCurrent();
  connection_
      ->prepare(QStringLiteral("UPDATE ") + bracketed(table) + QStringLiteral(" SET ") +
                    sets.join(QStringLiteral(", ")) + QStringLiteral(" WHERE rowid = ?1"),
                Doing::Writing)
      .bind(values)
      .execute();
  if (connection_->changedRows() == 0) throw ErrorEjecucion(err::kRegistroEliminado);
  connection_->touched(table);
  rows.written(wasCurrent, position);
  return position;
}

int Recordset::Impl::remove() {
  drop();
  const int position = current();
  if (!rows.plan().updatable) throw ErrorEjecucion(err::kSoloLectura);
  if (rows.isDeleted(position)) throw ErrorEjecucion(err::kRegistroEliminado);
  rows.total();
  const QString table = rows.plan().baseTable;
  connection_->beginGroup();
  const bool wasCurrent = rows.isCurrent();
  connection_
      ->prepare(
          QStringLiteral("DELETE FROM ") + bracketed(table) + QStringLiteral(" WHERE rowid = ?1"),
          Doing::Writing)
      .bind(1, rows.key(position))
      .execute();
  if (connection_->changedRows() == 0) throw ErrorEjecucion(err::kRegistroEliminado);
  connection_->touched(table);
  rows.deleted(wasCurrent, position);
  if (ownRowNumbers_ && hasOwnTables_)
    connection_->prepare(noteLastRowSql(table), Doing::Writing)
        .bind({table, rows.key(position)})
        .execute();
  return position;
}
