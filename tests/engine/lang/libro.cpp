#include "engine/lang/libro.h"

#include "company/crearbase.h"

namespace {

QString cellText(const Statement& statement, int column) {
  if (statement.isNull(column)) return "Null";
  const QString text = statement.text(column);
  if (text.isEmpty()) return "''";
  return text.endsWith(".0") ? text.chopped(2) : text;  // a double without decimals
}

// The file that the program makes before it has rows of its own. Making it takes longer than most
// of the tests.
const QByteArray& emptyCompany() {
  static const QByteArray made = [] {
    constexpr int kSinFilas = 0;
    const FicheroEnDisco file;
    DBEngine engine;
    CrearBase(engine, file.ruta, 3, 9, kSinFilas);
    engine.flush();
    return contenidoDe(file.ruta);
  }();
  return made;
}

}  // namespace

Libro::Libro(bool withSums) {
  haceFichero(ruta, emptyCompany());
  db = engine.Workspaces(0).OpenDatabase(ruta);
  connection = db->connection();
  connection->begin(Doing::Locking);
  for (const QString& line : lineasDeDatos("sentencias/libro.txt")) readLine(line);
  if (withSums) return;
  store().execute("DELETE FROM librano_sumas");
  store().definitionsChanged();
}

void Libro::readLine(const QString& line) {
  const QString head = line.section(": ", 0, 0);
  if (head.startsWith("tabla ")) {
    table_ = head.mid(6);
    columns_ = line.section(": ", 1);
    store().execute(QString("DELETE FROM [%1]").arg(table_));
  } else if (head.startsWith("consulta ")) {
    db->CreateQueryDef(head.mid(9), line.section(": ", 1));
  } else {
    insertRow(line.split(" | "));
  }
}

void Libro::insertRow(const QStringList& cells) {
  QStringList values;
  for (const QString& cell : cells)
    values << (cell == "Null" || cell == "''" ? cell : u'\'' + cell + u'\'');
  store().execute(
      QString("INSERT INTO [%1] %2 VALUES (%3)")
          .arg(table_, columns_.isEmpty() ? QString() : u'(' + columns_ + u')', values.join(u',')));
}

Written::Written(const lang::Query& query, const QList<Variant>& literals)
    : Texts(textsOf(query)), params(literals + own), keys(lang::hasKeys(query)) {
  for (const lang::Output& output : query.outputs) columns << output.name;
}

Written Libro::planOf(const QString& source) const {
  const lang::Parsed parsed(source, kAno);
  return Written(*lang::resolved(parsed, *store().schema(), kAno), parsed.literals());
}

std::vector<Key> Libro::firstKeys(const QString& source, int most) const {
  const lang::Parsed parsed(source, kAno);
  FileReader reader(store(), *lang::resolved(parsed, *store().schema(), kAno));
  return reader.keys(parsed.literals(), most);
}

QStringList Libro::matching(const QString& source, const QString& criterion) const {
  const lang::Parsed parsed(source, kAno);
  const auto found = [&](bool byKeys) {
    return Written(*lang::matching(parsed, criterion, byKeys, *store().schema(), kAno),
                   parsed.literals());
  };
  const Written plan = planOf(source), places = found(false), keys = found(true);
  QStringList all, met = rows(places.wholeSql, places.params);
  if (plan.keys) all = rows(plan.keysSql, plan.params);
  for (qsizetype i = 0; i < met.size(); ++i) {
    const bool meets = met[i] != "0" && met[i] != "Null";
    met[i] = !meets ? QString() : plan.keys ? all.value(i) : QString::number(i);
  }
  met.removeAll(QString());
  if (plan.keys) {
    EXPECT_EQ(rows(keys.keysSql, keys.params), met) << source.toStdString();
  }
  return met;
}

QStringList Libro::rows(const QString& sql, const QList<Variant>& params) const {
  Statement statement = store().prepare(sql);
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
