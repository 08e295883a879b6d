// The statement around the expressions: FROM, grouping and order.
#include "engine/sqlite/emitter.h"

#include <algorithm>

#include "common/errorejecucion.h"
#include "engine/lang/lookups.h"

namespace lang {
namespace {

constexpr int kLongestCode = 20;  // characters; names are given more

QString columnAlias(qsizetype index) {
  return u'c' + QString::number(index);
}

bool readsOnly(const Expr& expr, int source) {
  bool some = false;
  const bool others = anyPart(expr, [&](const Expr& part) {
    const bool column = part.kind == Expr::Kind::Column;
    some = some || column;
    return column && part.source != source;
  });
  return some && !others;
}

}  // namespace

int Parameters::own(const Variant& value) {
  qsizetype at = own_.indexOf(value);
  if (at < 0) {
    at = own_.size();
    own_.append(value);
  }
  return literals_ + static_cast<int>(at) + 1;
}

QString quotedName(const QString& name) {
  if (!name.contains(u']')) return u'[' + name + u']';
  return u'"' + QString(name).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString Emitter::whole(const Query& query) {
  open(query);
  const bool view = dialect_ == Dialect::View;
  return outputs(query, view) + rest(query, true);
}

QString Emitter::keys(const Query& query) {
  open(query);
  return QStringLiteral("SELECT ") + rowNumber(*rowSource(*query.from)) +
         rest(query, true, lookedUpOnce(query));
}

// Conditions on what is looked up choose its rows once, and not again for each row that finds them.
QString Emitter::lookedUpOnce(const Query& query) {
  QString sql;
  for (const Lookup& lookup : innerLookups(*query.from)) {
    ExprPtr own;
    for (const ExprPtr& part : conjuncts(query.where))
      if (readsOnly(*part, lookup.source->id)) own = both(own, part);
    if (!own) continue;
    sql += QStringLiteral(" AND ") + groupKey(*lookup.by) + QStringLiteral(" IN (SELECT ") +
           value(*lookup.key) + QStringLiteral(" FROM ") + source(*lookup.source) +
           QStringLiteral(" WHERE ") + condition(*own) + u')';
  }
  return sql;
}

QString Emitter::likelyKeys(const Query& query) {
  skipped_ = needless(query);
  return keys(query);
}

QString Emitter::row(const Query& query) {
  open(query);
  ExprPtr joined;
  const QString sources = from(*query.from, joined);
  return outputs(query, false) + QStringLiteral(" FROM ") + sources + QStringLiteral(" WHERE ") +
         rowNumber(*rowSource(*query.from)) + QStringLiteral(" = ?1") +
         (joined ? QStringLiteral(" AND ") + condition(*joined) : QString());
}

QString Emitter::rowNumber(const Source& source) const {
  return names_.value(source.id) + QStringLiteral(".rowid");
}

void Emitter::open(const Query& query) {
  for (const Source* source : sourcesOf(std::as_const(*query.from))) {
    if (sources_.contains(source->id)) continue;
    sources_.insert(source->id, source);
    names_.insert(source->id, dialect_ == Dialect::View ? quotedName(source->alias)
                                                        : u't' + QString::number(nextName_++));
  }
}

QString Emitter::outputs(const Query& query, bool named) {
  QStringList all;
  for (const Output& output : query.outputs) {
    const QString shown = value(*output.expr);
    all << (named ? shown + QStringLiteral(" AS ") + quotedName(output.name) : shown);
  }
  if (all.isEmpty()) all << QStringLiteral("1");  // of a row that is only looked for
  return (query.distinct ? QStringLiteral("SELECT DISTINCT ") : QStringLiteral("SELECT ")) +
         all.join(QStringLiteral(", "));
}

QString Emitter::rest(const Query& query, bool ordered, const QString& besides) {
  ExprPtr conditions;
  QString sql = QStringLiteral(" FROM ") + from(*query.from, conditions);
  conditions = both(conditions, query.where);
  if (query.singles) conditions = both(conditions, query.having);
  if (conditions) sql += QStringLiteral(" WHERE ") + condition(*conditions) + besides;
  if (!query.singles) sql += grouping(query);
  return ordered ? sql + orderBy(query) : sql;
}

QString Emitter::grouping(const Query& query) {
  QStringList keys;
  for (const ExprPtr& key : query.groupBy) keys << groupKey(*key);
  QString sql;
  if (!keys.isEmpty()) sql += QStringLiteral(" GROUP BY ") + keys.join(QStringLiteral(", "));
  if (query.having) sql += QStringLiteral(" HAVING ") + condition(*query.having);
  return sql;
}

// Inner joins are written as one row of tables: their conditions join those of WHERE, and the
// engine is free to begin with any of them.
QString Emitter::from(const From& from, ExprPtr& conditions) {
  if (from.kind == From::Kind::Source) return source(from.source);
  QString left = this->from(*from.left, conditions);
  if (std::find(skipped_.begin(), skipped_.end(), from.right->source.id) != skipped_.end())
    return left;
  if (from.kind == From::Kind::Left) {
    return left + QStringLiteral(" LEFT JOIN ") + nested(*from.right) + QStringLiteral(" ON ") +
           condition(*from.on);
  }
  const QString right = this->from(*from.right, conditions);
  if (from.on) conditions = both(conditions, from.on);
  return left + QStringLiteral(" JOIN ") + right;
}

// What an outer join may miss stays together in parentheses.
QString Emitter::nested(const From& from) {
  if (from.kind == From::Kind::Source) return source(from.source);
  const QString on = from.on ? QStringLiteral(" ON ") + condition(*from.on) : QString();
  return u'(' + nested(*from.left) +
         (from.kind == From::Kind::Left ? QStringLiteral(" LEFT JOIN ")
                                        : QStringLiteral(" JOIN ")) +
         nested(*from.right) + on + u')';
}

QString Emitter::source(const Source& source) {
  const QString as = QStringLiteral(" AS ") + names_.value(source.id);
  if (source.table) return quotedName(source.table->name) + as;
  if (dialect_ == Dialect::View) return quotedName(source.queryName) + as;
  open(*source.query);
  QStringList all;
  for (const Output& output : source.query->outputs) {
    all << value(*output.expr) + QStringLiteral(" AS ") + columnAlias(all.size());
  }
  return (source.query->distinct ? QStringLiteral("(SELECT DISTINCT ")
                                 : QStringLiteral("(SELECT ")) +
         all.join(QStringLiteral(", ")) + rest(*source.query, false) + u')' + as;
}

QString Emitter::orderBy(const Query& query) {
  const QStringList terms = orderTerms(query);
  return terms.isEmpty() ? QString()
                         : QStringLiteral(" ORDER BY ") + terms.join(QStringLiteral(", "));
}

// Codes come in the order of their index, which gives the first of them at once; names as a Spanish
// reader looks for them. Other tools, which read the views, know neither.
QString Emitter::collation(const Expr& expr) const {
  if (dialect_ == Dialect::View) return QStringLiteral(" COLLATE BINARY");
  const bool code = expr.kind == Expr::Kind::Column && expr.size > 0 && expr.size <= kLongestCode;
  return code ? QStringLiteral(" COLLATE NOCASE") : QStringLiteral(" COLLATE espanol");
}

QStringList Emitter::orderTerms(const Query& query) {
  QStringList terms;
  QStringList ordered;
  for (const Order& order : query.orderBy) {
    ordered << value(*order.expr);
    terms << ordered.back() +
                 (order.expr->type == Type::Text ? collation(*order.expr) : QString()) +
                 (order.descending ? QStringLiteral(" DESC") : QString());
  }
  if (dialect_ == Dialect::View) return terms;
  for (const QString& tie : tieTerms(query)) {
    const bool known = ordered.contains(tie) ||
                       ordered.contains(QString(tie).remove(QStringLiteral(" COLLATE NOCASE")));
    if (!known) terms << tie;
  }
  return terms;
}

// Whether a key is told by those before it: a name by the code that it was looked up with.
bool Emitter::follows(const Expr& key, const Query& query, const QStringList& before) {
  const auto lookups = innerLookups(*query.from);
  return std::any_of(lookups.begin(), lookups.end(), [&](const Lookup& lookup) {
    return readsOnly(key, lookup.source->id) && before.contains(groupKey(*lookup.by));
  });
}

// A key as the table has it that looks it up, if there is one: the rows may then be found for each
// of its rows, which are fewer. The row's number says that no two of them have the same key.
QStringList Emitter::inOrderOfLookup(const QString& key, const Query& query) {
  for (const Lookup& lookup : innerLookups(*query.from))
    if (groupKey(*lookup.by) == key) return {groupKey(*lookup.key), rowNumber(*lookup.source)};
  return {key};
}

// What makes the order of rows a matter of the books alone and never of the way they were read.
QStringList Emitter::tieTerms(const Query& query) {
  QStringList terms;
  if (query.distinct) {
    for (const Output& output : query.outputs) terms << groupKey(*output.expr);
  } else if (query.grouped) {
    QStringList keys;
    for (const ExprPtr& key : query.groupBy) {
      if (follows(*key, query, keys)) continue;
      keys << groupKey(*key);
      const bool free = query.singles && query.orderBy.empty();
      terms << (free ? inOrderOfLookup(keys.back(), query) : QStringList(keys.back()));
    }
  } else if (const Source* rows = rowSource(*query.from)) {
    terms << rowNumber(*rows);
  } else {
    sourceTies(*query.from, terms);
  }
  return terms;
}

void Emitter::sourceTies(const From& from, QStringList& terms) {
  if (from.kind != From::Kind::Source) {
    sourceTies(*from.left, terms);
    const bool hidden = from.kind == From::Kind::Left && from.right->kind != From::Kind::Source;
    if (!hidden) sourceTies(*from.right, terms);
    return;
  }
  const QString name = names_.value(from.source.id);
  if (from.source.table) {
    terms << rowNumber(from.source);
    return;
  }
  const Query& inner = *from.source.query;
  for (size_t i = 0; i < inner.outputs.size(); ++i) {
    const bool isKey = inner.distinct || !hasAggregate(*inner.outputs[i].expr);
    if (isKey) terms << name + u'.' + columnAlias(static_cast<qsizetype>(i));
  }
}

QString Emitter::groupKey(const Expr& expr) {
  const QString key = value(expr);
  return expr.type == Type::Text ? key + QStringLiteral(" COLLATE NOCASE") : key;
}

QString Emitter::column(const Expr& expr) {
  const Source& source = *sources_.value(expr.source);
  const QString name = names_.value(expr.source) + u'.';
  if (source.table) {
    return name + quotedName(source.table->columns[static_cast<size_t>(expr.column)].name);
  }
  if (dialect_ == Dialect::View) {
    return name + quotedName(source.query->outputs[static_cast<size_t>(expr.column)].name);
  }
  return name + columnAlias(expr.column);
}

}  // namespace lang
