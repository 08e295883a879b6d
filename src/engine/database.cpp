#include "engine/dbengine.h"
#include "engine/sqlite/connection.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/views.h"

namespace {

// What changes definitions runs as one piece of the group: tables, queries and their views.
template <typename F>
void define(Connection& connection, F&& what) {
  guarded(connection, [&] {
    connection.beginGroup();
    if (!connection.schema()->hasOwnTables()) {
      for (const QString& sql : own::definitions()) connection.execute(sql);
      connection.definitionsChanged();
    }
    what();
    connection.noteDefinitions();
  });
}

void execute(Connection& connection, const QStringList& statements) {
  for (const QString& sql : statements) connection.execute(sql);
}

void setProperty(Connection& connection, const QString& object, const char* property) {
  connection
      .prepare(QStringLiteral("INSERT OR REPLACE INTO %1 VALUES (?1, ?2, '1')")
                   .arg(QLatin1String(own::kProperties)),
               Doing::Writing)
      .bind({object, property})
      .execute();
}

const TableDef& definitionOf(const Schema& schema, const QString& table) {
  const TableDef* def = schema.definition(table);
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

void addIndex(Connection& connection, const QString& table, const Index& index) {
  const auto schema = connection.schema();
  TableDef def = definitionOf(*schema, table);
  const QString name = indexName(def.Name, index.Name);
  const QStringList columns = columnsOf(def, index.Fields);
  connection.execute(createIndexSql(name, index.Unique || index.Primary, def.Name, columns));
  if (index.Primary) setProperty(connection, name, "Principal");
  def.Indexes.push_back({index.Name, index.Primary, index.Unique, columns});
  if (hasSums(*schema, def.Name)) execute(connection, replaceGuards(def));
  connection.definitionsChanged();
}

}  // namespace

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
Database::~Database() = default;

QString Database::path() const {
  return connection_->path();
}

void Database::appendTable(const TableDef& table) {
  define(*connection_, [&] {
    checkName(table.Name);
    QStringList seen;
    for (const Field& field : table.Fields) {
      checkName(field.Name);
      if (seen.contains(field.Name.toCaseFolded()))
        throw ErrorEjecucion(err::kTablaYaExiste, field.Name);
      seen += field.Name.toCaseFolded();
    }
    if (connection_->schema()->definition(table.Name))
      throw ErrorEjecucion(err::kTablaYaExiste, table.Name);
    if (connection_->schema()->query(table.Name))
      throw ErrorEjecucion(err::kConsultaYaExiste, table.Name);
    connection_->execute(createTableSql(table));
    for (const Field& field : table.Fields)
      if (field.Type == FieldType::Text && !field.AllowZeroLength)
        setProperty(*connection_, table.Name + u'.' + field.Name, "SinTextoVacio");
    connection_->definitionsChanged();
    for (const Index& index : table.Indexes) addIndex(*connection_, table.Name, index);
    makeMissingViews(*connection_);
  });
}

void Database::appendIndex(const QString& table, const Index& index) {
  define(*connection_, [&] {
    checkName(index.Name);
    addIndex(*connection_, table, index);
  });
}

QStringList Database::TableDefs() const {
  return guarded(*connection_, [&] {
    connection_->freshen();
    QStringList names;
    for (const TableDef& table : connection_->schema()->tables()) names += table.Name;
    return names;
  });
}

TableDef Database::tableDef(const QString& name) const {
  return guarded(*connection_, [&] {
    connection_->freshen();
    return definitionOf(*connection_->schema(), name);
  });
}

void Database::deleteTable(const QString& name) {
  define(*connection_, [&] {
    const auto schema = connection_->schema();
    const QString table = definitionOf(*schema, name).Name;
    for (const Catalog::RunningSums& sums : schema->runningSums())
      if (sums.baseTable == table) execute(*connection_, sumsRemoval(sums));
    connection_->execute(QStringLiteral("DROP TABLE ") + bracketed(table));
    // Another table of the same name starts without what was noted of this one.
    for (const char* sql : {"DELETE FROM librano_sumas WHERE Tabla = ?1",
                            "DELETE FROM librano_filas WHERE Tabla = ?1",
                            "DELETE FROM librano_propiedades WHERE substr(Objeto, 1, "
                            "length(?1) + 1) = ?1 || '.'"})
      connection_->prepare(QString::fromLatin1(sql), Doing::Writing).bind(1, table).execute();
    connection_->definitionsChanged();
    remakeViews(*connection_);
  });
}

void Database::keepIndex(const QString& table, const QStringList& columns) {
  define(*connection_, [&] {
    const auto schema = connection_->schema();
    const TableDef& def = definitionOf(*schema, table);
    const QStringList names = columnsOf(def, columns);
    const QString name =
        QStringLiteral("librano_") + def.Name + u'_' + names.join(QStringLiteral("_"));
    connection_->execute(createIndexSql(name, false, def.Name, names));
  });
}

void Database::keepSums(const QString& table, const QString& side, const QString& amount,
                        const QList<SumKey>& keys) {
  define(*connection_, [&] {
    const auto schema = connection_->schema();
    const TableDef& def = definitionOf(*schema, table);
    QList<SumKey> spelled;
    for (const SumKey& key : keys) spelled.push_back({columnOf(def, key.column), key.part});
    const QString sideColumn = columnOf(def, side), amountColumn = columnOf(def, amount);
    Statement note = connection_->prepare(
        QStringLiteral("INSERT INTO %1 (Tabla, Lado, Importe, Claves) VALUES (?1, ?2, ?3, ?4) "
                       "RETURNING Orden")
            .arg(QLatin1String(own::kSums)),
        Doing::Writing);
    note.bind({def.Name, sideColumn, amountColumn, sumKeysText(spelled)}).step();
    const qint64 order = note.integer(0);
    note.execute();
    const auto sums = describeSums(order, def.Name, sideColumn, amountColumn, spelled);
    execute(*connection_, sumsDefinition(sums, def));
    execute(*connection_, sumsRecount(sums));
    execute(*connection_, replaceGuards(def));
  });
}

void Database::CreateQueryDef(const QString& name, const QString& statement) {
  define(*connection_, [&] {
    checkName(name);
    if (connection_->schema()->query(name)) throw ErrorEjecucion(err::kConsultaYaExiste, name);
    if (connection_->schema()->definition(name)) throw ErrorEjecucion(err::kTablaYaExiste, name);
    connection_
        ->prepare(QStringLiteral("INSERT INTO %1 (Nombre, Texto) VALUES (?1, ?2)")
                      .arg(QLatin1String(own::kQueries)),
                  Doing::Writing)
        .bind({name, statement})
        .execute();
    connection_->definitionsChanged();
    makeMissingViews(*connection_);
  });
}

QStringList Database::QueryDefs() const {
  return guarded(*connection_, [&] {
    connection_->freshen();
    QStringList names;
    for (const QueryDef& query : connection_->schema()->queries()) names += query.Name;
    return names;
  });
}

void Database::deleteQuery(const QString& name) {
  define(*connection_, [&] {
    const auto schema = connection_->schema();
    const QueryDef* query = schema->query(name);
    if (!query) throw ErrorEjecucion(err::kElementoNoEncontrado, name);
    connection_
        ->prepare(
            QStringLiteral("DELETE FROM %1 WHERE Nombre = ?1").arg(QLatin1String(own::kQueries)),
            Doing::Writing)
        .bind(1, query->Name)
        .execute();
    connection_->execute(QStringLiteral("DROP VIEW IF EXISTS ") + bracketed(query->Name));
    connection_->definitionsChanged();
    remakeViews(*connection_);
  });
}
