// The border between the books and whatever keeps them.
//
// Above it stand recordsets, Data controls and the statement language; below it one set of books in
// its keeper's own terms (engine/sqlite). What crosses it is rows and values, never a statement of
// the keeper's. Everything raises ErrorEjecucion with the classic numbers, and nothing else.
#pragma once

#include <memory>
#include <QMap>

#include "common/variant.h"
#include "engine/definitions.h"

// Of a row: steady, the store's own, never used twice.
using Key = qint64;
// Values to be written, by column as its table spells it.
using Values = QMap<QString, Variant>;

// What was being done when something failed: the same condition has different numbers. A store that
// others hold is 3260 for Reading and Locking, 3186 for Writing and Committing.
enum class Doing { Reading, Locking, Writing, Committing };

// One set of books: a company's year, or the catalogue of companies.
class Store {
 public:
  virtual ~Store() = default;

  // As they are now, whoever changed them.
  virtual std::shared_ptr<const Definitions> definitions() = 0;

  // The group of updates. Opening it keeps all others from writing (3260, or 3186 for who is
  // Writing at once; 3027), so what is read afterwards is fresh and nobody else's; within one it
  // does nothing. commit() raises 3186 while others are in the way, and then the group is still
  // open; 3026 and 3043 when it has been undone. What is written below is written within one.
  virtual void begin(Doing doing) = 0;
  virtual void commit() = 0;
  virtual bool inGroup() const = 0;

  // Columns that aren't given get their defaults. 3058 for a primary key with a Null in it, 3022
  // for one that another row has, the case of no letter being a difference.
  virtual Key insert(const QString& table, const Values& values) = 0;
  // The same for those columns of the row that are given; false if the row is gone.
  virtual bool update(const QString& table, Key key, const Values& values) = 0;
  virtual bool remove(const QString& table, Key key) = 0;  // false if the row is gone
};
