// From names to columns, by an example. With the stored query
//     Lineas:  SELECT Diario.*, IIf([DH]='D',[Importe],0) AS Debe FROM Diario
// the statement
//     SELECT Subcuenta, Sum(Debe) AS T FROM Lineas WHERE NAsiento = 3 GROUP BY Subcuenta
// becomes a Query over one source, which is the query Lineas over one source, the table Diario:
//     "Subcuenta"  a Column of the outer source: number 3 of what Lineas puts out
//     "Debe"       another; the inner query holds the IIf, whose own columns are of Diario
//     "T"          the outer output's name; in ORDER BY or HAVING it would stand for its Sum
//     "3"          a Literal of place Statement if it was taken out of the text (then its value
//                  comes when the query is run), of place Own otherwise; literals of stored
//                  queries are of place InText
// Nothing is merged here: that is the work of flatten().
#include "engine/lang/binder.h"

#include <algorithm>

#include "common/errorejecucion.h"
#include "engine/lang/typing.h"

namespace lang {
namespace {

constexpr int kMaxNesting = 30;

// An unqualified computed column is called by its place.
constexpr int kFirstExpression = 1000;

[[noreturn]] void failName(const QString& name) {
  throw ErrorEjecucion(err::kNombreDesconocido, name);
}

int columnCount(const Source& source) {
  return static_cast<int>(source.table ? source.table->columns.size()
                                       : source.query->outputs.size());
}

const QString& columnName(const Source& source, int column) {
  const auto index = static_cast<size_t>(column);
  return source.table ? source.table->columns[index].name : source.query->outputs[index].name;
}

int findColumn(const Source& source, QStringView name) {
  for (int i = 0; i < columnCount(source); ++i) {
    if (sameName(columnName(source, i), name)) return i;
  }
  return -1;
}

// All rows and columns of one source.
std::unique_ptr<Query> allOf(Source source) {
  auto query = std::make_unique<Query>();
  query->from = std::make_unique<From>();
  query->from->source = std::move(source);
  const Source& only = query->from->source;
  for (int i = 0; i < columnCount(only); ++i) {
    query->outputs.push_back({columnName(only, i), columnOf(only, i)});
  }
  return query;
}

// The table as the catalog keeps it, without owning it.
std::shared_ptr<const Catalog::Table> borrowed(const Catalog::Table* table) {
  return {std::shared_ptr<const void>(), table};
}

}  // namespace

struct Binder::Scope {
  std::vector<const Source*> sources;  // as written
  size_t first = 0;                    // a join sees its own sources only
  const SelectNode* select = nullptr;  // whose aliases are known
  std::vector<ExprPtr> bound;          // of the items with an alias, once asked for
  std::vector<bool> binding;
};

struct Binder::Item {
  QString alias;
  QString column;     // of a plain column
  QString qualifier;  // the source of a plain column
};

std::unique_ptr<Query> Binder::source(const Parsed& source) {
  return source.isStatement() ? statement(source.tree()) : named(source.name());
}

std::unique_ptr<Query> Binder::filtered(const Parsed& source, const QString& criterion) {
  Source only;
  only.id = newSourceId();
  only.query = this->source(source);
  if (!source.isStatement()) {
    only.alias = source.name();
  } else if (only.query->from->kind == From::Kind::Source) {
    only.alias = only.query->from->source.alias;
  }
  auto query = allOf(std::move(only));
  Scope scope;
  scope.sources = {&query->from->source};
  query->where = condition(*parseCriterion(tokens(criterion), ano_), scope);
  if (hasAggregate(*query->where)) throw ErrorEjecucion(err::kErrorDeSintaxis, criterion);
  return query;
}

std::unique_ptr<Query> Binder::stored(const QString& name) {
  const std::optional<QString> text = catalog_.queryText(name);
  if (!text) throw ErrorEjecucion(err::kOrigenDesconocido, name);
  if (open_.contains(name, Qt::CaseInsensitive) || open_.size() == kMaxNesting) {
    throw ErrorEjecucion(err::kOrigenDesconocido, name);
  }
  open_ << name;
  const Expr::Place outer = std::exchange(place_, Expr::Place::InText);
  auto query = statement(parseStatement(tokens(*text), ano_));
  place_ = outer;
  open_.removeLast();
  return query;
}

std::unique_ptr<Query> Binder::named(const QString& name) {
  const Catalog::Table* table = catalog_.table(name);
  if (!table) return stored(name);
  Source only;
  only.id = newSourceId();
  only.alias = table->name;
  only.table = borrowed(table);
  return allOf(std::move(only));
}

std::unique_ptr<Query> Binder::statement(const SelectNode& node) {
  auto query = std::make_unique<Query>();
  Scope scope;
  query->from = from(*node.from, scope);
  for (size_t i = 0; i < scope.sources.size(); ++i) {
    for (size_t j = 0; j < i; ++j) {
      if (sameName(scope.sources[i]->alias, scope.sources[j]->alias)) {
        throw ErrorEjecucion(err::kErrorDeSintaxis, scope.sources[i]->alias);
      }
    }
  }
  scope.select = &node;
  scope.bound.resize(node.items.size());
  scope.binding.resize(node.items.size());

  outputs(node, scope, *query);
  query->distinct = node.distinct;
  if (node.where) query->where = condition(*node.where, scope);
  for (const NodePtr& key : node.groupBy) query->groupBy.push_back(expr(*key, scope));
  if (node.having) query->having = condition(*node.having, scope);
  for (const OrderItem& item : node.orderBy) {
    ExprPtr by = expr(*item.expression, scope);
    const bool varies = anyPart(*by, [](const Expr& part) {
      return part.kind == Expr::Kind::Column || part.kind == Expr::Kind::Aggregate;
    });
    if (varies) query->orderBy.push_back({std::move(by), item.descending});
  }
  query->grouped = !query->groupBy.empty();
  eachExpr(std::as_const(*query),
           [&query](const Expr& part) { query->grouped = query->grouped || hasAggregate(part); });
  if (query->grouped) checkGrouping(*query);
  if (query->having && !query->grouped) {
    throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("HAVING"));
  }
  return query;
}

