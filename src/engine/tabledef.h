// Definitions of what a database file holds: tables with their columns and indexes, stored queries.
#pragma once

#include <QStringList>
#include <vector>

#include "engine/lang/catalog.h"

// A column being defined. `Size` matters for text only.
struct Field {
  QString Name;
  FieldType Type = FieldType::Text;
  int Size = 0;
  QString DefaultValue;  // as written in the definition: "0", "\"1\""; empty for none
  bool AllowZeroLength = false;
};

struct Index {
  QString Name;
  bool Primary = false;
  bool Unique = false;
  QStringList Fields;
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
