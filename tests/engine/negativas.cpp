// Each call across the engine's border refused in turn: whatever another station or a failing disk
// does to an action, wherever it strikes, the books hold all of it or nothing, what is open shows
// what they hold, and the action can be made again.

#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "soporte/mapas.h"
#include "soporte/prueba.h"

namespace {

class Negativas : public testing::Test {
 protected:
  Negativas() {
    db->appendTable({"Empresa", {{"NLinDiario", FieldType::Long, 0, "0", false}}, {}});
    db->appendTable(
        {"Diario",
         {{"NLinea", FieldType::Long, 0, {}, false}, {"Importe", FieldType::Double, 0, {}, false}},
         {{"NLinea", true, true, {"NLinea"}}}});
    empresa = db->OpenRecordset("Empresa");
    diario = db->OpenRecordset("Diario");
    empresa->AddNew();
    empresa->Update();
    empresa->MoveFirst();
    engine.flush();
  }

  // One line and its counter, as the journal writes them.
  void asienta() {
    diario->AddNew();
    const qint64 linea = empresa->Fields("NLinDiario").toLong();
    completa(*diario, [&] {
      diario->Fields("NLinea") = linea;
      diario->Fields("Importe") = 100.5;
    });
    empresa->Edit();
    completa(*empresa, [&] { empresa->Fields("NLinDiario") = linea + 1; });
    // As the window shows them before they are committed.
    EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), linea + 1);
    EXPECT_FALSE(lineas(*diario).isEmpty());
    engine.flush();
  }

  static QStringList lineas(Recordset& filas) {
    QStringList todas;
    for (int i = 0; i < filas.rowTotal(); ++i)
      if (!filas.isDeleted(i))
        todas += filas.cell(i, 0).display() + ' ' + filas.cell(i, 1).display();
    return todas;
  }

  std::shared_ptr<Mapas> mapas = std::make_shared<Mapas>();
  DBEngine engine{conductorDeMapas(mapas)};
  std::unique_ptr<Database> db = engine.Workspaces(0).CreateDatabase("libro", {});
  std::unique_ptr<Recordset> empresa, diario;
};

TEST_F(Negativas, UnaAccionQuedaEnteraONoQuedaYPuedeRepetirse) {
  for (const int numero : {err::kRegistroBloqueado, err::kNoSePuedeGuardar, err::kErrorDeDisco}) {
    int llamada = 1;
    for (;; ++llamada) {
      SCOPED_TRACE(QString("%1 en la llamada %2").arg(numero).arg(llamada).toStdString());
      const QStringList antes = lineas(*diario);
      mapas->niega(llamada, numero);
      const int error = numeroDeError([&] { asienta(); });
      const bool negada = mapas->negada();
      mapas->niega(0, 0);
      ASSERT_EQ(error, negada ? numero : 0);
      // What only couldn't be committed is still there and goes with the next commit.
      const bool queda = !negada || numero == err::kNoSePuedeGuardar;
      engine.flush();
      EXPECT_EQ(lineas(*diario).size(), antes.size() + (queda ? 1 : 0));
      EXPECT_EQ(lineas(*diario), lineas(*db->OpenRecordset("Diario")));
      EXPECT_EQ(empresa->Fields("NLinDiario").toLong(), lineas(*diario).size());
      if (!negada) break;
      asienta();
    }
    EXPECT_GT(llamada, 1) << numero;
  }
}

TEST_F(Negativas, LoQueNoSePudoLeerSeLeeDespues) {
  for (int i = 0; i < 40; ++i) asienta();
  int llamada = 1;
  for (bool negada = true; negada; ++llamada) {
    SCOPED_TRACE(llamada);
    DataControl datos(engine);
    const auto recorre = [&] {
      datos.bind("libro", "Select * from Diario where Importe > 1 order by NLinea desc");
      datos.MoveLast();
      EXPECT_EQ(datos.Fields("NLinea").toLong(), 0);
      datos.FindFirst("NLinea = 7");
      EXPECT_EQ(datos.Recordset().AbsolutePosition(), 32);
      datos.FindNext("NLinea < 3");
      EXPECT_EQ(datos.Fields("NLinea").toLong(), 2);
    };
    mapas->niega(llamada, err::kRegistroBloqueado);
    const int error = numeroDeError(recorre);
    negada = mapas->negada();
    mapas->niega(0, 0);
    EXPECT_EQ(error, negada ? err::kRegistroBloqueado : 0);
    recorre();
  }
  EXPECT_GT(llamada, 3);
}

}  // namespace
