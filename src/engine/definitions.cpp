#include "engine/definitions.h"

void Definitions::add(TableDef table, Keys keys) {
  Table known;
  known.name = table.Name;
  for (const Field& field : table.Fields)
    known.columns.push_back({field.Name, field.Type, field.Size});
  for (const int column : keys.foreign)
    known.columns[static_cast<std::size_t>(column)].foreign = true;
  known.uniqueKeys = std::move(keys.unique);
  tableAt_.insert(table.Name.toCaseFolded(), static_cast<int>(tables_.size()));
  definitions_.push_back(std::move(table));
  tables_.push_back(std::move(known));
}

void Definitions::add(QueryDef query) {
  queryAt_.insert(query.Name.toCaseFolded(), static_cast<int>(queries_.size()));
  queries_.push_back(std::move(query));
}

const Catalog::Table* Definitions::table(const QString& name) const {
  const auto found = tableAt_.constFind(name.toCaseFolded());
  return found == tableAt_.cend() ? nullptr : &tables_[static_cast<std::size_t>(*found)];
}

std::optional<QString> Definitions::queryText(const QString& name) const {
  const QueryDef* found = query(name);
  return found ? std::optional(found->Sql) : std::nullopt;
}

const TableDef* Definitions::definition(const QString& name) const {
  const auto found = tableAt_.constFind(name.toCaseFolded());
  return found == tableAt_.cend() ? nullptr : &definitions_[static_cast<std::size_t>(*found)];
}

const QueryDef* Definitions::query(const QString& name) const {
  const auto found = queryAt_.constFind(name.toCaseFolded());
  return found == queryAt_.cend() ? nullptr : &queries_[static_cast<std::size_t>(*found)];
}

QStringList Definitions::primaryColumns(const QString& table) const {
  const TableDef* def = definition(table);
  if (def)
    for (const Index& index : def->Indexes)
      if (index.Primary) return index.Fields;
  return {};
}
