#include "engine/sqlite/runningsums.h"

#include "engine/dbengine.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/statement.h"

namespace {

using Sums = Catalog::RunningSums;

constexpr QLatin1String kMonth("Month(");

// A key of the row named by `row`: "NEW.", "OLD." or nothing.
QString keyExpression(const SumKey& key, const QString& row) {
  QString column = row + bracketed(key.column);
  if (!key.isMonth()) return column;
  return QStringLiteral("CAST(substr(") + column + QStringLiteral(", 6, 2) AS INTEGER)");
}

QStringList keyExpressions(const Sums& sums, const QString& row) {
  QStringList list;
  for (const SumKey& key : sums.keys) list += keyExpression(key, row);
  return list;
}

// Null for a line that has nothing on the side.
QString millionths(const Sums& sums, const QString& row, bool debit) {
  const QString side = row + bracketed(sums.sideColumn);
  const QString amount = QStringLiteral("CAST(round(") + row + bracketed(sums.amountColumn) +
                         QStringLiteral(" * 1000000) AS INTEGER)");
  const QString test = QStringLiteral("CASE WHEN ") + side + QStringLiteral(" = 'D' THEN ");
  return debit ? test + amount + QStringLiteral(" ELSE 0 END")
               : test + QStringLiteral("0 ELSE ") + amount + QStringLiteral(" END");
}

QString counted(const QString& millionths) {
  return QStringLiteral("coalesce(") + millionths + QStringLiteral(", 0)");
}

// Whether the line has something on the side, as 1 or 0.
QString something(const Sums& sums, const QString& row, bool debit) {
  return QStringLiteral("CASE WHEN ") + row + bracketed(sums.sideColumn) +
         QString::fromLatin1(debit ? " = 'D' THEN " : " = 'D' THEN 1 ELSE ") + row +
         bracketed(sums.amountColumn) +
         QString::fromLatin1(debit ? " IS NOT NULL ELSE 1 END" : " IS NOT NULL END");
}

// What stands in a row of sums beside its keys.
QStringList figures(const Sums& sums) {
  return {sums.countColumn, sums.debitColumn, sums.creditColumn, sums.debitLinesColumn,
          sums.creditLinesColumn};
}

QString keyTest(const Sums& sums, const QString& row) {
  QStringList tests;
  for (qsizetype i = 0; i < sums.keys.size(); ++i)
    tests +=
        bracketed(sums.keyColumns[i]) + QStringLiteral(" IS ") + keyExpression(sums.keys[i], row);
  return tests.isEmpty() ? QStringLiteral("1") : tests.join(QStringLiteral(" AND "));
}

QString columns(const Sums& sums) {
  QStringList names;
  for (const QString& key : sums.keyColumns) names += bracketed(key);
  return (names + figures(sums)).join(QStringLiteral(", "));
}

// Adds the row or takes it away; the sums of a combination without lines don't stand.
QString account(const Sums& sums, const QString& row, bool add) {
  const QString table = bracketed(sums.sumsTable), test = keyTest(sums, row);
  const QString sign = add ? QStringLiteral("+") : QStringLiteral("-");
  QString sql;
  if (add) {
    const QStringList values =
        keyExpressions(sums, row) + QStringList(figures(sums).size(), QStringLiteral("0"));
    sql += QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + columns(sums) +
           QStringLiteral(") SELECT ") + values.join(QStringLiteral(", ")) +
           QStringLiteral(" WHERE NOT EXISTS (SELECT 1 FROM ") + table + QStringLiteral(" WHERE ") +
           test + QStringLiteral("); ");
  }
  sql += QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") + sums.countColumn +
         QStringLiteral(" = ") + sums.countColumn + sign + QStringLiteral("1");
  for (const bool debit : {true, false}) {
    const QString& column = debit ? sums.debitColumn : sums.creditColumn;
    sql += QStringLiteral(", ") + column + QStringLiteral(" = ") + column + sign +
           counted(millionths(sums, row, debit));
    const QString& lines = debit ? sums.debitLinesColumn : sums.creditLinesColumn;
    sql += QStringLiteral(", ") + lines + QStringLiteral(" = ") + lines + sign + u'(' +
           something(sums, row, debit) + u')';
  }
  sql += QStringLiteral(" WHERE ") + test + QStringLiteral("; ");
  if (!add)
    sql += QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE ") + test +
           QStringLiteral(" AND ") + sums.countColumn + QStringLiteral(" = 0; ");
  return sql;
}

QString trigger(const Sums& sums, const QString& event, const QString& when, const QString& body) {
  return QStringLiteral("CREATE TRIGGER [") + sums.sumsTable + u'_' + event.left(6).trimmed() +
         QStringLiteral("] AFTER ") + event + QStringLiteral(" ON ") + bracketed(sums.baseTable) +
         when + QStringLiteral(" BEGIN ") + body + QStringLiteral("END");
}

QString updateTrigger(const Sums& sums) {
  QStringList names, changed;
  const QStringList watched = sumsColumns(sums);
  for (const QString& column : watched) {
    names += bracketed(column);
    changed += QStringLiteral("NEW.") + bracketed(column) + QStringLiteral(" IS NOT OLD.") +
               bracketed(column);
  }
  return trigger(
      sums, QStringLiteral("UPDATE OF ") + names.join(QStringLiteral(", ")),
      QStringLiteral(" WHEN ") + changed.join(QStringLiteral(" OR ")),
      account(sums, QStringLiteral("NEW."), true) + account(sums, QStringLiteral("OLD."), false));
}

constexpr const char* kEvents[] = {"INSERT", "UPDATE", "DELETE"};

QString recountSelect(const Sums& sums) {
  QStringList outputs = keyExpressions(sums, {});
  const QStringList groups = outputs;
  outputs += QStringLiteral("count(*)");
  for (const bool debit : {true, false})
    outputs += QStringLiteral("sum(") + counted(millionths(sums, {}, debit)) + u')';
  for (const bool debit : {true, false})
    outputs += QStringLiteral("sum(") + something(sums, {}, debit) + u')';
  QString sql = QStringLiteral("SELECT ") + outputs.join(QStringLiteral(", ")) +
                QStringLiteral(" FROM ") + bracketed(sums.baseTable);
  // Without keys there would be a row even for a table without lines.
  sql += groups.isEmpty() ? QStringLiteral(" HAVING count(*) > 0")
                          : QStringLiteral(" GROUP BY ") + groups.join(QStringLiteral(", "));
  return sql;
}

}  // namespace

