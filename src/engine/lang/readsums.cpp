#include <algorithm>
#include <set>

#include "engine/lang/lookups.h"
#include "engine/lang/rewrite.h"

namespace lang {
namespace {

using Kind = Expr::Kind;
using RunningSums = Catalog::RunningSums;

// One table among the sources of a query, seen as the lines behind running sums.
class Lines {
 public:
  Lines(const Source& source, const RunningSums& sums)
      : id_(source.id),
        table_(*source.table),
        sums_(sums),
        side_(find(sums.sideColumn)),
        amount_(find(sums.amountColumn)) {}

  // The place of a key that the sums have, -1 for anything else.
  int key(const Expr& expr) const {
    for (int i = 0; i < sums_.keys.size(); ++i) {
      const SumKey& key = sums_.keys[i];
      const bool month = expr.kind == Kind::Call && expr.function == Fn::Month;
      if (key.isMonth() && !month) continue;
      if (is(key.isMonth() ? *expr.args[0] : expr, key.column)) return i;
    }
    return -1;
  }

  enum class Side { None, Debit, Credit, Both };
  // Which total a Sum is.
  Side side(const Expr& expr) const {
    if (expr.kind != Kind::Aggregate || expr.aggregate != Agg::Sum) return Side::None;
    const Expr& arg = *expr.args[0];
    if (arg.kind == Kind::Binary && arg.op == Op::Add) {
      const Side left = part(*arg.args[0]);
      const Side right = part(*arg.args[1]);
      const bool two = left != Side::None && right != Side::None && left != right;
      return two ? Side::Both : Side::None;
    }
    return part(arg);
  }

  bool owns(const Expr& expr) const { return expr.kind == Kind::Column && expr.source == id_; }

  // True when the query asks these lines for nothing that the sums don't tell.
  bool served(const Expr& expr) const {
    if (expr.kind == Kind::Aggregate)
      return expr.aggregate == Agg::CountRows || side(expr) != Side::None;
    if (key(expr) >= 0) return true;
    if (owns(expr)) return false;
    return std::all_of(expr.args.begin(), expr.args.end(),
                       [this](const ExprPtr& arg) { return served(*arg); });
  }

 private:
  int find(QStringView name) const {
    for (size_t i = 0; i < table_.columns.size(); ++i) {
      if (sameName(table_.columns[i].name, name)) return static_cast<int>(i);
    }
    return -1;
  }
  bool is(const Expr& expr, QStringView column) const {
    return owns(expr) && expr.column == find(column);
  }
  bool isAmount(const Expr& expr) const { return owns(expr) && expr.column == amount_; }
  static bool isZero(const Expr& expr) {
    return expr.kind == Kind::Literal && expr.place != Expr::Place::Statement &&
           expr.value == Variant(0);
  }
  // IIf([side]='D', amount, 0) and IIf([side]='D', 0, amount).
  Side part(const Expr& expr) const {
    if (expr.kind != Kind::If) return Side::None;
    const Expr& condition = *expr.args[0];
    if (condition.kind != Kind::Binary || condition.op != Op::Equal) return Side::None;
    const Expr& mark = *condition.args[1];
    if (!owns(*condition.args[0]) || condition.args[0]->column != side_ ||
        mark.kind != Kind::Literal || mark.place == Expr::Place::Statement ||
        !(mark.value == Variant(QStringLiteral("D")))) {
      return Side::None;
    }
    if (isAmount(*expr.args[1]) && isZero(*expr.args[2])) return Side::Debit;
    if (isZero(*expr.args[1]) && isAmount(*expr.args[2])) return Side::Credit;
    return Side::None;
  }

