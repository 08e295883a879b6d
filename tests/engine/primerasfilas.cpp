// Rows that are read only as far as a screen shows, and the others when they are asked for.

#include "libroendisco.h"

namespace {

using PrimerasFilas = LibroEnDisco;
const QString kDiario = QStringLiteral("Select * from Diario order by NLinea desc");

TEST_F(PrimerasFilas, LasDemasLleganAlPedirlas) {
  anotaLineas(1000);
  // What asks for them, and the position that it takes them to.
  const std::tuple<const char*, int (*)(DataControl&), int> casos[] = {
      {"total", [](DataControl& d) { return d.Recordset().rowTotal() - 1; }, 999},
      {"última", [](DataControl& d) { return d.MoveLast(), d.Recordset().AbsolutePosition(); },
       999},
      {"celda", [](DataControl& d) { return 1000 - int(d.Recordset().cell(998, 0).toLong()); },
       998},
      {"búsqueda",
       [](DataControl& d) { return d.FindFirst("NLinea=3"), d.Recordset().AbsolutePosition(); },
       997},
      {"paso a paso",
       [](DataControl& d) {
         int pasos = 0;
         for (; !d.Eof(); d.MoveNext()) ++pasos;
         return pasos - 1;
       },
       999},
  };
  for (const auto& [que, pide, posicion] : casos) {
    SCOPED_TRACE(que);
    DBEngine otro;  // that shares no keys with what was read before
    DataControl datos(otro);
    datos.bind(ruta, kDiario);
    const int vistas = datos.Recordset().rowsKnown();
    EXPECT_GT(vistas, 40);  // a screenful
    EXPECT_LT(vistas, 1000);
    EXPECT_EQ(pide(datos), posicion);
    EXPECT_EQ(datos.Recordset().rowsKnown(), 1000);
  }
}

TEST_F(PrimerasFilas, LoVistoNoSeMueveAunqueOtroEscriba) {
  anotaLineas(1000);
  DataControl datos(engine);
  datos.bind(ruta, kDiario);
  herramienta("INSERT INTO Diario(NLinea) VALUES (2000); DELETE FROM Diario WHERE NLinea=998");
  Recordset& filas = datos.Recordset();
  EXPECT_EQ(filas.cell(0, 0).toLong(), 1000);
  EXPECT_EQ(filas.rowTotal(), 1001);
  EXPECT_EQ(filas.cell(1, 0).toLong(), 999);
  EXPECT_TRUE(filas.isDeleted(2));
  QList<qint64> lineas;
  for (int i = 0; i < 1001; ++i)
    if (!filas.isDeleted(i)) lineas += filas.cell(i, 0).toLong();
  std::sort(lineas.begin(), lineas.end());
  EXPECT_EQ(std::unique(lineas.begin(), lineas.end()), lineas.end());
  EXPECT_EQ(lineas.size(), 1000);
}

// Accounts by the same codes, as the engine keeps them and as other tools do: those may tell
// letters by their case, or repeat a code.
class FilasConOtras : public LibroEnDisco {
 protected:
  FilasConOtras() {
    db->appendTable(
        {"Propias",
         {{"Codigo", FieldType::Text, 9, {}, true}, {"Nombre", FieldType::Text, 50, {}, true}},
         {{"Codigo", true, true, {"Codigo"}}}});
    engine.flush();
    herramienta(QString::fromUtf8(contenidoDe(rutaDato("otras.sql"))));
  }

  static QStringList filas(Recordset& rs) {
    QStringList todas;
    for (int fila = 0; fila < rs.rowTotal(); ++fila) {
      QStringList celdas;
      for (int campo = 0; campo < rs.FieldCount(); ++campo)
        celdas += rs.isDeleted(fila) ? QString("borrada") : rs.cell(fila, campo).display();
      todas += celdas.join('|');
    }
    return todas;
  }

  static QList<int> halladas(Recordset& rs, const QString& criterio) {
    QList<int> todas;
    for (rs.FindFirst(criterio); !rs.NoMatch(); rs.FindNext(criterio))
      todas += rs.AbsolutePosition();
    return todas;
  }
};

TEST_F(FilasConOtras, PorSusClavesSonLasQueSalenLeidasEnteras) {
  for (const char* tabla : {"Propias", "Distintas", "Parciales", "Dobles", "Numeros"}) {
    const bool propia = tabla == std::string("Propias");
    for (const QStringList& union_ : casosDeDatos("sentencias/uniones.txt", "union"))
      for (const QStringList& resto : casosDeDatos("sentencias/uniones.txt", "resto")) {
        const QString fuente = "Select D.NLinea, D.Subcuenta, C.Nombre, D.Importe from " +
                               union_[0].arg(tabla) + ' ' + resto[0];
        SCOPED_TRACE(fuente.toStdString());
        const auto enteras = db->OpenRecordset(fuente);
        const auto primeras = db->OpenRecordset(fuente, Opening::FirstRows);
        const int cuantas = enteras->rowTotal();
        EXPECT_GT(cuantas, 0);
        EXPECT_EQ(primeras->rowsKnown(), propia ? std::min(cuantas, 128) : cuantas);
        EXPECT_EQ(filas(*primeras), filas(*enteras));
        const QString criterio = "Nombre = 'uno' and Importe > 30";
        EXPECT_EQ(halladas(*primeras, criterio), halladas(*enteras, criterio));
        EXPECT_ERROR(err::kSoloLectura, primeras->AddNew());
      }
  }
}

// What is shown of the other table is as it stands there, whoever wrote it; a row that finds it no
// more is gone.
TEST_F(FilasConOtras, MuestranLoQueHayEnLaOtraTabla) {
  DataControl lista(engine);
  lista.bind(ruta,
             "Select D.NLinea, C.Nombre from Diario as D inner join Propias as C on "
             "D.Subcuenta = C.Codigo order by NLinea");
  lista.MoveNext();
  EXPECT_EQ(lista.Fields("Nombre").text(), "uno");
  const auto cuentas = db->OpenRecordset("Propias");
  cuentas->FindFirst("Codigo = '43a'");
  corrige(*cuentas, {{"Nombre", "aquí"}});
  EXPECT_EQ(lista.Fields("Nombre").text(), "aquí");
  engine.flush();
  herramienta("UPDATE Propias SET Nombre = 'allí' WHERE Codigo = '43a'");
  EXPECT_TRUE(QTest::qWaitFor([&] { return lista.Fields("Nombre").text() == "allí"; }));
  const int antes = lista.Recordset().rowTotal();
  cuentas->Delete();
  EXPECT_ERROR(err::kRegistroEliminado, lista.Fields("Nombre").Value());
  EXPECT_EQ(lista.Recordset().rowTotal(), antes);
  lista.Refresh();
  EXPECT_LT(lista.Recordset().rowTotal(), antes);
}

TEST_F(PrimerasFilas, UnaAltaQuedaDetrasDeTodas) {
  anotaLineas(1000);
  DataControl datos(engine);
  datos.bind(ruta, kDiario);
  anota(datos.Recordset(), 5000, 1, "570", "D", 1);
  EXPECT_EQ(datos.Recordset().rowTotal(), 1001);
  EXPECT_EQ(datos.Recordset().cell(1000, 0).toLong(), 5000);
}

}  // namespace
