// The installation's settings, users and companies.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QTabWidget>
#include <QTreeView>

#include "foundation/cini.h"
#include "foundation/creaini.h"
#include "foundation/registro.h"
#include "foundation/rutas.h"
#include "foundation/toolkit/rejilla.h"
#include "soporte/escenario.h"

namespace {

// Program and data in one folder, as a first start leaves them, with these companies.
struct Instalacion : Escenario {
  explicit Instalacion(const QStringList& empresas = {QStringLiteral("Prueba")})
      : Escenario(Carpetas) {
    ctx.sesion.DirDatos = ctx.carpetaPrograma;
    ctx.sesion.UsuariosPermitir = QStringLiteral("No");
    ctx.sesion.DecimalOrigen = QStringLiteral(".");
    ctx.sesion.DecimalDestino = QStringLiteral(",");
    CrearInicio(ctx.motor, ctx.sesion.rutaCatalogo());
    for (const QString& nombre : empresas) {
      DatosEmpresa datos = empresaDePrueba();
      datos.NombreEmpresa = nombre;
      creaEmpresa(datos);
    }
    abreEmpresa(empresas.front());
    registraFoundation(*formularios);
  }

  QString ajuste(const char* seccion, const char* clave) const {
    QString valor;
    CIni().Leer(ctx.carpetaPrograma + QStringLiteral("Config.ini"), QLatin1String(seccion),
                QLatin1String(clave), valor);
    return valor;
  }

  QStringList catalogo(const char* tabla) {
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaCatalogo());
    const auto filas = base->OpenRecordset(QLatin1String(tabla));
    QStringList textos;
    for (; !filas->Eof(); filas->MoveNext()) {
      QStringList fila;
      for (int i = 0; i < filas->FieldCount(); ++i) fila << filas->Fields(i).display();
      textos << fila.join(QLatin1Char('|'));
    }
    return textos;
  }
};

void pestana(Teclado& t, int indice) {
  t.control<QTabWidget>("Tabla").setCurrentIndex(indice);
  reposar();
}

}  // namespace

TEST(FrmConfiguracion, AceptarEscribeYLaSesionSigueIgual) {
  Instalacion e;
  Teclado t(e.abre(QStringLiteral("FrmConfiguracion")));
  EXPECT_EQ(t.textoDe("TxtRutPrograma"), e.ctx.sesion.DirPrograma);
  EXPECT_EQ(t.textoDe("TxtRutAcesoDatos"), e.ctx.sesion.DirDatos);
  t.escribe("TxtRutAcesoDatos", QStringLiteral("\\otra carpeta\\"));
  pestana(t, 1);
  t.escribe("TxtPermitirUser", QStringLiteral("Si"));
  pestana(t, 3);
  t.escribe("TxtDecimalOrigen", QStringLiteral("*"));
  t.pulsa("CmdAceptar");
  EXPECT_FALSE(e.formularios->abierto(QStringLiteral("FrmConfiguracion")));
  EXPECT_EQ(e.ajuste("Directorios", "Programa"), e.ctx.sesion.DirPrograma);
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), QStringLiteral("\\otra carpeta\\"));
  EXPECT_EQ(e.ajuste("Usuarios", "Permitir"), QStringLiteral("Si"));
  EXPECT_EQ(e.ajuste("Otros", "Decimal Origen"), QStringLiteral("*"));
  EXPECT_EQ(e.ajuste("Otros", "Decimal Destino"), QStringLiteral(","));
  EXPECT_EQ(e.ctx.sesion.DirDatos, e.ctx.carpetaPrograma);
  EXPECT_EQ(e.ctx.sesion.UsuariosPermitir, QStringLiteral("No"));
}

TEST(FrmConfiguracion, LaRejillaEscribeAunqueSeCancele) {
  Instalacion e;
  Teclado t(e.abre(QStringLiteral("FrmConfiguracion")));
  t.escribe("TxtRutAcesoDatos", QStringLiteral("\\otra\\"));
  pestana(t, 1);
  auto& rejilla = t.control<Rejilla>("GrdUsuarios");
  t.enfoca("GrdUsuarios");
  rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
  t.teclea(QStringLiteral("Ana"));
  t.tab();
  t.teclea(QStringLiteral("Secreto8"));
  t.tecla(Qt::Key_Up);
  EXPECT_EQ(e.catalogo("Usuarios"),
            QStringList({QStringLiteral("Administrador|"), QStringLiteral("Ana|Secreto8")}));
  // A ninth character has no place in the file.
  rejilla.setCurrentIndex(rejilla.model()->index(0, 1));
  e.guion.esperaMensaje(
      QStringLiteral("Error 3163: El texto es demasiado largo para el campo: 123456789"),
      QStringLiteral("Librano"));
  t.teclea(QStringLiteral("123456789"));
  t.intro();
  EXPECT_EQ(e.catalogo("Usuarios").front(), QStringLiteral("Administrador|"));
  pestana(t, 0);
  t.pulsa("CmdCancelar");
  EXPECT_EQ(e.catalogo("Usuarios").size(), 2);
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), QString());
}

