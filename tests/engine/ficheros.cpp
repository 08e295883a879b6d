// Files that aren't there, aren't databases, can't be written or don't fit; repair, compaction,
// copies.
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include "engine/connection.h"
#include "engine/sqlite/store.h"
#include "estacion.h"
#include "libroendisco.h"
#include "soporte/discolleno.h"
#include "soporte/seguridad.h"

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
  for (const auto& [fichero, error] : casos) {
    SCOPED_TRACE(fichero.toStdString());
    EXPECT_EQ(numeroDeError([&, &fichero = fichero] { area.OpenDatabase(fichero); }), error);
    EXPECT_EQ(numeroDeError([&, &fichero = fichero] { engine.RepairDatabase(fichero); }), error);
    EXPECT_EQ(numeroDeError([&, &fichero = fichero] { engine.CopyDatabase(fichero, ruta); }),
              error);
  }
  EXPECT_ERROR(err::kBaseYaExiste, area.CreateDatabase(ruta, kLocale));
  EXPECT_ERROR(err::kErrorDeRuta, area.CreateDatabase(carpeta.filePath("no/hay.mdb"), kLocale));
}

// A company deleted while a list still shows it, and made anew under its name.
TEST_F(Ficheros, ElNuevoNoEsElQueSeBorroAbierto) {
  Workspace& area = engine.Workspaces(0);
  const QString otra = carpeta.filePath("Otra.MDB");
  area.CreateDatabase(otra, kLocale);
  const QString barras = carpeta.path() + "\\" + QFileInfo(ruta).fileName();
  const std::function<void()> maneras[] = {[&] { area.CreateDatabase(ruta, kLocale); },
                                           [&] { engine.CopyDatabase(otra, ruta); },
                                           [&] { engine.CompactDatabase(otra, ruta); }};
  for (const auto& manera : maneras) {
    const auto abierta = area.OpenDatabase(barras);
    abierta->appendTable({"Vieja", {{"Codigo", FieldType::Long, 0, {}, false}}, {}});
    engine.flush();
    escribe("Conta.MDB-journal", {});
    engine.DeleteDatabase(ruta);
    EXPECT_FALSE(engine.exists(ruta));
    EXPECT_FALSE(QFileInfo::exists(ruta + "-journal"));
    engine.DeleteDatabase(ruta);  // what is already gone is no failure
    manera();
    EXPECT_TRUE(engine.exists(barras));
    EXPECT_FALSE(area.OpenDatabase(ruta)->TableDefs().contains("Vieja")) << &manera - maneras;
    EXPECT_FALSE(area.OpenDatabase(barras)->TableDefs().contains("Vieja")) << &manera - maneras;
  }
}

TEST_F(Ficheros, RepararRehaceIndicesYSumas) {
  anotaLineas(2000);
  db->keepSums("Diario", "DH", "Importe", {{"NAsiento"}});
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
  escribe("Conta.MDB", QByteArray(4096, '\xee'), (pagina - 1) * 4096LL);
  EXPECT_ERROR(err::kFormatoNoReconocido, engine.RepairDatabase(ruta));
  const QString copia = carpeta.filePath("Copia.mdb");
  EXPECT_ERROR(err::kFormatoNoReconocido, engine.CopyDatabase(ruta, copia));
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
  EXPECT_ERROR(err::kBaseYaExiste, engine.CompactDatabase(ruta, compacta));
  EXPECT_EQ(QDir(carpeta.path()).entryList({"*.tmp*"}), QStringList());
}

// A journal whose file was taken away by hand, and which would put a page of zeros into the one
// that comes in its place.
TEST_F(Ficheros, LaCopiaNoRecibeElDiarioDeUnFicheroQueSeFue) {
  anotaLineas(100);
  QByteArray diario;
  QDataStream datos(&diario, QIODevice::WriteOnly);
  constexpr quint32 kPaginas = 1, kClave = 7, kTamano = 5, kSector = 512, kPagina = 4096;
  datos << quint64{0xd9d505f920a163d7} << kPaginas << kClave << kTamano << kSector << kPagina;
  diario = diario.leftJustified(kSector, '\0');
  datos.device()->seek(kSector);
  datos << quint32{2};
  diario.append(QByteArray(kPagina, '\0'));
  datos.device()->seek(diario.size());
  datos << kClave;
  const QString copia = carpeta.filePath("Copia.MDB");
  for (const bool compacta : {false, true}) {
    escribe("Copia.MDB-journal", diario);
    if (compacta) {
      engine.CompactDatabase(ruta, copia);
    } else {
      engine.CopyDatabase(ruta, copia);
    }
    EXPECT_EQ(herramienta("PRAGMA integrity_check; SELECT count(*) FROM Diario", {}, copia),
              "ok\n100");
    QFile::remove(copia);
  }
}

// What was made from a file's rows doesn't take its place once somebody has written to it.
TEST_F(Ficheros, LoHechoDeUnFicheroNoPisaLoEscritoDespues) {
  anotaLineas(3);
  const QString nuevo = carpeta.filePath("Nuevo.mdb");
  for (const bool otroEscribe : {true, false}) {
    const qint64 leida = engine.commits(ruta);
    engine.CopyDatabase(ruta, nuevo);
    herramienta("UPDATE Diario SET Importe = 9", {}, nuevo);
    if (otroEscribe) herramienta("UPDATE Diario SET Importe = 7");
    EXPECT_ERROR(otroEscribe ? err::kNoSePuedeGuardar : 0,
                 engine.ReplaceDatabase(nuevo, ruta, leida));
    EXPECT_EQ(herramienta("SELECT max(Importe) FROM Diario"), otroEscribe ? "7.0" : "9.0");
    engine.DeleteDatabase(nuevo);
  }
}

