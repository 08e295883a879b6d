// What other packages wrote, read cell by cell: tables and texts as they come, and damaged ones.
#include "soporte/prueba.h"
#include "soporte/tabladbf.h"
#include "transfer/lectorcampos.h"
#include "transfer/lectordbf.h"

namespace {

class Lectores : public testing::Test {
 protected:
  QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }
  // The first cell of a table of one text column.
  QString leido(const QByteArray& texto, char marca) const {
    EscritorDbf({{"TITULO", 'C', 20}}).registro({texto}).graba(ruta("Uno.dbf"), marca);
    TablaDbf tabla(carpeta_.path(), "Uno.dbf");
    EXPECT_TRUE(tabla.siguiente());
    return tabla.valor(0).display();
  }
  int alAbrir(const QByteArray& bytes) const {
    haceFichero(ruta("Rota.dbf"), bytes);
    return numeroDeError([&] { TablaDbf(carpeta_.path(), "Rota.dbf"); });
  }
  QStringList campos(const QByteArray& texto, int cuantos) const {
    haceFichero(ruta("campos.csv"), texto);
    return LectorCampos(ruta("campos.csv")).lee(cuantos);
  }

  QTemporaryDir carpeta_;
};

TEST_F(Lectores, UnaTablaDaSusCeldasComoSon) {
  const QString aqui = ruta("Grupo/Emp01/DIARIO.Dbf");
  EscritorDbf({{"ASIEN", 'N', 6},
               {"FECHA", 'D', 8},
               {"SUBCTA", 'C', 12},
               {"EURO", 'N', 12, 2},
               {"SI", 'L', 1}})
      .registro({"1", "20030215", " 430 ", "1234.50", "T"})
      .registro({"2", "20030216", "borrado", "1", "F"}, true)
      .registro({"3", "00000000", "", "-0.05", "?"})
      .registro({"4", "20031301", "x", "***", "F"})
      .graba(aqui);
  TablaDbf tabla(ruta("grupo") + "\\EMP01", "Diario.dbf");
  EXPECT_EQ(tabla.total(), 4);
  EXPECT_ERROR(err::kSinRegistroActivo, tabla.valor(0));
  ASSERT_TRUE(tabla.siguiente());
  EXPECT_EQ(tabla.valor(0), Variant(1.0));
  EXPECT_EQ(tabla.valor("fecha"), Variant(QDate(2003, 2, 15)));
  EXPECT_EQ(tabla.valor("SubCta"), Variant(" 430"));
  EXPECT_EQ(tabla.valor(3), Variant(1234.5));
  EXPECT_EQ(tabla.valor(4), Variant(true));
  ASSERT_TRUE(tabla.siguiente());
  EXPECT_EQ(tabla.registro(), 2);
  EXPECT_TRUE(tabla.valor(1).isNull() && tabla.valor(2).isNull() && tabla.valor(4).isNull());
  EXPECT_EQ(tabla.valor(3), Variant(-0.05));
  ASSERT_TRUE(tabla.siguiente());
  EXPECT_ERROR(err::kConversionDeDatos, tabla.valor(1));
  EXPECT_ERROR(err::kConversionDeDatos, tabla.valor(3));
  EXPECT_ERROR(err::kElementoNoEncontrado, tabla.valor(5));
  EXPECT_ERROR(err::kElementoNoEncontrado, tabla.valor("Serie"));
  EXPECT_FALSE(tabla.siguiente());
}

TEST_F(Lectores, CadaTablaEnSuPaginaDeCodigos) {
  const struct {
    const char* bytes;
    char marca;
    const char* texto;
  } casos[] = {
      {"Espa\xA4"
       "a \x9E",
       0x01, "España ₧"},
      {"Espa\xA4"
       "a \xB5",
       0x02, "España Á"},
      {"Espa\xF1"
       "a \x80",
       0x03, "España €"},
      {"Espa\xF1"
       "a",
       0x57, "España"},
      {"Mu\xF1oz \x80", 0, "Muñoz €"},
      {"Mu\xA4oz Garc\xA1"
       "a",
       0, "Muñoz García"},
      {"\xBFY qu\xE9? 1\xBA", 0, "¿Y qué? 1º"},
      {"Caja", 0x7F, "Caja"},
  };
  for (const auto& caso : casos) EXPECT_EQ(leido(caso.bytes, caso.marca), caso.texto);
}

TEST_F(Lectores, UnaTablaRotaSeNiega) {
  EscritorDbf escritor({{"TITULO", 'C', 20}, {"N", 'N', 5}});
  for (int i = 0; i < 50; ++i) escritor.registro({"uno", "1"});
  const QByteArray buena = escritor.bytes();
  const auto con = [&](qsizetype donde, const QByteArray& bytes) {
    return QByteArray(buena).replace(donde, bytes.size(), bytes);
  };
  EXPECT_EQ(alAbrir(buena), 0);
  EXPECT_ERROR(err::kFicheroNoEncontrado, TablaDbf(carpeta_.path(), "Nada.dbf"));
  QDir(carpeta_.path()).mkdir("Carpeta.dbf");
  EXPECT_ERROR(err::kFicheroNoEncontrado, TablaDbf(carpeta_.path(), "Carpeta.dbf"));
  const std::pair<const char*, QByteArray> rotas[] = {
      {"empty", {}},
      {"no head", buena.left(20)},
      {"half its columns", buena.left(50)},
      {"half its records", buena.left(buena.size() / 2)},
      {"two thousand million records", con(4, "\xFF\xFF\xFF\x7F")},
      {"records without room", con(10, QByteArray(2, '\0'))},
      {"a column wider than its record", con(32 + 16, "\xFF")},
      {"a head beyond the end", con(8, "\xFF\xFF")},
      {"no columns", con(32, "\x0D")},
      {"another thing", QByteArray(5000, 'x')},
  };
  for (const auto& [que, bytes] : rotas)
    EXPECT_EQ(alAbrir(bytes), err::kFormatoNoReconocido) << que;
}

TEST_F(Lectores, LosCamposSeCuentanSeanCualesSeanLasLineas) {
  using L = QStringList;
  EXPECT_EQ(campos("a, b c ,\"d, \"\"e\"\"\r\nf\",\r\n", 4), (L{"a", "b c", "d, \"e\"\r\nf", ""}));
  EXPECT_EQ(campos("a\r\nb\nc,", 4), (L{"a", "b", "c", ""}));
  EXPECT_EQ(campos("\xEF\xBB\xBF"
                   "a\xC3\xB1o,a\xF1o",
                   2),
            (L{"año", "año"}));
  EXPECT_EQ(campos("\"x\" resto,y\x1A,z", 2), (L{"x", "y"}));
  haceFichero(ruta("dos.csv"), "1,2\r\n3,4\r\n \r\n");
  LectorCampos lector(ruta("dos.csv"));
  EXPECT_EQ(lector.lee(2), (L{"1", "2"}));
  EXPECT_FALSE(lector.fin());
  EXPECT_EQ(lector.lee(2), (L{"3", "4"}));
  EXPECT_TRUE(lector.fin());
  EXPECT_EQ(lector.leido(), lector.total());
  EXPECT_ERROR(err::kFinDeFichero, campos("1,2", 3));
  EXPECT_ERROR(err::kTextoDemasiadoLargo, campos("\"" + QByteArray(1 << 20, 'x'), 1));
  EXPECT_ERROR(err::kFicheroNoEncontrado, LectorCampos(ruta("no.csv")));
  EXPECT_ERROR(err::kFicheroNoEncontrado, LectorCampos(""));
}

}  // namespace
