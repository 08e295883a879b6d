#include "engine/lang/resolve.h"

#include <algorithm>
#include <utility>

#include "engine/lang/lookups.h"
#include "engine/lang/rewrite.h"

namespace lang {

namespace {

// A value that changes from run to run would need more than the key to show a row.
bool varies(const Expr& expr) {
  return anyPart(expr, [](const Expr& part) { return part.place == Expr::Place::Statement; });
}

bool joinVaries(const From& from) {
  if (from.kind == From::Kind::Source) return false;
  return (from.on && varies(*from.on)) || joinVaries(*from.left) || joinVaries(*from.right);
}

}  // namespace

bool hasKeys(const Query& query) {
  if (query.grouped || query.distinct || !rowSource(*query.from) || joinVaries(*query.from))
    return false;
  return std::none_of(query.outputs.begin(), query.outputs.end(),
                      [](const Output& output) { return varies(*output.expr); });
}

std::unique_ptr<Query> resolved(const Parsed& source, const Catalog& catalog, int ano) {
  Binder binder(catalog, ano);
  std::unique_ptr<Query> query = binder.source(source);
  query->literals = static_cast<int>(source.literals().size());
  flatten(*query);
  readRunningSums(*query, catalog, binder);
  return query;
}

std::unique_ptr<Query> matching(const Parsed& source, const QString& criterion, bool byKeys,
                                const Catalog& catalog, int ano) {
  Binder binder(catalog, ano);
  std::unique_ptr<Query> query = binder.filtered(source, criterion);
  query->literals = static_cast<int>(source.literals().size());
  // As a column too, so that it is read through to the same tables as the rest.
  query->outputs.push_back({{}, std::exchange(query->where, nullptr)});
  flatten(*query);
  Output found = std::move(query->outputs.back());
  query->outputs.pop_back();
  if (byKeys && hasKeys(*query)) {
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
