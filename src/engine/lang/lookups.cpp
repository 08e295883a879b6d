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

// Whether a condition asks that a column of `looked` is the same as one of the others.
bool equates(const Expr& condition, const Source& looked, int column,
             const std::vector<const Source*>& others) {
  if (condition.kind != Kind::Binary || condition.op != Op::Equal) return false;
  if (looked.table->columns[static_cast<size_t>(column)].foreign) return false;
  const auto isKey = [&](const Expr& expr) {
    return expr.kind == Kind::Column && expr.source == looked.id && expr.column == column;
  };
  for (const size_t key : {0, 1}) {
    const Catalog::Column* other = columnAmong(others, *condition.args[1 - key]);
    if (isKey(*condition.args[key]) && other && !other->foreign) return true;
  }
  return false;
}

bool looksUp(const From& join) {
  if (join.right->kind != From::Kind::Source || !join.right->source.table || !join.on) return false;
  const Source& looked = join.right->source;
  const auto others = sourcesOf(std::as_const(*join.left));
  const auto conditions = conjuncts(join.on);
  const auto& keys = looked.table->uniqueKeys;
  return std::any_of(keys.begin(), keys.end(), [&](const std::vector<int>& key) {
    return std::all_of(key.begin(), key.end(), [&](int column) {
      return std::any_of(conditions.begin(), conditions.end(), [&](const ExprPtr& condition) {
        return equates(*condition, looked, column, others);
      });
    });
  });
}

}  // namespace

const Source* rowSource(const From& from) {
  if (from.kind == From::Kind::Source) return from.source.table ? &from.source : nullptr;
  return from.kind != From::Kind::Cross && looksUp(from) ? rowSource(*from.left) : nullptr;
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
