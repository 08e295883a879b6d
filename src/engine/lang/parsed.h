// A source read once: its words, the literals taken out of it, and its tree.
//
// Statements that differ only in such literals share one plan, so whoever keeps plans looks them up
// by the key and runs them with the literals. All three come of the same words, so a literal has
// the same number in each.
//   "Select * from Diario where NAsiento = 3"
//      key       " Select * from Diario where NAsiento = ?l"
//      literals  {3}
//      tree      a comparison with literal number 0
#pragma once

#include <QList>
#include <QString>

#include "common/variant.h"
#include "engine/lang/parser.h"

namespace lang {

class Parsed {
 public:
  // `source` is a table name, a query name or one SELECT. 3075 when it can't be read as words.
  // `ano` is the company's year, for date literals with a two-digit year.
  Parsed(const QString& source, int ano);
  Parsed(const Parsed&) = delete;
  Parsed& operator=(const Parsed&) = delete;

  // True for a SELECT; otherwise it is the name of a table or query.
  bool isStatement() const { return !words_.empty(); }
  const QString& name() const { return name_; }

  // What statements with the same plan have in common. Literals on which the plan itself depends
  // (the patterns of Like) stay in it.
  const QString& key() const { return key_; }
  const QList<Variant>& literals() const { return literals_; }
  SelectNode tree() const;  // of a statement; 3075

 private:
  QString text_;
  int ano_;
  QString name_;
  std::vector<Token> words_;  // that point into the text
  QString key_;
  QList<Variant> literals_;
};

}  // namespace lang
