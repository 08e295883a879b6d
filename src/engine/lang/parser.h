// Statements and criteria as a tree, before any name is looked up.
#pragma once

#include <memory>
#include <QStringList>
#include <vector>

#include "engine/lang/lexer.h"

namespace lang {

enum class Op {
  None,
  Add,
  Subtract,
  Multiply,
  Divide,
  Join,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessEqual,
  GreaterEqual,
  And,
  Or
};

struct Node;
using NodePtr = std::unique_ptr<Node>;

struct Node {
  enum class Kind {
    Name,
    Literal,
    Null,
    True,
    False,
    All,
    Call,
    Binary,
    Negate,
    Not,
    Like,
    In,
    Between,
    IsNull
  };
  Kind kind = Kind::Null;
  Op op = Op::None;    // Binary
  QStringList parts;   // Name: one to three; All: the table before the point; Call: one
  Literal literal;     // Literal
  int parameter = -1;  // Literal: as in its token
  std::vector<NodePtr> children;
  int height = 1;
};

// One item of FROM: a table or query, or two items joined.
struct FromNode {
  enum class Kind { Source, Cross, Inner, Left, Right };
  Kind kind = Kind::Source;
  QString name;   // Source
  QString alias;  // Source; empty for none
  std::unique_ptr<FromNode> left;
  std::unique_ptr<FromNode> right;
  NodePtr on;
};

struct SelectItem {
  NodePtr expression;  // of kind All for "*" and "Tabla.*"
  QString alias;
};

struct OrderItem {
  NodePtr expression;
  bool descending = false;
};

struct SelectNode {
  bool distinct = false;
  std::vector<SelectItem> items;
  std::unique_ptr<FromNode> from;
  NodePtr where;
  std::vector<NodePtr> groupBy;
  NodePtr having;
  std::vector<OrderItem> orderBy;
};

// One SELECT, with or without a final ";". 3075 for anything else.
SelectNode parseStatement(const std::vector<Token>& tokens, int ano);
// A condition alone, as FindFirst takes it. 3075.
NodePtr parseCriterion(const std::vector<Token>& tokens, int ano);

}  // namespace lang
