// Running sums against a recount of the lines, whatever was done to them and by whom.

#include "engine/connection.h"
#include "engine/sqlite/store.h"
#include "libroendisco.h"
#include "soporte/seguridad.h"

namespace {

class Sumas : public LibroEnDisco {
 protected:
  Sumas() {
    db->keepSums("Diario", "DH", "Importe", {{"Subcuenta"}, {"Fecha", SumKey::Part::Month}});
    db->keepSums("Diario", "DH", "Importe", {{"NAsiento"}});
    db->keepSums("Diario", "DH", "Importe", {});
    engine.flush();
  }

  // The sums by asiento and by month of the lines that meet a condition, in thousandths: one on
  // their number sends to the lines themselves.
  QString consultadas(const char* donde) const {
    const QString debe = "IIf([DH]='D',[Importe],0)", haber = "IIf([DH]='D',0,[Importe])";
    QStringList filas;
    for (const char* clave : {"NAsiento", "Month(Fecha)"}) {
      const auto rs = db->OpenRecordset(
          QString(
              "Select %1 as Clave, Sum(%2) as D, Sum(%3) as H, Sum(%2+%3) as Saldo, Count(*) as "
              "N from Diario %4 group by %1 order by %1")
              .arg(clave, debe, haber, donde));
      for (; !rs->Eof(); rs->MoveNext())
        for (int i = 0; i < rs->FieldCount(); ++i)
          filas << (rs->Fields(i).isNull()
                        ? "Null"
                        : QString::number(qRound64(rs->Fields(i).number() * 1000)));
    }
    return filas.join(' ');
  }
  // What the sums say and what the lines say, by a tool that knows nothing of us.
  void compara(const QString& cuando) const {
    EXPECT_EQ(consultadas(""), consultadas("where NLinea > 0")) << cuando.toStdString();
    // The keys of each table of sums, and the same of the lines.
    const std::pair<const char*, const char*> casos[] = {
        {"lower(Subcuenta), MesFecha,", "lower(Subcuenta), CAST(substr(Fecha, 6, 2) AS INTEGER),"},
        {"NAsiento,", "NAsiento,"},
        {"", ""}};
    for (int i = 0; i < 3; ++i) {
      const QString sumas = herramienta(QString("SELECT %1 NumeroLineas, SumaDebe, SumaHaber, "
                                                "LineasDebe, LineasHaber FROM librano_sumas_%2 "
                                                "ORDER BY 1, 2, 3")
                                            .arg(casos[i].first)
                                            .arg(i + 1));
      const QString contadas = herramienta(
          QString("SELECT %1 count(*), sum(iif(DH='D', %2, 0)), sum(iif(DH='D', 0, %2)), "
                  "count(iif(DH='D', Importe, 0)), count(iif(DH='D', 0, Importe)) FROM "
                  "Diario GROUP BY %1 'todas' ORDER BY 1, 2, 3")
              .arg(casos[i].second, "coalesce(CAST(round(Importe*1000000) AS INTEGER), 0)"));
      EXPECT_EQ(sumas, contadas) << cuando.toStdString() << ": " << casos[i].first;
    }
  }
};

TEST_F(Sumas, SonLasDeLasLineasTrasCualquierSucesionDeCambios) {
  const int veces = qEnvironmentVariableIntValue("LIBRANO_SOAK");
  QRandomGenerator azar(semilla(2003));
  const auto alguno = [&](std::initializer_list<Variant> de) {
    return de.begin()[azar.bounded(static_cast<int>(de.size()))];
  };
  auto rs = db->OpenRecordset("Diario");
  const auto borraTodas = [&] {
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) rs->Delete();
  };
  int linea = 0;
  for (int paso = 0; paso < 600 * (1 + veces); ++paso) {
    // With too much in the book it would be the recount, in doubles, that loses a thousandth.
    if (paso % 600 == 0 && paso > 0) {
      borraTodas();
      rs = db->OpenRecordset("Diario");
    }
    if (paso % 100 == 50) {  // in the middle of a group
      EXPECT_EQ(consultadas(""), consultadas("where NLinea > 0")) << paso;
    } else if (paso % 100 == 0) {
      engine.flush();
      compara("paso " + QString::number(paso));
    }
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
  }
  cuenta(600 * (1 + veces), "cambios con sus sumas recontadas");
  EXPECT_ERROR(err::kClaveDuplicada, anota(*rs, linea, 1, "430", "D", 10));
  compara("clave repetida");
  borraTodas();
  engine.flush();
  compara("borradas todas");
}

