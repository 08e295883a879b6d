#include "engine/lang/query.h"

#include <algorithm>

#include "common/errorejecucion.h"

namespace lang {
namespace {

// The file's engine refuses deeper trees; an alias used many times makes heavy ones.
constexpr int kMaxHeight = 300;
constexpr int kMaxWeight = 20000;

Type typeOf(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
      return Type::Boolean;
    case FieldType::Long:
      return Type::Long;
    case FieldType::Double:
      return Type::Double;
    case FieldType::Date:
      return Type::Date;
    case FieldType::Text:
      break;
  }
  return Type::Text;
}

void eachFromExpr(From& from, const std::function<void(ExprPtr&)>& visit) {
  if (from.kind == From::Kind::Source) return;
  eachFromExpr(*from.left, visit);
  eachFromExpr(*from.right, visit);
  if (from.on) visit(from.on);
}

void collectConjuncts(const ExprPtr& condition, std::vector<ExprPtr>& all) {
  if (!condition) return;
  if (condition->kind == Expr::Kind::Binary && condition->op == Op::And) {
    for (const ExprPtr& arg : condition->args) collectConjuncts(arg, all);
  } else {
    all.push_back(condition);
  }
}

void collectSources(From& from, std::vector<Source*>& all) {
  if (from.kind == From::Kind::Source) {
    all.push_back(&from.source);
  } else {
    collectSources(*from.left, all);
    collectSources(*from.right, all);
  }
}

}  // namespace

ExprPtr made(Expr expr) {
  for (const ExprPtr& arg : expr.args) {
    expr.height = std::max(expr.height, arg->height + 1);
    expr.weight += arg->weight;
  }
  if (expr.height > kMaxHeight || expr.weight > kMaxWeight) {
    throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("expresión demasiado larga"));
  }
  return std::make_shared<const Expr>(std::move(expr));
}

ExprPtr binary(Op op, ExprPtr left, ExprPtr right, Type type) {
  Expr expr;
  expr.kind = Expr::Kind::Binary;
  expr.op = op;
  expr.type = type;
  expr.args = {std::move(left), std::move(right)};
  return made(std::move(expr));
}

ExprPtr both(ExprPtr left, ExprPtr right) {
  if (!left) return right;
  if (!right) return left;
  return binary(Op::And, std::move(left), std::move(right), Type::Boolean);
}

std::vector<ExprPtr> conjuncts(const ExprPtr& condition) {
  std::vector<ExprPtr> all;
  collectConjuncts(condition, all);
  return all;
}

bool sameExpr(const Expr& left, const Expr& right) {
  if (&left == &right) return true;
  if (left.kind != right.kind || left.op != right.op || left.source != right.source ||
      left.column != right.column || left.parameter != right.parameter ||
      left.function != right.function || left.aggregate != right.aggregate ||
      left.type != right.type || !(left.value == right.value) ||
      left.args.size() != right.args.size()) {
    return false;
  }
  return std::equal(left.args.begin(), left.args.end(), right.args.begin(),
                    [](const ExprPtr& a, const ExprPtr& b) { return sameExpr(*a, *b); });
}

bool anyPart(const Expr& expr, const std::function<bool(const Expr&)>& test) {
  if (test(expr)) return true;
  return std::any_of(expr.args.begin(), expr.args.end(),
                     [&test](const ExprPtr& arg) { return anyPart(*arg, test); });
}

bool hasAggregate(const Expr& expr) {
  return anyPart(expr, [](const Expr& part) { return part.kind == Expr::Kind::Aggregate; });
}

ExprPtr replaced(const ExprPtr& expr, const std::function<ExprPtr(const Expr&)>& replace) {
  if (ExprPtr other = replace(*expr)) return other;
  Expr copy = *expr;
  bool changed = false;
  copy.height = 1;
  copy.weight = 1;
  for (ExprPtr& arg : copy.args) {
    ExprPtr other = replaced(arg, replace);
    changed = changed || other != arg;
    arg = std::move(other);
  }
  return changed ? made(std::move(copy)) : expr;
}

std::vector<Source*> sourcesOf(From& from) {
  std::vector<Source*> all;
  collectSources(from, all);
  return all;
}

std::vector<const Source*> sourcesOf(const From& from) {
  const std::vector<Source*> all = sourcesOf(const_cast<From&>(from));
  return {all.begin(), all.end()};
}

void eachExpr(Query& query, const std::function<void(ExprPtr&)>& visit) {
  eachFromExpr(*query.from, visit);
  if (query.where) visit(query.where);
  for (ExprPtr& key : query.groupBy) visit(key);
  if (query.having) visit(query.having);
  for (Output& output : query.outputs) visit(output.expr);
  for (Order& order : query.orderBy) visit(order.expr);
}

void eachExpr(const Query& query, const std::function<void(const Expr&)>& visit) {
  eachExpr(const_cast<Query&>(query), [&visit](ExprPtr& expr) { visit(*expr); });
}

ExprPtr columnOf(const Source& source, int column) {
  Expr expr;
  expr.kind = Expr::Kind::Column;
  expr.source = source.id;
  expr.column = column;
  if (source.table) {
    const Catalog::Column& definition = source.table->columns[static_cast<size_t>(column)];
    expr.type = typeOf(definition.type);
    expr.size = definition.size;
  } else {
    const Expr& inner = *source.query->outputs[static_cast<size_t>(column)].expr;
    expr.type = inner.type;
    expr.size = inner.size;
    expr.mixed = inner.mixed;
  }
  return made(std::move(expr));
}

FieldType fieldType(Type type) {
  switch (type) {
    case Type::Boolean:
      return FieldType::Boolean;
    case Type::Long:
      return FieldType::Long;
    case Type::Double:
      return FieldType::Double;
    case Type::Date:
      return FieldType::Date;
    case Type::Null:
    case Type::Text:
      break;
  }
  return FieldType::Text;
}

}  // namespace lang
