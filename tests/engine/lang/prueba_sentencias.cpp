// Statements as a bookkeeper reads them: each case of tests/datos/sentencias gives a source and the
// rows that must come out of it.

#include "engine/lang/libro.h"

namespace {

// A case is its source, maybe the names of its columns or a criterion, and rows: its own, or what
// the criterion finds.
void check(const Libro& libro, QStringList lines) {
  const QString source = lines.takeFirst();
  const auto take = [&](const QString& key) {
    const bool given = !lines.isEmpty() && lines.front().startsWith(key);
    return given ? lines.takeFirst().mid(key.size()) : QString();
  };
  const QString columns = take("columnas: ");
  const QString criterion = take("busca: ");
  SCOPED_TRACE(source.toStdString() + "  " + criterion.toStdString());
  if (!criterion.isEmpty()) {
    EXPECT_EQ(libro.matching(source, criterion), lines);
    return;
  }
  const Written plan = libro.planOf(source);
  EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), lines) << plan.wholeSql.toStdString();
  if (plan.keys) {
    // One by one too, as a recordset reads them.
    QStringList rows;
    const QStringList keys = libro.rows(plan.keysSql, plan.params);
    for (const QString& key : keys)
      rows << libro.rows(plan.rowSql, QList<Variant>{key.toInt()} + plan.rowOwn);
    EXPECT_EQ(rows, lines) << plan.keysSql.toStdString();
    for (const int most : {1, 2, 5}) {
      QStringList first;
      for (const Key key : libro.firstKeys(source, most)) first << QString::number(key);
      EXPECT_EQ(first, keys.first(qMin<qsizetype>(most, keys.size()))) << most;
    }
  }
  if (columns.isEmpty()) return;
  EXPECT_EQ(plan.columns.join(" | "), columns);
}

}  // namespace

TEST(Sentencias, DanLasFilasDelLibro) {
  const Libro withSums, withoutSums(false);
  for (const char* file : {"consultas.txt", "diario.txt", "lenguaje.txt", "busquedas.txt"}) {
    const QStringList cases =
        lineasDeDatos(QString("sentencias/") + file).join(u'\n').split("origen: ").mid(1);
    ASSERT_FALSE(cases.empty()) << file;
    for (const QString& lines : cases)
      for (const Libro* libro : {&withSums, &withoutSums})
        check(*libro, lines.split(u'\n', Qt::SkipEmptyParts));
  }
}

TEST(Sentencias, LasErroneasDanSuNumero) {
  const Libro libro;
  for (const QString& line : lineasDeDatos("sentencias/errores.txt")) {
    const QString source = line.section(u':', 1).trimmed();
    EXPECT_ERROR(line.section(u':', 0, 0).toInt(), libro.planOf(source)) << source.toStdString();
  }
}
