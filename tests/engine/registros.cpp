// Rows: what each type makes of a value, adding and changing, moving, and what others do to them.
#include "common/conversion.h"
#include "libroendisco.h"

namespace {

class Registros : public LibroEnDisco {};

TEST_F(Registros, CadaCampoConvierteASuTipoYSeLeeComoQuedo) {
  // Texts given to a field of each type and what is left of them, or the number of the error.
  const std::pair<const char*, FieldType> campos[] = {
      {"Texto", FieldType::Text},   {"Lleno", FieldType::Text}, {"Entero", FieldType::Long},
      {"Doble", FieldType::Double}, {"Fecha", FieldType::Date}, {"SiNo", FieldType::Boolean}};
  TableDef tipos{"Tipos", {}, {}};
  for (const auto& [campo, tipo] : campos) tipos.CreateField(campo, tipo, 10);
  tipos.Fields[0].AllowZeroLength = true;
  db->appendTable(tipos);
  const auto rs = db->OpenRecordset("Tipos");
  const auto queda = [&](const QString& campo, const Variant& valor) {
    rs->AddNew();
    const int error = numeroDeError([&] { rs->Fields(campo) = valor; });
    rs->Update();
    rs->MoveLast();
    return error ? QString::number(error) : rs->Fields(campo).display();
  };
  for (const auto& [campo, tipo] : campos)
    for (const QStringList& c : casosDeDatos("conversiones.txt", campo))
      EXPECT_EQ(queda(campo, c[0]), c[1]) << campo;
  EXPECT_EQ(queda("Texto", QDate(2003, 2, 15)), "15/02/2003");
  EXPECT_EQ(queda("Entero", 2.5), "2");
  EXPECT_EQ(queda("Entero", 3.5), "4");
  EXPECT_EQ(queda("Entero", 2147483648.0), "3421");
  EXPECT_EQ(queda("Doble", 0.1 + 0.2), "0,3");
  EXPECT_EQ(queda("Doble", std::numeric_limits<double>::infinity()), "3421");
  EXPECT_EQ(queda("Fecha", QDateTime(QDate(2003, 2, 15), QTime(10, 30, 5))), "15/02/2003 10:30:05");
  EXPECT_EQ(queda("Fecha", 37667), "15/02/2003");
  EXPECT_EQ(queda("SiNo", 0), "Falso");

  EXPECT_ERROR(err::kNuloNoValido, Variant().text());
  EXPECT_ERROR(err::kTiposNoCoinciden, Variant("doce").number());
  EXPECT_ERROR(err::kDesbordamiento, Variant(3e9).toLong());
  EXPECT_EQ(Variant(true).number(), -1);
  for (const double valor : {-1234.5, 123456789012345.0, 1e20, 0.000001, -1e-10})
    EXPECT_NEAR(Variant(numberText(valor)).number(), valor, std::abs(valor) * 1e-14);
}

TEST_F(Registros, LoQueNoSePuedeHacerDaSuError) {
  const auto rs = db->OpenRecordset("Diario");
  const std::tuple<const char*, std::function<void()>, int> casos[] = {
      {"leer sin registro", [&] { rs->Fields(0).Value(); }, err::kSinRegistroActivo},
      {"pasar del último", [&] { rs->MoveNext(); }, err::kSinRegistroActivo},
      {"modificar", [&] { rs->Edit(); }, err::kSinRegistroActivo},
      {"borrar", [&] { rs->Delete(); }, err::kSinRegistroActivo},
      {"marca ajena", [&] { rs->setBookmark(99); }, err::kSinRegistroActivo},
      {"asignar sin editar", [&] { rs->Fields(0) = 1; }, err::kActualizarSinEditar},
      {"guardar sin editar", [&] { rs->Update(); }, err::kActualizarSinEditar},
      {"campo desconocido", [&] { rs->Fields("Nada"); }, err::kElementoNoEncontrado},
      {"tabla del motor", [&] { db->OpenRecordset("librano_filas"); }, err::kOrigenDesconocido},
      {"tabla repetida", [&] { db->appendTable(db->tableDef("DIARIO")); }, err::kTablaYaExiste},
  };
  for (const auto& [que, algo, error] : casos) EXPECT_EQ(numeroDeError(algo), error) << que;
  for (const char* nombre : {"", " x", "a]b", "a.b", "librano_x", "sqlite_x", "a'b"})
    EXPECT_ERROR(err::kLlamadaNoValida, db->CreateQueryDef(nombre, "x")) << nombre;

  anota(*rs, 1, 1, "430", "D", 10);
  rs->AddNew();
  EXPECT_EQ(rs->Fields("TipoDiario").display(), "1");
  EXPECT_ERROR(err::kClaveNula, rs->Update());
  rs->Fields("NLinea") = 1;
  EXPECT_ERROR(err::kClaveDuplicada, rs->Update());
  // What was done before an error stays, and so does the edit: another key is enough.
  EXPECT_EQ(herramienta("SELECT NLinea, Importe FROM Diario"), "1|10.0");
  rs->Fields("NLinea") = 2;
  rs->Update();
  rs->MoveLast();
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 2);
  EXPECT_TRUE(rs->Fields("Importe").isNull());
}

