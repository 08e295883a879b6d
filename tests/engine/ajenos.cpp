// What other tools and other hands do to a file while it is in use.

#include "common/ignorar.h"
#include "engine/rowreader.h"
#include "libroendisco.h"

namespace {

class Ajenos : public LibroEnDisco {
 protected:
  QString suma() const {
    return db->OpenRecordset("Select Sum(IIf([DH]='D',[Importe],0)) as Debe from Diario")
        ->Fields(0)
        .display();
  }
  QString recuento() const {
    return herramienta(
        "SELECT total(NumeroLineas), total(SumaDebe + SumaHaber) FROM librano_sumas_1");
  }
  QString filas() const {
    return herramienta(
        "SELECT count(*) + 0.0, total(CAST(round(Importe * 1000000) AS INTEGER)) FROM Diario");
  }
  // The look at the file costs, so it isn't taken at each reading.
  static bool acaba(const std::function<bool()>& condicion) { return QTest::qWaitFor(condicion); }
};

TEST_F(Ajenos, ElFicheroCambiadoPorOtroSeVuelveAAbrirYNadaSeEscribeEnElAnterior) {
  anotaLineas(3);
  const QString otro = carpeta.filePath("otro");
  const auto sustituye = [&](int importe) {
    herramienta("VACUUM INTO '" + otro + "'");
    herramienta(QString("UPDATE Diario SET Importe = %1").arg(importe), {}, otro);
    ASSERT_EQ(::rename(otro.toUtf8().constData(), ruta.toUtf8().constData()), 0);
  };
  DataControl datos(engine);
  datos.bind(ruta, "Select * from Diario order by NLinea");
  datos.MoveLast();
  const auto abierto = db->OpenRecordset("Diario");
  sustituye(500);
  // Until it has been read again it is refused.
  const auto muestra = [&](double importe) {
    bool igual = false;
    ignorando([&] { igual = datos.Fields("Importe").number() == importe; });
    return igual;
  };
  // What was read is of no use any more; what is on show is read again where it stood.
  EXPECT_TRUE(acaba([&] {
    return numeroDeError([&] { abierto->Fields("Importe").Value(); }) == err::kFicheroSustituido;
  }));
  EXPECT_TRUE(acaba([&] { return muestra(500); }));
  EXPECT_EQ(datos.Fields("NLinea").toLong(), 3);
  // Neither what hadn't been saved nor what comes next goes where nobody sees it.
  corrige(datos, {{"Importe", 7}});
  sustituye(600);
  EXPECT_ERROR(err::kFicheroSustituido, engine.flush());
  EXPECT_TRUE(acaba([&] { return muestra(600); }));
  corrige(datos, {{"Importe", 8}});
  engine.flush();
  EXPECT_EQ(herramienta("SELECT group_concat(CAST(Importe AS INTEGER)) FROM Diario"), "600,600,8");
}

// A file taken away is missed by whoever goes on reading it, however its rows were read, and is as
// good as before once it is back.
TEST_F(Ajenos, ElFicheroQueSeHaIdoSeEchaEnFalta) {
  anotaLineas(2000);
  const auto filas = db->OpenRecordset("Diario");
  const auto sumas =
      db->OpenRecordset("Select NAsiento, Count(*) as N from Diario group by NAsiento");
  RowReader lector(*db, "Select * from Diario");
  ASSERT_TRUE(lector.next());
  const auto mueve = [&](const QString& de, const QString& a) {
    ASSERT_EQ(::rename(de.toUtf8().constData(), a.toUtf8().constData()), 0);
  };
  const std::function<void()> lecturas[] = {
      [&] { filas->Fields("Importe").Value(); }, [&] { sumas->Fields("N").Value(); },
      [&] { filas->Edit(); }, [&] { db->OpenRecordset("Empresa"); },
      [&] {
        while (lector.next()) continue;
      }};
  mueve(ruta, ruta + "x");
  for (const auto& lee : lecturas)
    EXPECT_TRUE(acaba([&] { return numeroDeError(lee) == err::kBaseNoEncontrada; }));
  mueve(ruta + "x", ruta);
  EXPECT_EQ(filas->Fields("Importe").number(), 1);
  EXPECT_EQ(sumas->Fields("N").number(), 1);
  // Another one in its place is not what was being read.
  RowReader otro(*db, "Select * from Diario");
  ASSERT_TRUE(otro.next());
  herramienta("VACUUM INTO '" + ruta + "y'");
  mueve(ruta + "y", ruta);
  for (const auto& lee : {lecturas[0], lecturas[1], std::function<void()>([&] {
                            while (otro.next()) continue;
                          })})
    EXPECT_TRUE(acaba([&] { return numeroDeError(lee) == err::kFicheroSustituido; }));
  EXPECT_EQ(db->OpenRecordset("Diario")->rowTotal(), 2000);
}

TEST_F(Ajenos, LasSumasDeUnaTablaRehechaPorOtroSiguenSiendoLasDeSusLineas) {
  anotaLineas(10);
  db->keepSums("Diario", "DH", "Importe", {{"NAsiento"}});
  engine.flush();
  EXPECT_EQ(suma(), "55");
  const QString rehace =
      "BEGIN; CREATE TABLE n(NLinea INTEGER, NAsiento INTEGER, Fecha DATETIME, Subcuenta TEXT(9) "
      "COLLATE NOCASE, DH TEXT(1) COLLATE NOCASE, Importe REAL, TipoDiario TEXT(1)); INSERT INTO n "
      "SELECT * FROM Diario; DROP TABLE Diario; ALTER TABLE n RENAME TO Diario; INSERT INTO "
      "Diario(NLinea, NAsiento, DH, Importe) VALUES (%1, 3, 'D', 100); COMMIT";
  herramienta(rehace.arg(20));
  EXPECT_TRUE(acaba([&] { return suma() == "155"; }));
  db.reset();  // and while nobody has it open
  herramienta(rehace.arg(21));
  db = engine.Workspaces(0).OpenDatabase(ruta);
  EXPECT_EQ(suma(), "255");
  herramienta("INSERT INTO Diario(NLinea, NAsiento, DH, Importe) VALUES (22, 3, 'D', 1)");
  EXPECT_TRUE(acaba([&] { return suma() == "256"; }));
  EXPECT_EQ(recuento(), filas());

  db.reset();
  herramienta("INSERT INTO librano_sumas VALUES (9, 'Diario', 'NoHay', 'Importe', '')");
  EXPECT_ERROR(err::kFormatoNoReconocido, engine.Workspaces(0).OpenDatabase(ruta));
}

TEST_F(Ajenos, LoQueNoCabeEnLasSumasSeRechazaLoEscribaQuienLoEscriba) {
  db->keepSums("Diario", "DH", "Importe", {{"NAsiento"}});
  engine.flush();
  const auto rs = db->OpenRecordset("Diario");
  anota(*rs, 1, 1, "430", "D", 999999999999.99);
  for (const double importe : {1e12, -1e12, 99999999999999.0}) {
    EXPECT_ERROR(err::kDesbordamiento, anota(*rs, 2, 1, "430", "D", importe));
    rs->CancelUpdate();
    EXPECT_TRUE(herramienta(QString("UPDATE Diario SET Importe = %1").arg(importe))
                    .contains("importe demasiado grande"));
  }
  engine.flush();
  EXPECT_EQ(recuento(), filas());
}

TEST_F(Ajenos, UnaReglaDeOtroNoEsUnaClaveRepetida) {
  herramienta(
      "CREATE TRIGGER regla BEFORE INSERT ON Empresa WHEN NEW.IdCodigo > 9 BEGIN "
      "SELECT RAISE(ABORT, 'no cabe'); END; CREATE TABLE Otra(Codigo INTEGER CHECK(Codigo < 5))");
  for (const auto& [tabla, campo] : {std::pair("Empresa", "IdCodigo"), {"Otra", "Codigo"}}) {
    const auto rs = db->OpenRecordset(tabla);
    const Valores fila = {{campo, 10}};
    EXPECT_ERROR(err::kReglaIncumplida, anade(*rs, fila)) << tabla;
  }
}

TEST_F(Ajenos, LoQueDejoUnaCopiaQueMurioSeQuitaAlHacerOtra) {
  const QString copia = carpeta.filePath("Copia.mdb");
  for (const char* resto : {".999999.tmp", ".999999.tmp-journal"})
    QFile(copia + resto).open(QIODevice::WriteOnly);
  engine.CopyDatabase(ruta, copia);
  EXPECT_EQ(QDir(carpeta.path()).entryList({"*.tmp*"}, QDir::Files), QStringList());
}

}  // namespace
