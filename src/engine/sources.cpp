#include "engine/sources.h"

#include <algorithm>

#include "engine/lang/resolve.h"

namespace {

constexpr int kPlansKept = 512;
constexpr std::size_t kKeySetsKept = 4;

std::shared_ptr<const Plan> planOf(const lang::Query& query, Store& store) {
  auto plan = std::make_shared<Plan>();
  plan->keyed = lang::hasKeys(query);
  plan->keptSums = query.keptSums;
  plan->updatable = plan->keyed && query.from->kind == lang::From::Kind::Source;
  const Catalog::Table* base = query.from->source.table.get();
  if (plan->updatable) plan->baseTable = base->name;
  if (plan->keyed)
    for (const lang::Source* source : lang::sourcesOf(std::as_const(*query.from)))
      plan->tables += source->table->name;
  for (const lang::Output& output : query.outputs) {
    const lang::Expr& expr = *output.expr;
    OutputColumn column{{output.name, lang::fieldType(expr.type), expr.size}, {}};
    if (plan->updatable && expr.kind == lang::Expr::Kind::Column)
      column.baseColumn = base->columns[static_cast<std::size_t>(expr.column)].name;
    plan->columns.push_back(column);
  }
  plan->reader = store.compile(query);
  return plan;
}

}  // namespace

// Definitions that changed may change what every source means, and so may the year: stored queries
// hold short dates.
void Sources::follow() {
  auto now = store_.definitions();
  if (now == definitions_ && year_ == plansYear_) return;
  definitions_ = std::move(now);
  plansYear_ = year_;
  plans_.clear();
  keySets_.clear();
}

Compiled Sources::compiled(const QString& source) {
  follow();
  const lang::Parsed parsed(source, year_);
  std::shared_ptr<const Plan> plan = plans_.value(parsed.key());
  if (!plan) {
    plan = planOf(*lang::resolved(parsed, *definitions_, year_), store_);
    if (plans_.size() >= kPlansKept) plans_.clear();
    plans_.insert(parsed.key(), plan);
  }
  return {plan, parsed.literals()};
}

Compiled Sources::matching(const QString& source, const QString& criterion, bool byKeys) {
  follow();
  const lang::Parsed parsed(source, year_);
  return {planOf(*lang::matching(parsed, criterion, byKeys, *definitions_, year_), store_),
          parsed.literals()};
}

KeySet Sources::keys(const Compiled& compiled, int limit) {
  const Plan& plan = *compiled.plan;
  const Stamp now = store_.stamp(plan.tables);
  const auto isOf = [&](const Keys& k) {
    return k.reader == plan.reader && k.literals == compiled.literals;
  };
  std::erase_if(keySets_, [&](const Keys& k) { return isOf(k) && k.stamp != now; });
  const auto known = std::find_if(keySets_.begin(), keySets_.end(), isOf);
  if (known != keySets_.end()) {
    std::rotate(keySets_.begin(), known, known + 1);
    return keySets_.front().keys;
  }
  auto keys = std::make_shared<const std::vector<Key>>(plan.reader->keys(compiled.literals, limit));
  if (static_cast<int>(keys->size()) == limit) return keys;
  if (keySets_.size() >= kKeySetsKept) keySets_.pop_back();
  keySets_.insert(keySets_.begin(), {plan.reader, compiled.literals, now, keys});
  return keys;
}
