// Statements as a bookkeeper reads them: each case of tests/datos/sentencias gives a source and the
// rows that must come out of it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "foundation/data/errorejecucion.h"
#include "foundation/data/lang/libro.h"

namespace {

QStringList linesOf(const QString& file) {
  QFile data(QStringLiteral(LIBRANO_DATOS "/sentencias/") + file);
  EXPECT_TRUE(data.open(QIODevice::ReadOnly)) << file.toStdString();
  QStringList lines;
  for (const QString& line : QString::fromUtf8(data.readAll()).split(u'\n')) {
    if (!line.startsWith(u'#') && !line.trimmed().isEmpty()) lines << line;
  }
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
    if (key == u"origen") {
      cases.push_back({rest, {}, {}, {}});
    } else if (key == u"columnas") {
      cases.back().columnas = rest;
    } else if (key == u"busca") {
      cases.back().busca = rest;
    } else {
      cases.back().filas << line.trimmed();
    }
  }
  return cases;
}

// The rows of an updatable source one by one, as a recordset reads them.
QStringList rowsByKey(const Libro& libro, const Plan& plan) {
  QStringList rows;
  for (const QString& key : libro.rows(plan.keysSql, plan.params)) {
    rows << libro.rows(plan.rowSql, {Variant(key.toInt())});
  }
  return rows;
}

void check(const Libro& libro, const Caso& caso) {
  if (!caso.busca.isEmpty()) {
    const FindPlan find = compileCriterion(caso.origen, caso.busca, libro, Libro::kAno);
    EXPECT_EQ(libro.rows(find.sql, find.params), caso.filas) << find.sql.toStdString();
    return;
  }
  const Plan plan = compile(caso.origen, libro, Libro::kAno);
  EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), caso.filas) << plan.wholeSql.toStdString();
  if (plan.updatable) {
    EXPECT_EQ(rowsByKey(libro, plan), caso.filas) << plan.keysSql.toStdString();
  }
  if (caso.columnas.isEmpty()) return;
  QStringList names;
  for (const OutputColumn& column : plan.columns) names << column.name;
  EXPECT_EQ(names.join(QStringLiteral(" | ")), caso.columnas);
}

class Sentencias : public testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(Sentencias, DanLasFilasDelLibro) {
  const Libro withSums;
  const Libro withoutSums(false);
  const std::vector<Caso> cases = casesOf(QString::fromUtf8(GetParam()));
  ASSERT_FALSE(cases.empty());
  for (const Caso& caso : cases) {
    SCOPED_TRACE(caso.origen.toStdString() + "  " + caso.busca.toStdString());
    check(withSums, caso);
    check(withoutSums, caso);
  }
}

INSTANTIATE_TEST_SUITE_P(Datos, Sentencias,
                         testing::Values("consultas.txt", "diario.txt", "lenguaje.txt",
                                         "busquedas.txt"));

TEST(SentenciasErroneas, DanSuNumero) {
  const Libro libro;
  for (const QString& line : linesOf(QStringLiteral("errores.txt"))) {
    const QString source = line.section(u':', 1).trimmed();
    try {
      compile(source, libro, Libro::kAno);
      ADD_FAILURE() << "accepted: " << source.toStdString();
    } catch (const ErrorEjecucion& error) {
      EXPECT_EQ(error.numero(), line.section(u':', 0, 0).toInt()) << source.toStdString();
    }
  }
}
