// Several stations on one file: waits, locks, and what each sees of the others.

#include "engine/wait.h"
#include "libroendisco.h"

namespace {

class Puestos : public LibroEnDisco {
 protected:
  Puestos() {
    engine.setLockTimeout(30);
    herramienta("INSERT INTO Empresa(NLinDiario) VALUES (10)");
    empresa = db->OpenRecordset("Empresa");
  }
  void pon(int contador) const { corrige(*empresa, {{"NLinDiario", contador}}); }
  QString enElFichero() const { return herramienta("SELECT NLinDiario FROM Empresa"); }

  std::unique_ptr<Recordset> empresa;
};

TEST_F(Puestos, ElContadorSeLeeFrescoYEsDeUnoSoloHastaElFinalDeLaAccion) {
  const auto diario = db->OpenRecordset("Diario");
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 10);
  herramienta("UPDATE Empresa SET NLinDiario = 20");
  diario->AddNew();  // opens the group: from here on nobody else can take the number
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 20);
  EXPECT_TRUE(herramienta("UPDATE Empresa SET NLinDiario = 0").contains("locked"));
  pon(21);
  EXPECT_EQ(enElFichero(), "20");  // not yet: the action goes on
  QCoreApplication::processEvents();
  EXPECT_EQ(enElFichero(), "21");
}

TEST_F(Puestos, SiOtroTieneElFicheroSeEsperaYLuegoHayError) {
  OtroPuesto otro(ruta, "BEGIN IMMEDIATE; UPDATE Empresa SET NLinDiario = 30;");
  EXPECT_ERROR(err::kRegistroBloqueado, empresa->Edit());
  EXPECT_ERROR(err::kRegistroBloqueado, empresa->AddNew());
  EXPECT_EQ(empresa->editMode(), Recordset::EditMode::None);
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 10);  // reading goes on
  otro.ejecuta("COMMIT;");
  empresa->Edit();
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 30);
  empresa->Fields("NLinDiario") = 40;
  // An error in between commits the group, so a later Update may find the file taken.
  engine.flush();
  otro.ejecuta("BEGIN IMMEDIATE; UPDATE Empresa SET IdCodigo = 2;");
  EXPECT_ERROR(err::kNoSePuedeGuardar, empresa->Update());
  otro.ejecuta("COMMIT;");
  empresa->Update();  // the edit was kept, and changes only what was set
  engine.flush();
  EXPECT_EQ(herramienta("SELECT IdCodigo, NLinDiario FROM Empresa"), "2|40");
}

TEST_F(Puestos, LoQueNoSePudoGuardarPorqueOtroLeeSeGuardaDespues) {
  QSignalSpy fallos(&engine, &DBEngine::commitFailed);
  pon(11);
  {
    OtroPuesto otro(ruta, "BEGIN; SELECT * FROM Empresa;");
    EXPECT_ERROR(err::kNoSePuedeGuardar, engine.flush());
    QCoreApplication::processEvents();
    ASSERT_EQ(fallos.size(), 1);
    EXPECT_EQ(fallos[0][0].toInt(), err::kNoSePuedeGuardar);
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return enElFichero() == "11"; }));

  // The file may be closed meanwhile: what is pending isn't lost.
  {
    OtroPuesto otro(ruta);
    pon(12);
    otro.ejecuta("BEGIN; SELECT * FROM Empresa;");
    empresa.reset();
    db.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(fallos.size(), 2);
  }
  EXPECT_TRUE(QTest::qWaitFor([&] { return enElFichero() == "12"; }));
}

// Counts what it is asked, and gives up at once when it is told to.
struct Contada : Wait {
  bool waiting(qint64) override {
    ++preguntas;
    if (alEsperar) alEsperar();
    return paciente;
  }
  bool working(Work, qint64) override { return false; }
  void over() override { ++finales; }
  int preguntas = 0, finales = 0;
  bool paciente = true;
  std::function<void()> alEsperar;
};

