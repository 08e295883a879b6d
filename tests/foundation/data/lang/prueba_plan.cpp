// What a plan promises besides its rows: how it is read, what it keeps of the statement, and that
// no way of reading changes a total.
#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "foundation/data/errorejecucion.h"
#include "foundation/data/lang/libro.h"

namespace {

QString planOf(const Libro& libro, const QString& source) {
  const Plan plan = compile(source, libro, Libro::kAno);
  return libro.explained(plan.updatable ? plan.keysSql : plan.wholeSql);
}

// A journal of random lines over few accounts, so that sums meet in every way.
void fillAtRandom(const Libro& libro, quint32 seed) {
  QRandomGenerator random(seed);
  libro.run(QStringLiteral("DELETE FROM Diario"));
  const char* accounts[] = {"300000001", "430000001", "477000000",
                            "570000001", "700000001", "999999999"};
  for (int line = 1; line <= 60; ++line) {
    const bool debit = random.bounded(2) == 0;
    const double amount = random.bounded(-500000, 1000000) / 100.0;
    libro.run(
        QStringLiteral("INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,DH,Importe,TipoDiario)"
                       " VALUES (%1,%2,'2003-%3-10','%4','%5',%6,'1')")
            .arg(line)
            .arg(random.bounded(1, 15))
            .arg(random.bounded(1, 13), 2, 10, QLatin1Char('0'))
            .arg(QLatin1String(accounts[random.bounded(6)]), QLatin1String(debit ? "D" : "H"))
            .arg(debit ? amount : -amount, 0, 'f', 2));
  }
  libro.sum();
}

// Rows with their numbers as books print them: sums of doubles differ in the last bits by their
// order.
QStringList rounded(const QStringList& rows) {
  QStringList all;
  for (const QString& row : rows) {
    QStringList cells = row.split(QStringLiteral(" | "));
    for (QString& cell : cells) {
      bool isNumber = false;
      const double number = cell.toDouble(&isNumber);
      if (isNumber) cell = QString::number(std::abs(number) < 5e-5 ? 0.0 : number, 'f', 4);
    }
    all << cells.join(QStringLiteral(" | "));
  }
  return all;
}

}  // namespace

TEST(Plan, LosTotalesSalenDeLasSumas) {
  const Libro libro;
  // Source, the sums it must read, and whether one row is looked up.
  const struct {
    const char* source;
    const char* sums;
    bool lookUp;
  } cases[] = {
      {"Select * from SqlSumaDiario", "sumas_0", false},
      {"SqlSumaDiarioPorAsientos", "sumas_1", false},
      {"Select * from SqlSumaDiarioPorAsientos where NAsiento = 12", "sumas_1", true},
      {"Select * from SqlDiarioSaldosCuentasTotal where subcuenta='430000001'", "sumas_2", true},
      {"SqlSubcuentasSaldosCuentas", "sumas_2", false},
      {"SqlSubcuentas con saldo", "sumas_2", false},
      {"Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='43' and Mes = '2'", "sumas_3",
       true},
      {"SqlSumasSaldosN1", "sumas_3", false},
      {"SqlSumasSaldosN2", "sumas_3", false},
      {"SqlSumasSaldosN3", "sumas_3", false},
      {"SqlSumasSaldosN4", "sumas_3", false},
      {"SqlPerdidasyGanancias", "sumas_3", false},
      {"SqlBalance", "sumas_3", false},
      {"Select * from SqlSumasSaldosN4 where Subcuenta='430000001'", "sumas_3", true},
      // Conditions on what the sums don't keep, and sums of the amounts as they stand, read the
      // lines.
      {"SqlDiarioBuscaDescuadres", "Diario", false},
      {"Select Sum(Debe) as T from SqlDiarioPrincipal where Punteo='*'", "Diario", false},
      {"Select Sum(Debe) as T, Count(*) as N from SqlDiarioPrincipal", "Diario", false},
      {"Select Sum(Debe*2) as T from SqlDiarioPrincipal", "Diario", false},
      {"Select S.Cuenta, Sum(D.Debe) as T from Subcuentas as S left join SqlDiarioPrincipal as D "
       "on "
       "S.Subcuenta = D.Subcuenta group by S.Cuenta",
       "Diario", false},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(expected.source);
    const Plan plan = compile(QString::fromUtf8(expected.source), libro, Libro::kAno);
    EXPECT_TRUE(plan.wholeSql.contains(QStringLiteral("[%1]").arg(QLatin1String(expected.sums))))
        << plan.wholeSql.toStdString();
    const QString read = libro.explained(plan.wholeSql);
    EXPECT_TRUE(!expected.lookUp || !read.contains(u"SCAN")) << read.toStdString();
  }
}

