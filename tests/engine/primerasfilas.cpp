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

TEST_F(PrimerasFilas, UnaAltaQuedaDetrasDeTodas) {
  anotaLineas(1000);
  DataControl datos(engine);
  datos.bind(ruta, kDiario);
  anota(datos.Recordset(), 5000, 1, "570", "D", 1);
  EXPECT_EQ(datos.Recordset().rowTotal(), 1001);
  EXPECT_EQ(datos.Recordset().cell(1000, 0).toLong(), 5000);
}

// Values written in the columns belong to the source, not to a row: they are read by keys too.
TEST_F(PrimerasFilas, LosValoresEscritosNoObliganALeerloTodo) {
  anotaLineas(1000);
  for (const auto& [palabra, veces, desde] : std::initializer_list<std::tuple<QString, int, int>>{
           {"cargo", 10, 5}, {"debe", 7, 5}, {"cargo", 10, 990}}) {
    DataControl datos(engine);
    datos.bind(ruta, QString("Select NLinea, IIf([NLinea]>0,'%1','nada') as Lado, [NLinea]*%2 as "
                             "Veces, NAsiento from Diario where NLinea > %3 order by NLinea desc")
                         .arg(palabra)
                         .arg(veces)
                         .arg(desde));
    EXPECT_LT(datos.Recordset().rowsKnown(), 995);
    EXPECT_EQ(datos.Fields("NLinea").toLong(), 1000);
    datos.MoveNext();
    EXPECT_EQ(datos.Fields("Lado").text(), palabra);
    EXPECT_EQ(datos.Fields("Veces").toLong(), 999 * veces);
    datos.Edit();
    datos.Fields("NAsiento") = 77;
    datos.Update();
    datos.MoveLast();
    EXPECT_EQ(datos.Recordset().RecordCount(), 1000 - desde);
    EXPECT_EQ(datos.Fields("Veces").toLong(), (desde + 1) * veces);
  }
}

}  // namespace
