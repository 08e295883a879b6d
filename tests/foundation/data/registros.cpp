// Rows: types and widths, adding and changing, moving, bookmarks and searches, on real files.
#include "libroendisco.h"

namespace {

class Registros : public LibroEnDisco {};

TEST_F(Registros, LosTiposSeLeenComoSeEscribieron) {
  TableDef tabla{QStringLiteral("Tipos"), {}, {}};
  tabla.CreateField("Texto", FieldType::Text, 5);
  tabla.CreateField("Lleno", FieldType::Text, 5);
  tabla.CreateField("Entero", FieldType::Long);
  tabla.CreateField("Doble", FieldType::Double);
  tabla.CreateField("Fecha", FieldType::Date);
  tabla.CreateField("SiNo", FieldType::Boolean);
  tabla.Fields[0].AllowZeroLength = true;
  db->appendTable(tabla);
  const struct {
    const char* campo;
    Variant valor;
    Variant leido;
    int error;
  } casos[] = {
      {"Texto", "", "", 0},
      {"Texto", "añoñ", "añoñ", 0},
      {"Texto", "123456", {}, 3163},
      {"Texto", "07", "07", 0},
      {"Texto", 7, "7", 0},
      {"Lleno", "", {}, 3315},
      {"Lleno", {}, {}, 0},
      {"Entero", "1.000", qint64{1000}, 0},
      {"Entero", 3e9, {}, 3421},
      {"Doble", 5, 5.0, 0},
      {"Doble", "0,1", 0.1, 0},
      {"Doble", 1e300, 1e300, 0},
      {"Fecha", "15/02/2003", QDate(2003, 2, 15), 0},
      {"Fecha", QDateTime(QDate(2003, 2, 15), QTime(10, 30, 5)),
       QDateTime(QDate(2003, 2, 15), QTime(10, 30, 5)), 0},
      {"Fecha", "", {}, 3421},
      {"SiNo", true, true, 0},
      {"SiNo", 0, false, 0},
  };
  for (const auto& c : casos) {
    const auto rs = db->OpenRecordset("Tipos");
    rs->AddNew();
    EXPECT_EQ(numeroDeError([&] { rs->Fields(c.campo) = c.valor; }), c.error)
        << c.campo << " = " << c.valor.display().toStdString();
    rs->Update();
    rs->MoveLast();
    EXPECT_TRUE(rs->Fields(c.campo).Value() == c.leido)
        << c.campo << ": " << rs->Fields(c.campo).display().toStdString();
  }
  engine.flush();
  EXPECT_EQ(herramienta("SELECT DISTINCT typeof(Fecha), typeof(Doble), typeof(SiNo) FROM Tipos "
                        "WHERE Fecha = '2003-02-15'"),
            "text|null|integer");
}

TEST_F(Registros, LaDefinicionVuelveComoSeDioYSeLeeEnElFichero) {
  const TableDef diario = db->tableDef("DIARIO"), empresa = db->tableDef("Empresa");
  EXPECT_EQ(db->TableDefs(), (QStringList{"Empresa", "Diario"}));
  EXPECT_EQ(diario.Fields[3].Size, 9);
  EXPECT_EQ(diario.Fields[2].Type, FieldType::Date);
  EXPECT_TRUE(diario.Fields[4].AllowZeroLength);
  EXPECT_TRUE(diario.Indexes.at(0).Primary && diario.Indexes.at(0).Unique);
  EXPECT_EQ(empresa.Fields[1].Name, "Año");
  EXPECT_EQ(empresa.Fields[3].Type, FieldType::Boolean);
  EXPECT_EQ(herramienta("SELECT sql FROM sqlite_schema WHERE name = 'Empresa'"),
            "CREATE TABLE [Empresa] ([IdCodigo] INTEGER DEFAULT 1, [Año] INTEGER, "
            "[NLinDiario] INTEGER DEFAULT 0, [Limpiar] BOOLEAN DEFAULT 0)");
  EXPECT_EQ(herramienta("SELECT Valor FROM librano_propiedades WHERE Propiedad = 'Locale'"),
            kLocale);
  for (const char* nombre : {"", " x", "a]b", "a.b", "librano_x", "sqlite_x", "a'b"})
    EXPECT_EQ(numeroDeError([&] {
                db->appendTable({nombre, {}, {}});
              }),
              err::kLlamadaNoValida)
        << nombre;
  db->deleteTable("diario");
  EXPECT_EQ(db->TableDefs(), QStringList{"Empresa"});
}

TEST_F(Registros, LosValoresPorDefectoEstanAntesDeGuardarYTambienParaOtrosProgramas) {
  const auto rs = db->OpenRecordset("Diario");
  rs->AddNew();
  rs->Fields("NLinea") = 1;
  EXPECT_EQ(rs->Fields("TipoDiario").display(), "1");
  EXPECT_TRUE(rs->Fields("Importe").isNull());
  rs->Update();
  engine.flush();
  herramienta("INSERT INTO Diario(NLinea) VALUES (2)");
  const auto todos = db->OpenRecordset("Diario");
  EXPECT_EQ(columna(*todos, "TipoDiario"), (QList<Variant>{"1", "1"}));
  const TableDef leida = db->tableDef("diario");
  EXPECT_EQ(leida.Fields[7].DefaultValue, "\"1\"");
  EXPECT_EQ(db->tableDef("Empresa").Fields[0].DefaultValue, "1");
}

TEST_F(Registros, LaClavePrimariaNoSeRepiteNiQuedaVacia) {
  const auto rs = db->OpenRecordset("Diario");
  anota(*rs, 1, 1, "430", "D", 10);
  rs->AddNew();
  EXPECT_EQ(numeroDeError([&] { rs->Update(); }), err::kClaveNula);
  rs->Fields("NLinea") = 1;
  EXPECT_EQ(numeroDeError([&] { rs->Update(); }), err::kClaveDuplicada);
  // The edit stays open: another key is enough.
  EXPECT_EQ(rs->editMode(), Recordset::EditMode::Add);
  rs->Fields("NLinea") = 2;
  rs->Update();
  rs->MoveLast();
  rs->Edit();
  rs->Fields("NLinea") = 1;
  EXPECT_EQ(numeroDeError([&] { rs->Update(); }), err::kClaveDuplicada);
  rs->CancelUpdate();
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 2);
}