std::unique_ptr<From> Binder::from(const FromNode& node, Scope& scope) {
  if (node.kind == FromNode::Kind::Source) {
    auto leaf = fromSource(node);
    scope.sources.push_back(&leaf->source);
    return leaf;
  }
  const size_t first = scope.sources.size();
  auto pair = std::make_unique<From>();
  pair->left = from(*node.left, scope);
  pair->right = from(*node.right, scope);
  switch (node.kind) {
    case FromNode::Kind::Inner:
      pair->kind = From::Kind::Inner;
      break;
    case FromNode::Kind::Right:
      std::swap(pair->left, pair->right);
      pair->kind = From::Kind::Left;
      break;
    case FromNode::Kind::Left:
      pair->kind = From::Kind::Left;
      break;
    default:
      pair->kind = From::Kind::Cross;
      return pair;
  }
  const size_t outer = std::exchange(scope.first, first);
  pair->on = condition(*node.on, scope);
  scope.first = outer;
  if (hasAggregate(*pair->on)) throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("ON"));
  return pair;
}

std::unique_ptr<From> Binder::fromSource(const FromNode& node) {
  auto leaf = std::make_unique<From>();
  Source& source = leaf->source;
  source.id = newSourceId();
  if (const Catalog::Table* table = catalog_.table(node.name)) {
    source.table = borrowed(table);
    source.alias = table->name;
  } else {
    source.query = stored(node.name);
    source.queryName = node.name;
    source.alias = node.name;
  }
  if (!node.alias.isEmpty()) source.alias = node.alias;
  return leaf;
}

