// Statements as a bookkeeper reads them: each case of tests/datos/sentencias gives a source and the
// rows that must come out of it.
#include <QFile>

#include "foundation/data/lang/libro.h"

namespace {

QStringList linesOf(const QString& file) {
  QFile data(QString(LIBRANO_DATOS "/sentencias/") + file);
  EXPECT_TRUE(data.open(QIODevice::ReadOnly)) << file.toStdString();
  QStringList lines;
  for (const QString& line : QString::fromUtf8(data.readAll()).split(u'\n'))
    if (!line.startsWith(u'#') && !line.trimmed().isEmpty()) lines << line;
  return lines;
}

struct Caso {
  QString origen;
  QString columnas;
  QString busca;
  QStringList filas;  // or what the criterion finds
};

std::vector<Caso> casesOf(const QString& file) {
  std::vector<Caso> cases;
  for (const QString& line : linesOf(file)) {
    const QString key = line.section(u':', 0, 0);
    const QString rest = line.section(u':', 1).trimmed();
    if (key == "origen") {
      cases.push_back({rest, {}, {}, {}});
    } else if (key == "columnas") {
      cases.back().columnas = rest;
    } else if (key == "busca") {
      cases.back().busca = rest;
    } else {
      cases.back().filas << line.trimmed();
    }
  }
  return cases;
}

void check(const Libro& libro, const Caso& caso) {
  SCOPED_TRACE(caso.origen.toStdString() + "  " + caso.busca.toStdString());
  if (!caso.busca.isEmpty()) {
    const FindPlan find =
        compileCriterion(caso.origen, caso.busca, *libro.connection->schema(), Libro::kAno);
    EXPECT_EQ(libro.rows(find.sql, find.params), caso.filas) << find.sql.toStdString();
    return;
  }
  const Plan plan = libro.planOf(caso.origen);
  EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), caso.filas) << plan.wholeSql.toStdString();
  if (plan.updatable) {
    // One by one too, as a recordset reads them.
    QStringList rows;
    for (const QString& key : libro.rows(plan.keysSql, plan.params))
      rows << libro.rows(plan.rowSql, {key.toInt()});
    EXPECT_EQ(rows, caso.filas) << plan.keysSql.toStdString();
  }
  if (caso.columnas.isEmpty()) return;
  QStringList names;
  for (const OutputColumn& column : plan.columns) names << column.name;
  EXPECT_EQ(names.join(" | "), caso.columnas);
}

}  // namespace

TEST(Sentencias, DanLasFilasDelLibro) {
  const Libro withSums, withoutSums(false);
  for (const char* file : {"consultas.txt", "diario.txt", "lenguaje.txt", "busquedas.txt"}) {
    const std::vector<Caso> cases = casesOf(file);
    ASSERT_FALSE(cases.empty()) << file;
    for (const Caso& caso : cases) {
      check(withSums, caso);
      check(withoutSums, caso);
    }
  }
}

TEST(Sentencias, LasErroneasDanSuNumero) {
  const Libro libro;
  for (const QString& line : linesOf("errores.txt")) {
    const QString source = line.section(u':', 1).trimmed();
    EXPECT_EQ(numeroDeError([&] { libro.planOf(source); }), line.section(u':', 0, 0).toInt())
        << source.toStdString();
  }
}
