// Running sums against a recount of the lines, whatever was done to them and by whom.
#include <QRandomGenerator>

#include "libroendisco.h"

namespace {

class Sumas : public LibroEnDisco {
 protected:
  Sumas() {
    db->keepIndex("Diario", {"NAsiento"});
    db->keepSums("Diario", "DH", "Importe", {"Subcuenta", "Month(Fecha)"});
    db->keepSums("Diario", "DH", "Importe", {"NAsiento"});
    db->keepSums("Diario", "DH", "Importe", {});
    engine.flush();
  }

  // What the sums say and what the lines say, by a tool that knows nothing of us.
  void compara(const QString& cuando) const {
    const struct {
      const char* claves;  // of the table of sums
      const char* lineas;  // the same of the lines
    } casos[] = {
        {"lower(Subcuenta), MesFecha,", "lower(Subcuenta), CAST(substr(Fecha, 6, 2) AS INTEGER),"},
        {"NAsiento,", "NAsiento,"},
        {"", ""}};
    for (int i = 0; i < 3; ++i) {
      const QString claves = QString::fromLatin1(casos[i].claves);
      const QString sumas = herramienta("SELECT " + claves +
                                        " NumeroLineas, SumaDebe, SumaHaber FROM librano_sumas_" +
                                        QString::number(i + 1) + " ORDER BY 1, 2, 3");
      const QString lineas = QString::fromLatin1(casos[i].lineas);
      const QString grupo =
          lineas.isEmpty() ? " HAVING count(*) > 0" : " GROUP BY " + lineas.chopped(1);
      const QString contadas = herramienta(
          "SELECT " + lineas +
          " count(*), sum(iif(DH='D', coalesce(CAST(round(Importe*1000000) AS INTEGER), 0), 0)),"
          " sum(iif(DH='D', 0, coalesce(CAST(round(Importe*1000000) AS INTEGER), 0))) FROM Diario" +
          grupo + " ORDER BY 1, 2, 3");
      EXPECT_EQ(sumas.toStdString(), contadas.toStdString())
          << cuando.toStdString() << ": " << claves.toStdString();
    }
  }
};

TEST_F(Sumas, NoGuardanNadaDeUnaTablaVacia) {
  compara("vacía");
}

TEST_F(Sumas, SonLasDeLasLineasTrasCualquierSucesionDeCambios) {
  QRandomGenerator azar(2003);
  const auto alguno = [&](std::initializer_list<Variant> de) {
    return de.begin()[azar.bounded(static_cast<int>(de.size()))];
  };
  auto rs = db->OpenRecordset("Diario");
  int linea = 0;
  for (int paso = 0; paso < 600; ++paso) {
    if (rs->rowTotal() == 0 || azar.bounded(3) == 0) {
      rs->AddNew();
      rs->Fields("NLinea") = ++linea;
    } else {
      rs->setAbsolutePosition(azar.bounded(rs->rowTotal()));
      if (rs->isDeleted(rs->AbsolutePosition())) continue;
      if (azar.bounded(4) == 0) {
        rs->Delete();
        continue;
      }
      rs->Edit();
    }
    for (const auto& [campo, valor] : std::initializer_list<std::pair<const char*, Variant>>{
             {"NAsiento", alguno({1, 2, 3, {}})},
             {"Fecha", alguno({QDate(2003, 1, 31), QDate(2003, 12, 1), {}})},
             {"Subcuenta", alguno({"430000001", "572000001", "a", "A", "", {}})},
             {"DH", alguno({"D", "H", "d", "", {}})},
             {"Importe", alguno({0.1, 0.2, -1234.565, 1e9, 0, {}})}})
      if (azar.bounded(2) == 0) rs->Fields(campo) = valor;
    rs->Update();
    if (paso % 100 == 0) {
      engine.flush();
      compara("paso " + QString::number(paso));
    }
  }
  for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) rs->Delete();
  engine.flush();
  compara("borradas todas");
  EXPECT_EQ(herramienta("SELECT (SELECT count(*) FROM librano_sumas_1) + (SELECT count(*) FROM "
                        "librano_sumas_2) + (SELECT count(*) FROM librano_sumas_3)"),
            "0");
}

