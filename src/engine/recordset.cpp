#include "engine/recordset.h"

#include "common/errorejecucion.h"
#include "engine/recordsetimpl.h"

namespace {

// Everything that may fail runs through here, so that the group is committed before an error goes
// up.
template <typename F>
auto run(const std::unique_ptr<Recordset::Impl>& impl, F&& what) {
  if (!impl) throw ErrorEjecucion(err::kSinRegistroActivo);
  return guarded(impl->rows.connection(), [&] { return what(*impl); });
}

using Impl = Recordset::Impl;

}  // namespace

Recordset::Recordset(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
Recordset::~Recordset() = default;

void Recordset::Requery() {
  impl_ = run(impl_, [](Impl& impl) { return impl.again(); });
}

void Recordset::Close() {
  impl_.reset();
}

Variant FieldRef::Value() const {
  return run(rs_.impl_, [&](Impl& impl) { return impl.value(ordinal_); });
}

FieldRef& FieldRef::operator=(const Variant& value) {
  run(rs_.impl_, [&](Impl& impl) { impl.assign(ordinal_, value); });
  return *this;
}

QString FieldRef::Name() const {
  return rs_.FieldName(ordinal_);
}
FieldType FieldRef::Type() const {
  return rs_.Type(ordinal_);
}
int FieldRef::Size() const {
  return rs_.Size(ordinal_);
}

FieldRef Recordset::Fields(const QString& name) {
  return run(impl_, [&](Impl& impl) {
    const int ordinal = impl.ordinal(name);
    if (ordinal < 0) throw ErrorEjecucion(err::kElementoNoEncontrado, name);
    return FieldRef(*this, ordinal);
  });
}

FieldRef Recordset::Fields(int ordinal) {
  return run(impl_, [&](Impl& impl) { return FieldRef(*this, impl.checked(ordinal)); });
}

int Recordset::FieldCount() const {
  return run(impl_, [](Impl& impl) { return static_cast<int>(impl.rows.plan().columns.size()); });
}

QString Recordset::FieldName(int ordinal) const {
  return run(impl_, [&](Impl& impl) { return impl.column(ordinal).name; });
}

FieldType Recordset::Type(int ordinal) const {
  return run(impl_, [&](Impl& impl) { return impl.column(ordinal).type; });
}

int Recordset::Size(int ordinal) const {
  return run(impl_, [&](Impl& impl) { return impl.column(ordinal).size; });
}

int Recordset::Ordinal(const QString& name) const {
  return run(impl_, [&](Impl& impl) { return impl.ordinal(name); });
}

void Recordset::AddNew() {
  run(impl_, [](Impl& impl) { impl.addNew(); });
}

void Recordset::Edit() {
  run(impl_, [](Impl& impl) { impl.edit(); });
}

void Recordset::Update() {
  run(impl_, [](Impl& impl) { impl.update(); });
}

void Recordset::CancelUpdate() {
  run(impl_, [](Impl& impl) { impl.drop(); });
}

void Recordset::Delete() {
  run(impl_, [](Impl& impl) { impl.remove(); });
}

Recordset::EditMode Recordset::editMode() const {
  return run(impl_, [](Impl& impl) { return impl.mode(); });
}

void Recordset::MoveFirst() {
  run(impl_, [](Impl& impl) {
    impl.first();
    impl.current();
  });
}

void Recordset::MoveNext() {
  run(impl_, [](Impl& impl) {
    if (impl.isEof()) throw ErrorEjecucion(err::kSinRegistroActivo);
    impl.drop();
    impl.forward();
  });
}

void Recordset::MovePrevious() {
  run(impl_, [](Impl& impl) {
    if (impl.isBof()) throw ErrorEjecucion(err::kSinRegistroActivo);
    impl.drop();
    impl.backward();
  });
}

void Recordset::MoveLast() {
  run(impl_, [](Impl& impl) { impl.last(); });
}

bool Recordset::Eof() const {
  return run(impl_, [](Impl& impl) { return impl.isEof(); });
}

bool Recordset::Bof() const {
  return run(impl_, [](Impl& impl) { return impl.isBof(); });
}

int Recordset::RecordCount() const {
  return run(impl_, [](Impl& impl) { return impl.visited(); });
}

int Recordset::AbsolutePosition() const {
  return run(impl_, [](Impl& impl) { return impl.isOn() ? impl.position() : -1; });
}

void Recordset::setAbsolutePosition(int position) {
  run(impl_, [&](Impl& impl) {
    if (position < 0 || !impl.rows.has(position)) throw ErrorEjecucion(err::kSinRegistroActivo);
    impl.stand(position);
  });
}

int Recordset::rowTotal() const {
  return run(impl_, [](Impl& impl) { return impl.rows.total(); });
}

int Recordset::rowsKnown() const {
  return run(impl_, [](Impl& impl) { return impl.rows.known(); });
}

Recordset::Bookmark Recordset::bookmark() const {
  return run(impl_, [](Impl& impl) { return impl.rows.key(impl.current()); });
}

void Recordset::setBookmark(Bookmark bookmark) {
  run(impl_, [&](Impl& impl) {
    const int position = impl.rows.positionOf(bookmark);
    if (position < 0) throw ErrorEjecucion(err::kSinRegistroActivo);
    impl.stand(position);
  });
}

int Recordset::positionOf(Bookmark bookmark) const {
  return run(impl_, [&](Impl& impl) { return impl.rows.positionOf(bookmark); });
}

void Recordset::FindFirst(const QString& criterion) {
  run(impl_, [&](Impl& impl) { impl.find(impl.rows.findFirst(criterion)); });
}

void Recordset::FindNext(const QString& criterion) {
  run(impl_, [&](Impl& impl) { impl.find(impl.rows.findNext(criterion, impl.position() + 1)); });
}

bool Recordset::NoMatch() const {
  return run(impl_, [](Impl& impl) { return impl.noMatch(); });
}

Variant Recordset::cell(int position, int ordinal) const {
  return run(impl_, [&](Impl& impl) {
    if (position < 0 || !impl.rows.has(position)) return Variant();
    const Row* row = impl.rows.row(position);
    return row ? (*row)[static_cast<std::size_t>(impl.checked(ordinal))] : Variant();
  });
}

bool Recordset::isDeleted(int position) const {
  return run(impl_, [&](Impl& impl) {
    return position >= 0 && impl.rows.has(position) && !impl.rows.row(position);
  });
}

Variant Recordset::shown(int position, int ordinal) const {
  if (!impl_ || position < 0 || position >= impl_->rows.known()) return {};
  const Row* row = impl_->rows.shown(position);
  return row ? row->at(static_cast<std::size_t>(ordinal)) : Variant();
}