QString sumKeysText(const QList<SumKey>& keys) {
  QStringList words;
  for (const SumKey& key : keys) words += key.isMonth() ? kMonth + key.column + u')' : key.column;
  return words.join(u';');
}

QList<SumKey> sumKeys(const QString& text) {
  QList<SumKey> keys;
  const QStringList words = text.split(u';', Qt::SkipEmptyParts);
  for (const QString& word : words) {
    if (word.startsWith(kMonth, Qt::CaseInsensitive)) {
      keys.push_back({word.mid(kMonth.size()).chopped(1).trimmed(), SumKey::Part::Month});
    } else {
      keys.push_back({word});
    }
  }
  return keys;
}

Sums describeSums(qint64 order, const QString& table, const QString& side, const QString& amount,
                  const QList<SumKey>& keys) {
  Sums sums;
  sums.sumsTable = QLatin1String(own::kSums) + u'_' + QString::number(order);
  sums.baseTable = table;
  sums.sideColumn = side;
  sums.amountColumn = amount;
  sums.keys = keys;
  for (const SumKey& key : keys)
    sums.keyColumns += key.isMonth() ? QStringLiteral("Mes") + key.column : key.column;
  sums.countColumn = QStringLiteral("NumeroLineas");
  sums.debitColumn = QStringLiteral("SumaDebe");
  sums.creditColumn = QStringLiteral("SumaHaber");
  sums.debitLinesColumn = QStringLiteral("LineasDebe");
  sums.creditLinesColumn = QStringLiteral("LineasHaber");
  return sums;
}

QStringList sumsDefinition(const Sums& sums, const TableDef& base) {
  TableDef table;
  table.Name = sums.sumsTable;
  QStringList keys;
  for (qsizetype i = 0; i < sums.keys.size(); ++i) {
    keys += bracketed(sums.keyColumns[i]);
    Field key{sums.keyColumns[i], FieldType::Long, 0, {}, true};
    for (const Field& field : base.Fields) {
      if (sums.keys[i].isMonth() || field.Name != sums.keys[i].column) continue;
      key.Type = field.Type;
      key.Size = field.Size;
    }
    table.Fields.push_back(key);
  }
  for (const QString& name : figures(sums)) table.CreateField(name, FieldType::Long);
  QStringList sql{createTableSql(table)};
  // No unique index: lines may lack a key, and nothing is equal to Null.
  if (!keys.isEmpty())
    sql += QStringLiteral("CREATE INDEX [") + sums.sumsTable + QStringLiteral("_claves] ON ") +
           bracketed(sums.sumsTable) + QStringLiteral(" (") + keys.join(QStringLiteral(", ")) +
           u')';
  sql += trigger(sums, QStringLiteral("INSERT"), {}, account(sums, QStringLiteral("NEW."), true));
  sql += trigger(sums, QStringLiteral("DELETE"), {}, account(sums, QStringLiteral("OLD."), false));
  sql += updateTrigger(sums);
  return sql;
}

QStringList sumsRecount(const Sums& sums) {
  return {QStringLiteral("DELETE FROM ") + bracketed(sums.sumsTable),
          QStringLiteral("INSERT INTO ") + bracketed(sums.sumsTable) + QStringLiteral(" (") +
              columns(sums) + QStringLiteral(") ") + recountSelect(sums)};
}

