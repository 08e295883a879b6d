// The border between the statement language and the driver that runs it.
//
// The language turns one SELECT (or a table or query name) into a Plan: plain statements of the
// file's own engine with bound parameters, and what the recordset needs to know of each column.
// Nothing that a user typed ever stands in the plan's texts.
#pragma once

#include <QList>
#include <QString>
#include <vector>

#include "engine/lang/catalog.h"

// A computed column of a number type may be a text in some rows (a blank instead of a zero): the
// value of such a row is given as it is.
struct OutputColumn {
  QString name;  // "Importe", or "Subcuentas.Descripcion" where two columns share a name
  FieldType type = FieldType::Text;
  int size = 0;
  QString baseColumn;  // column of Plan::baseTable that it shows; empty when computed
};

// How a source is read.
//
// The texts number their parameters (?1, ?2...) as they stand in `params`, and each uses only some
// of them: bind no more than it counts. Dates among them are texts as the file holds them. The
// first are the literals of the statement's key, in order, and may be replaced by those of another
// statement with the same key; the rest belong to the plan.
struct Plan {
  std::vector<OutputColumn> columns;
  // Updatable: one base table, nothing grouped. Then rows are read by key (the file's row number):
  //   keysSql    SELECT rowid FROM ... WHERE ... ORDER BY ...       (params)
  //   rowSql     SELECT <columns> FROM base WHERE rowid = ?1        (no params but the key)
  // Otherwise the whole source is read at once:
  //   wholeSql   SELECT <columns> FROM ... ORDER BY ...             (params)
  bool updatable = false;
  QString baseTable;
  QString keysSql;
  QString rowSql;
  QString wholeSql;  // always filled: forward readers use it for updatable sources too
  QList<Variant> params;
};

// A criterion of FindFirst and FindNext over an open plan.
//   updatable:  sql gives the matching keys, in the recordset's order
//   otherwise:  sql gives the zero-based positions of the matching rows in wholeSql's order
// " LIMIT 1" may be added to it. The first params are the literals of the source's key here too.
struct FindPlan {
  QString sql;
  QList<Variant> params;
};

// `source` is a table name, a query name or one SELECT. 3075 when it can't be read as that, 3078
// for an unknown table or query, 3061 for an unknown column, 3464 for types that can't be compared.
// `ano` is the company's year, for date literals with a two-digit year.
Plan compile(const QString& source, const Catalog& catalog, int ano);
FindPlan compileCriterion(const QString& source, const QString& criterion, const Catalog& catalog,
                          int ano);

// The definition (the SELECT alone) of a plain view for other tools over a stored query: built-in
// functions and the file's own tables only. Raises as compile() does while a name of the query
// isn't there.
QString viewSql(const QString& queryName, const Catalog& catalog);
