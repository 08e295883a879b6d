// Statements and stored queries through recordsets, Data controls and forward readers.

#include "engine/rowreader.h"
#include "libroendisco.h"

namespace {

class Consultas : public LibroEnDisco {
 protected:
  Consultas() {
    db->CreateQueryDef("SqlDiario",
                       "SELECT Diario.*, IIf([DH]='D',[Importe],'') AS Debe, "
                       "IIf([DH]='D','',[Importe]) AS Haber FROM Diario;");
  }

  DataControl control{engine};
};

TEST_F(Consultas, LosNombresVanComoLosBuscaQuienLeeYLosCodigosComoSuIndice) {
  db->appendTable(
      {"Nombres",
       {{"Codigo", FieldType::Text, 9, {}, true}, {"Nombre", FieldType::Text, 50, {}, true}},
       {{"Codigo", true, true, {"Codigo"}}}});
  const QStringList enOrden = {"Alba", "alba 2", "Álbum", "ALBUM 3", "canto", "Canto", "cántara",
                               "Nube", "nuez",   "Ñandú", "ñu",      "oca",   "Óscar", "perro"};
  const QStringList deseado = {"Alba", "alba 2", "Álbum", "ALBUM 3", "cántara", "canto", "Canto",
                               "Nube", "nuez",   "Ñandú", "ñu",      "oca",     "Óscar", "perro"};
  const auto nombres = db->OpenRecordset("Nombres");
  for (qsizetype i = enOrden.size(); i-- > 0;)
    anade(*nombres, {{"Codigo", QString::number(i)}, {"Nombre", enOrden[i]}});
  const auto leidos = [&](const QString& orden) {
    QStringList lista;
    const auto rs = db->OpenRecordset("Select Codigo, Nombre from Nombres order by " + orden);
    for (; !rs->Eof(); rs->MoveNext())
      lista += rs->Fields(orden.startsWith('N') ? "Nombre" : "Codigo").text();
    return lista;
  };
  EXPECT_EQ(leidos("Nombre"), deseado);
  QStringList vuelta = deseado;
  std::reverse(vuelta.begin(), vuelta.end());
  EXPECT_EQ(leidos("Nombre desc"), vuelta);
  QStringList codigos;
  for (int i = 0; i < enOrden.size(); ++i) codigos += QString::number(i);
  codigos.sort();
  EXPECT_EQ(leidos("Codigo"), codigos);
}

TEST_F(Consultas, SeAnadeYModificaPorUnaConColumnasCalculadas) {
  control.bind(ruta, "Select * from SqlDiario where nAsiento = 7");
  EXPECT_EQ(control.Fields("Subcuenta").Size(), 9);
  QSignalSpy anadida(&control, &DataControl::rowAdded),
      cambiada(&control, &DataControl::rowChanged);
  control.AddNew();
  for (const auto& [campo, valor] :
       Valores{{"NLinea", 1}, {"NAsiento", 7}, {"DH", "H"}, {"Importe", "-12,5"}})
    control.Fields(campo) = valor;
  control.Update();
  control.MoveFirst();
  EXPECT_EQ(control.Fields("Debe").display(), "");
  EXPECT_EQ(control.Fields("Haber").number(), -12.5);
  control.Edit();
  EXPECT_ERROR(err::kSoloLectura, control.Fields("Debe") = 3);
  control.Fields("DH") = "D";
  control.Fields("NAsiento") = 8;
  control.Update();
  EXPECT_EQ(control.Fields("Debe").number(), -12.5);
  // Whoever shows the rows is told of both.
  EXPECT_EQ(anadida, (QList<QVariantList>{{0}}));
  EXPECT_EQ(cambiada, (QList<QVariantList>{{0}}));
  // A row that no longer meets the condition stays until the next Refresh.
  EXPECT_EQ(control.Recordset().rowTotal(), 1);
  control.Refresh();
  EXPECT_TRUE(control.Eof());
  control.bind(ruta, "Select Sum(Debe) as S from SqlDiario");
  EXPECT_ERROR(err::kSoloLectura, control.AddNew());
  EXPECT_ERROR(err::kSoloLectura, control.Edit());
  // A source that fails leaves the control without rows, and whoever shows them is told.
  QSignalSpy leido(&control, &DataControl::refreshed);
  EXPECT_ERROR(err::kOrigenDesconocido, control.bind(ruta, "Nada"));
  EXPECT_EQ(leido.size(), 1);
  EXPECT_FALSE(control.isOpen());
  EXPECT_ERROR(err::kSinRegistroActivo, control.Fields(0));
}

// The century of a short date is that of the company's year, also after it changed.
TEST_F(Consultas, ElSigloDeUnaFechaCortaEsElDelAno) {
  anotaLineas(1);  // the 15th of February of 2003
  db->CreateQueryDef("Aquel", "Select * from Diario where Fecha = #2-15-03#");
  for (const auto& [ano, filas] :
       std::initializer_list<std::pair<int, int>>{{1903, 0}, {2003, 1}}) {
    engine.setYear(ano);
    for (const char* fuente : {"Select * from Diario where Fecha = #2-15-03#", "Aquel"}) {
      control.bind(ruta, fuente);
      EXPECT_EQ(control.Recordset().rowTotal(), filas) << ano << ' ' << fuente;
    }
  }
}

TEST_F(Consultas, BuscarDejaLaPosicionEnLoHalladoODondeEstaba) {
  anotaLineas(30);
  control.bind(ruta, "Select * from SqlDiario order by NAsiento desc");
  QList<qint64> halladas;
  for (control.FindFirst("Subcuenta Like '430000003*'"); !control.Recordset().NoMatch();
       control.FindNext("Subcuenta Like '430000003*'"))
    halladas += control.Fields("NLinea").toLong();
  EXPECT_EQ(halladas, (QList<qint64>{28, 23, 18, 13, 8, 3}));
  EXPECT_EQ(control.Fields("NLinea").toLong(), 3);
  // What was added or deleted meanwhile counts.
  control.FindFirst("NLinea = 28");
  control.Delete();
  control.FindFirst("Subcuenta = '430000003'");
  EXPECT_EQ(control.Fields("NLinea").toLong(), 23);
  anota(control.Recordset(), 77, 77, "430", "D", 1);
  control.FindNext("NLinea = 77");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 30);
  EXPECT_ERROR(err::kErrorDeSintaxis, control.FindFirst("NLinea = 'a'b'"));
  // In rows that can't be written too.
  control.bind(ruta, "Select NAsiento, Count(*) as N from Diario group by NAsiento");
  control.MoveLast();
  control.FindFirst("NAsiento < 9");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 0);
  control.FindNext("NAsiento < 9");
  EXPECT_EQ(control.Recordset().AbsolutePosition(), 1);
}

