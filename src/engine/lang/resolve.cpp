#include "engine/lang/resolve.h"

#include <algorithm>
#include <utility>

#include "engine/lang/rewrite.h"

namespace lang {

bool hasKeys(const Query& query) {
  if (query.from->kind != From::Kind::Source || !query.from->source.table || query.grouped ||
      query.distinct) {
    return false;
  }
  // A value that changes from run to run would need more than the key to show a row.
  return std::none_of(query.outputs.begin(), query.outputs.end(), [](const Output& output) {
    return anyPart(*output.expr,
                   [](const Expr& part) { return part.place == Expr::Place::Statement; });
  });
}

std::unique_ptr<Query> resolved(const Parsed& source, const Catalog& catalog, int ano) {
  Binder binder(catalog, ano);
  std::unique_ptr<Query> query = binder.source(source);
  query->literals = static_cast<int>(source.literals().size());
  flatten(*query);
  readRunningSums(*query, catalog, binder);
  return query;
}

std::unique_ptr<Query> matching(const Parsed& source, const QString& criterion,
                                const Catalog& catalog, int ano) {
  Binder binder(catalog, ano);
  std::unique_ptr<Query> query = binder.filtered(source, criterion);
  query->literals = static_cast<int>(source.literals().size());
  // As a column too, so that it is read through to the same tables as the rest.
  query->outputs.push_back({{}, std::exchange(query->where, nullptr)});
  flatten(*query);
  Output found = std::move(query->outputs.back());
  query->outputs.pop_back();
  if (hasKeys(*query)) {
    query->outputs.clear();
    query->where = both(query->where, found.expr);
    return query;
  }
  query->outputs.push_back(std::move(found));
  readRunningSums(*query, catalog, binder);
  query->outputs.erase(query->outputs.begin(), query->outputs.end() - 1);
  return query;
}

}  // namespace lang