// Each statement by another program; those that would replace lines unseen are refused whole.
TEST_F(Sumas, OtroProgramaNoLasPuedeDescuadrar) {
  anotaLineas(20);
  const struct {
    const char* sentencia;
    bool admitida;
  } casos[] = {
      {"INSERT INTO Diario(NLinea, DH, Importe) VALUES (100, 'D', 5), (101, 'H', -5)", true},
      {"UPDATE Diario SET NLinea = NLinea + 1000 WHERE NLinea < 5", true},
      {"UPDATE Diario SET Importe = Importe * 1.21, Subcuenta = '700000000' WHERE NLinea % 3 = 0",
       true},
      {"UPDATE Diario SET NAsiento = NULL WHERE NLinea = 10", true},
      {"UPDATE Diario SET Importe = 'nada' WHERE NLinea = 11", true},
      {"UPDATE Diario SET rowid = 5000 WHERE NLinea = 12", true},
      {"REPLACE INTO Diario(NLinea, NAsiento, DH, Importe) VALUES (10, 1, 'D', 9)", false},
      {"INSERT OR REPLACE INTO Diario(rowid, NLinea, DH, Importe) VALUES (8, 555, 'D', 9)", false},
      {"UPDATE OR REPLACE Diario SET NLinea = 9 WHERE NLinea = 10", false},
      {"UPDATE OR REPLACE Diario SET rowid = 8 WHERE NLinea = 10", false},
      {"UPDATE OR REPLACE Diario SET _rowid_ = 8 WHERE NLinea = 10", false},
      {"INSERT INTO Diario(NLinea) VALUES (9) ON CONFLICT DO UPDATE SET Importe = 3", false},
      {"PRAGMA recursive_triggers=ON; REPLACE INTO Diario(NLinea, Importe) VALUES (9, 1)", false},
      {"DELETE FROM Diario WHERE NLinea > 15", true},
      {"DELETE FROM Diario", true},
  };
  for (const auto& c : casos) {
    const QString salida = herramienta(c.sentencia);
    EXPECT_EQ(salida.isEmpty(), c.admitida) << c.sentencia << ": " << salida.toStdString();
    compara(c.sentencia);
  }
}

TEST_F(Sumas, LaClaveRepetidaSigueSiendoLaMismaFallo) {
  const auto rs = db->OpenRecordset("Diario");
  anota(*rs, 1, 1, "430", "D", 10);
  EXPECT_EQ(numeroDeError([&] { anota(*rs, 1, 1, "430", "D", 10); }), err::kClaveDuplicada);
  compara("clave repetida");
}

TEST_F(Sumas, SobreUnaTablaConLineasEmpiezanPorContarlas) {
  anotaLineas(50);
  TableDef otra{QStringLiteral("Otra"), {}, {}};
  otra.CreateField("L", FieldType::Text, 1);
  otra.CreateField("I", FieldType::Double);
  db->appendTable(otra);
  const auto rs = db->OpenRecordset("Otra");
  for (int i = 0; i < 3; ++i) {
    rs->AddNew();
    rs->Fields("I") = 0.1;
    rs->Update();
  }
  db->keepSums("otra", "l", "i", {"L"});
  engine.flush();
  EXPECT_EQ(herramienta("SELECT L IS NULL, NumeroLineas, SumaDebe, SumaHaber FROM librano_sumas_4"),
            "1|3|0|300000");
  compara("con líneas");
  // What is kept beside a table isn't shown, and goes with it.
  EXPECT_EQ(db->TableDefs(), (QStringList{"Empresa", "Diario", "Otra"}));
  db->deleteTable("Otra");
  engine.flush();
  EXPECT_EQ(herramienta("SELECT count(*) FROM sqlite_schema WHERE name LIKE 'librano_sumas_4%'"),
            "0");
  EXPECT_EQ(herramienta("SELECT count(*) FROM librano_sumas"), "3");
}

}  // namespace
