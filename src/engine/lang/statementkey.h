// What statements that differ only in their literals have in common.
#pragma once

#include <QList>
#include <QString>

#include "common/variant.h"

// A statement with its literals taken out, so that statements that differ only in them share one
// compiled plan: the key, and the literals in order. Literals on which the plan itself depends (the
// patterns of Like) stay in the key.
struct StatementKey {
  QString key;
  QList<Variant> literals;
};

// 3075 for a source that can't be read as words. `ano` is the company's year, for date literals
// with a two-digit year.
StatementKey statementKey(const QString& source, int ano);