  int id_;
  const Catalog::Table& table_;
  const RunningSums& sums_;
  int side_;
  int amount_;
};

// The table of the sums, with the keys first and then the count, the debit, the credit and how many
// lines have each of them.
std::shared_ptr<const Catalog::Table> sumsTable(const RunningSums& sums, const Source& lines) {
  auto table = std::make_shared<Catalog::Table>();
  table->name = sums.sumsTable;
  for (int i = 0; i < sums.keys.size(); ++i) {
    Catalog::Column column{sums.keyColumns[i], FieldType::Long, 0};
    for (const Catalog::Column& base : lines.table->columns) {
      if (!sums.keys[i].isMonth() && sameName(base.name, sums.keys[i].column))
        column = {sums.keyColumns[i], base.type, base.size};
    }
    table->columns.push_back(column);
  }
  for (const QString& name : {sums.countColumn, sums.debitColumn, sums.creditColumn,
                              sums.debitLinesColumn, sums.creditLinesColumn}) {
    table->columns.push_back({name, FieldType::Long, 0});
  }
  return table;
}

// The total of what some rows have in millionths: of those only where `lines` is more than `than`,
// since a row whose lines have nothing but Nulls adds nothing, not even a zero.
ExprPtr total(Agg adding, ExprPtr millionths, ExprPtr lines, ExprPtr than) {
  Expr some;
  some.kind = Kind::If;
  some.type = Type::Long;
  some.args = {binary(Op::Greater, std::move(lines), std::move(than), Type::Boolean),
               std::move(millionths), made({})};
  Expr expr;
  expr.kind = Kind::Aggregate;
  expr.aggregate = adding;
  expr.type = Type::Double;
  expr.args = {made(std::move(some))};
  return made(std::move(expr));
}

ExprPtr zero() {
  Expr expr;
  expr.type = Type::Long;
  expr.value = Variant(0);
  return made(std::move(expr));
}

// How many lines some rows stand for: none, where there are no rows.
ExprPtr countOf(const Query& query, const ExprPtr& lines) {
  if (query.singles) return lines;
  Expr sum;
  sum.kind = Kind::Aggregate;
  sum.type = Type::Long;
  sum.args = {lines};
  Expr expr;
  expr.kind = Kind::Call;
  expr.function = Fn::Nz;
  expr.type = Type::Long;
  expr.args = {made(std::move(sum)), zero()};
  return made(std::move(expr));
}

// Whether each row of the sums, with what it looks up, makes a group of its own: there is one for
// each combination of keys, and the query groups by all of them.
bool groupsAreRows(const Query& query, const Source& source, const Lines& lines, int keys) {
  if (rowSource(*query.from) != &source) return false;
  std::set<int> grouped;
  for (const ExprPtr& by : query.groupBy) grouped.insert(lines.key(*by));
  grouped.erase(-1);
  return keys > 0 && static_cast<int>(grouped.size()) == keys;
}

void readSums(Query& query, Source& source, const RunningSums& sums, int newId) {
  const Lines lines(source, sums);
  Source replacement;
  replacement.id = newId;
  replacement.alias = source.alias;
  replacement.table = sumsTable(sums, source);
  const int keys = static_cast<int>(sums.keys.size());
  query.keptSums = true;
  query.singles = groupsAreRows(query, source, lines, keys);
  const Agg adding = query.singles ? Agg::OneMillionths : Agg::SumMillionths;
  const ExprPtr count = columnOf(replacement, keys);
  const ExprPtr debit = columnOf(replacement, keys + 1);
  const ExprPtr credit = columnOf(replacement, keys + 2);
  const ExprPtr debitLines = columnOf(replacement, keys + 3);
  const ExprPtr creditLines = columnOf(replacement, keys + 4);

  const auto read = [&](const Expr& expr) -> ExprPtr {
    if (const int key = lines.key(expr); key >= 0) return columnOf(replacement, key);
    if (expr.kind == Kind::Aggregate && expr.aggregate == Agg::CountRows)
      return countOf(query, count);
    switch (lines.side(expr)) {
      case Lines::Side::Debit:
        return total(adding, debit, debitLines, zero());
      case Lines::Side::Credit:
        return total(adding, credit, creditLines, zero());
      case Lines::Side::Both:
        // A line with an amount has something on both sides, one without it on one of them.
        return total(adding, binary(Op::Add, debit, credit, Type::Long),
                     binary(Op::Add, debitLines, creditLines, Type::Long), count);
      case Lines::Side::None:
        break;
    }
    return nullptr;
  };
  eachExpr(query, [&read](ExprPtr& expr) { expr = replaced(expr, read); });

  // A combination whose last line was deleted may still stand in the file.
  query.where = both(query.where, binary(Op::Greater, count, zero(), Type::Boolean));
  source = std::move(replacement);
}

// The sums with the fewest keys among those that tell all that is asked.
const RunningSums* narrowest(const Query& query, const Source& source, const Catalog& catalog) {
  const RunningSums* best = nullptr;
  for (const RunningSums& sums : catalog.runningSums()) {
    if (!sameName(sums.baseTable, source.table->name)) continue;
    if (best && best->keys.size() <= sums.keys.size()) continue;
    const Lines lines(source, sums);
    bool served = true;
    bool sumsSomething = false;
    eachExpr(query, [&](const Expr& expr) {
      served = served && lines.served(expr);
      sumsSomething = sumsSomething || hasAggregate(expr);
    });
    if (served && sumsSomething) best = &sums;
  }
  return best;
}

void collectSteady(From& from, std::vector<Source*>& all) {
  if (from.kind == From::Kind::Source) {
    all.push_back(&from.source);
    return;
  }
  collectSteady(*from.left, all);
  if (from.kind != From::Kind::Left) collectSteady(*from.right, all);
}

}  // namespace

void readRunningSums(Query& query, const Catalog& catalog, Binder& binder) {
  for (Source* source : sourcesOf(*query.from)) {
    if (source->query) readRunningSums(*source->query, catalog, binder);
  }
  if (!query.grouped) return;
  // A line missing from an outer join counts as nothing in one way and as a zero in the other.
  std::vector<Source*> steady;
  collectSteady(*query.from, steady);
  for (Source* source : steady) {
    if (!source->table) continue;
    if (const RunningSums* sums = narrowest(query, *source, catalog)) {
      readSums(query, *source, *sums, binder.newSourceId());
      return;
    }
  }
}

}  // namespace lang
