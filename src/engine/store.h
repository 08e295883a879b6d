// The border between the books and whatever keeps them.
//
// Above it stand recordsets, Data controls and the statement language; below it one set of books in
// its keeper's own terms (engine/sqlite). What crosses it is resolved queries and rows, in batches,
// and never a statement of the keeper's: a book of a hundred thousand lines is some hundreds of
// calls. Everything raises ErrorEjecucion with the classic numbers, and nothing else.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <QStringList>
#include <span>
#include <vector>

#include "common/variant.h"
#include "engine/advance.h"
#include "engine/definitions.h"

class Wait;
namespace lang {
struct Query;
}

// Of a row: steady, the store's own, never used twice.
using Key = qint64;
using Row = std::vector<Variant>;

// Values to be written, by column as its table spells it. A row has few: they are gone through.
class Values {
  using Pair = std::pair<QString, Variant>;
  static auto in(auto& pairs, const QString& column) {
    const auto at = std::find_if(pairs.begin(), pairs.end(),
                                 [&](const Pair& pair) { return pair.first == column; });
    return at == pairs.end() ? nullptr : &at->second;
  }

 public:
  void insert(const QString& column, const Variant& value) {
    if (Variant* known = in(pairs_, column))
      *known = value;
    else
      pairs_.emplace_back(column, value);
  }
  // The value of a column, nullptr for one that isn't given.
  const Variant* find(const QString& column) const { return in(pairs_, column); }
  bool contains(const QString& column) const { return find(column) != nullptr; }
  void remove(const QString& column) {
    std::erase_if(pairs_, [&](const Pair& pair) { return pair.first == column; });
  }
  void clear() { pairs_.clear(); }

  bool isEmpty() const { return pairs_.empty(); }
  auto begin() const { return pairs_.begin(); }
  auto end() const { return pairs_.end(); }
  QStringList columns() const {
    QStringList names;
    for (const Pair& pair : pairs_) names += pair.first;
    return names;
  }
  // Whether they are those of these columns, in the same order.
  bool areOf(const QStringList& columns) const {
    return std::equal(pairs_.begin(), pairs_.end(), columns.begin(), columns.end(),
                      [](const Pair& pair, const QString& name) { return pair.first == name; });
  }

 private:
  std::vector<Pair> pairs_;
};

// What was being done when something failed: the same condition has different numbers. A store that
// others hold is 3260 for Reading and Locking, 3186 for Writing and Committing.
enum class Doing { Reading, Locking, Writing, Committing };

// The state of some tables' rows, to be compared and nothing else: while it stays the same, rows
// read earlier are those that stand there.
struct Stamp {
  qint64 parts[3] = {-1, -1, -1};
  bool operator==(const Stamp&) const = default;
};

// Keeps what is read through one store in one state, as long as it lives; others may have to wait
// with their writing, so it is for reads that follow each other at once.
class Hold {
 public:
  virtual ~Hold() = default;
  Hold() = default;
  Hold(const Hold&) = delete;
  Hold& operator=(const Hold&) = delete;
};

// Rows in the order of their query, each seen once. Nobody waits while one is being gone through.
class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual bool next() = 0;  // before the first row too; false past the last
  virtual Variant value(int column) const = 0;
};

// Books as they stood at one moment, in a file of their own that goes away with the object: for
// those who read files and not books.
class Snapshot {
 public:
  virtual ~Snapshot() = default;
  Snapshot() = default;
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;
  virtual QString file() const = 0;  // the system's path
  virtual void verify() = 0;         // 3343 unless what it holds can be read
};

using RowTaker = std::function<void(Key, Row&&)>;

// One compiled query. It lives no longer than its store.
class Reader {
 public:
  virtual ~Reader() = default;
  // `literals` are the values of those taken out of the statement, in order.
  virtual std::unique_ptr<Cursor> run(const QList<Variant>& literals) = 0;
  // Of queries with keys (lang::hasKeys) only: those of the rows, in order; `most` of them, or all
  // for -1.
  virtual std::vector<Key> keys(const QList<Variant>& literals, int most) = 0;
  // Hands over the rows of some keys in the order of the keys; those that are gone are left out.
  virtual void rows(std::span<const Key> keys, const RowTaker& take) = 0;
};

// One set of books: a company's year, or the catalogue of companies.
class Store {
 public:
  virtual ~Store() = default;

