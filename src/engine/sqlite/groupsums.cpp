#include "engine/sqlite/groupsums.h"

#include <sqlite3.h>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"

namespace {

constexpr double kTooLarge = 1e12;
// Far from where the next row could pass the integers' end, in millionths.
constexpr qint64 kMuch = 4'000'000'000'000'000'000;
constexpr std::size_t kReadingsKept = 8;

void append(std::string& to, const void* bytes, std::size_t size) {
  to.append(static_cast<const char*>(bytes), size);
}

// A text that is the same for two counts exactly when their sums and keys are the same.
void identify(const GroupSums::Count& count, std::string& text) {
  text.assign(1, static_cast<char>(count.sums));
  for (const Variant& key : count.keys) {
    if (key.isNull()) {
      text += 'n';
    } else if (key.isText()) {
      const QString words = key.text();
      const qsizetype size = words.size();
      text += 't';
      append(text, &size, sizeof size);
      append(text, words.utf16(), static_cast<std::size_t>(size) * sizeof(char16_t));
    } else if (key.isInteger()) {
      const qint64 whole = key.integer();
      text += 'i';
      append(text, &whole, sizeof whole);
    } else {
      const double number = key.number();
      text += 'd';
      append(text, &number, sizeof number);
    }
  }
}

// As the file's own engine rounds, so that what is gathered is what a recount gives.
qint64 millionths(double amount) {
  constexpr double kWholeFrom = 4503599627370496.0;
  const double millions = amount * 1e6;
  if (std::abs(millions) > kWholeFrom) return static_cast<qint64>(millions);
  return static_cast<qint64>(millions + (millions < 0 ? -0.5 : 0.5));
}

// Whether they could be told from the two values alone.
bool tellFigures(const Variant& side, const Variant& amount, std::array<qint64, 5>& figures) {
  const bool isAmount = amount.isNumber() || amount.isNull();
  if (!isAmount || !(side.isText() || side.isNull())) return false;
  const bool debit = side.isText() && side.text().compare(u'D', Qt::CaseInsensitive) == 0;
  const qint64 value = amount.isNull() ? 0 : millionths(amount.number());
  const bool isThere = !amount.isNull();
  figures = {1, debit ? value : 0, debit ? 0 : value, !debit || isThere, debit || isThere};
  return true;
}

bool tellKey(const SumKey& key, const Variant& value, Variant& told) {
  if (key.isMonth() && value.isDate()) {
    told = qint64{value.date().month()};
    return true;
  }
  if (!value.isNull() && (key.isMonth() || !(value.isInteger() || value.isText()))) return false;
  told = value;
  return true;
}

}  // namespace

void GroupSums::gather() {
  if (gathering_) {
    if (much_) bringUp();
    return;
  }
  const auto schema = store_.schema();
  const auto& all = schema->runningSums();
  if (all.empty() || !schema->foreignTriggers().isEmpty()) return;
  readings_.clear();
  changes_.clear();
  for (const Catalog::RunningSums& sums : all) changes_.push_back(sumsChange(sums));
  sqlite3_db_config(store_.handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  gathering_ = true;
}

// Tools write the same columns row after row.
const GroupSums::Reading& GroupSums::reading(const QString& table, const QStringList& columns) {
  for (const Reading& known : readings_)
    if (known.table == table && known.columns == columns) return known;
  const auto schema = store_.schema();
  const auto& all = schema->runningSums();
  Reading reading{table, columns, {}, {}, {}};
  QStringList outputs;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].baseTable != table) continue;
    const QStringList watched = sumsColumns(all[i]);
    const auto written = [&](const QString& column) { return watched.contains(column); };
    if (!columns.isEmpty() && std::none_of(columns.begin(), columns.end(), written)) continue;
    reading.sums.push_back(static_cast<int>(i));
    reading.watched += watched;
    outputs += sumsCounting(all[i]);
  }
  reading.sql = QStringLiteral("SELECT ") + outputs.join(QStringLiteral(", ")) +
                QStringLiteral(" FROM ") + bracketed(table) + QStringLiteral(" WHERE rowid = ?1");
  reading.watched.removeDuplicates();
  if (readings_.size() == kReadingsKept) readings_.clear();
  return readings_.emplace_back(std::move(reading));
}

std::vector<GroupSums::Count> GroupSums::countsOf(const QString& table, Key key,
                                                  const QStringList& columns) {
  if (!gathering_) return {};
  const Reading& reads = reading(table, columns);
  if (reads.sums.empty()) return {};
  Statement row = store_.prepareOwn(reads.sql, Doing::Writing);
  if (!row.bind(1, key).step()) return {};
  const auto schema = store_.schema();
  std::vector<Count> counts;
  int column = 0;
  for (const int place : reads.sums) {
    const RawValue debit = row.raw(column), credit = row.raw(column + 1);
    Count& count = counts.emplace_back();
    count.sums = place;
    count.figures = {1, debit.whole, credit.whole, debit.kind != RawValue::Kind::Null,
                     credit.kind != RawValue::Kind::Null};
    column += 2;
    const qsizetype keys = schema->runningSums()[static_cast<std::size_t>(place)].keys.size();
    for (qsizetype i = 0; i < keys; ++i) count.keys.append(row.value(column++, FieldType::Long));
  }
  return counts;
}