void Binder::outputs(const SelectNode& node, Scope& scope, Query& query) {
  std::vector<Item> items;
  for (size_t i = 0; i < node.items.size(); ++i) {
    const Node& written = *node.items[i].expression;
    if (written.kind == Node::Kind::All) {
      const size_t before = items.size();
      for (const Source* source : scope.sources) {
        if (!written.parts.isEmpty() && !sameName(source->alias, written.parts.front())) continue;
        for (int column = 0; column < columnCount(*source); ++column) {
          items.push_back({{}, columnName(*source, column), source->alias});
          query.outputs.push_back({{}, columnOf(*source, column)});
        }
      }
      if (items.size() == before) failName(written.parts.value(0));
      continue;
    }
    const QString& alias = node.items[i].alias;
    ExprPtr bound = alias.isEmpty() ? expr(written, scope) : this->alias(alias, scope);
    Item item{alias, {}, {}};
    if (bound->kind == Expr::Kind::Column && written.kind == Node::Kind::Name) {
      for (const Source* source : scope.sources) {
        if (source->id != bound->source) continue;
        item.column = columnName(*source, bound->column);
        item.qualifier = source->alias;
      }
    }
    items.push_back(item);
    query.outputs.push_back({{}, std::move(bound)});
  }
  nameOutputs(items, query);
}

void Binder::nameOutputs(const std::vector<Item>& items, Query& query) const {
  for (size_t i = 0; i < items.size(); ++i) {
    const Item& item = items[i];
    QString& name = query.outputs[i].name;
    if (!item.alias.isEmpty()) {
      name = item.alias;
      continue;
    }
    if (item.column.isEmpty()) {
      name = QStringLiteral("Expr%1").arg(kFirstExpression + static_cast<int>(i));
      continue;
    }
    // Columns of one name are told apart by their table; of one column shown twice the first keeps
    // the plain name.
    bool shared = false;
    for (size_t j = 0; j < items.size() && !shared; ++j) {
      const QString& other = items[j].alias.isEmpty() ? items[j].column : items[j].alias;
      const bool same = sameExpr(*query.outputs[i].expr, *query.outputs[j].expr);
      shared = i != j && sameName(other, item.column) && (!same || j < i);
    }
    name = shared ? item.qualifier + u'.' + item.column : item.column;
  }
}

// Totals stand in what is shown, and beside them only what is the same for the whole group.
void Binder::checkGrouping(const Query& query) const {
  std::vector<ExprPtr> before = query.groupBy;
  if (query.where) before.push_back(query.where);
  for (const ExprPtr& expr : before) {
    if (hasAggregate(*expr)) {
      throw ErrorEjecucion(err::kErrorDeSintaxis,
                           QStringLiteral("función de totales fuera de su sitio"));
    }
  }
  std::vector<const Expr*> shown;
  for (const Output& output : query.outputs) shown.push_back(output.expr.get());
  for (const Order& order : query.orderBy) shown.push_back(order.expr.get());
  if (query.having) shown.push_back(query.having.get());

  const std::function<void(const Expr&)> check = [&](const Expr& expr) {
    if (expr.kind == Expr::Kind::Aggregate) return;
    for (const ExprPtr& key : query.groupBy) {
      if (sameExpr(*key, expr)) return;
    }
    if (expr.kind == Expr::Kind::Column) {
      throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("columna fuera de GROUP BY"));
    }
    for (const ExprPtr& arg : expr.args) check(*arg);
  };
  for (const Expr* expr : shown) check(*expr);
}

ExprPtr Binder::condition(const Node& node, Scope& scope) {
  ExprPtr bound = expr(node, scope);
  if (bound->type == Type::Text || bound->type == Type::Date) {
    throw ErrorEjecucion(err::kTiposEnCriterio, bound->value.display());
  }
  return bound;
}

ExprPtr Binder::expr(const Node& node, Scope& scope) {
  const auto child = [&](size_t i) { return expr(*node.children[i], scope); };
  Expr fixed;
  switch (node.kind) {
    case Node::Kind::Name:
      return name(node.parts, scope);
    case Node::Kind::Literal:
      return literal(node);
    case Node::Kind::Null:
      return made(std::move(fixed));
    case Node::Kind::True:
    case Node::Kind::False:
      fixed.type = Type::Boolean;
      fixed.value = Variant(node.kind == Node::Kind::True);
      return made(std::move(fixed));
    case Node::Kind::Call:
      return callExpr(node, scope);
    case Node::Kind::Binary:
      return binaryExpr(node, scope);
    case Node::Kind::Negate:
      return minus(child(0));
    case Node::Kind::Not:
      return negation(child(0));
    case Node::Kind::Like:
      return like(child(0), child(1));
    case Node::Kind::Between:
      return between(child(0), child(1), child(2));
    case Node::Kind::IsNull:
      return isNull(child(0));
    case Node::Kind::In: {
      std::vector<ExprPtr> list;
      for (const NodePtr& item : node.children) list.push_back(expr(*item, scope));
      return inList(std::move(list));
    }
    case Node::Kind::All:
      break;
  }
  throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("*"));
}