  // As they are now, whoever changed them.
  virtual std::shared_ptr<const Definitions> definitions() = 0;
  // Within a group. 5 for a name that the store keeps for itself, 3022 where rows already repeat a
  // new key.
  virtual void define(const Change& change) = 0;

  // A query over them, resolved by these definitions; one without outputs is read by its keys
  // alone.
  virtual std::shared_ptr<Reader> compile(const lang::Query& query) = 0;
  // Moved by whoever writes rows of one of the tables, others' writing seen within some
  // milliseconds, and at once in a group or a hold. Without names it is that of all tables.
  virtual Stamp stamp(const QStringList& tables) = 0;
  // Moves when the books have been replaced by others of the same name (a file restored by hand, a
  // synchroniser): keys read before mean nothing in them. 3024 when they have been taken away,
  // which reading raises too.
  virtual quint64 edition() { return 0; }
  // Moves with each commit to the books by anybody, and stands in them: it may be compared with
  // what another process, or this one before it closed them, was told.
  virtual qint64 commits() { return 0; }
  virtual std::unique_ptr<Hold> hold() = 0;

  // The group of updates. Opening it keeps all others from writing (3260, or 3186 for who is
  // Writing at once; 3027), so what is read afterwards is fresh and nobody else's; within one it
  // does nothing. commit() raises 3186 while others are in the way, and then the group is still
  // open; 3026 and 3043 when it has been undone. Without a group they do nothing. What is written
  // below is written within one.
  virtual void begin(Doing doing) = 0;
  virtual void commit() = 0;
  virtual void discard() = 0;  // undoes it
  virtual bool inGroup() const = 0;

  // Columns that aren't given get their defaults. 3058 for a primary key with a Null in it, 3022
  // for one that another row has, the case of no letter being a difference.
  virtual Key insert(const QString& table, const Values& values) = 0;
  // The same for those columns of the row that are given; false if the row is gone.
  virtual bool update(const QString& table, Key key, const Values& values) = 0;
  virtual bool remove(const QString& table, Key key) = 0;  // false if the row is gone
};

// What the stores of a process share: how they wait for others, and who is to be told that a wait
// ended in a refusal, or that what was read is no longer so because a group was undone.
struct StoreSettings {
  int lockTimeout = 5000;  // milliseconds
  Wait* wait = nullptr;
  bool inWait = false;     // `wait` is at work: nothing may be asked of a store
  bool impatient = false;  // a lock was refused: no other is waited for until one is got
  Advance advance;         // of the work on whole books that is going on, if its caller wants it
  std::function<void()> refused;
  std::function<void()> undone;
};

// Books by their location, as the program writes it: the path of a file, or whatever a keeper of
// another kind makes of it.
class Driver {
 public:
  virtual ~Driver() = default;
  // The same text for the same books, however their location is written; empty when there are none.
  virtual QString identity(const QString& location) const = 0;
  virtual std::unique_ptr<Store> open(const QString& location,
                                      std::shared_ptr<StoreSettings> settings) = 0;  // 3024, 3343
  // `locale` is the general sort order, noted in the books. 3204 if there are some already, 3026,
  // 75.
  virtual void create(const QString& location, const QString& locale) = 0;
  virtual void erase(const QString& location) = 0;  // 70; what is already gone is no failure
  // The names of the files that books at a location may stand in; none for a keeper without files.
  virtual QStringList files(const QString& location) const = 0;

  virtual std::unique_ptr<Snapshot> snapshot(Store& from) = 0;
  // Books as they stand, made at a location in place of what may be there, or written over others
  // that are open, as one change: these are left wholly old or wholly new. Verified before anybody
  // sees them: 3343. With `asRead` they are written only while that is what `to` tells as its
  // commits() (3186).
  virtual void copy(Store& from, const QString& to) = 0;
  virtual void overwrite(Store& from, Store& to, std::optional<qint64> asRead) = 0;
  // A copy in as little room as it takes, at a free location (3204); or books themselves, at their
  // own.
  virtual void compact(Store& from, const QString& to) = 0;
  // Checks books and makes anew what can be derived (indexes, kept sums), within a group. 3343 if
  // anything else is damaged.
  virtual void check(Store& store) = 0;
};

// The one that the program keeps its books with.
std::unique_ptr<Driver> defaultDriver();
