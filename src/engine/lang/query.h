// A statement with every name resolved: what the rewriting works on and the emitter writes out.
//
// Expressions are shared and never change; a rewriting makes new ones. A Source has an id that
// stays its own when a query is merged into the one that reads it.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "engine/lang/catalog.h"
#include "engine/lang/parser.h"

namespace lang {

enum class Type { Null, Boolean, Long, Double, Date, Text };

// NumberPart and TextPart take the rows in which a mixed value is of that kind; ToNumber reads a
// text taken out of the statement as the number it is compared with.
enum class Fn {
  Abs,
  Day,
  Lcase,
  Left,
  Len,
  Mid,
  Month,
  NumberPart,
  Nz,
  Right,
  TextPart,
  ToNumber,
  Trim,
  Ucase,
  Val,
  Year
};
// OneMillionths takes the only row of its group.
enum class Agg { Avg, Count, CountRows, Max, Min, Sum, SumMillionths, OneMillionths };

struct Expr;
using ExprPtr = std::shared_ptr<const Expr>;

struct Expr {
  enum class Kind { Column, Literal, Binary, Negate, Not, Like, In, IsNull, If, Call, Aggregate };
  // Where a literal's value stands: in the text of the plan (those of stored queries), among the
  // literals taken out of the statement, or among the plan's own parameters.
  enum class Place { InText, Statement, Own };

  Kind kind = Kind::Literal;
  Type type = Type::Null;
  int size = 0;        // characters of a text, 0 unknown
  bool mixed = false;  // a number in some rows and a text in others
  Op op = Op::None;
  Fn function = Fn::Abs;
  Agg aggregate = Agg::Sum;
  int source = 0;  // Column
  int column = 0;
  Place place = Place::InText;  // Literal
  int parameter = -1;
  Variant value;
  bool numericText = false;
  bool word = false;  // a text with letters beyond the plain alphabet
  std::vector<ExprPtr> args;
  int height = 1;
  int weight = 1;

  // A condition, true or false (or Null) by itself.
  bool isCondition() const {
    return kind == Kind::Not || kind == Kind::Like || kind == Kind::In || kind == Kind::IsNull ||
           (kind == Kind::Binary && op >= Op::Equal);
  }
};

// Closes an expression under construction. 3075 when it grew beyond what the file's engine reads.
ExprPtr made(Expr expr);
ExprPtr binary(Op op, ExprPtr left, ExprPtr right, Type type);
// Both conditions; either may be null for none.
ExprPtr both(ExprPtr left, ExprPtr right);
// The conditions that `condition` joins with And.
std::vector<ExprPtr> conjuncts(const ExprPtr& condition);

bool sameExpr(const Expr& left, const Expr& right);
// True when `test` holds for the expression or any part of it.
bool anyPart(const Expr& expr, const std::function<bool(const Expr&)>& test);
bool hasAggregate(const Expr& expr);
// The expression with each part for which `replace` gives another replaced, outermost first.
ExprPtr replaced(const ExprPtr& expr, const std::function<ExprPtr(const Expr&)>& replace);

struct Query;

struct Source {
  int id = 0;
  QString alias;  // what column references call it
  // Either a table of the file...
  std::shared_ptr<const Catalog::Table> table;
  // ...or another query, with its stored name.
  std::unique_ptr<Query> query;
  QString queryName;
};

struct From {
  enum class Kind { Source, Cross, Inner, Left };
  Kind kind = Kind::Source;
  Source source;
  std::unique_ptr<From> left;
  std::unique_ptr<From> right;
  ExprPtr on;
};

struct Output {
  QString name;
  ExprPtr expr;
};

struct Order {
  ExprPtr expr;
  bool descending = false;
};

struct Query {
  std::unique_ptr<From> from;
  ExprPtr where;
  std::vector<ExprPtr> groupBy;
  ExprPtr having;
  std::vector<Output> outputs;
  std::vector<Order> orderBy;
  bool distinct = false;
  bool grouped = false;
  bool keptSums = false;  // it reads sums that are kept, and no lines
  bool singles = false;   // each group is one row of kept sums: nothing is left to be added up
  int literals = 0;       // taken out of the statement: what is run has as many values
};

// The sources of a FROM in the order in which they are written.
std::vector<Source*> sourcesOf(From& from);
std::vector<const Source*> sourcesOf(const From& from);
// Every expression of the query itself, those of its joins included: for reading and for replacing.
void eachExpr(Query& query, const std::function<void(ExprPtr&)>& visit);
void eachExpr(const Query& query, const std::function<void(const Expr&)>& visit);

ExprPtr columnOf(const Source& source, int column);
FieldType fieldType(Type type);

}  // namespace lang