QStringList sumsRemoval(const Sums& sums) {
  QStringList sql;
  for (const char* event : kEvents)
    sql += QStringLiteral("DROP TRIGGER IF EXISTS [") + sums.sumsTable + u'_' +
           QLatin1String(event) + u']';
  return sql + QStringList{QStringLiteral("DROP TABLE IF EXISTS ") + bracketed(sums.sumsTable)};
}

QStringList sumsColumns(const Sums& sums) {
  QStringList columns{sums.sideColumn, sums.amountColumn};
  for (const SumKey& key : sums.keys)
    if (!columns.contains(key.column, Qt::CaseInsensitive)) columns += key.column;
  return columns;
}

QStringList sumsCounting(const Sums& sums) {
  return QStringList{millionths(sums, {}, true), millionths(sums, {}, false)} +
         keyExpressions(sums, {});
}

SumsChange sumsChange(const Sums& sums) {
  const QString table = bracketed(sums.sumsTable);
  QStringList tests, marks;
  for (qsizetype i = 0; i < sums.keyColumns.size(); ++i) {
    marks += u'?' + QString::number(i + figures(sums).size() + 1);
    tests += bracketed(sums.keyColumns[i]) + QStringLiteral(" IS ") + marks.back();
  }
  const QString where =
      QStringLiteral(" WHERE ") +
      (tests.isEmpty() ? QStringLiteral("1") : tests.join(QStringLiteral(" AND ")));
  QStringList moves;
  for (const QString& column : figures(sums)) {
    const QString mark = u'?' + QString::number(moves.size() + 1);
    moves += column + QStringLiteral(" = ") + column + QStringLiteral(" + ") + mark;
    marks += mark;
  }
  return {QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") +
              moves.join(QStringLiteral(", ")) + where,
          QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + columns(sums) +
              QStringLiteral(") VALUES (") + marks.join(QStringLiteral(", ")) + u')',
          QStringLiteral("DELETE FROM ") + table + where + QStringLiteral(" AND ") +
              sums.countColumn + QStringLiteral(" = 0")};
}

QStringList replaceGuards(const TableDef& table) {
  QStringList tests{QStringLiteral("rowid = NEW.rowid")};
  // The row number goes by three names.
  QStringList watched{QStringLiteral("rowid"), QStringLiteral("oid"), QStringLiteral("_rowid_")};
  for (const Index& index : table.Indexes) {
    if (!index.Unique && !index.Primary) continue;
    QStringList same;
    for (const QString& column : index.Fields) {
      same += bracketed(column) + QStringLiteral(" = NEW.") + bracketed(column);
      watched += bracketed(column);
    }
    tests += same.join(QStringLiteral(" AND "));
  }
  QStringList sql;
  for (const bool insert : {true, false}) {
    const QString event = insert ? QStringLiteral("INSERT") : QStringLiteral("UPDATE");
    const QString name = QStringLiteral("[librano_guarda_") + event + u'_' + table.Name + u']';
    QString body;
    for (const QString& test : std::as_const(tests))
      body += QStringLiteral("SELECT RAISE(ABORT, '") + QLatin1String(own::kTwinRow) +
              QStringLiteral("') WHERE EXISTS (SELECT 1 FROM ") + bracketed(table.Name) +
              QStringLiteral(" WHERE ") + test +
              (insert ? QString() : QStringLiteral(" AND rowid <> OLD.rowid")) +
              QStringLiteral("); ");
    sql += QStringLiteral("DROP TRIGGER IF EXISTS ") + name;
    sql += QStringLiteral("CREATE TRIGGER ") + name + QStringLiteral(" BEFORE ") + event +
           (insert ? QString() : QStringLiteral(" OF ") + watched.join(QStringLiteral(", "))) +
           QStringLiteral(" ON ") + bracketed(table.Name) + QStringLiteral(" BEGIN ") + body +
           QStringLiteral("END");
  }
  return sql;
}

QStringList amountGuards(const Sums& sums) {
  QStringList sql;
  for (const bool insert : {true, false}) {
    const QString event = insert ? QStringLiteral("INSERT") : QStringLiteral("UPDATE");
    const QString amount = bracketed(sums.amountColumn);
    const QString name = QStringLiteral("[librano_tope_") + event + u'_' + sums.baseTable + u'.' +
                         sums.amountColumn + u']';
    sql += QStringLiteral("DROP TRIGGER IF EXISTS ") + name;
    sql += QStringLiteral("CREATE TRIGGER ") + name + QStringLiteral(" BEFORE ") + event +
           (insert ? QString() : QStringLiteral(" OF ") + amount) + QStringLiteral(" ON ") +
           bracketed(sums.baseTable) + QStringLiteral(" WHEN abs(NEW.") + amount +
           QStringLiteral(") >= 1e12 BEGIN SELECT RAISE(ABORT, '") + QLatin1String(own::kTooLarge) +
           QStringLiteral("'); END");
  }
  return sql;
}

QStringList sumsRebuild(const Sums& sums, const TableDef& base) {
  return sumsRemoval(sums) + sumsDefinition(sums, base) + sumsRecount(sums) + replaceGuards(base) +
         amountGuards(sums);
}