// A reader gives what a recordset shows, across its windows, and holds nobody up between them.
TEST_F(Consultas, ElLectorDaLasMismasFilasSinRetenerElFichero) {
  anotaLineas(1500);
  for (const char* fuente : {"Diario", "Select * from SqlDiario order by NAsiento desc",
                             "Select NLinea, Sum(Importe) as S from Diario group by NLinea",
                             "Select * from Diario where NLinea < 0"}) {
    SCOPED_TRACE(fuente);
    const auto rs = db->OpenRecordset(fuente);
    RowReader lector(*db, fuente);
    ASSERT_EQ(lector.columnCount(), rs->FieldCount());
    int fila = 0;
    for (; lector.next(); ++fila) {
      if (fila == 5) {
        EXPECT_EQ(herramienta("BEGIN EXCLUSIVE; COMMIT"), "");
      }
      for (int c = 0; c < lector.columnCount(); ++c)
        ASSERT_TRUE(lector.value(c) == rs->cell(fila, c)) << fila << ' ' << c;
    }
    EXPECT_EQ(fila, rs->rowTotal());
  }
  // Backwards too, over the edges of what is read at a time.
  const auto rs = db->OpenRecordset("Diario");
  int linea = 1500;
  for (rs->MoveLast(); !rs->Bof(); rs->MovePrevious(), --linea)
    ASSERT_EQ(rs->Fields("NLinea").toLong(), linea);
  EXPECT_EQ(linea, 0);
  EXPECT_ERROR(err::kSinRegistroActivo, rs->MovePrevious());
}

}  // namespace