TEST_F(Registros, LoQueNoSePuedeHacerDaSuError) {
  const auto rs = db->OpenRecordset("Diario");
  const struct {
    const char* que;
    std::function<void()> algo;
    int error;
  } casos[] = {
      {"leer sin registro", [&] { rs->Fields(0).Value(); }, err::kSinRegistroActivo},
      {"ir al último", [&] { rs->MoveLast(); }, err::kSinRegistroActivo},
      {"ir al primero", [&] { rs->MoveFirst(); }, err::kSinRegistroActivo},
      {"pasar del último", [&] { rs->MoveNext(); }, err::kSinRegistroActivo},
      {"modificar", [&] { rs->Edit(); }, err::kSinRegistroActivo},
      {"borrar", [&] { rs->Delete(); }, err::kSinRegistroActivo},
      {"asignar sin editar", [&] { rs->Fields(0) = 1; }, err::kActualizarSinEditar},
      {"guardar sin editar", [&] { rs->Update(); }, err::kActualizarSinEditar},
      {"campo desconocido", [&] { rs->Fields("Nada"); }, err::kElementoNoEncontrado},
      {"ordinal desconocido", [&] { rs->Fields(8); }, err::kElementoNoEncontrado},
      {"tabla desconocida", [&] { db->OpenRecordset("Nada"); }, err::kOrigenDesconocido},
      {"tabla del motor", [&] { db->OpenRecordset("librano_filas"); }, err::kOrigenDesconocido},
      {"tabla repetida",
       [&] {
         db->appendTable({"DIARIO", {}, {}});
       },
       err::kTablaYaExiste},
      {"definición", [&] { db->tableDef("Nada"); }, err::kElementoNoEncontrado},
      {"marca ajena", [&] { rs->setBookmark(99); }, err::kSinRegistroActivo},
  };
  EXPECT_TRUE(rs->Eof() && rs->Bof());
  EXPECT_EQ(rs->RecordCount(), 0);
  for (const auto& c : casos) EXPECT_EQ(numeroDeError(c.algo), c.error) << c.que;
  rs->CancelUpdate();  // nothing to drop is no error
}

TEST_F(Registros, MoverseYContar) {
  anotaLineas(700);  // more than a window of rows
  const auto rs = db->OpenRecordset("Diario");
  EXPECT_EQ(rs->RecordCount(), 1);
  EXPECT_EQ(rs->AbsolutePosition(), 0);
  EXPECT_EQ(rs->rowTotal(), 700);
  qint64 suma = 0;
  int vueltas = 0;
  for (; !rs->Eof(); rs->MoveNext(), ++vueltas) suma += rs->Fields("NLinea").toLong();
  EXPECT_EQ(vueltas, 700);
  EXPECT_EQ(suma, 700 * 701 / 2);
  EXPECT_EQ(numeroDeError([&] { rs->MoveNext(); }), err::kSinRegistroActivo);
  for (rs->MovePrevious(); !rs->Bof(); rs->MovePrevious()) suma -= rs->Fields("NLinea").toLong();
  EXPECT_EQ(suma, 0);
  rs->setAbsolutePosition(349);
  const auto marca = rs->bookmark();
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 350);
  rs->MoveLast();
  EXPECT_EQ(rs->RecordCount(), 700);
  rs->setBookmark(marca);
  EXPECT_EQ(rs->AbsolutePosition(), 349);
  EXPECT_EQ(rs->positionOf(marca), 349);
  EXPECT_EQ(rs->cell(699, 0).toLong(), 700);  // without moving
  EXPECT_EQ(rs->AbsolutePosition(), 349);
}

