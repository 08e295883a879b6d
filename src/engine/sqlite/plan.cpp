#include "engine/sqlite/plan.h"

#include <algorithm>

#include "engine/lang/rewrite.h"
#include "engine/lang/statementkey.h"
#include "engine/sqlite/emitter.h"

using namespace lang;

namespace {

// Rows are read by key when each is one row of one table. Literals of the statement itself would
// need more than the key to show a row.
bool isUpdatable(const Query& query) {
  if (query.from->kind != From::Kind::Source || !query.from->source.table || query.grouped ||
      query.distinct) {
    return false;
  }
  return std::none_of(query.outputs.begin(), query.outputs.end(), [](const Output& output) {
    return anyPart(*output.expr,
                   [](const Expr& part) { return part.place != Expr::Place::InText; });
  });
}

}  // namespace

Plan compile(const QString& source, const Catalog& catalog, int ano) {
  Binder binder(catalog, ano);
  const std::unique_ptr<Query> query = binder.source(source);
  flatten(*query);
  readRunningSums(*query, catalog, binder);

  Plan plan;
  Parameters parameters(statementKey(source, ano).literals);
  const Catalog::Table* base = query->from->source.table.get();
  plan.updatable = isUpdatable(*query);
  for (const Output& output : query->outputs) {
    const Expr& expr = *output.expr;
    OutputColumn column{output.name, fieldType(expr.type), expr.size, {}};
    if (plan.updatable && expr.kind == Expr::Kind::Column) {
      column.baseColumn = base->columns[static_cast<size_t>(expr.column)].name;
    }
    plan.columns.push_back(column);
  }
  const auto emitter = [&] { return Emitter(Emitter::Dialect::Plan, parameters); };
  if (plan.updatable) {
    plan.baseTable = base->name;
    plan.keysSql = emitter().keys(*query);
    plan.rowSql = emitter().row(*query);
  }
  plan.wholeSql = emitter().whole(*query);
  plan.params = parameters.values();
  return plan;
}

FindPlan compileCriterion(const QString& source, const QString& criterion, const Catalog& catalog,
                          int ano) {
  Binder binder(catalog, ano);
  const std::unique_ptr<Query> query = binder.filtered(source, criterion);
  // As a column too, so that it is read through to the same tables as the rest.
  query->outputs.push_back({{}, std::exchange(query->where, nullptr)});
  flatten(*query);
  const ExprPtr found = query->outputs.back().expr;

  FindPlan plan;
  Parameters parameters(statementKey(source, ano).literals);
  Emitter emitter(Emitter::Dialect::Plan, parameters);
  query->outputs.pop_back();
  if (isUpdatable(*query)) {
    query->where = both(query->where, found);
    plan.sql = emitter.keys(*query);
  } else {
    query->outputs.push_back({{}, found});
    readRunningSums(*query, catalog, binder);
    plan.sql = emitter.positions(*query);
  }
  plan.params = parameters.values();
  return plan;
}

QString viewSql(const QString& queryName, const Catalog& catalog) {
  // A view mustn't depend on the company's year or the day it was made: short years of a stored
  // query lie near this one.
  constexpr int kYear = 2000;
  Binder binder(catalog, kYear);
  const std::unique_ptr<Query> query = binder.stored(queryName);
  Parameters none({});
  return Emitter(Emitter::Dialect::View, none).whole(*query);
}
