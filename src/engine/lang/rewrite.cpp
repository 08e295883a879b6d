// Merging by an example. With the stored queries
//     Lineas:  SELECT *, IIf([DH]='D',[Importe],0) AS Debe FROM Diario
//     Meses:   SELECT Subcuenta, Month([Fecha]) AS Mes, Sum(Debe) AS D FROM Lineas
//              GROUP BY Subcuenta, Month([Fecha])
// the statement
//     SELECT * FROM Meses WHERE Subcuenta = '43' AND D > 0
// goes through these steps:
//     Lineas is merged into Meses (mergePlain):      Sum(IIf(..)) FROM Diario GROUP BY ..
//     Meses is merged into the statement (mergeGrouped), its conditions after the grouping:
//                                                    HAVING Subcuenta = '43' AND Sum(..) > 0
//     what asks no total goes before it (havingToWhere):
//                                                    WHERE Subcuenta = '43' HAVING Sum(..) > 0
// so that an index over Subcuenta finds the lines, or readRunningSums() needs none of them. A
// grouped query beside others in a join stays one, and gets the conditions on its keys (pushDown).
#include "engine/lang/rewrite.h"

#include <algorithm>
#include <utility>

namespace lang {
namespace {

using Kind = Expr::Kind;

// A source and where it hangs; a row of a nullable one may be missing from its outer join.
struct Place {
  From* from;
  bool nullable;
};

void collectPlaces(From& from, bool nullable, std::vector<Place>& all) {
  if (from.kind == From::Kind::Source) {
    all.push_back({&from, nullable});
    return;
  }
  collectPlaces(*from.left, nullable, all);
  collectPlaces(*from.right, nullable || from.kind == From::Kind::Left, all);
}

std::vector<Place> placesOf(Query& query) {
  std::vector<Place> all;
  collectPlaces(*query.from, false, all);
  return all;
}

// Puts the inner query's expressions where its columns are read.
ExprPtr readThrough(const ExprPtr& expr, int source, const Query& inner) {
  return replaced(expr, [&](const Expr& part) -> ExprPtr {
    if (part.kind != Kind::Column || part.source != source) return nullptr;
    return inner.outputs[static_cast<size_t>(part.column)].expr;
  });
}

bool readsOnly(const Expr& expr, int source, const std::function<bool(int)>& allowed) {
  bool some = false;
  const bool other = anyPart(expr, [&](const Expr& part) {
    if (part.kind != Kind::Column) return false;
    some = true;
    return part.source != source || !allowed(part.column);
  });
  return some && !other;
}

// The columns of a grouped query that are the same for all lines of a group.
bool isKeyOutput(const Query& inner, int column) {
  return !hasAggregate(*inner.outputs[static_cast<size_t>(column)].expr);
}

// An inner query without groups or DISTINCT: its FROM takes the place of the source.
void mergePlain(Query& query, From& place, bool only) {
  const int id = place.source.id;
  const std::unique_ptr<Query> inner = std::move(place.source.query);
  eachExpr(query, [&](ExprPtr& expr) { expr = readThrough(expr, id, *inner); });
  query.where = both(inner->where, query.where);
  if (only && query.orderBy.empty() && !query.grouped && !query.distinct) {
    query.orderBy = std::move(inner->orderBy);
  }
  std::unique_ptr<From> taken = std::move(inner->from);
  place = std::move(*taken);
}

// A plain query over a grouped one is that grouped query with more conditions.
void mergeGrouped(Query& query) {
  const int id = query.from->source.id;
  const std::unique_ptr<Query> inner = std::move(query.from->source.query);
  const std::vector<ExprPtr> conditions = conjuncts(std::exchange(query.where, nullptr));
  for (Output& output : query.outputs) output.expr = readThrough(output.expr, id, *inner);
  for (Order& order : query.orderBy) order.expr = readThrough(order.expr, id, *inner);
  query.where = inner->where;
  query.having = inner->having;
  query.groupBy = std::move(inner->groupBy);
  query.grouped = true;
  if (query.orderBy.empty() && !query.distinct) query.orderBy = std::move(inner->orderBy);
  for (const ExprPtr& condition : conditions) {
    query.having = both(query.having, readThrough(condition, id, *inner));
  }
  query.from = std::move(inner->from);
}

// Conditions on the keys of a grouped source hold for whole groups: they choose its lines.
void pushDown(Query& query, Source& source) {
  Query& inner = *source.query;
  ExprPtr kept;
  for (const ExprPtr& condition : conjuncts(query.where)) {
    const bool onKeys = !inner.groupBy.empty() &&
                        readsOnly(*condition, source.id,
                                  [&inner](int column) { return isKeyOutput(inner, column); });
    if (onKeys) {
      inner.where = both(inner.where, readThrough(condition, source.id, inner));
    } else {
      kept = both(kept, condition);
    }
  }
  query.where = kept;
}

// A condition after the grouping that asks nothing of the totals is one before it.
void havingToWhere(Query& query) {
  if (query.groupBy.empty()) return;
  ExprPtr kept;
  for (const ExprPtr& condition : conjuncts(query.having)) {
    if (hasAggregate(*condition)) {
      kept = both(kept, condition);
    } else {
      query.where = both(query.where, condition);
    }
  }
  query.having = kept;
}

// A key that is reckoned from other keys makes no groups of its own.
void dropDependentKeys(Query& query) {
  const std::vector<ExprPtr> keys = query.groupBy;
  const auto isKeyColumn = [&keys](const Expr& part) {
    return std::any_of(keys.begin(), keys.end(), [&part](const ExprPtr& key) {
      return key->kind == Kind::Column && sameExpr(*key, part);
    });
  };
  std::erase_if(query.groupBy, [&](const ExprPtr& key) {
    if (key->kind == Kind::Column) return false;
    bool some = false;
    const bool free = anyPart(*key, [&](const Expr& part) {
      some = some || part.kind == Kind::Column;
      return part.kind == Kind::Column && !isKeyColumn(part);
    });
    return some && !free;
  });
}

// The order of the one query that is read stays, where its columns show it.
void keepOrder(Query& query) {
  const Source& source = query.from->source;
  for (const Order& order : source.query->orderBy) {
    const std::vector<Output>& outputs = source.query->outputs;
    const auto shown = std::find_if(outputs.begin(), outputs.end(), [&order](const Output& output) {
      return sameExpr(*output.expr, *order.expr);
    });
    if (shown == outputs.end()) return;
    query.orderBy.push_back(
        {columnOf(source, static_cast<int>(shown - outputs.begin())), order.descending});
  }
}

}  // namespace

void flatten(Query& query) {
  std::vector<Place> places = placesOf(query);
  const bool only = places.size() == 1;
  for (const Place& place : places) {
    if (!place.from->source.query) continue;
    Query& inner = *place.from->source.query;
    flatten(inner);
    if (!inner.grouped && !inner.distinct && !place.nullable) {
      mergePlain(query, *place.from, only);
    }
  }
  if (query.from->kind == From::Kind::Source && query.from->source.query && !query.grouped) {
    if (!query.from->source.query->distinct) {
      mergeGrouped(query);
    } else if (query.orderBy.empty() && !query.distinct) {
      keepOrder(query);
    }
  }
  havingToWhere(query);
  dropDependentKeys(query);
  for (const Place& place : placesOf(query)) {
    Source& source = place.from->source;
    if (!source.query || place.nullable || !source.query->grouped) continue;
    pushDown(query, source);
    havingToWhere(*source.query);
  }
}

}  // namespace lang
