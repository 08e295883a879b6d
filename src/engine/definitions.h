// What stands in a set of books, as its store tells it: tables, stored queries and the sums kept.
//
// They never change once told: a store whose definitions have changed tells others.
#pragma once

#include <QHash>

#include "engine/lang/catalog.h"
#include "engine/tabledef.h"

class Definitions : public Catalog {
 public:
  void add(TableDef table);
  void add(QueryDef query);
  void add(RunningSums sums) { sums_.push_back(std::move(sums)); }

  const Table* table(const QString& name) const override;
  std::optional<QString> queryText(const QString& name) const override;
  const std::vector<RunningSums>& runningSums() const override { return sums_; }

  // In order of creation; nullptr for a name that isn't there.
  const std::vector<TableDef>& tables() const { return definitions_; }
  const std::vector<QueryDef>& queries() const { return queries_; }
  const TableDef* definition(const QString& name) const;
  const QueryDef* query(const QString& name) const;
  // Columns that no row may have Null in.
  QStringList primaryColumns(const QString& table) const;

 private:
  std::vector<TableDef> definitions_;
  std::vector<Table> tables_;
  std::vector<QueryDef> queries_;
  std::vector<RunningSums> sums_;
  QHash<QString, int> tableAt_;  // by folded name
  QHash<QString, int> queryAt_;
};