// Work on whole files tells how far it is, and is done at the end of its bar.
TEST_F(Ficheros, LoLargoDiceHastaDondeVa) {
  anotaLineas(10);
  herramienta(
      "CREATE TABLE relleno(x); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n "
      "WHERE i < 60000) INSERT INTO relleno SELECT hex(randomblob(500)) FROM n");
  int veces = 0, antes = 0;
  const Advance avance = [&](int hecho, int total) {
    ++veces;
    EXPECT_GE(hecho, antes);
    EXPECT_LE(hecho, total);
    antes = hecho;
    // What paints meanwhile makes do with what it has.
    EXPECT_TRUE(engine.isWaiting());
    EXPECT_ERROR(err::kRegistroBloqueado, db->OpenRecordset("Diario"));
  };
  engine.CopyDatabase(ruta, carpeta.filePath("Otra.mdb"), avance);
  EXPECT_GT(veces, 1);
  EXPECT_FALSE(engine.isWaiting());
}

TEST_F(Ficheros, RestaurarSobreUnFicheroEnUsoEnsenaLasFilasDevueltas) {
  anotaLineas(3);
  const QString copia = carpeta.filePath("Copia.mdb");
  engine.CopyDatabase(ruta, copia);
  const auto rs = db->OpenRecordset("Diario");
  corrige(*rs, {{"Importe", 500}});
  // A copy that isn't sound changes nothing.
  const QString mala = escribe("mala.mdb", QByteArray(8192, 'x'));
  EXPECT_ERROR(err::kFormatoNoReconocido, engine.CopyDatabase(mala, ruta));
  EXPECT_EQ(rs->Fields("Importe").number(), 500);
  engine.CopyDatabase(copia, ruta);
  EXPECT_EQ(rs->Fields("Importe").number(), 1);
  EXPECT_EQ(herramienta("SELECT sum(Importe) FROM Diario"), "6.0");
}

// A disk, full or failing, that takes the line noted first and not a long action after it; then it
// takes everything again.
TEST_F(Ficheros, SiElDiscoFallaSeDeshaceLaAccionEnteraYSeDice) {
  std::optional<DiscoLleno> lleno;
  constexpr rlim_t kTodos = rlim_t{1} << 40;
  const std::pair<std::function<void(rlim_t)>, int> casos[] = {
      {[&](rlim_t bytes) {
         dynamic_cast<FileStore&>(db->connection()->store())
             .execute(QString("PRAGMA max_page_count = %1").arg(bytes / 4096));
       },
       err::kSinEspacio},
      {[&](rlim_t bytes) {
         lleno.reset();
         if (bytes < kTodos) lleno.emplace(bytes);
       },
       err::kErrorDeDisco}};
  const auto rs = db->OpenRecordset("Diario");
  for (const auto& [limita, numero] : casos) {
    anota(*rs, 1, 1, "430", "D", 1);
    engine.flush();
    limita(static_cast<rlim_t>(QFileInfo(ruta).size() + 8192));
    int linea = 2, error = 0;
    QString texto;
    try {
      for (; linea < 3000; ++linea) anota(*rs, linea, 1, "430", "D", 1);
      engine.flush();
    } catch (const ErrorEjecucion& e) {
      error = e.numero();
      texto = e.descripcion();
    }
    limita(kTodos);
    EXPECT_EQ(error, numero);
    EXPECT_TRUE(texto.endsWith(QString("Se ha deshecho lo último anotado, que no llegó a guardarse "
                                       "(cambios deshechos: %1)")
                                   .arg(linea - 2)))
        << texto.toStdString();
    rs->MoveLast();
    EXPECT_ERROR(err::kRegistroEliminado, rs->Fields(0).Value());
    anota(*rs, 9000, 1, "430", "D", 1);
    engine.flush();
    EXPECT_EQ(herramienta("SELECT group_concat(NLinea) FROM Diario"), "1,9000");
    EXPECT_EQ(herramienta("PRAGMA integrity_check"), "ok");
    herramienta("DELETE FROM Diario; VACUUM");
  }
}

TEST_F(Ficheros, UnFicheroDeSoloLecturaSeLeePeroNoSeEscribe) {
  anotaLineas(2);
  db.reset();
  ::chmod(ruta.toUtf8().constData(), 0444);
  ::chmod(carpeta.path().toUtf8().constData(), 0755);
  // The administrator may write anything: somebody else tries.
  ::setfsuid(65534);
  const auto vuelve = qScopeGuard([] { ::setfsuid(::geteuid()); });
  db = engine.Workspaces(0).OpenDatabase(ruta);
  const auto rs = db->OpenRecordset("Diario");
  EXPECT_EQ(rs->Fields("NLinea").toLong(), 1);
  EXPECT_ERROR(err::kSoloLectura, rs->Edit());
  EXPECT_ERROR(err::kSoloLectura, rs->AddNew());
}

// A station is killed again and again while it posts: what it had told as saved is there.
TEST_F(Ficheros, UnaMuerteEnCualquierMomentoNoDescuadraNada) {
  db->keepSums("Diario", "DH", "Importe", {{"NAsiento"}});
  db->keepIndexes("Diario", {{{"NAsiento"}}});
  engine.flush();
  db.reset();
  EXPECT_EQ(QDir(carpeta.path()).entryList(QDir::Files), QStringList{"Conta.MDB"});
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
  cuenta(veces, "muertes a media anotación");
  cuenta(lineas, "líneas anotadas entre muertes");
}

}  // namespace
