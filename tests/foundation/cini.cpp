#include "foundation/cini.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "foundation/leeconfiguracion.h"
#include "foundation/rutas.h"

namespace {

class CIniTest : public testing::Test {
 protected:
  QString leer(const char* seccion, const char* clave) {
    QString valor = QStringLiteral("de antes");
    CIni().Leer(archivo(), QString::fromUtf8(seccion), QString::fromUtf8(clave), valor);
    return valor;
  }
  void grabar(const char* seccion, const char* clave, const QString& valor) {
    CIni().Grabar(archivo(), QString::fromUtf8(seccion), QString::fromUtf8(clave), valor);
  }
  QString archivo() const { return rutaPrograma(dir_.path()) + QStringLiteral("\\Config.ini"); }
  void escribe(const QByteArray& texto) {
    QFile fichero(rutaSistema(archivo()));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write(texto);
  }
  QByteArray contenido() {
    QFile fichero(rutaSistema(archivo()));
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
  }
  QTemporaryDir dir_;
};

TEST_F(CIniTest, LoGrabadoSeLee) {
  EXPECT_EQ(leer("Entrada", "UltimaEmpresa"), QString());
  grabar("Entrada", "UltimaEmpresa", QStringLiteral("Peña; e hijos = #1"));
  grabar("Otros", "Decimal Origen", QStringLiteral("."));
  grabar("Entrada", "UltimoUsuario", QStringLiteral("   "));
  EXPECT_EQ(leer("Entrada", "UltimaEmpresa"), QStringLiteral("Peña; e hijos = #1"));
  EXPECT_EQ(leer("ENTRADA", "ultimaempresa"), QStringLiteral("Peña; e hijos = #1"));
  EXPECT_EQ(leer("Otros", "Decimal Origen"), QStringLiteral("."));
  EXPECT_EQ(leer("Entrada", "UltimoUsuario"), QString());
  EXPECT_EQ(leer("Otros", "Decimal Destino"), QString());

  grabar("Entrada", "UltimaEmpresa", QStringLiteral("Otra"));
  EXPECT_EQ(leer("Entrada", "UltimaEmpresa"), QStringLiteral("Otra"));
  grabar("Otros", "Largo", QString(300, u'x'));
  EXPECT_EQ(leer("Otros", "Largo").size(), 254);
}

TEST_F(CIniTest, RespetaLoDemasDelFichero) {
  escribe(
      "; los caminos\r\n[Directorios]\r\nPrograma=C:\\Librano\\\r\nDatos = C:\\Datos\\\r\n\r\n"
      "[Usuarios]\r\nPermitir=No\r\n");
  grabar("Usuarios", "Permitir", QStringLiteral("Si"));
  const QByteArray texto = contenido();
  EXPECT_TRUE(texto.contains("; los caminos\r\n"));
  EXPECT_TRUE(texto.contains("Permitir=Si\r\n"));
  EXPECT_EQ(texto.count('\n'), texto.count("\r\n"));
  EXPECT_EQ(leer("Directorios", "Programa"), QStringLiteral("C:\\Librano\\"));
  EXPECT_EQ(leer("Directorios", "Datos"), QStringLiteral("C:\\Datos\\"));
}

TEST_F(CIniTest, LeeUnFicheroAntiguoDeLaPaginaOccidental) {
  escribe(
      "[Entrada]\r\nUltimaEmpresa=Pe\xF1"
      "a \x80\r\n");
  EXPECT_EQ(leer("Entrada", "UltimaEmpresa"), QStringLiteral("Peña €"));
  grabar("Entrada", "UltimoUsuario", QStringLiteral("Íñigo"));
  EXPECT_EQ(leer("Entrada", "UltimaEmpresa"), QStringLiteral("Peña €"));
  EXPECT_EQ(leer("Entrada", "UltimoUsuario"), QStringLiteral("Íñigo"));
}

TEST_F(CIniTest, LaConfiguracionLlegaALaSesion) {
  escribe(
      "[Directorios]\nPrograma=\\p\\\nDatos=\\d\\\n[Usuarios]\nPermitir=Si\n"
      "[Entrada]\nUltimoUsuario=Ana\n"
      "[Otros]\nDecimal Origen=.\nDecimal Destino=,\n[Version]\nVersion=1.5\n");
  Sesion sesion;
  sesion.UltimaEmpresa = QStringLiteral("anterior");
  LeeConfiguracion(archivo(), sesion);
  EXPECT_EQ(sesion.DirPrograma, QStringLiteral("\\p\\"));
  EXPECT_EQ(sesion.DirDatos, QStringLiteral("\\d\\"));
  EXPECT_EQ(sesion.UsuariosPermitir, QStringLiteral("Si"));
  EXPECT_EQ(sesion.UltimoUsuario, QStringLiteral("Ana"));
  EXPECT_EQ(sesion.UltimaEmpresa, QString());
  EXPECT_EQ(sesion.DecimalOrigen + sesion.DecimalDestino, QStringLiteral(".,"));
  EXPECT_EQ(sesion.VersionConfig, QStringLiteral("1.5"));
}

}  // namespace
