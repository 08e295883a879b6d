// Changes of what stands in the file: tables, their indexes and sums, stored queries and the views
// over them.
#include <algorithm>

#include "engine/sqlite/emitter.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"
#include "engine/sqlite/views.h"

namespace {

QString keptName(const QString& table, const KeptIndex& index) {
  return QString::fromLatin1(own::kKept) + table + u'_' + index.columns.join(u'_');
}

QString createIndexSql(const QString& name, bool unique, const QString& table,
                       const QStringList& columns) {
  QStringList bracketedColumns;
  for (const QString& column : columns) bracketedColumns += bracketed(column);
  return QStringLiteral("CREATE ") + (unique ? QStringLiteral("UNIQUE ") : QString()) +
         QStringLiteral("INDEX IF NOT EXISTS ") + bracketed(name) + QStringLiteral(" ON ") +
         bracketed(table) + u'(' + bracketedColumns.join(QStringLiteral(", ")) + u')';
}

bool hasSums(const Schema& schema, const QString& table) {
  return std::any_of(schema.runningSums().begin(), schema.runningSums().end(),
                     [&](const Catalog::RunningSums& s) { return s.baseTable == table; });
}

void refuseOwn(const QString& name) {
  if (own::isOwn(name)) throw ErrorEjecucion(err::kLlamadaNoValida, name);
}

// One kind of change after the other.
class Definer {
 public:
  explicit Definer(FileStore& store) : store_(store) {}

  void operator()(const TableMade& made) {
    const TableDef& table = made.table;
    refuseOwn(table.Name);
    for (const Field& field : table.Fields) refuseOwn(field.Name);
    store_.execute(createTableSql(table));
    for (const Field& field : table.Fields)
      if (field.Type == FieldType::Text && !field.AllowZeroLength)
        setProperty(table.Name + u'.' + field.Name, "SinTextoVacio");
    store_.definitionsChanged();
    for (const Index& index : table.Indexes) (*this)(IndexMade{table.Name, index});
    makeMissingViews(store_);
  }

  void operator()(const TableDropped& dropped) {
    const QString& table = dropped.name;
    const auto schema = store_.schema();
    for (const auto* kept : {&schema->runningSums(), &schema->brokenSums()})
      for (const Catalog::RunningSums& sums : *kept)
        if (sums.baseTable == table) execute(sumsRemoval(sums));
    store_.execute(QStringLiteral("DROP TABLE ") + bracketed(table));
    // Another table of the same name starts without what was noted of this one.
    for (const char* sql : {"DELETE FROM librano_sumas WHERE Tabla = ?1",
                            "DELETE FROM librano_filas WHERE Tabla = ?1",
                            "DELETE FROM librano_propiedades WHERE substr(Objeto, 1, "
                            "length(?1) + 1) = ?1 || '.'"})
      store_.prepare(QString::fromLatin1(sql), Doing::Writing).bind(1, table).execute();
    store_.definitionsChanged();
    remakeViews(store_);
  }

  void operator()(const IndexMade& made) {
    refuseOwn(made.index.Name);
    const auto schema = store_.schema();
    TableDef table = *schema->definition(made.table);
    const Index& index = made.index;
    const QString name = indexName(table.Name, index.Name);
    store_.execute(createIndexSql(name, index.Unique || index.Primary, table.Name, index.Fields));
    if (index.Primary) setProperty(name, "Principal");
    table.Indexes.push_back(index);
    if (hasSums(*schema, table.Name)) execute(replaceGuards(table));
    store_.definitionsChanged();
  }

  void operator()(const IndexesKept& kept) {
    const FileStore::LongWork work(store_, Wait::Work::Indexing, 1);
    const QList<KeptIndex> before = store_.schema()->keptIndexes(kept.table);
    for (const KeptIndex& index : before)
      if (!kept.indexes.contains(index))
        store_.execute(QStringLiteral("DROP INDEX IF EXISTS ") +
                       bracketed(keptName(kept.table, index)));
    for (const KeptIndex& index : kept.indexes)
      store_.execute(createIndexSql(keptName(kept.table, index), false, kept.table, index.columns) +
                     (index.sparse
                          ? QStringLiteral(" WHERE %1 IS NOT NULL").arg(bracketed(index.columns[0]))
                          : QString()));
    store_.definitionsChanged();
  }

  void operator()(const SumsKept& kept) {
    const auto schema = store_.schema();
    const TableDef& table = *schema->definition(kept.table);
    Statement note = store_.prepare(
        QStringLiteral("INSERT INTO %1 (Tabla, Lado, Importe, Claves) VALUES (?1, ?2, ?3, ?4) "
                       "RETURNING Orden")
            .arg(QLatin1String(own::kSums)),
        Doing::Writing);
    note.bind({kept.table, kept.side, kept.amount, sumKeysText(kept.keys)}).step();
    const qint64 order = note.integer(0);
    note.execute();
    const auto sums = describeSums(order, kept.table, kept.side, kept.amount, kept.keys);
    for (const QStringList& step :
         {sumsDefinition(sums, table), sumsRecount(sums), replaceGuards(table), amountGuards(sums)})
      execute(step);
  }

  void operator()(const QueryMade& made) {
    refuseOwn(made.query.Name);
    store_
        .prepare(QStringLiteral("INSERT INTO %1 (Nombre, Texto) VALUES (?1, ?2)")
                     .arg(QLatin1String(own::kQueries)),
                 Doing::Writing)
        .bind({made.query.Name, made.query.Sql})
        .execute();
    store_.definitionsChanged();
    makeMissingViews(store_);
  }

  void operator()(const QueryDropped& dropped) {
    store_
        .prepare(
            QStringLiteral("DELETE FROM %1 WHERE Nombre = ?1").arg(QLatin1String(own::kQueries)),
            Doing::Writing)
        .bind(1, dropped.name)
        .execute();
    store_.execute(QStringLiteral("DROP VIEW IF EXISTS ") + bracketed(dropped.name));
    store_.definitionsChanged();
    remakeViews(store_);
  }

  void operator()(const ForeignTriggersDropped&) {
    const QStringList names = store_.schema()->foreignTriggers();
    for (const QString& name : names)
      store_.execute(QStringLiteral("DROP TRIGGER ") + lang::quotedName(name));
    store_.definitionsChanged();
  }

 private:
  void execute(const QStringList& statements) {
    for (const QString& sql : statements) store_.execute(sql);
  }

  void setProperty(const QString& object, const char* property) {
    store_
        .prepare(QStringLiteral("INSERT OR REPLACE INTO %1 VALUES (?1, ?2, '1')")
                     .arg(QLatin1String(own::kProperties)),
                 Doing::Writing)
        .bind({object, property})
        .execute();
  }

  FileStore& store_;
};

}  // namespace

void FileStore::define(const Change& change) {
  // A file made by another tool.
  if (!schema()->hasOwnTables()) {
    const QStringList statements = own::definitions();
    for (const QString& sql : statements) execute(sql);
    definitionsChanged();
  }
  std::visit(Definer(*this), change);
  noteDefinitions();
}
