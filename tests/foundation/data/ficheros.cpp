// Files that aren't there, aren't databases, can't be written or don't fit; repair, compaction,
// copies.
#include "estacion.h"
#include "libroendisco.h"

namespace {

class Ficheros : public LibroEnDisco {
 protected:
  // A file of the folder with these bytes at a place.
  QString escribe(const QString& nombre, const QByteArray& bytes, qint64 lugar = 0) const {
    QFile f(carpeta.filePath(nombre));
    EXPECT_TRUE(f.open(QIODevice::ReadWrite));
    f.seek(lugar);
    f.write(bytes);
    return f.fileName();
  }
};

TEST_F(Ficheros, LosQueNoSirvenDanSuError) {
  Workspace& area = engine.Workspaces(0);
  const std::pair<QString, int> casos[] = {
      {carpeta.filePath("falta.mdb"), err::kBaseNoEncontrada},
      {carpeta.path(), err::kBaseNoEncontrada},
      {"", err::kBaseNoEncontrada},
      {escribe("vacio.mdb", {}), err::kFormatoNoReconocido},
      {escribe("texto.mdb", QByteArray(5000, 'x')), err::kFormatoNoReconocido}};
  for (const auto& caso : casos) {
    const QString& fichero = caso.first;
    const int error = caso.second;
    SCOPED_TRACE(fichero.toStdString());
    EXPECT_EQ(numeroDeError([&] { area.OpenDatabase(fichero); }), error);
    EXPECT_EQ(numeroDeError([&] { engine.RepairDatabase(fichero); }), error);
    EXPECT_EQ(numeroDeError([&] { engine.CopyDatabase(fichero, ruta); }), error);
  }
  EXPECT_EQ(numeroDeError([&] { area.CreateDatabase(ruta, kLocale); }), err::kBaseYaExiste);
  EXPECT_EQ(numeroDeError([&] { area.CreateDatabase(carpeta.filePath("no/hay.mdb"), kLocale); }),
            err::kErrorDeRuta);
}

TEST_F(Ficheros, RepararRehaceIndicesYSumas) {
  anotaLineas(2000);
  db->keepSums("Diario", "DH", "Importe", {"NAsiento"});
  engine.flush();
  // As if an older program had written without the triggers.
  herramienta(
      "DROP TRIGGER librano_sumas_1_INSERT; INSERT INTO Diario(NLinea, NAsiento, DH, Importe) "
      "VALUES (9000, 3, 'D', 1); UPDATE librano_sumas_1 SET SumaDebe = 7 WHERE NAsiento = 5");
  engine.RepairDatabase(ruta);
  herramienta("INSERT INTO Diario(NLinea, NAsiento, DH, Importe) VALUES (9001, 3, 'D', 1)");
  EXPECT_EQ(
      herramienta("SELECT NAsiento, NumeroLineas, SumaDebe FROM librano_sumas_1 WHERE NAsiento "
                  "IN (3, 5) ORDER BY 1"),
      "3|4|15000000\n5|2|21000000");
  // What can't be derived from something else isn't passed off as repaired, nor copied.
  const int pagina =
      herramienta("SELECT rootpage FROM sqlite_schema WHERE name = 'Diario'").toInt();
  db.reset();
  escribe("Conta.MDB", QByteArray(4096, '\xee'), (pagina - 1) * 4096);
  EXPECT_EQ(numeroDeError([&] { engine.RepairDatabase(ruta); }), err::kFormatoNoReconocido);
  const QString copia = carpeta.filePath("Copia.mdb");
  EXPECT_EQ(numeroDeError([&] { engine.CopyDatabase(ruta, copia); }), err::kFormatoNoReconocido);
  EXPECT_FALSE(QFileInfo::exists(copia));
}

TEST_F(Ficheros, CompactarYCopiarDanLoMismoEnMenosSitio) {
  anotaLineas(3000);
  db->CreateQueryDef("Unos", "Select * from Diario where NAsiento = 1");
  const auto rs = db->OpenRecordset("Diario");
  for (int i = 0; i < 2900; ++i, rs->MoveNext()) rs->Delete();
  const QString compacta = carpeta.filePath("Compacta.mdb"), copia = carpeta.filePath("Copia.mdb");
  engine.CompactDatabase(ruta, compacta);
  engine.CopyDatabase(ruta, copia);
  EXPECT_LT(QFileInfo(compacta).size(), QFileInfo(copia).size() / 2);
  for (const QString& fichero : {compacta, copia})
    EXPECT_EQ(herramienta(".dump", {}, fichero), herramienta(".dump"));
  EXPECT_EQ(numeroDeError([&] { engine.CompactDatabase(ruta, compacta); }), err::kBaseYaExiste);
  EXPECT_EQ(QDir(carpeta.path()).entryList({"*.tmp*"}), QStringList());
}

TEST_F(Ficheros, RestaurarSobreUnFicheroEnUsoEnsenaLasFilasDevueltas) {
  anotaLineas(3);
  const QString copia = carpeta.filePath("Copia.mdb");
  engine.CopyDatabase(ruta, copia);
  const auto rs = db->OpenRecordset("Diario");
  rs->Edit();
  rs->Fields("Importe") = 500;
  rs->Update();
  // A copy that isn't sound changes nothing.
  const QString mala = escribe("mala.mdb", QByteArray(8192, 'x'));
  EXPECT_EQ(numeroDeError([&] { engine.CopyDatabase(mala, ruta); }), err::kFormatoNoReconocido);
  EXPECT_EQ(rs->Fields("Importe").number(), 500);
  engine.CopyDatabase(copia, ruta);
  EXPECT_EQ(rs->Fields("Importe").number(), 1);
  EXPECT_EQ(herramienta("SELECT sum(Importe) FROM Diario"), "6.0");
}

TEST_F(Ficheros, SiElDiscoFallaSeDeshaceLaAccionEnteraYSeDice) {
  db.reset();
  for (const auto& [orden, dicho] :
       {std::pair("disco-lleno", "3026 1 1 3167"), {"disco-estropeado", "3043 1 1 3167"}}) {
    EXPECT_EQ(Estacion(ruta).corre(orden), dicho);
    EXPECT_EQ(herramienta("SELECT group_concat(NLinea) FROM Diario"), "1,9000") << orden;
    EXPECT_EQ(herramienta("PRAGMA integrity_check"), "ok") << orden;
    herramienta("DELETE FROM Diario; VACUUM");
  }
}

TEST_F(Ficheros, UnFicheroDeSoloLecturaSeLeePeroNoSeEscribe) {
  anotaLineas(2);
  db.reset();
  EXPECT_EQ(Estacion(ruta).corre("leer-y-escribir"), "1 3027 3027");
}

// A station is killed again and again while it posts: what it had told as saved is there.
TEST_F(Ficheros, UnaMuerteEnCualquierMomentoNoDescuadraNada) {
  db->keepSums("Diario", "DH", "Importe", {"NAsiento"});
  db->keepIndex("Diario", {"NAsiento"});
  db.reset();
  herramienta("INSERT INTO Empresa(NLinDiario) VALUES (1)");
  const int veces = qEnvironmentVariableIsSet("LIBRANO_SOAK") ? 500 : 12;
  int lineas = 0;
  for (int i = 0; i < veces; ++i) {
    SCOPED_TRACE(i);
    const int dichas = Estacion(ruta).mata("anotar", 20 + (i * 37) % 150);
    EXPECT_EQ(herramienta("PRAGMA integrity_check"), "ok");
    lineas = herramienta("SELECT count(*) FROM Diario").toInt();
    EXPECT_GE(lineas, dichas);
    EXPECT_EQ(herramienta("SELECT total(NLinea) FROM Diario").toDouble(),
              0.5 * lineas * (lineas + 1));
    EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa").toInt(), lineas + 1);
    EXPECT_EQ(
        herramienta("SELECT total(NumeroLineas), total(SumaDebe + SumaHaber) FROM "
                    "librano_sumas_1"),
        herramienta("SELECT count(*) + 0.0, total(CAST(round(Importe * 1000000) AS INTEGER)) FROM "
                    "Diario"));
  }
  EXPECT_GT(lineas, 0);
}

}  // namespace
