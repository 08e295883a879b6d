// What may stand beside what, by examples. The columns are Importe (double), NAsiento (long), Fecha
// (date), Subcuenta (text) and Haber, IIf([DH]='D','',[Importe]), mixed: a number in some rows and
// a text in others.
//     NAsiento = '12'       the text literal is read as the number 12
//     NAsiento = 'doce'     3464
//     Fecha > 3             3464
//     Subcuenta = 430       3464: a code is a text, and '430' must be written
//     Haber > 0             only the rows in which it is a number are asked: NumberPart(Haber) > 0
//     Haber = ''            only those in which it is a text: TextPart(Haber) = ''
//     Importe & '€'         & joins any values as texts; + adds numbers, or joins two texts
//     Subcuenta + NAsiento  3464
#include "engine/lang/typing.h"

#include <algorithm>
#include <cmath>

#include "common/errorejecucion.h"

namespace lang {
namespace {

using Kind = Expr::Kind;

bool isNumber(const Expr& expr) {
  return expr.type == Type::Long || expr.type == Type::Double || expr.type == Type::Boolean;
}

[[noreturn]] void failTypes(const Expr& expr) {
  throw ErrorEjecucion(err::kTiposEnCriterio, expr.value.isText() || expr.value.isDate()
                                                  ? expr.value.display()
                                                  : QString());
}

ExprPtr function(Fn fn, std::vector<ExprPtr> args, Type type, int size = 0) {
  Expr expr;
  expr.kind = Kind::Call;
  expr.function = fn;
  expr.args = std::move(args);
  expr.type = type;
  expr.size = size;
  return made(std::move(expr));
}

ExprPtr condition(Kind kind, std::vector<ExprPtr> args) {
  Expr expr;
  expr.kind = kind;
  expr.type = Type::Boolean;
  expr.args = std::move(args);
  return made(std::move(expr));
}

// A literal text as the number that it says.
ExprPtr asNumber(const ExprPtr& literal) {
  if (literal->place == Expr::Place::Statement) {
    return function(Fn::ToNumber, {literal}, Type::Double);
  }
  double number = 0;
  readNumber(literal->value.display(), number);
  Expr expr = *literal;
  expr.value = Variant(number);
  expr.type = Type::Double;
  expr.numericText = false;
  return made(std::move(expr));
}

// Brings two values that are to be compared to one kind.
void agree(ExprPtr& left, ExprPtr& right) {
  if (left->type == Type::Null || right->type == Type::Null) return;
  if (right->mixed && !left->mixed) return agree(right, left);
  if (left->mixed) {
    if (right->mixed) return;
    if (right->numericText) right = asNumber(right);
    if (isNumber(*right)) {
      left = function(Fn::NumberPart, {left}, Type::Double);
    } else if (right->type == Type::Text) {
      left = function(Fn::TextPart, {left}, Type::Text);
    } else {
      failTypes(*right);
    }
    return;
  }
  if (isNumber(*left) && right->numericText) right = asNumber(right);
  if (isNumber(*right) && left->numericText) left = asNumber(left);
  const bool alike = left->type == right->type || (isNumber(*left) && isNumber(*right));
  if (!alike) failTypes(left->type == Type::Text ? *left : *right);
}

void needCondition(const Expr& expr) {
  if (expr.type == Type::Text || expr.type == Type::Date) failTypes(expr);
}

void needNumber(ExprPtr& expr) {
  if (expr->numericText) expr = asNumber(expr);
  if (!isNumber(*expr) && expr->type != Type::Null) failTypes(*expr);
}

// The type of a value that is one of two.
void unite(Expr& expr, const Expr& first, const Expr& second) {
  expr.size = std::max(first.size, second.size);
  expr.mixed = first.mixed || second.mixed;
  if (first.type == Type::Null || first.type == second.type) {
    expr.type = second.type;
  } else if (second.type == Type::Null) {
    expr.type = first.type;
  } else if (isNumber(first) && isNumber(second)) {
    const bool isDouble = first.type == Type::Double || second.type == Type::Double;
    expr.type = isDouble ? Type::Double : Type::Long;
  } else {
    expr.type = first.type == Type::Text ? second.type : first.type;
    expr.mixed = true;
  }
}

ExprPtr choice(std::vector<ExprPtr> args) {
  needCondition(*args[0]);
  Expr expr;
  expr.kind = Kind::If;
  unite(expr, *args[1], *args[2]);
  expr.args = std::move(args);
  return made(std::move(expr));
}

ExprPtr valueOr(std::vector<ExprPtr> args) {
  if (args.size() == 1) {
    Expr empty;
    empty.type = args[0]->type == Type::Text ? Type::Text : Type::Long;
    empty.value = args[0]->type == Type::Text ? Variant(QString()) : Variant(0);
    args.push_back(made(std::move(empty)));
  }
  Expr expr;
  expr.kind = Kind::Call;
  expr.function = Fn::Nz;
  unite(expr, *args[0], *args[1]);
  expr.args = std::move(args);
  return made(std::move(expr));
}

ExprPtr aggregate(Agg agg, std::vector<ExprPtr> args, bool countRows) {
  Expr expr;
  expr.kind = Kind::Aggregate;
  expr.aggregate = countRows ? Agg::CountRows : agg;
  if (!args.empty() && hasAggregate(*args[0])) {
    throw ErrorEjecucion(err::kErrorDeSintaxis,
                         QStringLiteral("una función de totales dentro de otra"));
  }
  if (agg == Agg::Count) {
    expr.type = Type::Long;
  } else if (agg == Agg::Min || agg == Agg::Max) {
    expr.type = args[0]->type;
    expr.size = args[0]->size;
    expr.mixed = args[0]->mixed;
  } else {
    needNumber(args[0]);
    expr.type = Type::Double;
  }
  expr.args = std::move(args);
  return made(std::move(expr));
}

struct Function {
  QStringView name;
  size_t least;
  size_t most;
  ExprPtr (*make)(std::vector<ExprPtr> args);
};

template <Fn fn>
ExprPtr textFunction(std::vector<ExprPtr> args) {
  for (size_t i = 1; i < args.size(); ++i) needNumber(args[i]);
  const int size = args[0]->size;
  return function(fn, std::move(args), Type::Text, size);
}

template <Fn fn>
ExprPtr dateFunction(std::vector<ExprPtr> args) {
  if (args[0]->type != Type::Date && args[0]->type != Type::Null) failTypes(*args[0]);
  return function(fn, std::move(args), Type::Long);
}

ExprPtr absolute(std::vector<ExprPtr> args) {
  needNumber(args[0]);
  const Type type = args[0]->type;
  return function(Fn::Abs, std::move(args), type);
}

template <Agg agg>
ExprPtr aggregateFunction(std::vector<ExprPtr> args) {
  return aggregate(agg, std::move(args), false);
}

constexpr Function kFunctions[] = {
    {u"Abs", 1, 1, absolute},
    {u"Avg", 1, 1, aggregateFunction<Agg::Avg>},
    {u"Count", 1, 1, aggregateFunction<Agg::Count>},
    {u"Day", 1, 1, dateFunction<Fn::Day>},
    {u"IIf", 3, 3, choice},
    {u"IsNull", 1, 1, [](std::vector<ExprPtr> args) { return isNull(args[0]); }},
    {u"Lcase", 1, 1, textFunction<Fn::Lcase>},
    {u"Left", 2, 2, textFunction<Fn::Left>},
    {u"Len", 1, 1,
     [](std::vector<ExprPtr> args) { return function(Fn::Len, std::move(args), Type::Long); }},
    {u"Max", 1, 1, aggregateFunction<Agg::Max>},
    {u"Mid", 2, 3, textFunction<Fn::Mid>},
    {u"Min", 1, 1, aggregateFunction<Agg::Min>},
    {u"Month", 1, 1, dateFunction<Fn::Month>},
    {u"Nz", 1, 2, valueOr},
    {u"Right", 2, 2, textFunction<Fn::Right>},
    {u"Sum", 1, 1, aggregateFunction<Agg::Sum>},
    {u"Trim", 1, 1, textFunction<Fn::Trim>},
    {u"Ucase", 1, 1, textFunction<Fn::Ucase>},
    {u"Val", 1, 1,
     [](std::vector<ExprPtr> args) { return function(Fn::Val, std::move(args), Type::Double); }},
    {u"Year", 1, 1, dateFunction<Fn::Year>},
};

}  // namespace

ExprPtr comparison(Op op, ExprPtr left, ExprPtr right) {
  agree(left, right);
  return binary(op, std::move(left), std::move(right), Type::Boolean);
}

ExprPtr between(const ExprPtr& value, const ExprPtr& low, const ExprPtr& high) {
  return both(comparison(Op::GreaterEqual, value, low), comparison(Op::LessEqual, value, high));
}

ExprPtr inList(std::vector<ExprPtr> valueAndList) {
  for (size_t i = 1; i < valueAndList.size(); ++i) agree(valueAndList[0], valueAndList[i]);
  return condition(Kind::In, std::move(valueAndList));
}

ExprPtr like(ExprPtr value, ExprPtr pattern) {
  if (pattern->type != Type::Text && pattern->type != Type::Null) failTypes(*pattern);
  return condition(Kind::Like, {std::move(value), std::move(pattern)});
}

ExprPtr isNull(ExprPtr value) {
  return condition(Kind::IsNull, {std::move(value)});
}

ExprPtr negation(ExprPtr value) {
  needCondition(*value);
  return condition(Kind::Not, {std::move(value)});
}

ExprPtr conjunction(Op op, ExprPtr left, ExprPtr right) {
  needCondition(*left);
  needCondition(*right);
  return binary(op, std::move(left), std::move(right), Type::Boolean);
}

ExprPtr arithmetic(Op op, ExprPtr left, ExprPtr right) {
  if (op == Op::Join) return binary(op, std::move(left), std::move(right), Type::Text);
  const auto textOrNull = [](const Expr& expr) {
    return expr.type == Type::Text || expr.type == Type::Null;
  };
  if (op == Op::Add && textOrNull(*left) && textOrNull(*right)) {
    return binary(op, std::move(left), std::move(right), Type::Text);
  }
  needNumber(left);
  needNumber(right);
  const bool isDouble =
      op == Op::Divide || left->type == Type::Double || right->type == Type::Double;
  return binary(op, std::move(left), std::move(right), isDouble ? Type::Double : Type::Long);
}

ExprPtr minus(ExprPtr value) {
  needNumber(value);
  Expr expr;
  expr.kind = Kind::Negate;
  expr.type = value->type == Type::Boolean ? Type::Long : value->type;
  expr.args = {std::move(value)};
  return made(std::move(expr));
}

ExprPtr call(const QString& name, std::vector<ExprPtr> args, bool countRows) {
  if (countRows) {
    if (!sameName(name, u"Count")) throw ErrorEjecucion(err::kErrorDeSintaxis, name);
    return aggregate(Agg::Count, {}, true);
  }
  for (const Function& known : kFunctions) {
    if (!sameName(known.name, name)) continue;
    if (args.size() < known.least || args.size() > known.most) {
      throw ErrorEjecucion(err::kErrorDeSintaxis, name);
    }
    return known.make(std::move(args));
  }
  throw ErrorEjecucion(err::kNombreDesconocido, name);
}

}  // namespace lang