TEST(Plan, LasSumasDanLoMismoQueLasLineas) {
  const Libro withSums;
  const Libro withoutSums(false);
  QStringList sources = withSums.queryNames();
  sources.removeAll(QStringLiteral("SqlAcumulados"));
  sources.removeAll(QStringLiteral("Serpiente"));
  sources.removeAll(QStringLiteral("Cola"));
  sources << QStringLiteral("Select * from SqlDiarioSaldosCuentasTotal where SubcuentaDos<='5'")
          << QStringLiteral("Select * from SqlSumasSaldosN4 where Mes>=3 and SumaDeSaldo > 0")
          << QStringLiteral(
                 "Select * from SqlBalance where Mes<=6 order by Saldo desc, Mes, Subcuenta")
          << QStringLiteral(
                 "Select Sum(SumaDeDebe) as T from SqlDiarioSaldosCuentasMeses where Mes = 3");
  for (quint32 seed = 1; seed <= 5; ++seed) {
    fillAtRandom(withSums, seed);
    fillAtRandom(withoutSums, seed);
    for (const QString& source : sources) {
      EXPECT_EQ(rounded(withSums.read(source)), rounded(withoutSums.read(source)))
          << source.toStdString() << " seed " << seed;
    }
  }
}

TEST(Plan, DeUnDiarioVacioQuedanNulos) {
  const Libro libro;
  libro.run(QStringLiteral("DELETE FROM Diario"));
  libro.sum();
  EXPECT_EQ(libro.read(QStringLiteral("SqlSumaDiario")),
            QStringList{QStringLiteral("Null | Null")});
  EXPECT_EQ(libro.read(QStringLiteral("SqlSumaDiarioPorAsientos")), QStringList());
  // A combination whose last line was deleted leaves no row.
  libro.run(QStringLiteral("INSERT INTO sumas_1 VALUES (7, 0, 0, 0)"));
  EXPECT_EQ(libro.read(QStringLiteral("SqlSumaDiarioPorAsientos")), QStringList());
}

TEST(Plan, LasClavesSalenDeLosIndices) {
  const Libro libro;
  const struct {
    const char* source;
    const char* plan;
  } cases[] = {
      {"Select * from SqlDiarioPrincipalBlanco order by nasiento",
       "SCAN t0 USING COVERING INDEX i1"},
      {"Select * from SqlDiarioPrincipalBlanco where NAsiento = 3",
       "SEARCH t0 USING COVERING INDEX i1 (NAsiento=?)"},
      {"Select * from SqlDiarioPrincipalBlanco where Subcuenta='43'",
       "SEARCH t0 USING COVERING INDEX i2 (Subcuenta=?)"},
      {"Select * from Subcuentas where Subcuenta like '43#*'",
       "SEARCH t0 USING COVERING INDEX i3 (Subcuenta>? AND Subcuenta<?); USE TEMP B-TREE FOR ORDER "
       "BY"},
      {"SqlDiarioPrincipal", "SCAN t0"},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(planOf(libro, QString::fromUtf8(expected.source)).toStdString(), expected.plan);
  }
}

TEST(Plan, ConoceSusColumnas) {
  const Libro libro;
  const Plan plan = compile(QStringLiteral("SqlDiarioPrincipalBlanco"), libro, Libro::kAno);
  ASSERT_TRUE(plan.updatable);
  EXPECT_EQ(plan.baseTable, u"Diario");
  ASSERT_EQ(plan.columns.size(), 16U);
  EXPECT_EQ(plan.columns[3].baseColumn, u"Subcuenta");
  EXPECT_EQ(plan.columns[3].type, FieldType::Text);
  EXPECT_EQ(plan.columns[3].size, 9);
  EXPECT_EQ(plan.columns[2].type, FieldType::Date);
  EXPECT_EQ(plan.columns[13].name, u"Debe");
  EXPECT_EQ(plan.columns[13].type, FieldType::Double);
  EXPECT_TRUE(plan.columns[13].baseColumn.isEmpty());
  for (const char* source : {"SqlIva", "SqlSumaDiario", "Select distinct DH from Diario",
                             "Select NLinea, 'x' as Marca from Diario"}) {
    EXPECT_FALSE(compile(QString::fromUtf8(source), libro, Libro::kAno).updatable) << source;
  }
}

TEST(Plan, NadaDeLoTecleadoQuedaEnSusTextos) {
  const Libro libro;
  const Plan plan = compile(
      QStringLiteral("Select NLinea, IIf(DH='tecleado',4711,'otro') as Marca from Diario where "
                     "Descripcion = \"L'Oréal tecleado\" and Subcuenta like '4711*' and Importe > "
                     "4711.25 and Fecha < #4-7-11# and Punteo like '*tecleado'"),
      libro, Libro::kAno);
  for (const char* typed : {"tecleado", "4711", "otro", "Oréal", "2011"}) {
    EXPECT_FALSE(plan.wholeSql.contains(QString::fromUtf8(typed))) << typed;
  }
  EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), QStringList());
}

