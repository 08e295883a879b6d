#include "engine/sqlite/views.h"

#include "common/errorejecucion.h"
#include "engine/lang/binder.h"
#include "engine/sqlite/emitter.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"

namespace {

// The SELECT of a view over a stored query: built-in functions and the file's own tables only. It
// mustn't depend on the company's year or the day it was made: short years lie near this one.
QString viewSql(const QString& query, const Schema& schema) {
  constexpr int kYear = 2000;
  lang::Parameters none(0);
  const auto resolved = lang::Binder(schema, kYear).stored(query);
  return lang::Emitter(lang::Emitter::Dialect::View, none).whole(*resolved);
}

// The view's definition, or nothing while a name of the query isn't there.
QString definitionOf(const QString& query, const Schema& schema) {
  try {
    return viewSql(query, schema);
  } catch (const ErrorEjecucion&) {
    return {};
  }
}

}  // namespace

void makeMissingViews(FileStore& store) {
  const auto schema = store.schema();
  for (const QueryDef& query : schema->queries()) {
    if (schema->hasView(query.Name)) continue;
    const QString sql = definitionOf(query.Name, *schema);
    if (sql.isEmpty()) continue;
    try {
      store.execute(QStringLiteral("CREATE VIEW ") + bracketed(query.Name) +
                    QStringLiteral(" AS ") + sql);
    } catch (const ErrorEjecucion& e) {
      // What only this program can compute stays without a view.
      if (e.numero() != err::kErrorDeSintaxis) throw;
    }
  }
  store.definitionsChanged();
}

void remakeViews(FileStore& store) {
  const auto schema = store.schema();
  for (const QueryDef& query : schema->queries())
    store.execute(QStringLiteral("DROP VIEW IF EXISTS ") + bracketed(query.Name));
  store.definitionsChanged();
  makeMissingViews(store);
}