// A long group leaves the file's triggers and adds up by itself: nobody may notice, whoever reads
// or writes in the middle of it.
TEST_F(Sumas, UnGrupoLargoNoSeNota) {
  const auto rs = db->OpenRecordset("Diario");
  const auto total = [&] {
    const auto sumas = db->OpenRecordset("Select Sum(IIf([DH]='D',[Importe],0)) as D from Diario");
    return sumas->Fields(0).number();
  };
  const auto cambia = [&](int asiento) {
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext())
      corrige(*rs, {{"NAsiento", asiento}, {"Importe", rs->Fields("Importe").number() + 1}});
  };
  for (int i = 1; i <= 200; ++i) anota(*rs, i, i / 2, i % 3 ? "430" : "A", "D", i);
  EXPECT_EQ(total(), 20100);
  cambia(7);
  EXPECT_EQ(total(), 20300);
  // A statement that isn't the writer's finds the triggers again, also between its rows.
  dynamic_cast<FileStore&>(db->connection()->store())
      .execute("UPDATE Diario SET Importe = 0, Subcuenta = 'a' WHERE NLinea <= 100");
  cambia(8);
  EXPECT_EQ(total(), 15350);
  EXPECT_ERROR(err::kClaveDuplicada, anota(*rs, 5, 8, "430", "D", 1000));
  compara("clave repetida");
  for (const double importe : {1e12, -1e12, 99999999999999., -1e15}) {
    cambia(9);
    EXPECT_ERROR(err::kDesbordamiento, anota(*rs, 900, 9, "430", "D", importe));
    compara("importe enorme");
    cambia(11);
    rs->MoveLast();
    rs->Edit();
    rs->Fields("Importe") = importe;
    EXPECT_ERROR(err::kDesbordamiento, rs->Update());
    compara("cambiado por uno enorme");
  }
  cambia(9);
  rs->MoveFirst();
  rs->Delete();
  engine.flush();
  compara("un grupo entero");

  // Triggers of another tool are never left out.
  herramienta(
      "CREATE TABLE Vistas(N); CREATE TRIGGER otra AFTER UPDATE ON Diario BEGIN INSERT "
      "INTO Vistas VALUES (1); END");
  cambia(10);
  engine.flush();
  compara("con un disparador ajeno");
  EXPECT_EQ(herramienta("SELECT count(*) FROM Vistas"), "199");
  herramienta(
      "CREATE TRIGGER doble AFTER INSERT ON Diario WHEN NEW.NLinea < 5000 BEGIN INSERT INTO "
      "Diario(NLinea) VALUES (NEW.NLinea + 5000); END");
  for (int i = 1001; i <= 1100; ++i) anota(*rs, i, 12, "430", "D", i);
  engine.flush();
  compara("con líneas de un disparador ajeno");
}

// Each statement by another program; those that would replace lines unseen are refused whole.
TEST_F(Sumas, OtroProgramaNoLasPuedeDescuadrar) {
  anotaLineas(20);
  // Sums over lines that were there before begin with these.
  db->keepSums("diario", "dh", "importe", {{"TipoDiario"}});
  engine.flush();
  EXPECT_EQ(herramienta("SELECT * FROM librano_sumas_4"), "1|20|210000000|0|20|20");
  for (const QString& linea : lineasDeDatos("sentencias/deotros.txt")) {
    const QString sentencia = linea.section(": ", 1), salida = herramienta(sentencia);
    EXPECT_EQ(salida.isEmpty(), linea.startsWith("sí")) << qPrintable(linea + salida);
    compara(sentencia);
  }
  // What is kept beside a table isn't shown, and goes with it.
  EXPECT_EQ(db->TableDefs(), (QStringList{"Empresa", "Diario"}));
  db->deleteTable("diario");
  engine.flush();
  EXPECT_EQ(herramienta("SELECT group_concat(name) FROM sqlite_schema WHERE name LIKE '%sumas_%'"),
            "");
  EXPECT_EQ(herramienta("SELECT count(*) FROM librano_sumas"), "0");
}

}  // namespace
