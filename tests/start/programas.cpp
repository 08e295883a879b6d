// The files around the program: their names, its settings and log, and other programs.
#include "start/programas.h"

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include "common/cini.h"
#include "common/funciones.h"
#include "soporte/prueba.h"
#include "start/instancia.h"

namespace {

class Programas : public testing::Test {
 protected:
  QString ruta(const QString& nombre) const { return dir_.filePath(nombre); }
  void escribe(const QString& nombre, const QByteArray& texto) const {
    haceFichero(ruta(nombre), texto);
  }
  QByteArray lee(const QString& nombre) const { return contenidoDe(ruta(nombre)); }
  // A folder as the program writes it.
  QString carpeta(const QString& nombre) const { return rutaPrograma(ruta(nombre)) + u'\\'; }

  QString leer(const QString& seccion, const QString& clave) const {
    QString valor = "de antes";
    CIni().Leer(carpeta("") + "CONFIG.INI", seccion, clave, valor);
    return valor;
  }
  void grabar(const QString& seccion, const QString& clave, const QString& valor) const {
    CIni().Grabar(carpeta("") + "Config.ini", seccion, clave, valor);
  }

 private:
  QTemporaryDir dir_;
};

TEST_F(Programas, LasRutasNoMiranMayusculas) {
  escribe("Datos/Mi Empresa/Conta.Mdb", {});
  escribe("Datos/CONTA.MDB", {});
  escribe("Datos/Conta.MDB", {});
  const std::pair<const char*, const char*> casos[] = {
      {"Datos\\Mi Empresa\\Conta.Mdb", "Datos/Mi Empresa/Conta.Mdb"},
      {"DATOS\\mi empresa\\Conta.MDB", "Datos/Mi Empresa/Conta.Mdb"},
      {"datos\\MI EMPRESA/conta.mdb", "Datos/Mi Empresa/Conta.Mdb"},
      {"datos\\", "Datos/"},
      {"datos\\Conta.MDB", "Datos/Conta.MDB"},  // the exact spelling before another one
      // What doesn't exist keeps its spelling, below folders that do.
      {"datos\\Nueva SL\\Conta.MDB", "Datos/Nueva SL/Conta.MDB"}};
  for (const auto& [escrita, esperada] : casos)
    EXPECT_EQ(rutaSistema(carpeta("") + escrita), ruta(esperada)) << escrita;
  EXPECT_EQ(rutaSistema({}), QString());
}

TEST_F(Programas, UnAjusteGrabadoSeLeeYLoDemasSeRespeta) {
  EXPECT_EQ(leer("Directorios", "Datos"), QString());
  // An old file of the western code page, with its comments.
  escribe("Config.ini",
          "; los caminos\r\n[Directorios]\r\nPrograma=C:\\Librano\\\r\nDatos = C:\\Pe\xF1"
          "a \x80\\\r\n\r\n[Usuarios]\r\nPermitir=No\r\n");
  EXPECT_EQ(leer("Directorios", "Datos"), "C:\\Peña €\\");
  grabar("Usuarios", "Permitir", "Si");
  grabar("Entrada", "UltimaEmpresa", "Peña; e hijos = #1");
  grabar("Entrada", "UltimoUsuario", "   ");
  grabar("Otros", "Largo", QString(300, u'x'));
  EXPECT_EQ(leer("ENTRADA", "ultimaempresa"), "Peña; e hijos = #1");
  EXPECT_EQ(leer("Entrada", "UltimoUsuario"), QString());
  EXPECT_EQ(leer("Otros", "Largo").size(), 254);
  EXPECT_EQ(leer("Directorios", "Programa"), "C:\\Librano\\");
  EXPECT_EQ(leer("Directorios", "Datos"), "C:\\Peña €\\");
  const QByteArray texto = lee("Config.ini");
  EXPECT_TRUE(texto.contains("; los caminos\r\n"));
  EXPECT_TRUE(texto.contains("Permitir=Si\r\n"));
  EXPECT_EQ(texto.count('\n'), texto.count("\r\n"));
}

TEST_F(Programas, UnaLineaPorErrorEnElRegistro) {
  RegistraError(carpeta(""), 3022, "Ya existe\nel año", "CmdAceptar_Click - FrmEmpresas");
  RegistraError(rutaPrograma(ruta("")), 94, "Nulo", "Otro");
  EXPECT_EQ(QString::fromUtf8(lee("Errores.txt")),
            "Error n - 3022 - Ya existe el año - Producido en CmdAceptar_Click - FrmEmpresas\r\n"
            "Error n - 94 - Nulo - Producido en Otro\r\n");
  EXPECT_ERROR(err::kErrorDeRuta, RegistraError(carpeta("no existe"), 1, {}, {}));
}

TEST_F(Programas, LaCarpetaDelUsuarioSeLlenaUnaSolaVez) {
  EXPECT_EQ(carpetaDelPrograma(ruta(""), ruta("propia")), carpeta(""));
  EXPECT_FALSE(QFileInfo::exists(ruta("propia")));

  escribe("share/librano/impresos/sub/diario.rpt", "diario");
  for (const char* texto : {"diario", "cambiado por el usuario"}) {
    // The installed folder isn't there: it can't be written.
    EXPECT_EQ(carpetaDelPrograma(ruta("bin"), ruta("propia")), carpeta("propia"));
    EXPECT_EQ(lee("propia/Impresos/sub/diario.rpt"), texto);
    escribe("propia/Impresos/sub/diario.rpt", "cambiado por el usuario");
  }
}

TEST_F(Programas, LaCarpetaDeDatosRecibeLasPlantillasQueLeFaltan) {
  escribe("programa/Impresos/Diario.rpt", "diario");
  QFile::setPermissions(ruta("programa/Impresos/Diario.rpt"), QFile::ReadOwner);
  const auto completa = [&](const char* datos) {
    completaImpresos(carpeta("programa"), carpeta(datos));
  };
  completa("datos");
  EXPECT_FALSE(QFileInfo::exists(ruta("datos")));
  QDir().mkpath(ruta("datos"));
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/Diario.rpt"), "diario");

  // Edited by the user, and another one that comes with a newer version.
  escribe("datos/Impresos/Diario.rpt", "el de la casa");
  escribe("programa/Impresos/May1.rpt", "mayor");
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/Diario.rpt"), "el de la casa");
  EXPECT_EQ(lee("datos/Impresos/May1.rpt"), "mayor");

  // What nobody has edited follows the program's, also from before that was noted.
  escribe("programa/Impresos/May1.rpt", "mayor nuevo");
  escribe("programa/Impresos/Diario.rpt", "diario nuevo");
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/Diario.rpt"), "el de la casa");
  EXPECT_EQ(lee("datos/Impresos/May1.rpt"), "mayor nuevo");
  QFile::remove(ruta("datos/Impresos/copiados.txt"));
  escribe("datos/Impresos/May1.rpt", "mayor");
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/May1.rpt"), "mayor");
  escribe("programa/Impresos/anteriores.txt",
          "# Notas\ne6a04b67d24189b9b5eba643b5a83607ff1f441e May1.rpt\n");
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/May1.rpt"), "mayor nuevo");
  // A station with an older version leaves them alone.
  escribe("programa/Impresos/May1.rpt", "mayor viejo");
  escribe("datos/Impresos/copiados.txt", "# Librano 99.0\n" + lee("datos/Impresos/copiados.txt"));
  completa("datos");
  EXPECT_EQ(lee("datos/Impresos/May1.rpt"), "mayor nuevo");
  completa("programa");  // the data beside the program
  EXPECT_EQ(lee("programa/Impresos/Diario.rpt"), "diario nuevo");
  EXPECT_FALSE(QFileInfo::exists(ruta("programa/Impresos/copiados.txt")));
}

TEST_F(Programas, ArrancaOtroEnSuCarpeta) {
  escribe("Durnal.exe", "#!/bin/sh\nprintf '%s' \"$1\" > salida.tmp && mv salida.tmp salida\n");
  QFile::setPermissions(ruta("Durnal.exe"), QFile::ReadOwner | QFile::ExeOwner);
  escribe("noes", "sin permiso");
  // Written in another case and without its ending, as the menu has it.
  ejecutaPrograma(carpeta("") + "durnal", {"a b"});
  EXPECT_TRUE(QTest::qWaitFor([&] { return lee("salida") == "a b"; }));
  for (const char* nombre : {"nohay.exe", "noes", ""})
    EXPECT_ERROR(err::kFicheroNoEncontrado, ejecutaPrograma(carpeta("") + nombre, {})) << nombre;
}

TEST(Instancia, UnaSolaALaVezYLaQueMuereNoBloquea) {
  const QString nombre = QString("librano-prueba-%1").arg(::getpid());
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
  EXPECT_TRUE(Instancia(nombre + "2").unica());
  ::kill(hija, SIGKILL);
  ::waitpid(hija, nullptr, 0);
  EXPECT_TRUE(Instancia(nombre).unica());
  EXPECT_TRUE(Instancia(nombre).unica());  // given back at its end
  ::close(tubo[0]);
  ::close(tubo[1]);
}

}  // namespace
