// What a plan promises besides its rows: how it is read, what it keeps of the statement, and that
// no way of reading changes a total.
#include <QRandomGenerator>

#include "foundation/data/lang/libro.h"

namespace {

// How the file's engine reads a statement.
QString explained(const Libro& libro, const QString& sql) {
  QStringList steps;
  for (const QString& row : libro.rows("EXPLAIN QUERY PLAN " + sql)) steps << row.section(" | ", 3);
  return steps.join("; ");
}

// A journal of random lines over few accounts, so that sums meet in every way.
void fillAtRandom(const Libro& libro, quint32 seed, int lines) {
  QRandomGenerator random(seed);
  const char* accounts[] = {"300000001", "430000001", "477000000",
                            "570000001", "700000001", "999999999"};
  libro.connection->execute("DELETE FROM Diario");
  for (int line = 1; line <= lines; ++line) {
    const bool debit = random.bounded(2) == 0;
    const double amount = random.bounded(-500000, 1000000) / 100.0;
    libro.connection->execute(
        QString("INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,DH,Importe,TipoDiario)"
                " VALUES (%1,%2,'2003-%3-10','%4','%5',%6,'1')")
            .arg(line)
            .arg(random.bounded(1, 15))
            .arg(random.bounded(1, 13), 2, 10, QLatin1Char('0'))
            .arg(accounts[random.bounded(6)], debit ? "D" : "H")
            .arg(debit ? amount : -amount, 0, 'f', 2));
  }
}

// Rows with their numbers as books print them: sums of doubles differ in the last bits by their
// order.
QStringList rounded(const QStringList& rows) {
  QStringList all;
  for (const QString& row : rows) {
    QStringList cells = row.split(" | ");
    for (QString& cell : cells) {
      bool isNumber = false;
      const double number = cell.toDouble(&isNumber);
      if (isNumber) cell = QString::number(std::abs(number) < 5e-5 ? 0.0 : number, 'f', 4);
    }
    all << cells.join(" | ");
  }
  return all;
}

// The stored queries that can be opened.
QStringList queriesOf(const Libro& libro) {
  QStringList names = libro.db->QueryDefs();
  for (const char* broken : {"SqlAcumulados", "Serpiente", "Cola"})
    EXPECT_TRUE(names.removeOne(broken)) << broken;
  return names;
}

}  // namespace

TEST(Plan, LosTotalesSalenDeLasSumas) {
  const Libro libro;
  // Source, the table that it must read, and whether one row is looked up.
  const struct {
    const char* source;
    const char* table;
    bool lookUp;
  } cases[] = {
      {"Select * from SqlSumaDiario", "librano_sumas_1", false},
      {"SqlSumaDiarioPorAsientos", "librano_sumas_2", false},
      {"Select * from SqlSumaDiarioPorAsientos where NAsiento = 12", "librano_sumas_2", true},
      {"Select * from SqlDiarioSaldosCuentasTotal where subcuenta='43'", "librano_sumas_3", true},
      {"SqlSubcuentas con saldo", "librano_sumas_3", false},
      {"Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='43' and Mes = '2'",
       "librano_sumas_4", true},
      {"SqlSumasSaldosN1", "librano_sumas_4", false},
      {"Select * from SqlSumasSaldosN4 where Subcuenta='430000001'", "librano_sumas_4", true},
      {"SqlPerdidasyGanancias", "librano_sumas_4", false},
      {"SqlBalance", "librano_sumas_4", false},
      // Conditions on what the sums don't keep, and sums of the amounts as they stand, read the
      // lines.
      {"SqlDiarioBuscaDescuadres", "Diario", false},
      {"Select Sum(Debe) as T from SqlDiarioPrincipal where Punteo='*'", "Diario", false},
      {"Select Sum(Debe) as T, Count(*) as N from SqlDiarioPrincipal", "Diario", false},
  };
  for (const auto& expected : cases) {
    const Plan plan = libro.planOf(expected.source);
    EXPECT_TRUE(plan.wholeSql.contains(QString("[%1]").arg(expected.table)))
        << plan.wholeSql.toStdString();
    const QString read = explained(libro, plan.wholeSql);
    EXPECT_TRUE(!expected.lookUp || !read.contains("SCAN")) << read.toStdString();
  }
}

TEST(Plan, LasSumasDanLoMismoQueLasLineas) {
  const Libro withSums, withoutSums(false);
  const QStringList sources =
      queriesOf(withSums) +
      QStringList{"Select * from SqlDiarioSaldosCuentasTotal where SubcuentaDos<='5'",
                  "Select * from SqlSumasSaldosN4 where Mes>=3 and SumaDeSaldo > 0",
                  "Select * from SqlBalance where Mes<=6 order by Saldo desc, Mes, Subcuenta",
                  "Select Sum(SumaDeDebe) as T from SqlDiarioSaldosCuentasMeses where Mes = 3",
                  "Select Sum(Debe*2) as T from SqlDiarioPrincipal",
                  "Select S.Cuenta, Sum(D.Debe) as T from Subcuentas as S left join "
                  "SqlDiarioPrincipal as D on S.Subcuenta = D.Subcuenta group by S.Cuenta"};
  for (quint32 seed = 0; seed <= 5; ++seed) {
    for (const Libro* libro : {&withSums, &withoutSums}) fillAtRandom(*libro, seed, seed ? 60 : 0);
    for (const QString& source : sources)
      EXPECT_EQ(rounded(withSums.read(source)), rounded(withoutSums.read(source)))
          << source.toStdString() << " seed " << seed;
  }
}

