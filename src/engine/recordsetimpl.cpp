#include "engine/recordsetimpl.h"

#include "common/errorejecucion.h"

Recordset::Impl::Impl(std::shared_ptr<Connection> connection, const QString& source,
                      Opening opening)
    : rows(connection, source, opening),
      connection_(std::move(connection)),
      source_(source),
      opening_(opening) {
  const auto& columns = rows.plan().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    ordinals_.insert(columns[i].name.toCaseFolded(), static_cast<int>(i));
  if (rows.plan().updatable) {
    const auto definitions = connection_->store().definitions();
    if (const TableDef* def = definitions->definition(rows.plan().baseTable)) fields_ = def->Fields;
  }
  for (const OutputColumn& column : columns) {
    const auto field = std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) {
      return !column.baseColumn.isEmpty() && f.Name == column.baseColumn;
    });
    const bool some = field != fields_.end();
    baseFields_.push_back(some ? static_cast<int>(field - fields_.begin()) : -1);
    defaults_.push_back(some ? defaultValue(*field) : Variant());
  }
  first();
}

std::unique_ptr<Recordset::Impl> Recordset::Impl::again() const {
  return std::make_unique<Impl>(connection_, source_, opening_);
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
  const int field = baseFields_[static_cast<std::size_t>(ordinal)];
  return field < 0 ? nullptr : &fields_[static_cast<std::size_t>(field)];
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
  connection_->begin(Doing::Locking);
  rows.checkFile();
  mode_ = EditMode::Add;
  edited_ = defaults_;
}

void Recordset::Impl::edit() {
  drop();
  const int position = current();
  if (!rows.plan().updatable) throw ErrorEjecucion(err::kSoloLectura);
  rows.total();
  connection_->begin(Doing::Locking);
  const Row* row = rows.rowToChange(position);
  if (!row) throw ErrorEjecucion(err::kRegistroEliminado);
  edited_ = *row;
  mode_ = EditMode::InProgress;
}

int Recordset::Impl::update() {
  if (mode_ == EditMode::None) throw ErrorEjecucion(err::kActualizarSinEditar);
  connection_->begin(Doing::Writing);
  rows.checkFile();
  const int position = mode_ == EditMode::Add ? insert() : store();
  drop();
  return position;
}

int Recordset::Impl::insert() {
  RowSet::Change change(rows);
  const Key key = connection_->store().insert(rows.plan().baseTable, changed_);
  if (visited_ == rows.total()) ++visited_;
  return change.added(key);
}

// The row is looked at again, since others may have written it while the edit was open.
Values Recordset::Impl::differing() {
  const Row* row = rows.rowToChange(current());
  if (!row) throw ErrorEjecucion(err::kRegistroEliminado);
  Values values = changed_;
  for (std::size_t i = 0; i < row->size(); ++i) {
    const QString& column = rows.plan().columns[i].baseColumn;
    const Variant* value = values.find(column);
    if (value && *value == (*row)[i]) values.remove(column);
  }
  return values;
}

int Recordset::Impl::store() {
  const int position = current();
  if (changed_.isEmpty()) return position;
  const Values values = differing();
  if (values.isEmpty()) return position;
  RowSet::Change change(rows);
  if (!connection_->store().update(rows.plan().baseTable, rows.key(position), values))
    throw ErrorEjecucion(err::kRegistroEliminado);
  change.written(position);
  return position;
}

int Recordset::Impl::remove() {
  drop();
  const int position = current();
  if (!rows.plan().updatable) throw ErrorEjecucion(err::kSoloLectura);
  if (rows.isDeleted(position)) throw ErrorEjecucion(err::kRegistroEliminado);
  rows.total();
  connection_->begin(Doing::Locking);
  rows.checkFile();
  RowSet::Change change(rows);
  if (!connection_->store().remove(rows.plan().baseTable, rows.key(position)))
    throw ErrorEjecucion(err::kRegistroEliminado);
  change.deleted(position);
  return position;
}
