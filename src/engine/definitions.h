// What stands in a set of books, as its store tells it: tables, stored queries and the sums kept.
//
// They never change once told: a store whose definitions have changed tells others.
#pragma once

#include <QHash>
#include <variant>

#include "engine/lang/catalog.h"
#include "engine/tabledef.h"

class Definitions : public Catalog {
 public:
  // With the unique keys and the columns in another tool's words, which the definition doesn't
  // tell.
  struct Keys {
    std::vector<std::vector<int>> unique;
    std::vector<int> foreign;
  };
  void add(TableDef table, Keys keys = {});
  void add(QueryDef query);
  void add(RunningSums sums) { sums_.push_back(std::move(sums)); }
  void add(const QString& table, KeptIndex index) { kept_[table].append(std::move(index)); }

  const Table* table(const QString& name) const override;
  std::optional<QString> queryText(const QString& name) const override;
  const std::vector<RunningSums>& runningSums() const override { return sums_; }

  // In order of creation; nullptr for a name that isn't there.
  const std::vector<TableDef>& tables() const { return definitions_; }
  const std::vector<QueryDef>& queries() const { return queries_; }
  const TableDef* definition(const QString& name) const;
  const QueryDef* query(const QString& name) const;
  // Of a table as it is spelled there.
  QList<KeptIndex> keptIndexes(const QString& table) const { return kept_.value(table); }
  // Columns that no row may have Null in.
  QStringList primaryColumns(const QString& table) const;

 private:
  std::vector<TableDef> definitions_;
  std::vector<Table> tables_;
  std::vector<QueryDef> queries_;
  std::vector<RunningSums> sums_;
  QHash<QString, QList<KeptIndex>> kept_;
  QHash<QString, int> tableAt_;  // by folded name
  QHash<QString, int> queryAt_;
};

// One change of what stands there. Tables and columns that are there already are named as they are
// spelled there.
struct TableMade {
  TableDef table;
};
struct TableDropped {
  QString name;
};
// An index that callers see; a unique or primary one refuses repeated rows.
struct IndexMade {
  QString table;
  Index index;
};
// Those, and no others, that nobody sees and that only make reading faster.
struct IndexesKept {
  QString table;
  QList<KeptIndex> indexes;
};
// Sums of `amount` on each side ("D" in `side` is the debit) by the keys, kept up to date from then
// on and right for the lines that are there. A store may do without: nothing is then answered from
// them.
struct SumsKept {
  QString table;
  QString side;
  QString amount;
  QList<SumKey> keys;
};
struct QueryMade {
  QueryDef query;
};
struct QueryDropped {
  QString name;
};
// What another tool has left to act by itself whenever rows change.
struct ForeignTriggersDropped {};
using Change = std::variant<TableMade, TableDropped, IndexMade, IndexesKept, SumsKept, QueryMade,
                            QueryDropped, ForeignTriggersDropped>;
