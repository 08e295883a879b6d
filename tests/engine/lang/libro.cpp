#include "engine/lang/libro.h"

#include <QFile>

namespace {

QString cellText(const Statement& statement, int column) {
  if (statement.isNull(column)) return "Null";
  const QString text = statement.text(column);
  if (text.isEmpty()) return "''";
  return text.endsWith(".0") ? text.chopped(2) : text;  // a double without decimals
}

}  // namespace

Libro::Libro(bool withSums) {
  QFile file(LIBRANO_DATOS "/sentencias/libro.txt");
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
  for (const QString& line : lines) readLine(line);
  for (const char* column : {"NAsiento", "Subcuenta"}) db->keepIndex("Diario", {column});
  db->appendIndex("Subcuentas", {"Subcuenta", true, true, {"Subcuenta"}});
  if (!withSums) return;
  const QList<QList<SumKey>> all = {
      {}, {{"NAsiento"}}, {{"Subcuenta"}}, {{"Subcuenta"}, {"Fecha", SumKey::Part::Month}}};
  for (const QList<SumKey>& keys : all) db->keepSums("Diario", "DH", "Importe", keys);
}

void Libro::readLine(const QString& line) {
  if (line.isEmpty() || line.startsWith(u'#')) return;
  const QString head = line.section(": ", 0, 0);
  const QString rest = line.section(": ", 1);
  if (head.startsWith("tabla ")) {
    createTable(head.mid(6), rest);
  } else if (head.startsWith("consulta ")) {
    db->CreateQueryDef(head.mid(9), rest);
  } else {
    QStringList values;
    for (const QString& cell : line.trimmed().split(" | "))
      values << (cell == "Null" || cell == "''" ? cell : u'\'' + cell + u'\'');
    connection->execute(QString("INSERT INTO [%1] VALUES (%2)")
                            .arg(connection->schema()->tables().back().Name, values.join(u',')));
  }
}

void Libro::createTable(const QString& name, const QString& columns) {
  static const QHash<QString, FieldType> kinds{{"largo", FieldType::Long},
                                               {"doble", FieldType::Double},
                                               {"sino", FieldType::Boolean},
                                               {"fecha", FieldType::Date},
                                               {"texto", FieldType::Text}};
  TableDef table{name, {}, {}};
  for (const QString& column : columns.split(", ")) {
    const QStringList words = column.split(u' ');
    table.CreateField(words[0], kinds.value(words[1]), words.value(2).toInt());
  }
  db->appendTable(table);
}

Written::Written(const lang::Query& query, const QList<Variant>& literals)
    : Texts(textsOf(query)), params(literals + own), keys(lang::hasKeys(query)) {
  for (const lang::Output& output : query.outputs) columns << output.name;
}

Written Libro::planOf(const QString& source) const {
  const lang::Parsed parsed(source, kAno);
  return Written(*lang::resolved(parsed, *connection->schema(), kAno), parsed.literals());
}

QStringList Libro::matching(const QString& source, const QString& criterion) const {
  const lang::Parsed parsed(source, kAno);
  const Written found(*lang::matching(parsed, criterion, *connection->schema(), kAno),
                      parsed.literals());
  if (found.keys) return rows(found.keysSql, found.params);
  QStringList places;
  const QStringList met = rows(found.wholeSql, found.params);
  for (qsizetype i = 0; i < met.size(); ++i)
    if (met[i] != "0" && met[i] != "Null") places << QString::number(i);
  return places;
}

QStringList Libro::rows(const QString& sql, const QList<Variant>& params) const {
  Statement statement = connection->prepare(sql);
  statement.bind(params);
  QStringList all;
  while (statement.step()) {
    QStringList cells;
    for (int i = 0; i < statement.columnCount(); ++i) cells << cellText(statement, i);
    all << cells.join(" | ");
  }
  return all;
}

QStringList Libro::read(const QString& source) const {
  const Written plan = planOf(source);
  return rows(plan.wholeSql, plan.params);
}
