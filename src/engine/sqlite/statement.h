// One prepared statement of the file's own engine, taken from its store's cache.
//
// It goes back to the cache, reset and without values, when the object dies: no statement stays
// open between two windows of rows, because an open one would keep other stations from writing.
#pragma once

#include <QList>

#include "engine/store.h"

class FileStore;
struct sqlite3_stmt;

// A statement in the cache of its store.
struct Prepared {
  sqlite3_stmt* handle = nullptr;
  bool busy = false;
  quint64 lastUse = 0;
};

// A value as it stands in a row.
struct RawValue {
  enum class Kind { Null, Whole, Real, Text } kind = Kind::Null;
  qint64 whole = 0;  // of a text: its length in bytes
  double real = 0;
  const char* text = nullptr;  // UTF-8
};
// The value as the column's type wants it. What can't be that (a text in a computed column of
// amounts) comes as it stands in the row.
Variant valueOf(const RawValue& raw, FieldType type);

class Statement {
 public:
  // `prepared` is the cache's entry; none for a statement that is used once and thrown away.
  Statement(FileStore& store, sqlite3_stmt* handle, Doing doing, Prepared* prepared)
      : store_(&store), handle_(handle), doing_(doing), prepared_(prepared) {}
  Statement(Statement&& other) noexcept;
  Statement& operator=(Statement&&) = delete;
  ~Statement();

  // Parameters count from 1. A date goes as ISO text, yes/no as -1 or 0.
  Statement& bind(int parameter, const Variant& value);
  Statement& bind(const QList<Variant>& values);  // from parameter 1 on
  // True while there is a row; raises the number that the failure has for what was being done.
  bool step();
  void execute();  // steps to the end and resets
  void reset();

  bool writes() const;  // into the file
  int columnCount() const;
  bool isNull(int column) const;
  qint64 integer(int column) const;
  QString text(int column) const;
  RawValue raw(int column) const;  // a text stands until the next step
  Variant value(int column, FieldType type) const { return valueOf(raw(column), type); }

 private:
  FileStore* store_;
  sqlite3_stmt* handle_;
  Doing doing_;
  Prepared* prepared_;
};

// A date as it stands in the file: "2003-02-15", with " 10:30:00" when it isn't midnight.
QString isoText(const QDateTime& value);
// A name as it is written in a statement.
QString bracketed(const QString& name);