TEST(Plan, LasClavesSalenDeLosIndices) {
  const Libro libro;
  const struct {
    const char* source;
    const char* plan;
  } cases[] = {
      {"Select * from SqlDiarioPrincipalBlanco order by nasiento",
       "SCAN t0 USING COVERING INDEX librano_Diario_NAsiento"},
      {"Select * from SqlDiarioPrincipalBlanco where NAsiento = 3",
       "SEARCH t0 USING COVERING INDEX librano_Diario_NAsiento (NAsiento=?)"},
      {"Select * from SqlDiarioPrincipalBlanco where Subcuenta='43'",
       "SEARCH t0 USING COVERING INDEX librano_Diario_Subcuenta (Subcuenta=?)"},
      {"Select * from Subcuentas where Subcuenta like '43#*'",
       "SEARCH t0 USING COVERING INDEX Subcuentas.Subcuenta (Subcuenta>? AND Subcuenta<?); "
       "USE TEMP B-TREE FOR ORDER BY"},
      {"SqlDiarioPrincipal", "SCAN t0"},
  };
  for (const auto& expected : cases)
    EXPECT_EQ(explained(libro, libro.planOf(expected.source).keysSql), expected.plan);
}

TEST(Plan, NadaDeLoTecleadoQuedaEnSusTextos) {
  const Libro libro;
  const Plan plan = libro.planOf(
      "Select NLinea, IIf(DH='tecleado',4711,'otro') as Marca from Diario where "
      "Descripcion = \"L'Oréal tecleado\" and Subcuenta like '4711*' and Importe > "
      "4711.25 and Fecha < #4-7-11# and Punteo like '*tecleado'");
  for (const char* typed : {"tecleado", "4711", "otro", "Oréal", "2011"})
    EXPECT_FALSE(plan.wholeSql.contains(typed)) << typed;
  EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), QStringList());
}

// Statements that differ only in their values share a plan; the others must not.
TEST(Plan, SirveConOtrosValores) {
  const Libro libro;
  const struct {
    const char* before;
    const char* asked;
    bool shared;
  } cases[] = {
      {"Select * from Diario where NAsiento = 3", "Select  *  from Diario where NAsiento=2", true},
      {"Select NLinea from Diario where Fecha >= #2-1-03#",
       "Select NLinea from Diario where Fecha >= #31/12/03#", true},
      {"Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='1' and Mes='1'",
       "Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='430000001' and Mes='3'", true},
      {"Select * from SqlDiarioPrincipalBlanco where Importe =1 or Importe =-1 order by Nasiento",
       "Select * from SqlDiarioPrincipalBlanco where Importe =116 or Importe =-116 order by "
       "Nasiento",
       true},
      {"Select NLinea from Diario where NLinea in ('1', 2) and Subcuenta like '57*'",
       "Select NLinea from Diario where NLinea in ('7', 12) and Subcuenta like '57*'", true},
      {"Select * from Diario where NAsiento = 3", "Select * from Diario where NAsiento = '3'",
       false},
      {"Select * from Diario where Subcuenta like '57*'",
       "Select * from Diario where Subcuenta like '43*'", false},
      {"Select * from Diario where [DH] = 'D'", "Select * from Diario where DH = 'D'", false},
      {"Select Left(DH,1) as A from Diario group by Left(DH,1)",
       "Select Left(DH,2) as A from Diario group by Left(DH,2)", false},
      {"Diario", "Select * from Diario", false},
  };
  for (const auto& pair : cases) {
    const Compiled before = libro.connection->compiled(pair.before);
    const Compiled asked = libro.connection->compiled(pair.asked);
    EXPECT_EQ(before.plan == asked.plan, pair.shared) << pair.asked;
    const QStringList fresh = libro.read(pair.asked);
    EXPECT_FALSE(fresh.isEmpty()) << pair.asked;
    EXPECT_EQ(libro.rows(asked.plan->wholeSql, asked.params), fresh) << pair.asked;
  }
  EXPECT_EQ(numeroDeError([&] {
              libro.connection->compiled("Select * from Diario where NAsiento = 'tres'");
            }),
            err::kTiposEnCriterio);
}

// Another program altogether reads the stored queries as views, in some order of their rows.
TEST(Vistas, DanLasFilasDeSuConsulta) {
  Libro libro;
  libro.engine.flush();
  for (const QString& name : queriesOf(libro)) {
    const Plan plan = libro.planOf(name);
    QStringList columns;
    for (const OutputColumn& column : plan.columns) columns << u'[' + column.name + u']';
    QStringList expected = rounded(libro.rows(plan.wholeSql, plan.params));
    QStringList shown =
        rounded(libro
                    .herramienta(QString("SELECT %1 FROM [%2]").arg(columns.join(u','), name),
                                 {"-nullvalue", "Null", "-separator", " | "})
                    .split(u'\n'));
    expected.replaceInStrings("''", "");
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
  EXPECT_EQ(numeroDeError([&] { libro.planOf("SqlBalance"); }), err::kOrigenDesconocido);
}
