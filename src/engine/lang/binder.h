// Looks up every name of a statement in the file.
#pragma once

#include <memory>

#include "engine/lang/parsed.h"
#include "engine/lang/query.h"

namespace lang {

class Binder {
 public:
  Binder(const Catalog& catalog, int ano) : catalog_(catalog), ano_(ano) {}

  // A table name, a query name or a statement. 3061, 3075, 3078, 3464.
  std::unique_ptr<Query> source(const Parsed& source);
  // The rows of `source` for which `criterion` holds; its columns are those of the source.
  std::unique_ptr<Query> filtered(const Parsed& source, const QString& criterion);
  // A stored query by itself.
  std::unique_ptr<Query> stored(const QString& name);

  // An id that no source of this statement has.
  int newSourceId() { return ++lastSource_; }

 private:
  struct Scope;
  struct Item;

  std::unique_ptr<Query> named(const QString& name);
  std::unique_ptr<Query> statement(const SelectNode& node);
  std::unique_ptr<From> from(const FromNode& node, Scope& scope);
  std::unique_ptr<From> fromSource(const FromNode& node);
  void outputs(const SelectNode& node, Scope& scope, Query& query);
  void nameOutputs(const std::vector<Item>& items, Query& query) const;
  void checkGrouping(const Query& query) const;

  ExprPtr expr(const Node& node, Scope& scope);
  ExprPtr condition(const Node& node, Scope& scope);
  ExprPtr literal(const Node& node) const;
  ExprPtr binaryExpr(const Node& node, Scope& scope);
  ExprPtr callExpr(const Node& node, Scope& scope);
  ExprPtr name(const QStringList& parts, Scope& scope);
  ExprPtr column(const QStringList& parts, const Scope& scope) const;
  ExprPtr alias(const QString& name, Scope& scope);

  const Catalog& catalog_;
  int ano_;
  int lastSource_ = 0;
  QStringList open_;  // the stored queries being resolved, outermost first
  Expr::Place place_ = Expr::Place::Own;
};

}  // namespace lang
