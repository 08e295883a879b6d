// What a plan promises besides its rows: how it is read, what it keeps of the statement, and that
// no way of reading changes a total.

#include "company/consultas.h"
#include "engine/lang/libro.h"

namespace {

// How the file's engine reads a statement.
QString explained(const Libro& libro, const QString& sql) {
  QStringList steps;
  for (const QString& row : libro.rows("EXPLAIN QUERY PLAN " + sql)) steps << row.section(" | ", 3);
  return steps.join("; ");
}

// Which of the journal and its sums a statement opens to read.
QString journalRead(const Libro& libro, const QString& sql) {
  QStringList tables;
  for (const QString& step : libro.rows("EXPLAIN " + sql)) {
    const QStringList cells = step.split(" | ");  // address, operation, cursor, first page
    if (cells[1] != "OpenRead") continue;
    const QString table =
        libro.rows("SELECT tbl_name FROM sqlite_schema WHERE rootpage = " + cells[3]).value(0);
    const bool journal = table == "Diario" || table.startsWith("librano_sumas");
    if (journal && !tables.contains(table)) tables << table;
  }
  return tables.join(", ");
}

// A journal of random lines over few accounts, so that sums meet in every way. Doubles hold its
// quarters exactly, whatever the order in which they are added.
void fillAtRandom(const Libro& libro, quint32 seed, int lines) {
  QRandomGenerator random(seed);
  const char* accounts[] = {"'300000001'", "'430000001'", "'477000000'", "'570000001'",
                            "'700000001'", "'999999999'", "Null"};
  libro.store().execute("DELETE FROM Diario");
  for (int line = 1; line <= lines; ++line)
    libro.store().execute(
        QString("INSERT INTO Diario(Descripcion,NLinea,NAsiento,Fecha,Subcuenta,DH,Importe) "
                "VALUES ('Cobro',%1,%2,'2003-%3-10',%4,'%5',%6)")
            .arg(line)
            .arg(random.bounded(1, 15))
            .arg(random.bounded(1, 13), 2, 10, QLatin1Char('0'))
            .arg(
                accounts[random.bounded(7)], random.bounded(2) ? "D" : "H",
                random.bounded(8) ? QString::number(random.bounded(-10000, 10000) / 4.0) : "Null"));
}

// The stored queries that can be opened.
QStringList queriesOf(const Libro& libro) {
  QStringList names = libro.db->QueryDefs();
  for (const char* broken : {"SqlAcumulados", "Serpiente", "Cola"})
    EXPECT_TRUE(names.removeOne(broken)) << broken;
  return names;
}

}  // namespace

// Every query that a company is made with, and what its screens ask of it: the journal's lines are
// read by those alone that want them, and the totals that answer at each key look their rows up.
TEST(Plan, LosTotalesSalenDeLasSumas) {
  const Libro libro;
  QStringList own;
  for (const Consulta& query : consultasDeEmpresa()) own << QString::fromUtf8(query.nombre);
  own.removeOne("SqlAcumulados");  // can't be opened
  for (const QString& line : lineasDeDatos("sentencias/planes.txt")) {
    const QString read = line.section(": ", 0, 0), source = line.section(": ", 1);
    SCOPED_TRACE(source.toStdString());
    own.removeOne(source);
    const QString sql = libro.planOf(source).wholeSql;
    const bool looksUp = !explained(libro, sql).contains("SCAN");
    EXPECT_EQ(journalRead(libro, sql), QString(read).remove(" busca").remove("-"))
        << sql.toStdString();
    EXPECT_TRUE(looksUp || !read.endsWith("busca")) << sql.toStdString();
  }
  EXPECT_TRUE(own.isEmpty()) << own.join(", ").toStdString();
}

