// Definitions of what a set of books holds: tables with their columns and indexes, stored queries.
#pragma once

#include <QStringList>
#include <vector>

#include "common/variant.h"

// A column being defined. `Size` matters for text only.
struct Field {
  QString Name;
  FieldType Type = FieldType::Text;
  int Size = 0;
  QString DefaultValue;  // as written in the definition: "0", "\"1\""; empty for none
  bool AllowZeroLength = false;
};

// The value that a new row has in a column; Null without a default.
//   Type Text, DefaultValue "\"1\""  ->  "1"        Type Boolean, no default  ->  false
Variant defaultValue(const Field& field);

struct Index {
  QString Name;
  bool Primary = false;
  bool Unique = false;
  QStringList Fields;
};

// An index that nobody sees and that only makes reading faster. A sparse one leaves out the rows
// that have nothing in its first column: for a column that few rows use, so that the others are
// written without it.
struct KeptIndex {
  QStringList columns;
  bool sparse = false;
  bool operator==(const KeptIndex&) const = default;
};

// A table being defined, or the definition of one that stands in the file.
struct TableDef {
  QString Name;
  std::vector<Field> Fields;
  std::vector<Index> Indexes;

  Field& CreateField(const QString& name, FieldType type, int size = 0);  // and appends it
};

struct QueryDef {
  QString Name;
  QString Sql;  // word for word
};
