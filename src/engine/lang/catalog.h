// What the statement language asks of a set of books: its tables, stored queries and kept sums.
#pragma once

#include <optional>
#include <QList>
#include <QString>
#include <vector>

#include "common/variant.h"

// One of the keys by which sums are kept: a column, or the month of a date column.
//   {"Subcuenta"}   {"Fecha", SumKey::Part::Month}
struct SumKey {
  enum class Part { Whole, Month };
  QString column;
  Part part = Part::Whole;
  bool isMonth() const { return part == Part::Month; }
};

// What the resolver asks of a file. Names compare without case.
class Catalog {
 public:
  struct Column {
    QString name;
    FieldType type = FieldType::Text;
    int size = 0;
    bool foreign = false;  // declared in another tool's words: equal may be otherwise than for ours
  };
  struct Table {
    QString name;
    std::vector<Column> columns;  // in creation order
    // Columns, by their place, in which no two rows are equal as statements compare them. Rows with
    // a Null there are equal to none.
    std::vector<std::vector<int>> uniqueKeys;
  };
  // Sums that the file keeps up to date beside a table: one row for each combination of keys, with
  // the number of lines and, for each side, its sum in integers of a millionth and how many lines
  // have something on it, be it zero: a sum over nothing but Nulls is Null.
  struct RunningSums {
    QString sumsTable;       // its name in the file
    QString baseTable;       // "Diario"
    QString sideColumn;      // "DH"
    QString amountColumn;    // "Importe"
    QList<SumKey> keys;      // empty for the one row of the whole table
    QStringList keyColumns;  // the columns of sumsTable, in the same order
    QString countColumn;
    QString debitColumn;        // sum of IIf(side='D',amount,0) * 1e6
    QString creditColumn;       // sum of IIf(side='D',0,amount) * 1e6
    QString debitLinesColumn;   // count of IIf(side='D',amount,0)
    QString creditLinesColumn;  // count of IIf(side='D',0,amount)
  };
  virtual ~Catalog() = default;
  virtual const Table* table(const QString& name) const = 0;
  virtual std::optional<QString> queryText(const QString& name) const = 0;
  virtual const std::vector<RunningSums>& runningSums() const = 0;
};