TEST(Plan, LasSumasDanLoMismoQueLasLineas) {
  const Libro withSums, withoutSums(false);
  const QStringList sources = queriesOf(withSums) + lineasDeDatos("sentencias/consumas.txt");
  for (quint32 seed = 0; seed <= 5; ++seed) {
    for (const Libro* libro : {&withSums, &withoutSums}) fillAtRandom(*libro, seed, seed ? 60 : 0);
    for (const QString& source : sources)
      EXPECT_EQ(withSums.read(source), withoutSums.read(source))
          << source.toStdString() << " seed " << seed;
  }
}

TEST(Plan, LasClavesSalenDeLosIndices) {
  const Libro libro;
  // Sums that are what is asked aren't added up again.
  EXPECT_FALSE(libro.planOf("SqlSumasSaldosN4").wholeSql.contains("GROUP BY"));
  for (const QStringList& c : casosDeDatos("sentencias/claves.txt", "claves"))
    EXPECT_EQ(explained(libro, libro.planOf(c[0]).keysSql), c[1]);
}

TEST(Plan, NadaDeLoTecleadoQuedaEnSusTextos) {
  const QString sql =
      Libro()
          .planOf(
              "Select NLinea, IIf(DH='tecleado',4711,'tecleado') as Marca from "
              "Diario where Descripcion = \"L'tecleado\" and Subcuenta like '4711*' "
              "and Importe > 4711.25 and Fecha < #4-7-11# and Punteo like '*tecleado'")
          .wholeSql;
  for (const char* typed : {"tecleado", "4711", "2011"}) EXPECT_FALSE(sql.contains(typed)) << typed;
}

// Statements that differ only in their values share a plan; the others must not.
TEST(Plan, SirveConOtrosValores) {
  const Libro libro;
  for (const char* kind : {"común", "propio"})
    for (const QStringList& c : casosDeDatos("sentencias/planescomunes.txt", kind)) {
      const Compiled before = libro.connection->sources().compiled(c[0]);
      const Compiled now = libro.connection->sources().compiled(c[1]);
      EXPECT_EQ(before.plan == now.plan, *kind == 'c') << qPrintable(c[1]);
      const QStringList fresh = libro.read(c[1]);
      EXPECT_FALSE(fresh.isEmpty()) << qPrintable(c[1]);
      const Texts& texts = dynamic_cast<FileReader&>(*now.plan->reader).texts();
      EXPECT_EQ(libro.rows(texts.wholeSql, now.literals + texts.own), fresh) << qPrintable(c[1]);
    }
  EXPECT_ERROR(err::kTiposEnCriterio, libro.connection->sources().compiled(
                                          "Select * from Diario where NAsiento = 'tres'"));
}

// Another program altogether reads the stored queries as views, in some order of their rows.
TEST(Vistas, DanLasFilasDeSuConsulta) {
  Libro libro;
  fillAtRandom(libro, 1, 60);
  libro.engine.flush();
  for (const QString& name : queriesOf(libro)) {
    QStringList columns;
    for (const QString& column : libro.planOf(name).columns) columns << u'[' + column + u']';
    QStringList expected = libro.read(name).replaceInStrings("''", "");
    QStringList shown =
        libro
            .herramienta(QString("SELECT %1 FROM [%2]").arg(columns.join(u','), name),
                         {"-nullvalue", "Null", "-separator", " | "})
            .remove(QRegularExpression("\\.0\\b"))
            .split(u'\n');
    expected.sort();
    shown.sort();
    EXPECT_EQ(shown, expected) << name.toStdString();
  }
  // Those that can't be opened have none, nor those that rested on one that goes.
  const auto views = [&] {
    return libro.herramienta("SELECT count(*) FROM sqlite_schema WHERE type = 'view'").toInt();
  };
  EXPECT_EQ(views(), queriesOf(libro).size());
  libro.db->deleteQuery("SqlDiarioSaldosCuentasMeses");
  libro.engine.flush();
  EXPECT_EQ(views(), queriesOf(libro).size() - 2);
  EXPECT_ERROR(err::kOrigenDesconocido, libro.planOf("SqlBalance"));
}