TEST(FrmConfiguracion, BajaDeEmpresa) {
  Instalacion e({QStringLiteral("Mayor"), QStringLiteral("Menor"), QStringLiteral("Otra")});
  e.ctx.sesion.EmpresaActual = QStringLiteral("mayor");
  Teclado t(e.abre(QStringLiteral("FrmConfiguracion")));
  pestana(t, 2);
  auto& rejilla = t.control<Rejilla>("GridEmpresas");
  const auto carpeta = [&](const char* nombre) {
    return QFileInfo(rutaSistema(e.ctx.sesion.rutaEmpresa(QLatin1String(nombre)))).path();
  };

  e.guion.esperaMensaje(QStringLiteral("No puede eliminar la empresa actual"),
                        QStringLiteral("Error"));
  t.pulsa("CmdEmpBajas");

  rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
  const QString pregunta = QStringLiteral("¿ Desea eliminar la empresa 'Menor' ?");
  e.guion.esperaPregunta(pregunta, false, QStringLiteral("Elimina"));
  t.pulsa("CmdEmpBajas");
  EXPECT_EQ(e.catalogo("Empresas").size(), 3);
  EXPECT_TRUE(QFileInfo::exists(carpeta("Menor")));

  e.guion.esperaPregunta(pregunta, true);
  t.pulsa("CmdEmpBajas");
  EXPECT_EQ(e.catalogo("Empresas"), QStringList({QStringLiteral("Mayor"), QStringLiteral("Otra")}));
  EXPECT_FALSE(QFileInfo::exists(carpeta("Menor")));
  EXPECT_EQ(rejilla.filas(), 2);
  EXPECT_TRUE(e.errores().isEmpty());

  // Something of somebody else's in the folder: the row stays and the log tells it.
  QFile ajeno(carpeta("Otra") + QStringLiteral("/notas.txt"));
  ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
  rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
  e.guion.esperaPregunta(QStringLiteral("¿ Desea eliminar la empresa 'Otra' ?"), true);
  t.pulsa("CmdEmpBajas");
  EXPECT_EQ(e.catalogo("Empresas").size(), 2);
  EXPECT_TRUE(QFileInfo::exists(ajeno.fileName()));
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().front().endsWith(
      QStringLiteral("Producido en CmdEmpBajas_Click - Frmconfiguracion")));
  EXPECT_TRUE(e.guion.agotado());
}

TEST(FrmSelDirectorios, EscribeEnElCampoQueLoPidio) {
  Instalacion e;
  QDir().mkpath(e.carpetaPrograma() + QStringLiteral("/año nuevo"));
  Teclado t(e.abre(QStringLiteral("FrmConfiguracion")));
  const struct {
    const char* boton;
    const char* campo;
  } casos[] = {{"Command1", "TxtRutPrograma"}, {"Command2", "TxtRutAcesoDatos"}};
  for (const auto& c : casos) {
    SCOPED_TRACE(c.campo);
    const QString antes = t.textoDe(c.campo);
    e.guion.esperaDialogo(QStringLiteral("FrmSelDirectorios"), [](Teclado& d) { d.escape(); });
    t.pulsa(c.boton);
    EXPECT_EQ(t.textoDe(c.campo), antes);

    e.guion.esperaDialogo(QStringLiteral("FrmSelDirectorios"), [&](Teclado& d) {
      auto& arbol = d.control<QTreeView>("Carpetas");
      auto* modelo = qobject_cast<QFileSystemModel*>(arbol.model());
      // It opens where the field stands.
      EXPECT_EQ(modelo->filePath(arbol.currentIndex()), e.carpetaPrograma());
      arbol.setCurrentIndex(modelo->index(e.carpetaPrograma() + QStringLiteral("/año nuevo")));
      d.pulsa("CmdAceptar");
    });
    t.pulsa(c.boton);
    EXPECT_EQ(t.textoDe(c.campo), e.ctx.carpetaPrograma + QStringLiteral("año nuevo\\"));
    EXPECT_EQ(e.ctx.sesion.CodigoLlamada, 0);
  }
}