TEST(ClaveDeSentencia, ReuneLasQueSoloDifierenEnSusValores) {
  const auto keyOf = [](const char* source) {
    return statementKey(QString::fromUtf8(source), Libro::kAno).key;
  };
  EXPECT_EQ(keyOf("Select * from Diario where NAsiento = 3"),
            keyOf("Select  *  from Diario where NAsiento=12"));
  const struct {
    const char* one;
    const char* other;
  } different[] = {
      {"Select * from Diario where NAsiento = 3", "Select * from Diario where NAsiento = '3'"},
      {"Select * from Diario where NAsiento = '3'", "Select * from Diario where NAsiento = 'x'"},
      {"Select * from Diario where Punteo like 'a*'",
       "Select * from Diario where Punteo like 'b*'"},
      {"Select * from Diario where Punteo like \"a' 'b\"",
       "Select * from Diario where Punteo like 'a' 'b'"},
      {"Select * from Diario where [DH] = 'D'", "Select * from Diario where DH = 'D'"},
      {"Select Left(DH,1) as A from Diario group by Left(DH,1)",
       "Select Left(DH,1) as A from Diario group by Left(DH,2)"},
      {"Diario", "Select * from Diario"},
  };
  for (const auto& pair : different) EXPECT_NE(keyOf(pair.one), keyOf(pair.other)) << pair.one;
}

TEST(ClaveDeSentencia, ElPlanSirveConOtrosValores) {
  const Libro libro;
  const struct {
    const char* planned;
    const char* asked;
  } cases[] = {
      {"Select NLinea from Diario where NAsiento = 3",
       "Select NLinea from Diario where NAsiento = 2"},
      {"Select NLinea from Diario where Fecha >= #2-1-03#",
       "Select NLinea from Diario where Fecha >= #31/12/03#"},
      {"Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='1' and Mes='1'",
       "Select * from SqlDiarioSaldosCuentasMeses where Subcuenta='430000001' and Mes='3'"},
      {"Select * from SqlDiarioPrincipalBlanco where Importe =1 or Importe =-1 order by Nasiento",
       "Select * from SqlDiarioPrincipalBlanco where Importe =116 or Importe =-116 order by "
       "Nasiento"},
      {"Select NLinea from Diario where NLinea in ('1', 2) and Subcuenta like '57*'",
       "Select NLinea from Diario where NLinea in ('7', 12) and Subcuenta like '57*'"},
  };
  for (const auto& pair : cases) {
    SCOPED_TRACE(pair.asked);
    Plan plan = compile(QString::fromUtf8(pair.planned), libro, Libro::kAno);
    const StatementKey planned = statementKey(QString::fromUtf8(pair.planned), Libro::kAno);
    const StatementKey asked = statementKey(QString::fromUtf8(pair.asked), Libro::kAno);
    ASSERT_EQ(planned.key, asked.key);
    for (qsizetype i = 0; i < asked.literals.size(); ++i) plan.params[i] = asked.literals[i];
    const QStringList fresh = libro.read(QString::fromUtf8(pair.asked));
    EXPECT_FALSE(fresh.isEmpty());
    EXPECT_EQ(libro.rows(plan.wholeSql, plan.params), fresh);
  }
}

// A view read by another tool shows the rows of the query, in some order.
TEST(Vistas, DanLasFilasDeSuConsulta) {
  const Libro libro;
  for (const QString& name : libro.queryNames()) {
    SCOPED_TRACE(name.toStdString());
    QString sql;
    try {
      sql = viewSql(name, libro);
    } catch (const ErrorEjecucion&) {
      EXPECT_THROW(compile(name, libro, Libro::kAno), ErrorEjecucion);
      continue;
    }
    libro.run(QStringLiteral("CREATE TEMP VIEW [%1] AS %2").arg(name, sql));
  }
  for (const QString& name : libro.queryNames()) {
    if (libro
            .rows(QStringLiteral("SELECT 1 FROM sqlite_temp_master WHERE name = ?"),
                  {Variant(name)})
            .isEmpty()) {
      continue;
    }
    const Plan plan = compile(name, libro, Libro::kAno);
    QStringList columns;
    for (const OutputColumn& column : plan.columns) columns << u'[' + column.name + u']';
    QStringList expected = rounded(libro.rows(plan.wholeSql, plan.params));
    QStringList shown = rounded(
        libro.rows(QStringLiteral("SELECT %1 FROM temp.[%2]").arg(columns.join(u','), name)));
    expected.sort();
    shown.sort();
    EXPECT_EQ(shown, expected) << name.toStdString();
  }
}

TEST(Vistas, UsanSoloFuncionesDelMotor) {
  const Libro libro;
  for (const QString& name : libro.queryNames()) {
    try {
      const QString sql = viewSql(name, libro);
      EXPECT_FALSE(sql.contains(u"como(")) << sql.toStdString();
      EXPECT_FALSE(sql.contains(u'?')) << sql.toStdString();
    } catch (const ErrorEjecucion&) {
      continue;
    }
  }
  EXPECT_TRUE(viewSql(QStringLiteral("SqlRegularizaStock"), libro).contains(u"LIKE '30%' ESCAPE"));
}
