// Statements and stored queries through recordsets, Data controls and forward readers.
#include <QSignalSpy>

#include "foundation/data/rowreader.h"
#include "libroendisco.h"

namespace {

class Consultas : public LibroEnDisco {
 protected:
  Consultas() {
    for (const auto& [nombre, texto] : std::initializer_list<std::pair<const char*, const char*>>{
             {"SqlSumaDiario",
              "SELECT Sum(SqlDiarioPrincipal.Debe) AS SumaDeDebe, Sum(SqlDiarioPrincipal.Haber) AS "
              "SumaDeHaber FROM SqlDiarioPrincipal;"},
             {"SqlDiarioPrincipal",
              "SELECT Diario.NLinea, Diario.NAsiento, Diario.Fecha, Diario.Subcuenta, IIf([DH]='D',"
              "[Importe],0) AS Debe, IIf([DH]='D',0,[Importe]) AS Haber FROM Diario;"},
             {"SqlDiarioPrincipalBlanco",
              "SELECT Diario.NLinea, Diario.NAsiento, Diario.Fecha, Diario.Subcuenta, "
              "Diario.Descripcion, Diario.DH, Diario.Importe, IIf([DH]='D',[Importe],'') AS Debe, "
              "IIf([DH]='D','',[Importe]) AS Haber, Diario.TipoDiario FROM Diario;"},
             {"SqlRota", "SELECT SqlDiarioPrincipal.NoHay FROM SqlDiarioPrincipal"}})
      db->CreateQueryDef(nombre, texto);
    db->keepIndex("Diario", {"NAsiento"});
    db->keepSums("Diario", "DH", "Importe", {});
    engine.flush();
    control.setDatabaseName(ruta);
  }

