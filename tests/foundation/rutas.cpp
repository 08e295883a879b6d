#include "foundation/rutas.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

void crea(const QString& ruta) {
  QFile fichero(ruta);
  ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
}

TEST(Rutas, EncuentraFicherosYCarpetasSinMirarMayusculas) {
  QTemporaryDir dir;
  const QString base = dir.path();
  ASSERT_TRUE(QDir(base).mkpath(QStringLiteral("Datos/Mi Empresa")));
  crea(base + QStringLiteral("/Datos/Mi Empresa/Conta.Mdb"));

  const struct {
    const char* escrita;
    const char* esperada;
  } casos[] = {
      {"\\Datos\\Mi Empresa\\Conta.Mdb", "/Datos/Mi Empresa/Conta.Mdb"},
      {"\\DATOS\\mi empresa\\Conta.MDB", "/Datos/Mi Empresa/Conta.Mdb"},
      {"/datos\\MI EMPRESA/conta.mdb", "/Datos/Mi Empresa/Conta.Mdb"},
      {"\\datos\\", "/Datos/"},
      // What doesn't exist keeps its spelling, below folders that do.
      {"\\datos\\Nueva SL\\Conta.MDB", "/Datos/Nueva SL/Conta.MDB"},
      {"\\datos\\mi empresa\\Conta2.MDB", "/Datos/Mi Empresa/Conta2.MDB"},
  };
  for (const auto& caso : casos) {
    EXPECT_EQ(rutaSistema(rutaPrograma(base) + QString::fromUtf8(caso.escrita)),
              base + QString::fromUtf8(caso.esperada))
        << caso.escrita;
  }
  EXPECT_EQ(rutaSistema({}), QString());
}

TEST(Rutas, UnaGrafiaExactaGanaAOtraDeOtrasMayusculas) {
  QTemporaryDir dir;
  crea(dir.filePath(QStringLiteral("CONTA.MDB")));
  crea(dir.filePath(QStringLiteral("Conta.MDB")));
  EXPECT_EQ(rutaSistema(rutaPrograma(dir.path()) + QStringLiteral("\\Conta.MDB")),
            dir.filePath(QStringLiteral("Conta.MDB")));
}

TEST(Rutas, ElProgramaEscribeBarrasInvertidas) {
  EXPECT_EQ(rutaPrograma(QStringLiteral("/home/ana/Datos/")),
            QStringLiteral("\\home\\ana\\Datos\\"));
}

}  // namespace