TEST_F(Puestos, UnaNegativaAcabaLaAccionYSeDejaDeEsperarCuandoSePide) {
  Contada espera;
  engine.setWait(&espera);
  {
    OtroPuesto lector(ruta, "BEGIN; SELECT * FROM Empresa;");
    pon(11);
    empresa->MoveNext();
    // An error in between saves what went before it.
    EXPECT_ERROR(err::kSinRegistroActivo, empresa->Fields(0).Value());
    EXPECT_GT(std::exchange(espera.preguntas, 0), 0);
    QObject aqui;
    int avisos = 0;
    QObject::connect(&engine, &DBEngine::commitFailed, &aqui, [&] {
      ++avisos;
      EXPECT_ERROR(err::kNoSePuedeGuardar, engine.flush());
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(avisos, 1);
    EXPECT_EQ(espera.preguntas, 0);
  }
  engine.flush();
  espera = {};
  OtroPuesto otro(ruta, "BEGIN EXCLUSIVE;");
  const auto lee = [&] { return numeroDeError([&] { db->OpenRecordset("Empresa"); }); };
  EXPECT_EQ(lee(), err::kRegistroBloqueado);
  const int deUna = std::exchange(espera.preguntas, 0);
  EXPECT_GT(deUna, 0);
  EXPECT_EQ(espera.finales, 1);
  EXPECT_EQ(lee(), err::kRegistroBloqueado);
  EXPECT_EQ(espera.preguntas, 0);
  QCoreApplication::processEvents();  // the next action is waited for again
  espera.paciente = false;
  engine.setLockTimeout(60'000);
  EXPECT_EQ(lee(), err::kRegistroBloqueado);
  EXPECT_EQ(espera.preguntas, 1);
}

// A copy that waits, one that takes longer than anybody wants, and one into a file being read.
TEST_F(Puestos, UnaCopiaSeEsperaYSeDejaComoLoDemas) {
  const QString nueva = carpeta.filePath("Nueva.mdb"), vieja = carpeta.filePath("Vieja.mdb");
  engine.CopyDatabase(ruta, vieja);
  herramienta("UPDATE Empresa SET NLinDiario = 77", {}, vieja);
  Contada espera;
  engine.setWait(&espera);
  engine.setLockTimeout(60'000);
  const std::function<void()> copias[] = {[&] { engine.CopyDatabase(ruta, nueva); },
                                          [&] { engine.CopyDatabase(ruta, vieja); },
                                          [&] { engine.CompactDatabase(ruta, nueva); }};
  for (const auto& copia : copias) {
    OtroPuesto otro(ruta, "BEGIN EXCLUSIVE;");
    espera = {};
    espera.paciente = false;
    EXPECT_EQ(numeroDeError(copia), err::kRegistroBloqueado);
    EXPECT_EQ(espera.preguntas, 1);
    EXPECT_EQ(espera.finales, 1);
    QCoreApplication::processEvents();
    espera = {};
    espera.alEsperar = [&] {
      QThread::msleep(600);
      otro.ejecuta("ROLLBACK;");
    };
    EXPECT_EQ(numeroDeError(copia), err::kOperacionCancelada);
    EXPECT_EQ(espera.finales, 1);
    EXPECT_EQ(QDir(carpeta.path()).entryList(QDir::Files), QStringList({"Conta.MDB", "Vieja.mdb"}));
  }
  OtroPuesto lector(vieja, "BEGIN; SELECT count(*) FROM Diario;");
  espera = {};
  espera.paciente = false;
  EXPECT_EQ(numeroDeError(copias[1]), err::kNoSePuedeGuardar);
  EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa", {}, vieja), "77");
  EXPECT_EQ(espera.finales, 1);
}

// A reader who stays doesn't leave long work half done; at its end it is told what isn't saved.
TEST_F(Puestos, UnTrabajoLargoNoSeQuedaAMediasPorUnLector) {
  OtroPuesto lector(ruta, "BEGIN; SELECT count(*) FROM Empresa;");
  QSignalSpy fallos(&engine, &DBEngine::commitFailed);
  pon(1);
  QThread::msleep(250);
  EXPECT_ERROR(err::kNoSePuedeGuardar, engine.breathe());
  {
    const DBEngine::LongWork trabajo(engine);
    for (int i = 2; i < 5; ++i) {
      pon(i);
      QThread::msleep(250);
      EXPECT_ERROR(0, engine.breathe());
      QCoreApplication::processEvents();
    }
    EXPECT_TRUE(fallos.isEmpty());
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(fallos.size(), 1);
  lector.ejecuta("COMMIT;");
  engine.flush();
  EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa"), "4");

  // One who came in the middle leaves a part saved: what refuses the rest says so.
  {
    const DBEngine::LongWork trabajo(engine);
    pon(5);
    QThread::msleep(250);
    engine.breathe();
    lector.ejecuta("BEGIN; SELECT count(*) FROM Empresa;");
    pon(6);
  }
  const auto negativa = [&] {
    try {
      engine.flush();
    } catch (const ErrorEjecucion& e) {
      return e.descripcion();
    }
    return QString();
  };
  EXPECT_TRUE(negativa().endsWith(". La primera parte de este trabajo ya está guardada"));
  engine.discard();
  EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa"), "5");
  pon(7);
  EXPECT_FALSE(negativa().contains("guardada"));
}

TEST_F(Puestos, UnaConsultaSinFinSeDetieneYLoPendienteQueda) {
  Contada espera;
  engine.setWait(&espera);
  const auto diario = db->OpenRecordset("Diario");
  for (int i = 1; i <= 400; ++i) anota(*diario, i, 1, "430", "D", 1);
  EXPECT_ERROR(err::kOperacionCancelada,
               db->OpenRecordset(
                   "Select Sum(A.Importe * D.Importe) from ((Diario as A inner join Diario as B on "
                   "A.DH = B.DH) inner join Diario as C on A.DH = C.DH) inner join Diario as D on "
                   "A.DH = D.DH"));
  engine.flush();
  EXPECT_EQ(herramienta("SELECT count(*) FROM Diario"), "400");
}

TEST_F(Puestos, UnTrabajoLargoDejaPasarALosDemas) {
  engine.setLockTimeout(10000);
  const auto rs = db->OpenRecordset("Diario");
  anota(*rs, 0, 1, "430", "D", 1);
  QProcess esperando;
  esperando.start("sqlite3",
                  {"-cmd", ".timeout 10000", ruta,
                   "INSERT INTO Diario(NLinea) VALUES (-1); SELECT count(*) FROM Diario"});
  int linea = 0;
  while (esperando.state() != QProcess::NotRunning && linea < 1000000) {
    anota(*rs, ++linea, 1, "430", "D", 1);
    engine.breathe();
    esperando.waitForFinished(0);
  }
  const int entonces = esperando.readAllStandardOutput().trimmed().toInt();
  EXPECT_EQ(esperando.exitCode(), 0) << esperando.readAllStandardError().toStdString();
  EXPECT_GT(entonces, 1);
  EXPECT_LE(entonces, linea + 2);
}

}  // namespace
