#include "engine/lang/lookups.h"

#include <algorithm>
#include <set>
#include <utility>

namespace lang {
namespace {

using Kind = Expr::Kind;

const Catalog::Column* columnAmong(const std::vector<const Source*>& sources, const Expr& expr) {
  if (expr.kind != Kind::Column) return nullptr;
  for (const Source* source : sources)
    if (source->table && source->id == expr.source)
      return &source->table->columns[static_cast<size_t>(expr.column)];
  return nullptr;
}

// What a condition asks a column of `looked` to be equal to, if it is a column of the others.
ExprPtr equated(const Expr& condition, const Source& looked, int column,
                const std::vector<const Source*>& others) {
  if (condition.kind != Kind::Binary || condition.op != Op::Equal) return nullptr;
  if (looked.table->columns[static_cast<size_t>(column)].foreign) return nullptr;
  const auto isKey = [&](const Expr& expr) {
    return expr.kind == Kind::Column && expr.source == looked.id && expr.column == column;
  };
  for (const size_t key : {0, 1}) {
    const ExprPtr& other = condition.args[1 - key];
    const Catalog::Column* found = columnAmong(others, *other);
    if (isKey(*condition.args[key]) && found && !found->foreign) return other;
  }
  return nullptr;
}

// The same of a join's whole condition.
ExprPtr equated(const From& join, int column) {
  const auto others = sourcesOf(std::as_const(*join.left));
  for (const ExprPtr& condition : conjuncts(join.on))
    if (ExprPtr other = equated(*condition, join.right->source, column, others)) return other;
  return nullptr;
}

bool looksUp(const From& join) {
  if (join.right->kind != From::Kind::Source || !join.right->source.table || !join.on) return false;
  const auto& keys = join.right->source.table->uniqueKeys;
  return std::any_of(keys.begin(), keys.end(), [&](const std::vector<int>& key) {
    return std::all_of(key.begin(), key.end(),
                       [&](int column) { return equated(join, column) != nullptr; });
  });
}

}  // namespace

const Source* rowSource(const From& from) {
  if (from.kind == From::Kind::Source) return from.source.table ? &from.source : nullptr;
  return from.kind != From::Kind::Cross && looksUp(from) ? rowSource(*from.left) : nullptr;
}

std::vector<Lookup> innerLookups(const From& from) {
  std::vector<Lookup> all;
  for (const From* join = &from; join->kind != From::Kind::Source; join = join->left.get()) {
    const Source& looked = join->right->source;
    if (join->kind != From::Kind::Inner || !looked.table) continue;
    for (const std::vector<int>& key : looked.table->uniqueKeys) {
      if (key.size() != 1) continue;
      if (ExprPtr by = equated(*join, key[0])) {
        all.push_back({&looked, columnOf(looked, key[0]), std::move(by)});
        break;
      }
    }
  }
  return all;
}

std::vector<int> needless(const Query& query) {
  std::set<int> read;
  const auto note = [&read](const ExprPtr& expr) {
    if (!expr) return;
    anyPart(*expr, [&read](const Expr& part) {
      if (part.kind == Kind::Column) read.insert(part.source);
      return false;
    });
  };
  note(query.where);
  for (const Order& order : query.orderBy) note(order.expr);
  std::vector<int> ids;
  // The outermost join first: none reads what stands outside of it.
  for (const From* join = query.from.get(); join->kind != From::Kind::Source;
       join = join->left.get()) {
    const int id = join->right->source.id;
    if (read.contains(id)) {
      note(join->on);
    } else {
      ids.push_back(id);
    }
  }
  return ids;
}

}  // namespace lang
