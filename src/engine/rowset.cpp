#include "engine/rowset.h"

#include <unordered_set>

namespace {

// Enough for what a grid shows; a loop that goes on reads bigger pieces.
constexpr int kScreenful = 32;
constexpr int kStretch = 256;
constexpr std::size_t kRowsKept = 4096;
constexpr int kFirstKeys = 128;  // more than any screen shows

}  // namespace

Row rowOf(const Statement& statement, const std::vector<OutputColumn>& columns) {
  Row row;
  row.reserve(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i)
    row.push_back(statement.value(static_cast<int>(i), columns[i].type));
  return row;
}

RowSet::RowSet(std::shared_ptr<Connection> connection, const QString& source, Opening opening)
    : connection_(std::move(connection)), source_(source) {
  const Connection::Reading reading(*connection_);
  compiled_ = connection_->compiled(source);
  if (plan().updatable) {
    const int limit = opening == Opening::FirstRows ? kFirstKeys : -1;
    keys_ = connection_->keys(compiled_, limit);
    allKeys_ = static_cast<int>(keys_->size()) != limit;
  } else {
    readWhole();
  }
  stamp_ = connection_->stamp(plan().baseTable);
}

void RowSet::readWhole() {
  Statement statement = connection_->prepare(plan().wholeSql);
  statement.bind(compiled_.params);
  while (statement.step()) whole_.push_back(rowOf(statement, plan().columns));
}

void RowSet::readOtherKeys() {
  const Connection::Reading reading(*connection_);
  const KeySet all = connection_->keys(compiled_);
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
  return static_cast<int>(plan().updatable ? keys_->size() + tail_.size() : whole_.size());
}

int RowSet::total() {
  if (!allKeys_) readOtherKeys();
  return known();
}

qint64 RowSet::key(int position) const {
  if (!plan().updatable) return position;
  const auto at = static_cast<std::size_t>(position);
  return at < keys_->size() ? (*keys_)[at] : tail_[at - keys_->size()];
}

int RowSet::positionOf(qint64 key) {
  if (!plan().updatable) return key >= 0 && key < total() ? static_cast<int>(key) : -1;
  total();
  const auto found = std::find(keys_->begin(), keys_->end(), key);
  if (found != keys_->end()) return static_cast<int>(found - keys_->begin());
  const auto late = std::find(tail_.begin(), tail_.end(), key);
  if (late == tail_.end()) return -1;
  return static_cast<int>(keys_->size()) + static_cast<int>(late - tail_.begin());
}

void RowSet::discardOld() {
  connection_->freshen();
  if (isCurrent()) return;
  near_.clear();
  windowFirst_ = windowEnd_ = -1;
  stamp_ = connection_->stamp(plan().baseTable);
}

const Row* RowSet::row(int position) {
  if (!plan().updatable) return &whole_[static_cast<std::size_t>(position)];
  if (isDeleted(position)) return nullptr;
  discardOld();
  auto found = near_.find(position);
  if (found == near_.end()) {
    readWindow(position);
    found = near_.find(position);
  }
  return found->second ? &*found->second : nullptr;
}

const Row* RowSet::rowToChange(int position) {
  if (!plan().updatable || isDeleted(position)) return row(position);
  discardOld();
  if (!near_.contains(position)) near_.emplace(position, readRow(position));
  return row(position);
}

std::optional<Row> RowSet::readRow(int position) {
  Statement statement = connection_->prepare(plan().rowSql);
  statement.bind(1, key(position));
  if (!statement.step()) return std::nullopt;
  return rowOf(statement, plan().columns);
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
  const Connection::Reading reading(*connection_);
  // The look at the file may have shown that what is kept is old.
  if (!isCurrent()) {
    near_.clear();
    stamp_ = connection_->stamp(plan().baseTable);
  }
  for (int at = first; at < end; ++at)
    if (!near_.contains(at)) near_.emplace(at, readRow(at));
  windowFirst_ = first;
  windowEnd_ = end;
}

void RowSet::Change::written(int position) {
  rows_.near_.erase(position);
  if (wasCurrent_) rows_.stamp_ = rows_.connection_->stamp(rows_.plan().baseTable);
}

int RowSet::Change::added(Key key) {
  rows_.tail_.push_back(key);
  if (wasCurrent_) rows_.stamp_ = rows_.connection_->stamp(rows_.plan().baseTable);
  return rows_.total() - 1;
}

void RowSet::Change::deleted(int position) {
  rows_.deleted_.insert(position);
  written(position);
}

int RowSet::findFirst(const QString& criterion) {
  const Connection::Reading reading(*connection_);
  const FindPlan find = connection_->criterionPlan(source_, criterion);
  Statement statement = connection_->prepare(find.sql);
  statement.bind(find.params);
  while (statement.step()) {
    const int position = positionOf(statement.integer(0));
    if (position >= 0 && !isDeleted(position)) return position;
  }
  return -1;
}

int RowSet::findNext(const QString& criterion, int from) {
  const Connection::Reading reading(*connection_);
  const Stamp now = connection_->stamp(plan().baseTable);
  if (criterion != criterion_ || now != criterionStamp_) {
    matches_ = matches(criterion);
    criterion_ = criterion;
    criterionStamp_ = now;
  }
  const auto next = std::lower_bound(matches_.begin(), matches_.end(), from);
  return next == matches_.end() ? -1 : *next;
}

std::vector<int> RowSet::matches(const QString& criterion) {
  const FindPlan find = connection_->criterionPlan(source_, criterion);
  Statement statement = connection_->prepare(find.sql);
  statement.bind(find.params);
  std::vector<qint64> keys;
  while (statement.step()) keys.push_back(statement.integer(0));
  std::sort(keys.begin(), keys.end());
  std::vector<int> positions;
  for (int position = 0; position < total(); ++position)
    if (!isDeleted(position) && std::binary_search(keys.begin(), keys.end(), key(position)))
      positions.push_back(position);
  return positions;
}