TEST_F(Registros, UnaFilaNuevaQuedaAlFinalYNoMueveElRegistroActivo) {
  anotaLineas(3);
  const auto rs = db->OpenRecordset("Diario");
  rs->setAbsolutePosition(1);
  anota(*rs, 0, 9, "570", "H", -1);
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 2);
  rs->MoveLast();
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 0);
  EXPECT_EQ(rs->RecordCount(), 4);
  // A move drops what was being edited.
  rs->Edit();
  rs->Fields("Descripcion") = "perdida";
  rs->MoveFirst();
  EXPECT_EQ(rs->editMode(), Recordset::EditMode::None);
  rs->MoveLast();
  EXPECT_TRUE(rs->Fields("Descripcion").isNull());
}

TEST_F(Registros, BorrarDejaElSitioVacioHastaMoverse) {
  anotaLineas(4);
  const auto rs = db->OpenRecordset("Diario");
  rs->setAbsolutePosition(1);
  rs->Delete();
  EXPECT_EQ(numeroDeError([&] { rs->Fields(0).Value(); }), err::kRegistroEliminado);
  EXPECT_EQ(numeroDeError([&] { rs->Delete(); }), err::kRegistroEliminado);
  EXPECT_TRUE(rs->isDeleted(1));
  EXPECT_TRUE(rs->cell(1, 0).isNull());
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(0).toLong(), 3);
  rs->MovePrevious();
  EXPECT_EQ(rs->Fields(0).toLong(), 1);
  // The usual loop that empties a source.
  for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) rs->Delete();
  EXPECT_EQ(numeroDeError([&] { rs->MoveFirst(); }), err::kSinRegistroActivo);
  EXPECT_EQ(rs->RecordCount(), 0);
  EXPECT_EQ(db->OpenRecordset("Diario")->rowTotal(), 0);
}

TEST_F(Registros, DosJuegosDeRegistrosVenLoQueEscribeElOtro) {
  anotaLineas(3);
  const auto uno = db->OpenRecordset("Diario"), otro = db->OpenRecordset("Diario");
  otro->MoveFirst();
  EXPECT_EQ(otro->Fields("Importe").number(), 1);
  uno->Edit();
  uno->Fields("Importe") = 99;
  uno->Update();
  EXPECT_EQ(otro->Fields("Importe").number(), 99);
  anota(*uno, 4, 4, "430", "D", 4);
  EXPECT_EQ(otro->rowTotal(), 3);  // its rows are those of its opening
  EXPECT_EQ(db->OpenRecordset("Diario")->rowTotal(), 4);
  uno->Delete();
  EXPECT_EQ(numeroDeError([&] { otro->Fields("Importe").Value(); }), err::kRegistroEliminado);
  EXPECT_EQ(numeroDeError([&] { otro->Edit(); }), err::kRegistroEliminado);
}

TEST_F(Registros, LaFilaQueSigueAUnaBorradaNoOcupaSuSitioEnOtroJuego) {
  anotaLineas(2);
  const auto viejo = db->OpenRecordset("Diario");
  viejo->MoveLast();
  const auto rs = db->OpenRecordset("Diario");
  rs->MoveLast();
  rs->Delete();
  anota(*rs, 50, 50, "570", "D", 50);
  EXPECT_EQ(numeroDeError([&] { viejo->Fields(0).Value(); }), err::kRegistroEliminado);
}

TEST_F(Registros, LoQueEscribeOtroProgramaSeVeAlTocarlo) {
  anotaLineas(3);
  const auto rs = db->OpenRecordset("Diario");
  EXPECT_EQ(rs->Fields("Importe").number(), 1);
  EXPECT_EQ(rs->cell(2, 0).toLong(), 3);
  EXPECT_EQ(herramienta("UPDATE Diario SET Importe=7.5 WHERE NLinea=1; INSERT INTO "
                        "Diario(NLinea) VALUES (8); DELETE FROM Diario WHERE NLinea=3"),
            "");
  EXPECT_EQ(rs->Fields("Importe").number(), 7.5);
  EXPECT_EQ(rs->rowTotal(), 3);
  EXPECT_TRUE(rs->isDeleted(2));
  rs->MoveLast();
  EXPECT_EQ(numeroDeError([&] { rs->Fields(0).Value(); }), err::kRegistroEliminado);
  EXPECT_EQ(columna(*db->OpenRecordset("Diario"), "NLinea"), (QList<Variant>{1LL, 2LL, 8LL}));
  // A table made by the other program is there at once.
  herramienta("CREATE TABLE Ajena (Codigo INTEGER, Nombre VARCHAR(20), Alta DATE)");
  EXPECT_TRUE(db->TableDefs().contains("Ajena"));
  EXPECT_EQ(db->tableDef("Ajena").Fields[1].Size, 20);
}

}  // namespace