  DataControl control{engine};
};

TEST_F(Consultas, SeGuardanPalabraPorPalabraYEnSuOrden) {
  EXPECT_EQ(db->QueryDefs(), (QStringList{"SqlSumaDiario", "SqlDiarioPrincipal",
                                          "SqlDiarioPrincipalBlanco", "SqlRota"}));
  EXPECT_EQ(db->queryDef("sqlrota").Sql, "SELECT SqlDiarioPrincipal.NoHay FROM SqlDiarioPrincipal");
  EXPECT_EQ(numeroDeError([&] { db->CreateQueryDef("SQLROTA", "x"); }), err::kConsultaYaExiste);
  EXPECT_EQ(numeroDeError([&] { db->OpenRecordset("SqlRota"); }), err::kNombreDesconocido);
  EXPECT_FALSE(db->TableDefs().contains("SqlSumaDiario"));
}

TEST_F(Consultas, CualquierProgramaLasLeeComoVistas) {
  anota(*db->OpenRecordset("Diario"), 1, 1, "430", "D", 12.5);
  engine.flush();
  // One stored before what it rests on has its view too; one that can't be resolved has none.
  EXPECT_EQ(herramienta("SELECT SumaDeDebe, SumaDeHaber FROM SqlSumaDiario"), "12.5|0");
  EXPECT_EQ(herramienta("SELECT count(*) FROM sqlite_schema WHERE name = 'SqlRota'"), "0");
  db->deleteQuery("SqlDiarioPrincipal");
  engine.flush();
  EXPECT_EQ(herramienta("SELECT group_concat(name) FROM sqlite_schema WHERE type = 'view'"),
            "SqlDiarioPrincipalBlanco");
  EXPECT_EQ(numeroDeError([&] { db->OpenRecordset("SqlSumaDiario"); }), err::kOrigenDesconocido);
}

TEST_F(Consultas, SeAnadeYModificaPorUnaConsultaConColumnasCalculadas) {
  control.setRecordSource("Select * from SqlDiarioPrincipalBlanco where nAsiento = 7");
  control.Refresh();
  EXPECT_TRUE(control.Eof());
  anota(control.Recordset(), 1, 7, "430000001", "H", "-12,5");
  control.MoveLast();
  EXPECT_EQ(control.Fields("Debe").display(), "");
  EXPECT_EQ(control.Fields("Haber").number(), -12.5);
  EXPECT_EQ(control.Fields("TipoDiario").display(), "1");
  control.Edit();
  EXPECT_EQ(numeroDeError([&] { control.Fields("Debe") = 3; }), err::kSoloLectura);
  control.Fields("DH") = "D";
  control.Fields("Importe") = 3;
  control.Update();
  EXPECT_EQ(control.Fields("Debe").number(), 3);
  // A row that no longer meets the condition stays until the next Refresh.
  control.Edit();
  control.Fields("NAsiento") = 8;
  control.Update();
  EXPECT_EQ(control.Recordset().rowTotal(), 1);
  control.Refresh();
  EXPECT_TRUE(control.Eof());
}

TEST_F(Consultas, LosTotalesSigueACadaLineaYNoSeEscriben) {
  const auto rs = db->OpenRecordset("Diario");
  control.setRecordSource("Select * from SqlSumaDiario");
  control.Refresh();
  EXPECT_TRUE(control.Fields(0).isNull());
  for (int i = 1; i <= 10; ++i) {
    anota(*rs, i, 1, "430", i % 2 ? "D" : "H", i % 2 ? 0.1 : -0.2);
    control.Refresh();
  }
  EXPECT_EQ(control.Fields(0).number(), 0.5);
  EXPECT_EQ(control.Fields(1).number(), -1);
  EXPECT_EQ(numeroDeError([&] { control.AddNew(); }), err::kSoloLectura);
  EXPECT_EQ(numeroDeError([&] { control.Edit(); }), err::kSoloLectura);
}

TEST_F(Consultas, LaMismaSentenciaConOtrosValoresNoSeConfunde) {
  anotaLineas(20);
  for (const int asiento : {3, 5, 3, 99}) {
    control.setRecordSource("Select * from Diario where NAsiento = " + QString::number(asiento));
    control.Refresh();
    EXPECT_EQ(control.Recordset().rowTotal(), asiento == 99 ? 0 : 2) << asiento;
    if (!control.Eof()) {
      EXPECT_EQ(control.Fields("NAsiento").toLong(), asiento);
    }
  }
  // The century of a short date is that of the company's year, also after it changed.
  const auto empresa = db->OpenRecordset("Empresa");
  const auto diario = db->OpenRecordset("Diario");
  diario->Edit();
  diario->Fields("Fecha") = QDate(1903, 1, 2);
  diario->Update();
  empresa->AddNew();
  for (const auto& [ano, filas] :
       std::initializer_list<std::pair<int, int>>{{1903, 1}, {2003, 0}}) {
    empresa->Fields("Año") = ano;
    empresa->Update();
    empresa->MoveLast();
    control.setRecordSource("Select * from Diario where Fecha = #1-2-03#");
    control.Refresh();
    EXPECT_EQ(control.Recordset().rowTotal(), filas) << ano;
    empresa->Edit();
  }
}

TEST_F(Consultas, BuscarDejaLaPosicionEnLoHalladoODondeEstaba) {
  anotaLineas(30);
  control.bind(ruta, "Select * from SqlDiarioPrincipalBlanco order by NAsiento desc");
  control.FindFirst("Subcuenta Like '430000003*'");
  EXPECT_EQ(control.Fields("NLinea").toLong(), 28);
  QList<qint64> halladas;
  for (; !control.Recordset().NoMatch(); control.FindNext("Subcuenta Like '430000003*'"))
    halladas += control.Fields("NLinea").toLong();
  EXPECT_EQ(halladas, (QList<qint64>{28, 23, 18, 13, 8, 3}));
  EXPECT_EQ(control.Fields("NLinea").toLong(), 3);
  control.FindFirst("NLinea = 77");
  EXPECT_TRUE(control.Recordset().NoMatch());
  EXPECT_EQ(control.Fields("NLinea").toLong(), 3);
  // What was added or deleted meanwhile counts.
  control.FindFirst("NLinea = 28");
  control.Delete();
  control.FindFirst("Subcuenta = '430000003'");
  EXPECT_EQ(control.Fields("NLinea").toLong(), 23);
  anota(control.Recordset(), 77, 77, "430", "D", 1);
  control.FindNext("NLinea = 77");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 30);
  EXPECT_EQ(numeroDeError([&] { control.FindFirst("NLinea = 'a'b'"); }), err::kErrorDeSintaxis);
  // In rows that can't be written too.
  control.bind(ruta, "Select NAsiento, Count(*) as N from Diario group by NAsiento");
  control.FindFirst("NAsiento >= 10");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 10);
  control.FindNext("NAsiento >= 10");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 11);
}

