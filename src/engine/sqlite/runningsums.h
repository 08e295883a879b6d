// Sums kept beside a table so that its totals answer at once whatever its length.
//
// Each is a table of the engine's own with one row for each combination of keys: the number of
// lines, the sums of both sides in integers of a millionth, which add up exactly in any order, and
// how many lines have anything on each side, since a sum over nothing but Nulls is Null.
// Triggers of built-in functions keep it, so it is right whatever tool writes; a second trigger
// refuses the rows that would silently replace others, whose going no trigger sees.
#pragma once

#include <QStringList>

#include "engine/lang/catalog.h"

class FileStore;
struct TableDef;

// The keys as the file notes them ("Subcuenta;Month(Fecha)"), and read back.
QString sumKeysText(const QList<SumKey>& keys);
QList<SumKey> sumKeys(const QString& text);

// The names that sums number `order` have in the file.
Catalog::RunningSums describeSums(qint64 order, const QString& table, const QString& side,
                                  const QString& amount, const QList<SumKey>& keys);

// The table of the sums, its index and its triggers.
QStringList sumsDefinition(const Catalog::RunningSums& sums, const TableDef& base);
// Empties the sums and takes them from the rows again.
QStringList sumsRecount(const Catalog::RunningSums& sums);
QStringList sumsRemoval(const Catalog::RunningSums& sums);
// All of it anew, from the rows.
QStringList sumsRebuild(const Catalog::RunningSums& sums, const TableDef& base);

// The columns of the table on which the sums depend.
QStringList sumsColumns(const Catalog::RunningSums& sums);
// What a row of the table counts for: its debit and its credit in millionths, each Null where the
// line has nothing there, and its keys.
QStringList sumsCounting(const Catalog::RunningSums& sums);
// Adds the number of lines, debit, credit and how many lines have each of them, parameters 1 to 5,
// to the sums of the keys that follow.
struct SumsChange {
  QString move;  // where they have a row
  QString add;   // where they have none
  QString tidy;  // takes away a row without lines
};
SumsChange sumsChange(const Catalog::RunningSums& sums);
// Makes anew the triggers that refuse replacing rows, for the unique indexes that the table has
// now.
QStringList replaceGuards(const TableDef& table);
// And those that refuse amounts of 10^12 and more, which sums of millionths don't hold.
QStringList amountGuards(const Catalog::RunningSums& sums);
