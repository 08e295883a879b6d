#include <algorithm>

#include "engine/dbengine.h"
#include "engine/foreign.h"
#include "engine/recordsetimpl.h"

namespace {

// Changes definitions as one piece of the group. `change` is told what stands there by then, and
// gives the change or refuses it.
template <typename F>
void define(Connection& connection, F&& change) {
  guarded(connection, [&] {
    connection.begin(Doing::Locking);
    const auto definitions = connection.store().definitions();
    connection.store().define(change(*definitions));
  });
}

// 5 for a name that can't be written between brackets in a statement.
void checkName(const QString& name) {
  const bool wrong = name.isEmpty() || name.size() > 64 || name != name.trimmed() ||
                     std::any_of(name.begin(), name.end(), [](QChar c) {
                       return c < u' ' || QStringView(u"[]\"'`.;!").contains(c);
                     });
  if (wrong) throw ErrorEjecucion(err::kLlamadaNoValida, name);
}

const TableDef& definitionOf(const Definitions& definitions, const QString& table) {
  const TableDef* def = definitions.definition(table);
  if (!def) throw ErrorEjecucion(err::kElementoNoEncontrado, table);
  return *def;
}

// The column as the table spells it.
QString columnOf(const TableDef& table, const QString& name) {
  for (const Field& field : table.Fields)
    if (field.Name.toCaseFolded() == name.toCaseFolded()) return field.Name;
  throw ErrorEjecucion(err::kElementoNoEncontrado, name);
}

QStringList columnsOf(const TableDef& table, const QStringList& names) {
  QStringList columns;
  for (const QString& name : names) columns += columnOf(table, name);
  return columns;
}

// The index with its columns as the table spells them.
Index spelled(const TableDef& table, Index index) {
  index.Fields = columnsOf(table, index.Fields);
  return index;
}

}  // namespace

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
Database::~Database() = default;

Stamp Database::state() const {
  return guarded(*connection_, [&] {
    const auto now = connection_->store().hold();  // which looks at once, not within a while
    return connection_->store().stamp({});
  });
}

std::unique_ptr<Hold> Database::hold() const {
  return guarded(*connection_, [&] { return connection_->store().hold(); });
}

QString Database::path() const {
  return connection_->path();
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& source, Opening opening) {
  return guarded(*connection_, [&] {
    return std::make_unique<Recordset>(
        std::make_unique<Recordset::Impl>(connection_, source, opening));
  });
}

std::vector<Catalog::Column> Database::columns(const QString& source) const {
  return guarded(*connection_, [&] {
    const auto plan = connection_->sources().compiled(source).plan;
    return std::vector<Catalog::Column>(plan->columns.begin(), plan->columns.end());
  });
}

bool Database::readsKeptSums(const QString& source) const {
  return guarded(*connection_,
                 [&] { return connection_->sources().compiled(source).plan->keptSums; });
}

void Database::appendTable(const TableDef& table) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    checkName(table.Name);
    QStringList seen;
    for (const Field& field : table.Fields) {
      checkName(field.Name);
      if (seen.contains(field.Name.toCaseFolded()))
        throw ErrorEjecucion(err::kTablaYaExiste, field.Name);
      seen += field.Name.toCaseFolded();
    }
    if (definitions.definition(table.Name)) throw ErrorEjecucion(err::kTablaYaExiste, table.Name);
    if (definitions.query(table.Name)) throw ErrorEjecucion(err::kConsultaYaExiste, table.Name);
    TableMade made{table};
    for (Index& index : made.table.Indexes) index = spelled(table, index);
    return made;
  });
}

void Database::appendIndex(const QString& table, const Index& index) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    checkName(index.Name);
    const TableDef& def = definitionOf(definitions, table);
    return IndexMade{def.Name, spelled(def, index)};
  });
}

QStringList Database::TableDefs() const {
  return guarded(*connection_, [&] {
    QStringList names;
    const auto definitions = connection_->store().definitions();
    for (const TableDef& table : definitions->tables()) names += table.Name;
    return names;
  });
}

TableDef Database::tableDef(const QString& name) const {
  return guarded(*connection_,
                 [&] { return definitionOf(*connection_->store().definitions(), name); });
}

void Database::deleteTable(const QString& name) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    return TableDropped{definitionOf(definitions, name).Name};
  });
}

void Database::keepIndexes(const QString& table, const QList<KeptIndex>& indexes) {
  IndexesKept kept{table, indexes};
  const bool there = guarded(*connection_, [&] {
    const auto definitions = connection_->store().definitions();
    const TableDef& def = definitionOf(*definitions, table);
    kept.table = def.Name;
    for (KeptIndex& index : kept.indexes) index.columns = columnsOf(def, index.columns);
    const QList<KeptIndex> now = definitions->keptIndexes(def.Name);
    return now.size() == kept.indexes.size() &&
           std::all_of(kept.indexes.begin(), kept.indexes.end(),
                       [&](const KeptIndex& index) { return now.contains(index); });
  });
  if (!there) define(*connection_, [&](const Definitions&) -> Change { return kept; });
}

void Database::keepSums(const QString& table, const QString& side, const QString& amount,
                        const QList<SumKey>& keys) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    const TableDef& def = definitionOf(definitions, table);
    QList<SumKey> spelledKeys;
    for (const SumKey& key : keys) spelledKeys.push_back({columnOf(def, key.column), key.part});
    return SumsKept{def.Name, columnOf(def, side), columnOf(def, amount), spelledKeys};
  });
}

void Database::CreateQueryDef(const QString& name, const QString& statement) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    checkName(name);
    if (definitions.query(name)) throw ErrorEjecucion(err::kConsultaYaExiste, name);
    if (definitions.definition(name)) throw ErrorEjecucion(err::kTablaYaExiste, name);
    return QueryMade{{name, statement}};
  });
}

QStringList Database::QueryDefs() const {
  return guarded(*connection_, [&] {
    QStringList names;
    const auto definitions = connection_->store().definitions();
    for (const QueryDef& query : definitions->queries()) names += query.Name;
    return names;
  });
}

void dropForeignTriggers(Database& books) {
  define(*books.connection(),
         [](const Definitions&) -> Change { return ForeignTriggersDropped{}; });
}

void Database::deleteQuery(const QString& name) {
  define(*connection_, [&](const Definitions& definitions) -> Change {
    const QueryDef* query = definitions.query(name);
    if (!query) throw ErrorEjecucion(err::kElementoNoEncontrado, name);
    return QueryDropped{query->Name};
  });
}
