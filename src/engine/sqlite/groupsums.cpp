#include "engine/sqlite/groupsums.h"

#include <sqlite3.h>
#include <algorithm>
#include <cstdlib>

#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"

namespace {

// Far from where the next row could pass the integers' end.
constexpr qint64 kTooMuch = 1'000'000'000'000'000'000;  // millionths
constexpr qint64 kMuch = 4'000'000'000'000'000'000;

qint64 amountOf(sqlite3_value* value) {
  return std::clamp<qint64>(sqlite3_value_int64(value), -kMuch / 2, kMuch / 2);
}

Variant valueOf(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return Variant(static_cast<qint64>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
      return Variant(sqlite3_value_double(value));
    default:
      return Variant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                                       sqlite3_value_bytes(value)));
  }
}

// Called by the connection's triggers: the sums' place, 1 or -1 for the lines, both amounts, the
// keys.
void tellCount(sqlite3_context* context, int args, sqlite3_value** values) {
  auto* sums = static_cast<GroupSums*>(sqlite3_user_data(context));
  if (!sums->gathering()) return;
  GroupSums::Count count{sqlite3_value_int(values[0]), sqlite3_value_int64(values[1]), 0, 0, {}};
  const qint64 debit = amountOf(values[2]), credit = amountOf(values[3]);
  if (count.lines > 0 && std::max(std::abs(debit), std::abs(credit)) >= kTooMuch) {
    // The file's trigger that refuses such amounts rests too.
    sqlite3_result_error(context, own::kTooLarge, -1);
    sqlite3_result_error_code(context, SQLITE_CONSTRAINT_TRIGGER);
    return;
  }
  count.debit = count.lines * debit;
  count.credit = count.lines * credit;
  for (int i = 4; i < args; ++i) count.keys.push_back(valueOf(values[i]));
  sums->tell(std::move(count));
}

void append(std::string& to, const void* bytes, std::size_t size) {
  to.append(static_cast<const char*>(bytes), size);
}

// The same for two counts exactly when their sums and keys are the same.
std::string identity(const GroupSums::Count& count) {
  std::string text(1, static_cast<char>(count.sums));
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
  return text;
}

}  // namespace

void GroupSums::registerFunction() {
  sqlite3_create_function_v2(store_.handle(), kTellSums, -1, SQLITE_UTF8 | SQLITE_INNOCUOUS, this,
                             tellCount, nullptr, nullptr, nullptr);
}

void GroupSums::gather() {
  if (gathering_) {
    if (much_) bringUp();
    return;
  }
  const auto schema = store_.schema();
  const auto& all = schema->runningSums();
  if (all.empty() || schema->hasForeignTriggers()) return;
  for (std::size_t i = 0; i < all.size(); ++i)
    for (const QString& sql : sumsTelling(all[i], static_cast<int>(i)))
      store_.prepareOwn(sql, Doing::Writing).execute();
  sqlite3_db_config(store_.handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  gathering_ = true;
}

void GroupSums::tell(Count count) {
  told_.push_back(std::move(count));
}

void GroupSums::rowWritten() {
  for (const Count& count : told_) {
    const auto found = gathered_.try_emplace(identity(count), Count{count.sums, 0, 0, 0, {}}).first;
    Count& sum = found->second;
    if (sum.keys.isEmpty()) sum.keys = count.keys;
    sum.lines += count.lines;
    sum.debit += count.debit;
    sum.credit += count.credit;
    much_ = much_ || std::abs(sum.debit) > kMuch || std::abs(sum.credit) > kMuch;
  }
  told_.clear();
}

void GroupSums::bringUp() {
  const auto schema = store_.schema();
  while (!gathered_.empty()) {
    const auto first = gathered_.begin();
    const Count& count = first->second;
    const QList<Variant> values =
        QList<Variant>{count.lines, count.debit, count.credit} + count.keys;
    const SumsChange change =
        sumsChange(schema->runningSums()[static_cast<std::size_t>(count.sums)]);
    const auto run = [&](const QString& sql) {
      store_.prepareOwn(sql, Doing::Writing).bind(values).execute();
    };
    if (count.lines != 0 || count.debit != 0 || count.credit != 0) {
      run(change.move);
      if (store_.changedRows() == 0 && count.lines > 0) run(change.add);
    }
    const bool fewer = count.lines < 0;
    // It is in the sums now: whatever fails from here on must not add it again.
    gathered_.erase(first);
    if (fewer) run(change.tidy);
  }
  much_ = false;
}

void GroupSums::stop() {
  if (!gathering_) return;
  bringUp();
  for (const Catalog::RunningSums& sums : store_.schema()->runningSums())
    for (const QString& sql : sumsTellingRemoval(sums))
      store_.prepareOwn(sql, Doing::Writing).execute();
  release();
}

// The connection's own triggers went with the group.
void GroupSums::forget() {
  gathered_.clear();
  told_.clear();
  if (gathering_) release();
}

void GroupSums::release() {
  gathering_ = false;
  sqlite3_db_config(store_.handle(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr);
}