TEST_F(Consultas, ElControlAvisaALoQueEstaUnidoAEl) {
  QSignalSpy leido(&control, &DataControl::refreshed), movido(&control, &DataControl::repositioned),
      anadida(&control, &DataControl::rowAdded), cambiada(&control, &DataControl::rowChanged),
      borrada(&control, &DataControl::rowDeleted);
  anotaLineas(2);
  control.bind(ruta, "Diario");
  control.MoveLast();
  control.AddNew();
  control.Fields("NLinea") = 3;
  control.Update();
  control.Edit();
  control.Update();
  control.Delete();
  EXPECT_EQ(leido.size(), 1);
  EXPECT_EQ(movido.size(), 2);
  EXPECT_EQ(anadida, (QList<QVariantList>{{2}}));
  EXPECT_EQ(cambiada, (QList<QVariantList>{{1}}));
  EXPECT_EQ(borrada, (QList<QVariantList>{{1}}));
  // A source that fails leaves the control without rows, and whoever shows them is told.
  control.setRecordSource("Nada");
  EXPECT_EQ(numeroDeError([&] { control.Refresh(); }), err::kOrigenDesconocido);
  EXPECT_FALSE(control.isOpen());
  EXPECT_EQ(leido.size(), 2);
  EXPECT_EQ(numeroDeError([&] { control.Fields(0); }), err::kSinRegistroActivo);
}

TEST_F(Consultas, OtraRutaLlevaElControlAOtraEmpresaYSueltaLaPrimera) {
  const QString otra = carpeta.filePath("Otra.mdb");
  {
    const auto nueva = engine.Workspaces(0).CreateDatabase(otra, kLocale);
    nueva->appendTable(db->tableDef("Diario"));
    anota(*nueva->OpenRecordset("Diario"), 9, 9, "1", "D", 9);
  }
  control.bind(ruta, "Diario");
  EXPECT_TRUE(control.Eof());
  // Names of files as the program writes them, whatever the case.
  control.setDatabaseName(QString(otra).replace('/', '\\').replace("Otra.mdb", "OTRA.MDB"));
  control.Refresh();
  EXPECT_EQ(control.Fields(0).toLong(), 9);
  control.unbind();
  EXPECT_EQ(QDir(carpeta.path()).entryList({"Otra*"}), QStringList{"Otra.mdb"});
  EXPECT_TRUE(QFile::remove(otra));
}

// A reader gives what a recordset shows, across its windows, and holds nobody up between them.
TEST_F(Consultas, ElLectorDaLasMismasFilasSinRetenerElFichero) {
  anotaLineas(1500);
  for (const char* fuente :
       {"Diario", "Select * from SqlDiarioPrincipal order by NAsiento desc",
        "Select NLinea, Sum(Importe) as S from Diario group by NLinea",
        "Select * from SqlSumaDiario", "Select * from Diario where NLinea < 0"}) {
    const auto rs = db->OpenRecordset(fuente);
    RowReader lector(*db, fuente);
    ASSERT_EQ(lector.columnCount(), rs->FieldCount()) << fuente;
    int fila = 0;
    for (; lector.next(); ++fila) {
      if (fila == 5) {
        EXPECT_EQ(herramienta("BEGIN EXCLUSIVE; COMMIT"), "") << fuente;
      }
      for (int c = 0; c < lector.columnCount(); ++c)
        ASSERT_TRUE(lector.value(c) == rs->cell(fila, c)) << fuente << ' ' << fila << ' ' << c;
    }
    EXPECT_EQ(fila, rs->rowTotal()) << fuente;
    EXPECT_FALSE(lector.next());
  }
}

}  // namespace
