#include "engine/rowset.h"

#include <unordered_set>

namespace {

// Enough for what a grid shows; a loop that goes on reads bigger pieces.
constexpr int kScreenful = 32;
constexpr int kStretch = 256;
constexpr std::size_t kRowsKept = 4096;
constexpr int kFirstKeys = 128;  // more than any screen shows
constexpr int kFirstMatches = 16;

// Whether the row that a criterion's cursor stands on meets it; Null is no.
bool isMatch(const Cursor& cursor) {
  const Variant met = cursor.value(0);
  return !met.isNull() && met.number() != 0;
}

}  // namespace

RowSet::RowSet(std::shared_ptr<Connection> connection, const QString& source, Opening opening)
    : connection_(std::move(connection)), source_(source) {
  const auto hold = connection_->store().hold();
  compiled_ = connection_->sources().compiled(source);
  const bool firstRows = opening == Opening::FirstRows;
  byKeys_ = plan().updatable || (plan().keyed && firstRows);
  if (byKeys_) {
    const int limit = firstRows ? kFirstKeys : -1;
    keys_ = connection_->sources().keys(compiled_, limit);
    allKeys_ = static_cast<int>(keys_->size()) != limit;
  } else {
    readWhole();
  }
  stamp_ = stamp();
  edition_ = connection_->store().edition();
}

void RowSet::checkFile() const {
  if (edition_ != connection_->store().edition())
    throw ErrorEjecucion(err::kFicheroSustituido, connection_->path());
}

void RowSet::readWhole() {
  const auto cursor = plan().reader->run(compiled_.literals);
  const int columns = static_cast<int>(plan().columns.size());
  while (cursor->next()) {
    Row& row = whole_.emplace_back();
    row.reserve(plan().columns.size());
    for (int column = 0; column < columns; ++column) row.push_back(cursor->value(column));
  }
}

void RowSet::readOtherKeys() {
  const auto hold = connection_->store().hold();
  checkFile();
  const KeySet all = connection_->sources().keys(compiled_);
  // Rows that were shown stay where they were, whoever wrote since.
  const auto moved = std::mismatch(keys_->begin(), keys_->end(), all->begin(), all->end());
  if (moved.first == keys_->end()) {
    keys_ = all;
  } else {
    const std::unordered_set<qint64> first(keys_->begin(), keys_->end());
    auto joined = std::make_shared<std::vector<qint64>>(*keys_);
    std::copy_if(all->begin(), all->end(), std::back_inserter(*joined),
                 [&](qint64 key) { return !first.contains(key); });
    keys_ = std::move(joined);
  }
  allKeys_ = true;
}

int RowSet::known() const {
  return static_cast<int>(byKeys_ ? keys_->size() + tail_.size() : whole_.size());
}

int RowSet::total() {
  if (!allKeys_) readOtherKeys();
  return known();
}

qint64 RowSet::key(int position) const {
  if (!byKeys_) return position;
  const auto at = static_cast<std::size_t>(position);
  return at < keys_->size() ? (*keys_)[at] : tail_[at - keys_->size()];
}

int RowSet::positionOf(qint64 key) {
  if (!byKeys_) return key >= 0 && key < total() ? static_cast<int>(key) : -1;
  total();
  const auto found = std::find(keys_->begin(), keys_->end(), key);
  if (found != keys_->end()) return static_cast<int>(found - keys_->begin());
  const auto late = std::find(tail_.begin(), tail_.end(), key);
  if (late == tail_.end()) return -1;
  return static_cast<int>(keys_->size()) + static_cast<int>(late - tail_.begin());
}

// Where nobody has written anything it needn't be looked up which table they wrote.
bool RowSet::isCurrent() {
  const Stamp all = connection_->store().stamp({});
  if (all == moment_) return true;
  if (stamp_ != stamp()) return false;
  moment_ = all;
  return true;
}

void RowSet::discardOld() {
  const bool current = isCurrent();  // which looks at the file
  checkFile();
  if (current) return;
  near_.clear();
  windowFirst_ = windowEnd_ = -1;
  stamp_ = stamp();
}

const Row* RowSet::row(int position) {
  if (!byKeys_) {
    checkFile();
    return &whole_[static_cast<std::size_t>(position)];
  }
  if (isDeleted(position)) return nullptr;
  discardOld();
  auto found = near_.find(position);
  if (found == near_.end()) {
    readWindow(position);
    found = near_.find(position);
  }
  return found->second ? &*found->second : nullptr;
}

