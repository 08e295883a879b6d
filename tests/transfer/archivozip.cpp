// Archives that others made, damaged or meant ill by.
#include "transfer/archivozip.h"

#include <zip.h>

#include "soporte/prueba.h"

namespace {

class ArchivoZip : public testing::Test {
 protected:
  struct Fichero {
    QByteArray nombre;
    QByteArray contenido;
    zip_uint32_t atributos = 0;
  };
  // As any tool may write it, whatever the names.
  void empaqueta(const QList<Fichero>& ficheros) {
    QFile::remove(archivo);
    zip_t* z = zip_open(QFile::encodeName(archivo).constData(), ZIP_CREATE, nullptr);
    for (const Fichero& f : ficheros) {
      zip_source_t* s = zip_source_buffer(z, f.contenido.constData(),
                                          static_cast<zip_uint64_t>(f.contenido.size()), 0);
      const auto indice = zip_file_add(z, f.nombre.constData(), s, 0);
      ASSERT_GE(indice, 0) << f.nombre.constData();
      if (f.atributos)
        zip_file_set_external_attributes(z, static_cast<zip_uint64_t>(indice), 0, ZIP_OPSYS_UNIX,
                                         f.atributos);
    }
    ASSERT_EQ(zip_close(z), 0);
  }
  int saca() {
    const int numero =
        numeroDeError([&] { descomprime(archivo, "Conta.Mdb", destino, [](int, int) {}); });
    EXPECT_EQ(QDir(carpeta.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList("dentro"));
    const QStringList admitidos{"copia.zip", "sacado"};
    for (const QString& nombre : QDir(carpeta.filePath("dentro")).entryList(QDir::Files))
      EXPECT_TRUE(admitidos.contains(nombre)) << qPrintable(nombre);
    return numero;
  }
  void SetUp() override { QDir(carpeta.path()).mkdir("dentro"); }

  QTemporaryDir carpeta;
  const QString archivo = carpeta.filePath("dentro/copia.zip");
  const QString destino = carpeta.filePath("dentro/sacado");
  const QByteArray base = QByteArray("SQLite format 3\0", 16) + QByteArray(300'000, 'b');
  const QByteArray otra = QByteArray("SQLite format 3\0", 16) + "otra";
};

TEST_F(ArchivoZip, ElFicheroSaleAsuSitioVengaDeDondeVenga) {
  for (const char* nombre : {"Conta.Mdb", "CONTA.MDB", "Libros/conta.mdb", "../../../Conta.MDB",
                             "/tmp/Conta.Mdb", "C:\\Librano\\Conta.Mdb", "..\\Conta.Mdb"}) {
    SCOPED_TRACE(nombre);
    empaqueta({{"leeme.txt", "hola"}, {nombre, base}});
    EXPECT_EQ(saca(), 0);
    EXPECT_EQ(contenidoDe(destino), base);
  }
  // The one that is told by its plain name is the one meant.
  empaqueta({{"Viejo/Conta.Mdb", otra}, {"Conta.Mdb", base}});
  EXPECT_EQ(saca(), 0);
  EXPECT_EQ(contenidoDe(destino), base);
}

TEST_F(ArchivoZip, LoQueNoSirveSeRehusa) {
  constexpr zip_uint32_t kEnlace = 0120777U << 16;
  const QList<Fichero> casos[] = {
      {},
      {{"NoConta.Mdb", base}, {"Conta.Mdb.txt", base}, {"Conta.Mdb/", {}}},
      {{"Uno/Conta.Mdb", base}, {"Dos/Conta.Mdb", base}},
      {{"Conta.Mdb", base}, {"CONTA.MDB", otra}},
      {{"Conta.Mdb", "/etc/passwd", kEnlace}},
      {{"Conta.Mdb", "no es una base"}},
      {{"Conta.Mdb", {}}},
      {{"Conta.Mdb", QByteArray(60'000'000, '\0')}},  // what swells up is seen at its first bytes
  };
  for (const auto& ficheros : casos) {
    SCOPED_TRACE(&ficheros - casos);
    QFile::remove(destino);
    if (ficheros.isEmpty()) {
      haceFichero(archivo, "no es un zip");
    } else {
      empaqueta(ficheros);
    }
    EXPECT_EQ(saca(), err::kArchivoNoSirve);
    EXPECT_EQ(QFileInfo(destino).size(), 0);
  }
  QFile::remove(archivo);
  EXPECT_EQ(saca(), err::kFicheroNoEncontrado);
}

// Cut anywhere, and with any byte changed: taken whole, or refused.
TEST_F(ArchivoZip, UnArchivoDanadoNuncaDaOtraCosa) {
  empaqueta({{"Conta.Mdb", base}});
  const QByteArray sano = contenidoDe(archivo);
  for (qsizetype corte = 0; corte < sano.size(); corte += 7) {
    haceFichero(archivo, sano.left(corte));
    EXPECT_EQ(saca(), err::kArchivoNoSirve) << corte;
  }
  for (qsizetype sitio = 0; sitio < sano.size(); ++sitio) {
    QByteArray danado = sano;
    danado[sitio] = static_cast<char>(danado[sitio] ^ 0x55);
    haceFichero(archivo, danado);
    const int numero = saca();
    EXPECT_TRUE(numero == 0 ? contenidoDe(destino) == base
                            : numero == err::kArchivoNoSirve || numero == err::kSinEspacio)
        << sitio << ' ' << numero;
  }
}

TEST_F(ArchivoZip, EmpaquetarSePuedeDejarYDiceSiNoHaySitio) {
  const QString original = carpeta.filePath("dentro/sacado");
  const auto sigue = [](int, int) { return true; };
  haceFichero(original, base);
  EXPECT_EQ(numeroDeError(
                [&] { comprime(original, archivo, "Conta.Mdb", [](int, int) { return false; }); }),
            err::kOperacionCancelada);
  EXPECT_ERROR(err::kErrorDeRuta,
               comprime(original, carpeta.filePath("no hay/x.zip"), "Conta.Mdb", sigue));
}

}  // namespace
