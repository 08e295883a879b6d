// Reads a source once, forward, without keeping its rows: for books and exports of any length.
//
// No lock is held between two rows. Rows with keys are read in windows, as they stand by then;
// those of any other source are all of one state.
#pragma once

#include <memory>

#include "common/variant.h"

class Database;

class RowReader {
 public:
  // 3061, 3075, 3078 as when a recordset is opened.
  RowReader(Database& database, const QString& source);
  ~RowReader();

  int columnCount() const;
  QString columnName(int ordinal) const;
  FieldType columnType(int ordinal) const;
  int ordinal(const QString& name) const;  // -1 when there is none

  bool next();  // false past the last row
  Variant value(int ordinal) const;
  bool isNull(int ordinal) const;
  // Fast forms, without conversions: Null reads as empty text and as 0.
  QString text(int ordinal) const;
  double number(int ordinal) const;

 private:
  struct Private;
  std::unique_ptr<Private> d_;
};
