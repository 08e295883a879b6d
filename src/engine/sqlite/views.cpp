#include "engine/sqlite/views.h"

#include "common/errorejecucion.h"
#include "engine/sqlite/connection.h"
#include "engine/sqlite/schema.h"

namespace {

// The view's definition, or nothing while a name of the query isn't there.
QString definitionOf(const QString& query, const Schema& schema) {
  try {
    return viewSql(query, schema);
  } catch (const ErrorEjecucion&) {
    return {};
  }
}

}  // namespace

void makeMissingViews(Connection& connection) {
  const auto schema = connection.schema();
  for (const QueryDef& query : schema->queries()) {
    if (schema->hasView(query.Name)) continue;
    const QString sql = definitionOf(query.Name, *schema);
    if (sql.isEmpty()) continue;
    try {
      connection.execute(QStringLiteral("CREATE VIEW ") + bracketed(query.Name) +
                         QStringLiteral(" AS ") + sql);
    } catch (const ErrorEjecucion& e) {
      // What only this program can compute stays without a view.
      if (e.numero() != err::kErrorDeSintaxis) throw;
    }
  }
  connection.definitionsChanged();
}

void remakeViews(Connection& connection) {
  const auto schema = connection.schema();
  for (const QueryDef& query : schema->queries())
    connection.execute(QStringLiteral("DROP VIEW IF EXISTS ") + bracketed(query.Name));
  connection.definitionsChanged();
  makeMissingViews(connection);
}
