#include "foundation/programas.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include "foundation/data/errorejecucion.h"
#include "foundation/instancia.h"
#include "foundation/rutas.h"

namespace {

void escribe(const QString& ruta, const QByteArray& texto) {
  QDir().mkpath(QFileInfo(ruta).path());
  QFile fichero(ruta);
  ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
  fichero.write(texto);
}

QByteArray lee(const QString& ruta) {
  QFile fichero(ruta);
  return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

QString nombreUnico() {
  return QStringLiteral("librano-prueba-%1").arg(::getpid());
}

}  // namespace

TEST(Carpeta, LaDelProgramaSiSePuedeEscribir) {
  const QTemporaryDir dir;
  const QString propia = dir.filePath(QStringLiteral("propia"));
  EXPECT_EQ(carpetaDelPrograma(dir.path(), propia), rutaPrograma(dir.path()) + QLatin1Char('\\'));
  EXPECT_FALSE(QFileInfo::exists(propia));
}

TEST(Carpeta, LaDelUsuarioSeLlenaUnaSolaVez) {
  const QTemporaryDir dir;
  const QString instalada = dir.filePath(QStringLiteral("bin"));  // not there: can't be written
  const QString propia = dir.filePath(QStringLiteral("casa/Librano"));
  escribe(dir.filePath(QStringLiteral("share/librano/impresos/sub/diario.rpt")), "diario");

  EXPECT_EQ(carpetaDelPrograma(instalada, propia), rutaPrograma(propia) + QLatin1Char('\\'));
  const QString copia = propia + QStringLiteral("/Impresos/sub/diario.rpt");
  EXPECT_EQ(lee(copia), "diario");

  escribe(copia, "cambiado por el usuario");
  carpetaDelPrograma(instalada, propia);
  EXPECT_EQ(lee(copia), "cambiado por el usuario");
}

TEST(Carpeta, LaDeDatosRecibeLasPlantillasQueLeFaltan) {
  const QTemporaryDir dir;
  const QString junto = dir.filePath(QStringLiteral("programa/Impresos/Diario.rpt"));
  escribe(junto, "diario");
  QFile::setPermissions(junto, QFile::ReadOwner);
  const QString programa = rutaPrograma(dir.filePath(QStringLiteral("programa"))) + u'\\';
  const QString datos = rutaPrograma(dir.filePath(QStringLiteral("datos"))) + u'\\';

  completaImpresos(programa, datos);
  EXPECT_FALSE(QFileInfo::exists(rutaSistema(datos)));
  QDir().mkpath(rutaSistema(datos));
  completaImpresos(programa, datos);
  const QString copia = rutaSistema(datos + QStringLiteral("Impresos\\Diario.rpt"));
  EXPECT_EQ(lee(copia), "diario");

  // Edited by the user, and another one that comes with a newer version.
  escribe(copia, "el de la casa");
  escribe(dir.filePath(QStringLiteral("programa/Impresos/May1.rpt")), "mayor");
  completaImpresos(programa, datos);
  EXPECT_EQ(lee(copia), "el de la casa");
  EXPECT_EQ(lee(rutaSistema(datos + QStringLiteral("Impresos\\May1.rpt"))), "mayor");

  completaImpresos(programa, programa);  // the data beside the program
  EXPECT_EQ(lee(junto), "diario");
}

TEST(Programas, ArrancaOtroEnSuCarpeta) {
  const QTemporaryDir dir;
  const QString programa = dir.filePath(QStringLiteral("Durnal.exe"));
  escribe(programa, "#!/bin/sh\nprintf '%s' \"$1\" > salida.tmp && mv salida.tmp salida\n");
  QFile::setPermissions(programa, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

  // Written in another case and without its ending, as the menu has it.
  ejecutaPrograma(rutaPrograma(dir.filePath(QStringLiteral("durnal"))), {QStringLiteral("a b")});
  const QString salida = dir.filePath(QStringLiteral("salida"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(salida); }));
  EXPECT_EQ(lee(salida), "a b");

  escribe(dir.filePath(QStringLiteral("noes")), "sin permiso");
  for (const char* nombre : {"nohay.exe", "noes", ""}) {
    try {
      ejecutaPrograma(rutaPrograma(dir.filePath(QLatin1String(nombre))), {});
      ADD_FAILURE() << nombre;
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), err::kFicheroNoEncontrado) << nombre;
    }
  }
}

TEST(Instancia, UnaSolaALaVez) {
  auto primera = std::make_unique<Instancia>(nombreUnico());
  EXPECT_TRUE(primera->unica());
  EXPECT_FALSE(Instancia(nombreUnico()).unica());
  EXPECT_TRUE(Instancia(nombreUnico() + QLatin1Char('2')).unica());
  primera.reset();
  EXPECT_TRUE(Instancia(nombreUnico()).unica());
}

TEST(Instancia, UnaQueMuereNoBloquea) {
  const QString nombre = nombreUnico();
  int tubo[2];
  ASSERT_EQ(::pipe(tubo), 0);
  const pid_t hija = ::fork();
  if (hija == 0) {
    const Instancia suya(nombre);
    [[maybe_unused]] const auto escrito = ::write(tubo[1], suya.unica() ? "1" : "0", 1);
    for (;;) ::pause();
  }
  char unica = 0;
  ASSERT_EQ(::read(tubo[0], &unica, 1), 1);
  EXPECT_EQ(unica, '1');
  EXPECT_FALSE(Instancia(nombre).unica());
  ::kill(hija, SIGKILL);
  ::waitpid(hija, nullptr, 0);
  EXPECT_TRUE(Instancia(nombre).unica());
  ::close(tubo[0]);
  ::close(tubo[1]);
}