TEST_F(Registros, UnaClaveEsLaMismaEnMayusculasYEnMinusculas) {
  db->appendTable({"Empresas",
                   {{"NombreEmpresa", FieldType::Text, 50, {}, true}},
                   {{"NombreEmpresa", true, true, {"NombreEmpresa"}}}});
  const auto rs = db->OpenRecordset("Empresas");
  const auto alta = [&](const char* nombre) {
    return numeroDeError([&] { anade(*rs, {{"NombreEmpresa", nombre}}); });
  };
  EXPECT_EQ(alta("Peña e Hijos"), 0);
  EXPECT_EQ(alta("PEÑA E HIJOS"), err::kClaveDuplicada);
  EXPECT_EQ(alta("Pena e Hijos"), 0);
  rs->MoveFirst();
  rs->Edit();
  rs->Fields(0) = "PEÑA e Hijos";
  EXPECT_ERROR(0, rs->Update());
  rs->MoveNext();
  rs->Edit();
  rs->Fields(0) = "peña e hijos";
  EXPECT_ERROR(err::kClaveDuplicada, rs->Update());
}

TEST_F(Registros, AnadirNoMueveElRegistroActivoYBorrarDejaSuSitioVacio) {
  anotaLineas(3);
  const auto rs = db->OpenRecordset("Diario");
  EXPECT_EQ(rs->RecordCount(), 1);
  rs->MoveNext();
  const auto marca = rs->bookmark();
  anota(*rs, 0, 9, "570", "H", -1);
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 2);
  rs->Edit();
  rs->Fields("Subcuenta") = "perdida";
  rs->MoveLast();  // drops what was being edited
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 0);
  EXPECT_EQ(rs->RecordCount(), 4);
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_ERROR(err::kSinRegistroActivo, rs->MoveNext());
  rs->setBookmark(marca);
  EXPECT_EQ(rs->AbsolutePosition(), 1);
  EXPECT_EQ(rs->Fields("Subcuenta").text(), "430000002");

  rs->Delete();
  EXPECT_ERROR(err::kRegistroEliminado, rs->Fields(0).Value());
  EXPECT_ERROR(err::kRegistroEliminado, rs->Delete());
  EXPECT_TRUE(rs->cell(1, 0).isNull());
  rs->MoveNext();
  EXPECT_EQ(rs->Fields(0).toLong(), 3);
  rs->MovePrevious();
  EXPECT_EQ(rs->Fields(0).toLong(), 1);
  // The usual loop that empties a source.
  for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) rs->Delete();
  EXPECT_ERROR(err::kSinRegistroActivo, rs->MoveFirst());
  EXPECT_EQ(db->OpenRecordset("Diario")->rowTotal(), 0);
}

TEST_F(Registros, LoQueEscribenOtrosSeVeAlTocarlo) {
  anotaLineas(4);
  const auto rs = db->OpenRecordset("Diario"), otro = db->OpenRecordset("Diario");
  const auto lee = [&](int fila) {
    return numeroDeError([&] {
      rs->setAbsolutePosition(fila);
      rs->Fields(0).Value();
    });
  };
  for (int fila = 0; fila < 4; ++fila) EXPECT_EQ(lee(fila), 0);
  // Another set of rows; the one that takes a deleted row's place is none of the first's.
  corrige(*otro, {{"Importe", 99}});
  EXPECT_EQ(rs->cell(0, rs->Ordinal("Importe")).number(), 99);
  otro->MoveLast();
  otro->Delete();
  anota(*otro, 50, 50, "570", "D", 50);
  EXPECT_EQ(lee(3), err::kRegistroEliminado);
  EXPECT_ERROR(err::kRegistroEliminado, rs->Edit());
  EXPECT_EQ(rs->rowTotal(), 4);  // those of its opening
  engine.flush();

  EXPECT_EQ(herramienta("UPDATE Diario SET Importe=7.5 WHERE NLinea=1; INSERT INTO "
                        "Diario(NLinea) VALUES (8); DELETE FROM Diario WHERE NLinea=3"),
            "");
  EXPECT_EQ(rs->cell(0, rs->Ordinal("Importe")).number(), 7.5);
  EXPECT_EQ(lee(2), err::kRegistroEliminado);
  const auto nuevo = db->OpenRecordset("Diario");
  EXPECT_EQ(nuevo->rowTotal(), 4);
  nuevo->MoveLast();
  EXPECT_EQ(nuevo->Fields("NLinea").toLong(), 8);
  EXPECT_EQ(nuevo->Fields("TipoDiario").text(), "1");  // the defaults are the file's
  // A table made by the other program is there at once.
  herramienta("CREATE TABLE Ajena (Codigo INTEGER, Nombre VARCHAR(20), Alta DATE)");
  EXPECT_EQ(db->tableDef("Ajena").Fields[1].Size, 20);
}

TEST_F(Registros, SeEscribeLoQueCambiaYNadaMas) {
  anotaLineas(1);
  herramienta(
      "CREATE TABLE Escrito(Que);"
      "CREATE TRIGGER f AFTER UPDATE ON Diario BEGIN INSERT INTO Escrito VALUES ('fila'); END;"
      "CREATE TRIGGER s AFTER UPDATE OF Subcuenta ON Diario BEGIN INSERT INTO Escrito VALUES "
      "('subcuenta'); END");
  const auto rs = db->OpenRecordset("Diario");
  const auto cambia = [&](const char* importe, const QString& mientras = {}) {
    rs->Edit();
    rs->Fields("Subcuenta") = rs->Fields("Subcuenta").Value();
    rs->Fields("Importe") = importe;
    if (!mientras.isEmpty()) {
      engine.flush();
      herramienta(mientras);
    }
    rs->Update();
    engine.flush();
    return herramienta("SELECT group_concat(Que) FROM Escrito; SELECT Importe FROM Diario");
  };
  EXPECT_EQ(cambia("1"), "1.0");
  EXPECT_EQ(cambia("2"), "fila\n2.0");
  // What somebody else wrote meanwhile gives way to what was typed.
  EXPECT_EQ(cambia("2", "UPDATE Diario SET Importe = 3"), "fila,fila,fila\n2.0");
}

}  // namespace