ExprPtr Binder::literal(const Node& node) const {
  Expr expr;
  expr.value = node.literal.value;
  expr.parameter = node.parameter;
  expr.place = node.parameter >= 0 ? Expr::Place::Statement : place_;
  expr.numericText = node.literal.kind == LiteralKind::NumericText;
  expr.word = node.literal.kind == LiteralKind::Word;
  switch (node.literal.kind) {
    case LiteralKind::Long:
      expr.type = Type::Long;
      break;
    case LiteralKind::Double:
      expr.type = Type::Double;
      break;
    case LiteralKind::Date:
      expr.type = Type::Date;
      break;
    case LiteralKind::NumericText:
    case LiteralKind::Word:
    case LiteralKind::Text:
      expr.type = Type::Text;
  }
  return made(std::move(expr));
}

ExprPtr Binder::binaryExpr(const Node& node, Scope& scope) {
  ExprPtr left = expr(*node.children[0], scope);
  ExprPtr right = expr(*node.children[1], scope);
  if (node.op == Op::And || node.op == Op::Or) {
    return conjunction(node.op, std::move(left), std::move(right));
  }
  if (node.op >= Op::Equal) return comparison(node.op, std::move(left), std::move(right));
  return arithmetic(node.op, std::move(left), std::move(right));
}

ExprPtr Binder::callExpr(const Node& node, Scope& scope) {
  const bool countRows = node.children.size() == 1 && node.children[0]->kind == Node::Kind::All;
  std::vector<ExprPtr> args;
  if (!countRows) {
    for (const NodePtr& arg : node.children) args.push_back(expr(*arg, scope));
  }
  return call(node.parts.front(), std::move(args), countRows);
}

ExprPtr Binder::name(const QStringList& parts, Scope& scope) {
  if (ExprPtr found = column(parts, scope)) return found;
  if (parts.size() == 1) {
    if (ExprPtr found = alias(parts.front(), scope)) return found;
  }
  failName(parts.join(u'.'));
}

// A name with points is a column of the source that it begins with, or a column whose own name has
// points because a query told it apart by its table.
ExprPtr Binder::column(const QStringList& parts, const Scope& scope) const {
  ExprPtr found;
  const auto look = [&](const Source& source, const QString& name) {
    const int index = findColumn(source, name);
    if (index < 0) return;
    if (found) failName(parts.join(u'.'));
    found = columnOf(source, index);
  };
  for (size_t i = scope.first; i < scope.sources.size(); ++i) {
    const Source& source = *scope.sources[i];
    if (parts.size() > 1 && sameName(source.alias, parts.front())) {
      look(source, parts.sliced(1).join(u'.'));
    }
  }
  if (found) return found;
  for (size_t i = scope.first; i < scope.sources.size(); ++i) {
    look(*scope.sources[i], parts.join(u'.'));
  }
  return found;
}

ExprPtr Binder::alias(const QString& name, Scope& scope) {
  if (!scope.select) return nullptr;
  for (size_t i = 0; i < scope.select->items.size(); ++i) {
    const SelectItem& item = scope.select->items[i];
    if (item.alias.isEmpty() || !sameName(item.alias, name)) continue;
    if (!scope.bound[i]) {
      if (scope.binding[i]) failName(name);
      scope.binding[i] = true;
      scope.bound[i] = expr(*item.expression, scope);
    }
    return scope.bound[i];
  }
  return nullptr;
}

}  // namespace lang