const Row* RowSet::shown(int position) const {
  if (!byKeys_) return &whole_[static_cast<std::size_t>(position)];
  const auto found = near_.find(position);
  return found != near_.end() && found->second ? &*found->second : nullptr;
}

const Row* RowSet::rowToChange(int position) {
  if (!byKeys_ || isDeleted(position)) return row(position);
  discardOld();
  readRows(position, position + 1);
  return row(position);
}

// Those of the positions whose rows aren't kept, in one go.
void RowSet::readRows(int first, int end) {
  std::vector<int> wanted;
  std::vector<Key> keys;
  for (int at = first; at < end; ++at) {
    if (near_.contains(at)) continue;
    wanted.push_back(at);
    keys.push_back(key(at));
  }
  if (keys.empty()) return;
  auto next = wanted.begin();
  plan().reader->rows(keys, [&](Key found, Row&& row) {
    while (key(*next) != found) near_.emplace(*next++, std::nullopt);
    near_.emplace(*next++, std::move(row));
  });
  while (next != wanted.end()) near_.emplace(*next++, std::nullopt);
}

void RowSet::readWindow(int position) {
  int first = position, end = position + kScreenful;
  if (position == windowEnd_) {
    end = position + kStretch;
  } else if (position == windowFirst_ - 1) {
    first = position - kStretch + 1;
    end = position + 1;
  }
  first = std::max(first, 0);
  end = std::min(end, known());
  if (near_.size() > kRowsKept) near_.clear();
  const auto hold = connection_->store().hold();
  checkFile();
  // The look at the file may have shown that what is kept is old.
  if (!isCurrent()) {
    near_.clear();
    stamp_ = stamp();
  }
  readRows(first, end);
  windowFirst_ = first;
  windowEnd_ = end;
}

void RowSet::noteCurrent() {
  stamp_ = stamp();
  moment_ = connection_->store().stamp({});
}

void RowSet::Change::written(int position) {
  rows_.near_.erase(position);
  if (wasCurrent_) rows_.noteCurrent();
}

int RowSet::Change::added(Key key) {
  rows_.tail_.push_back(key);
  if (wasCurrent_) rows_.noteCurrent();
  return rows_.total() - 1;
}

void RowSet::Change::deleted(int position) {
  rows_.deleted_.insert(position);
  written(position);
}

int RowSet::findFirst(const QString& criterion) {
  const auto hold = connection_->store().hold();
  const Compiled find = connection_->sources().matching(source_, criterion, byKeys_);
  if (!byKeys_ || !find.plan->keyed) {
    const auto cursor = find.plan->reader->run(find.literals);
    for (int position = 0; cursor->next(); ++position)
      if (isMatch(*cursor) && has(position) && !isDeleted(position)) return position;
    return -1;
  }
  // The first of them is nearly always a row of the set.
  for (const int most : {kFirstMatches, -1}) {
    const std::vector<Key> keys = find.plan->reader->keys(find.literals, most);
    for (const Key key : keys) {
      const int position = positionOf(key);
      if (position >= 0 && !isDeleted(position)) return position;
    }
    if (static_cast<int>(keys.size()) < most) break;
  }
  return -1;
}

int RowSet::findNext(const QString& criterion, int from) {
  const auto hold = connection_->store().hold();
  const Stamp now = stamp();
  if (criterion != criterion_ || now != criterionStamp_) {
    matches_ = matches(criterion);
    criterion_ = criterion;
    criterionStamp_ = now;
  }
  const auto next = std::lower_bound(matches_.begin(), matches_.end(), from);
  return next == matches_.end() ? -1 : *next;
}

std::vector<int> RowSet::matches(const QString& criterion) {
  const Compiled find = connection_->sources().matching(source_, criterion, byKeys_);
  std::vector<int> positions;
  if (!byKeys_ || !find.plan->keyed) {
    const auto cursor = find.plan->reader->run(find.literals);
    for (int position = 0; cursor->next() && position < total(); ++position)
      if (isMatch(*cursor)) positions.push_back(position);
    return positions;
  }
  std::vector<Key> keys = find.plan->reader->keys(find.literals, -1);
  std::sort(keys.begin(), keys.end());
  for (int position = 0; position < total(); ++position)
    if (!isDeleted(position) && std::binary_search(keys.begin(), keys.end(), key(position)))
      positions.push_back(position);
  return positions;
}