// What isn't among the values stays as it is in `count`.
bool GroupSums::tells(const Values& values, Count& count) const {
  const auto schema = store_.schema();
  const Catalog::RunningSums& sums = schema->runningSums()[static_cast<std::size_t>(count.sums)];
  const Variant* const side = values.find(sums.sideColumn);
  const Variant* const amount = values.find(sums.amountColumn);
  if (!side != !amount) return false;
  if (side && !tellFigures(*side, *amount, count.figures)) return false;
  for (qsizetype i = 0; i < sums.keys.size(); ++i) {
    const Variant* const value = values.find(sums.keys[i].column);
    if (value && !tellKey(sums.keys[i], *value, count.keys[i])) return false;
  }
  return true;
}

std::vector<GroupSums::Count> GroupSums::countsWritten(const QString& table, Key key,
                                                       const Values& values,
                                                       const std::vector<Count>& before) {
  std::vector<Count> now = before;
  for (Count& count : now)
    if (!tells(values, count)) return countsOf(table, key, values.columns());
  return now;
}

std::vector<GroupSums::Count> GroupSums::countsAdded(const QString& table, Key key,
                                                     const Values& values) {
  if (!gathering_) return {};
  const Reading& reads = reading(table, {});
  if (!std::all_of(reads.watched.begin(), reads.watched.end(),
                   [&](const QString& column) { return values.contains(column); }))
    return countsOf(table, key);
  const auto schema = store_.schema();
  std::vector<Count> now;
  for (const int place : reads.sums) {
    const Catalog::RunningSums& sums = schema->runningSums()[static_cast<std::size_t>(place)];
    Count& count = now.emplace_back(Count{place, {}, {}});
    count.keys.resize(sums.keys.size());
    if (!tells(values, count)) return countsOf(table, key);
  }
  return now;
}

void GroupSums::moved(const std::vector<Count>& before, const std::vector<Count>& now) {
  const std::size_t both = std::min(before.size(), now.size());
  for (std::size_t i = 0; i < std::max(before.size(), now.size()); ++i) {
    if (i < both && before[i].figures == now[i].figures && before[i].keys == now[i].keys) continue;
    if (i < before.size()) add(before[i], -1);
    if (i < now.size()) add(now[i], 1);
  }
}

void GroupSums::add(const Count& count, int sign) {
  identify(count, sought_);
  auto found = gathered_.find(std::string_view(sought_));
  if (found == gathered_.end())
    found = gathered_.emplace(sought_, Count{count.sums, {}, count.keys}).first;
  auto& figures = found->second.figures;
  for (std::size_t i = 0; i < figures.size(); ++i) {
    figures[i] += sign * count.figures[i];
    much_ = much_ || std::abs(figures[i]) > kMuch;
  }
}

void GroupSums::refuseTooLarge(const QString& table, const Values& values) const {
  if (!gathering_) return;
  for (const Catalog::RunningSums& sums : store_.schema()->runningSums()) {
    const Variant* const amount = values.find(sums.amountColumn);
    if (sums.baseTable != table || !amount) continue;
    const bool isNumber = !amount->isNull() && !amount->isText() && !amount->isDate();
    if (isNumber && std::abs(amount->number()) >= kTooLarge)
      throw ErrorEjecucion(err::kDesbordamiento);
  }
}

void GroupSums::bringUp() {
  while (!gathered_.empty()) {
    const auto first = gathered_.begin();
    const Count& count = first->second;
    const QList<Variant> values = QList<Variant>(count.figures.begin(), count.figures.end()) +
                                  QList<Variant>(count.keys.begin(), count.keys.end());
    const SumsChange& change = changes_[static_cast<std::size_t>(count.sums)];
    const auto run = [&](const QString& sql) {
      store_.prepareOwn(sql, Doing::Writing).bind(values).execute();
    };
    const qint64 lines = count.figures.front();
    if (std::any_of(count.figures.begin(), count.figures.end(), [](qint64 f) { return f != 0; })) {
      run(change.move);
      if (store_.changedRows() == 0 && lines > 0) run(change.add);
    }
    // It is in the sums now: whatever fails from here on must not add it again.
    gathered_.erase(first);
    if (lines < 0) run(change.tidy);
  }
  much_ = false;
}

void GroupSums::stop() {
  if (!gathering_) return;
  bringUp();
  release();
}

void GroupSums::forget() {
  gathered_.clear();
  if (gathering_) release();
}

void GroupSums::release() {
  gathering_ = false;
  sqlite3_db_config(store_.handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr);
}
