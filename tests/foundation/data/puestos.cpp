// Several stations on one file: waits, locks, and what each sees of the others.
#include <QSignalSpy>
#include <QTest>

#include "libroendisco.h"

namespace {

class Puestos : public LibroEnDisco {
 protected:
  Puestos() {
    engine.setLockTimeout(30);
    const auto rs = db->OpenRecordset("Empresa");
    rs->AddNew();
    rs->Fields("NLinDiario") = 10;
    rs->Update();
    engine.flush();
  }
};

TEST_F(Puestos, ElQueModificaTieneElFicheroHastaElFinalDeLaAccion) {
  const auto empresa = db->OpenRecordset("Empresa");
  empresa->Edit();
  EXPECT_TRUE(herramienta("UPDATE Empresa SET NLinDiario = 0").contains("locked"));
  empresa->Fields("NLinDiario") = empresa->Fields("NLinDiario").toLong() + 1;
  empresa->Update();
  EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa"), "10");  // not yet: the action goes on
  QCoreApplication::processEvents();
  EXPECT_EQ(herramienta("SELECT NLinDiario FROM Empresa"), "11");
}

TEST_F(Puestos, ElContadorSeLeeFrescoAlEmpezarAModificar) {
  const auto empresa = db->OpenRecordset("Empresa");
  const auto diario = db->OpenRecordset("Diario");
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 10);
  herramienta("UPDATE Empresa SET NLinDiario = 20");
  diario->AddNew();  // opens the group: from here on nobody else can take the number
  EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), 20);
  diario->CancelUpdate();
}

TEST_F(Puestos, SiOtroTieneElFicheroSeEsperaYLuegoHayError) {
  const auto rs = db->OpenRecordset("Empresa");
  {
    OtroPuesto otro(ruta);
    otro.ejecuta("BEGIN IMMEDIATE; UPDATE Empresa SET NLinDiario = 30;");
    EXPECT_EQ(numeroDeError([&] { rs->Edit(); }), err::kRegistroBloqueado);
    EXPECT_EQ(numeroDeError([&] { rs->AddNew(); }), err::kRegistroBloqueado);
    EXPECT_EQ(rs->editMode(), Recordset::EditMode::None);
    EXPECT_EQ(rs->Fields("NLinDiario").toLong(), 10);  // reading goes on
    otro.ejecuta("COMMIT;");
  }
  rs->Edit();
  EXPECT_EQ(rs->Fields("NLinDiario").toLong(), 30);
}

// An error in between commits the group, so a later Update may find the file taken.
TEST_F(Puestos, GuardarLoQueSeEditabaMientrasOtroTieneElFichero) {
  const auto rs = db->OpenRecordset("Empresa");
  rs->Edit();
  rs->Fields("NLinDiario") = 40;
  engine.flush();
  OtroPuesto otro(ruta);
  otro.ejecuta("BEGIN IMMEDIATE; UPDATE Empresa SET IdCodigo = 2;");
  EXPECT_EQ(numeroDeError([&] { rs->Update(); }), err::kNoSePuedeGuardar);
  otro.ejecuta("COMMIT;");
  rs->Update();  // the edit was kept, and changes only what was set
  engine.flush();
  EXPECT_EQ(herramienta("SELECT IdCodigo, NLinDiario FROM Empresa"), "2|40");
}

TEST_F(Puestos, LoQueSePierdeAlCerrarSeDice) {
  QSignalSpy fallos(&engine, &DBEngine::commitFailed);
  OtroPuesto otro(ruta);
  {
    const auto rs = db->OpenRecordset("Empresa");
    rs->Edit();
    rs->Fields("NLinDiario") = 11;
    rs->Update();
    otro.ejecuta("BEGIN; SELECT * FROM Empresa;");
    db.reset();
  }
  ASSERT_EQ(fallos.size(), 1);
  EXPECT_EQ(fallos[0][0].toInt(), err::kNoSePuedeGuardar);
}

TEST_F(Puestos, LoQueNoSePudoGuardarPorqueOtroLeeSeGuardaDespues) {
  QSignalSpy fallos(&engine, &DBEngine::commitFailed);
  const auto rs = db->OpenRecordset("Empresa");
  rs->Edit();
  rs->Fields("NLinDiario") = 11;
  rs->Update();
  {
    OtroPuesto otro(ruta);
    otro.ejecuta("BEGIN; SELECT * FROM Empresa;");
    EXPECT_EQ(numeroDeError([&] { engine.flush(); }), err::kNoSePuedeGuardar);
    QCoreApplication::processEvents();
    ASSERT_EQ(fallos.size(), 1);
    EXPECT_EQ(fallos[0][0].toInt(), err::kNoSePuedeGuardar);
  }
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return herramienta("SELECT NLinDiario FROM Empresa") == "11"; }));
}

TEST_F(Puestos, UnErrorNoDeshaceLoHechoAntes) {
  const auto rs = db->OpenRecordset("Diario");
  anota(*rs, 1, 1, "430", "D", 1);
  EXPECT_EQ(numeroDeError([&] { anota(*rs, 1, 1, "430", "D", 1); }), err::kClaveDuplicada);
  EXPECT_EQ(herramienta("SELECT count(*) FROM Diario"), "1");
}

TEST_F(Puestos, UnTrabajoLargoDejaPasarALosDemas) {
  const auto rs = db->OpenRecordset("Diario");
  OtroPuesto otro(ruta);
  otro.ejecuta(".timeout 10000");
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
  const QByteArray entonces = esperando.readAllStandardOutput().trimmed();
  EXPECT_EQ(esperando.exitCode(), 0) << esperando.readAllStandardError().toStdString();
  EXPECT_GT(entonces.toInt(), 0);
  EXPECT_LE(entonces.toInt(), linea + 1);
}

}  // namespace
