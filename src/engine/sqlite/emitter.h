// Writes a resolved query as statements of the file's own engine.
#pragma once

#include <QHash>

#include "engine/lang/query.h"

namespace lang {

// The values behind ?1, ?2...: first the literals taken out of the statement, whose values come
// when it is run, then the query's own.
class Parameters {
 public:
  explicit Parameters(int literals) : literals_(literals) {}
  // The number of a value of the query's own.
  int own(const Variant& value);
  const QList<Variant>& ownValues() const { return own_; }

 private:
  int literals_;
  QList<Variant> own_;
};

class Emitter {
 public:
  // A plan reads inner queries in place and may use the language's own functions; a view names the
  // views of inner queries and keeps to built-in functions.
  enum class Dialect { Plan, View };
  Emitter(Dialect dialect, Parameters& parameters) : dialect_(dialect), parameters_(parameters) {}

  QString whole(const Query& query);
  // Of a query with keys: these in order, and one row by its key.
  QString keys(const Query& query);
  QString row(const Query& query);
  // The keys, and those of rows that don't find what they look up among them. It is much less work:
  // most of the tables are left out.
  QString likelyKeys(const Query& query);

 private:
  void open(const Query& query);
  QString outputs(const Query& query, bool named);
  QString lookedUpOnce(const Query& query);
  // `besides` are conditions that follow from those of the query.
  QString rest(const Query& query, bool ordered, const QString& besides = {});
  QString grouping(const Query& query);
  QString from(const From& from, ExprPtr& conditions);
  QString nested(const From& from);
  QString source(const Source& source);
  QString rowNumber(const Source& source) const;
  QString orderBy(const Query& query);
  QStringList orderTerms(const Query& query);
  QString collation(const Expr& expr) const;
  QStringList tieTerms(const Query& query);
  QStringList inOrderOfLookup(const QString& key, const lang::Query& query);
  bool follows(const Expr& key, const Query& query, const QStringList& before);
  void sourceTies(const From& from, QStringList& terms);
  QString groupKey(const Expr& expr);

  QString value(const Expr& expr);
  QString plainValue(const Expr& expr);
  QString condition(const Expr& expr);
  QString text(const Expr& expr);
  QString column(const Expr& expr);
  QString literal(const Expr& expr);
  QString constant(const Variant& value, Expr::Place place);
  QString binary(const Expr& expr);
  QString compared(const Expr& expr);
  QString inList(const Expr& expr);
  QString like(const Expr& expr);
  QString likeLiteral(const Expr& value, const Expr& pattern);
  QString viewLike(const QString& value, const Expr& pattern) const;
  QString aggregate(const Expr& expr);
  QString call(const Expr& expr);
  QString list(const std::vector<ExprPtr>& args, size_t first);

  Dialect dialect_;
  Parameters& parameters_;
  QHash<int, const Source*> sources_;
  QHash<int, QString> names_;
  int nextName_ = 0;
  std::vector<int> skipped_;  // sources left out
};

// A name as the file's engine reads it, whatever it holds.
QString quotedName(const QString& name);

}  // namespace lang
