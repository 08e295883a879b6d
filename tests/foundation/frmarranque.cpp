// From the start of the program to the main window: presentation, login, reinitialisation.
#include <QFile>
#include <QFileInfo>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTimer>

#include "company/registro.h"
#include "foundation/cini.h"
#include "foundation/creaini.h"
#include "foundation/frmpresentacion.h"
#include "foundation/frmseleccion.h"
#include "foundation/registro.h"
#include "foundation/rutas.h"
#include "soporte/escenario.h"

namespace {

void registraTodo(Escenario& e) {
  registraFoundation(*e.formularios);
  registraCompany(*e.formularios);
  e.formularios->registra(QStringLiteral("FrmMenu"),
                          [](Contexto& c) { return std::make_unique<Formulario>(c); });
}

QString ajuste(const Escenario& e, const char* seccion, const char* clave) {
  QString valor;
  CIni().Leer(e.ctx.carpetaPrograma + QStringLiteral("Config.ini"), QLatin1String(seccion),
              QLatin1String(clave), valor);
  return valor;
}

void ponAjuste(const Escenario& e, const char* seccion, const char* clave, const QString& valor) {
  CIni().Grabar(e.ctx.carpetaPrograma + QStringLiteral("Config.ini"), QLatin1String(seccion),
                QLatin1String(clave), valor);
}

void creaUsuario(Escenario& e, const QString& nombre, const QString& password) {
  const auto base = e.ctx.motor.Workspaces(0).OpenDatabase(e.ctx.sesion.rutaCatalogo());
  const auto usuarios = base->OpenRecordset(QStringLiteral("Usuarios"));
  usuarios->AddNew();
  usuarios->Fields(0) = nombre;
  usuarios->Fields(1) = password;
  usuarios->Update();
  e.ctx.motor.flush();
}

QString abierta(Escenario& e) {
  for (const char* nombre : {"FrmPresentacion", "FrmSeleccion", "FrmInicioSoftware", "FrmMenu"})
    if (e.formularios->abierto(QLatin1String(nombre))) return QLatin1String(nombre);
  return {};
}

}  // namespace

TEST(FrmPresentacion, OtraCopiaTerminaElPrograma) {
  Escenario e(Escenario::Carpetas);
  e.ctx.copiaUnica = [] { return false; };
  e.guion.esperaMensaje(QStringLiteral("Ya tiene un Librano ejecutandose en esta maquina"),
                        QStringLiteral("Error"));
  e.abre<FrmPresentacion>();
  EXPECT_EQ(e.finales, 1);
}

TEST(FrmPresentacion, LaBarraLlenaDaPasoALaSeleccion) {
  Escenario e;
  registraTodo(e);
  e.ctx.sesion.VersionPrograma.clear();
  auto& forma = static_cast<FrmPresentacion&>(e.abre(QStringLiteral("FrmPresentacion")));
  EXPECT_EQ(e.ctx.sesion.VersionPrograma, QStringLiteral("1.6"));
  forma.findChild<QTimer*>(QStringLiteral("TMR"))->stop();
  auto& barra = *forma.findChild<QProgressBar*>(QStringLiteral("Barra"));
  while (barra.value() < 99) forma.TMR_Timer();
  EXPECT_EQ(abierta(e), QStringLiteral("FrmPresentacion"));
  forma.TMR_Timer();
  EXPECT_EQ(abierta(e), QStringLiteral("FrmSeleccion"));
  EXPECT_EQ(e.finales, 0);
}

TEST(PrimerInicio, DeUnaCarpetaVaciaALaSeleccion) {
  Escenario e(Escenario::Carpetas);
  registraTodo(e);
  e.formularios->cambiarA(QStringLiteral("FrmSeleccion"));
  auto* inicio = e.formularios->abierto(QStringLiteral("FrmInicioSoftware"));
  ASSERT_TRUE(inicio);
  EXPECT_FALSE(e.formularios->abierto(QStringLiteral("FrmSeleccion")));
  activar(*inicio);

  const QString carpeta = e.ctx.carpetaPrograma;
  EXPECT_EQ(ajuste(e, "Directorios", "Programa"), carpeta);
  EXPECT_EQ(ajuste(e, "Directorios", "Datos"), carpeta);
  EXPECT_EQ(ajuste(e, "Usuarios", "Permitir"), QStringLiteral("No"));
  EXPECT_EQ(ajuste(e, "Otros", "Decimal Origen"), QStringLiteral("."));
  EXPECT_EQ(ajuste(e, "Otros", "Decimal Destino"), QStringLiteral(","));
  EXPECT_EQ(ajuste(e, "Version", "Version"), QStringLiteral("1.6"));
  EXPECT_TRUE(e.ejecutados.isEmpty());
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().front().startsWith(QStringLiteral("Error n - 53 - ")));
  EXPECT_TRUE(e.errores().front().endsWith(
      QStringLiteral(" - Producido en Form_Activate - FrmInicioSoftware")));

  Teclado(*inicio).intro();  // the only button has the focus
  auto* seleccion = e.formularios->abierto(QStringLiteral("FrmSeleccion"));
  ASSERT_TRUE(seleccion);
  activar(*seleccion);
  const Teclado t(*seleccion);
  EXPECT_EQ(t.textoDe("TxtUsuario"), QStringLiteral("Administrador"));
  EXPECT_FALSE(t.control("TxtUsuario").isEnabled());
  EXPECT_EQ(e.ctx.sesion.DirDatos, carpeta);
  EXPECT_EQ(e.finales, 0);
}

// A program folder that was moved with its companies keeps them, and remembers who worked where.
TEST(Reinicio, UnCatalogoQueYaEstaSeQueda) {
  Escenario e(Escenario::Carpetas);
  registraTodo(e);
  const QString catalogo = e.ctx.carpetaPrograma + QStringLiteral("Inicio.mdb");
  CrearInicio(e.ctx.motor, catalogo);
  e.ctx.motor.flush();
  ponAjuste(e, "Directorios", "Datos", QStringLiteral("\\no\\existe\\"));
  ponAjuste(e, "Entrada", "UltimoUsuario", QStringLiteral("Ana"));
  ponAjuste(e, "Entrada", "UltimaEmpresa", QStringLiteral("Tienda"));
  const qint64 bytes = QFileInfo(rutaSistema(catalogo)).size();

  e.guion.esperaMensaje(QStringLiteral("Su programa es posible que lo halla cambiado de "
                                       "directorio, localizado el directorio nuevo"),
                        QStringLiteral("Error"));
  e.formularios->cambiarA(QStringLiteral("FrmSeleccion"));
  EXPECT_EQ(abierta(e), QStringLiteral("FrmInicioSoftware"));
  EXPECT_EQ(QFileInfo(rutaSistema(catalogo)).size(), bytes);
  EXPECT_EQ(ajuste(e, "Directorios", "Datos"), e.ctx.carpetaPrograma);
  EXPECT_EQ(ajuste(e, "Entrada", "UltimoUsuario"), QStringLiteral("Ana"));
  EXPECT_EQ(ajuste(e, "Entrada", "UltimaEmpresa"), QStringLiteral("Tienda"));
}

TEST(Reinicio, AbreElLibroOcultoSiHayConQue) {
  Escenario e(Escenario::Carpetas);
  registraTodo(e);
  const QTemporaryDir programas;
  const QString hoja = programas.filePath(QStringLiteral("localc"));
  for (const QString& ruta : {hoja, e.carpetaPrograma() + QStringLiteral("/Inicio.xls")}) {
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
  }
  QFile::setPermissions(hoja, QFile::ReadOwner | QFile::ExeOwner);
  const QByteArray antes = qgetenv("PATH");
  qputenv("PATH", programas.path().toUtf8());
  e.formularios->cambiarA(QStringLiteral("FrmInicioSoftware"));
  qputenv("PATH", antes);
  ASSERT_EQ(e.ejecutados.size(), 1);
  EXPECT_TRUE(e.ejecutados.front().endsWith(QStringLiteral("/Inicio.xls")));
  EXPECT_TRUE(e.errores().isEmpty());
}

TEST(FrmSeleccion, UnCatalogoQueNoLoEsLlevaAlReinicio) {
  Escenario e(Escenario::Ajustes);
  registraTodo(e);
  QFile basura(rutaSistema(e.ctx.sesion.rutaCatalogo()));
  ASSERT_TRUE(basura.open(QIODevice::WriteOnly));
  basura.write(QByteArray(4096, 'x'));
  basura.close();
  e.formularios->cambiarA(QStringLiteral("FrmSeleccion"));
  EXPECT_EQ(abierta(e), QStringLiteral("FrmInicioSoftware"));
}

TEST(FrmSeleccion, QuienEntraYConQue) {
  const QString kOlvido = QStringLiteral(
      "Atención usted esta entrando con un usuario que no recuerda, esta "
      "contraseña es provisional");
  const QString kMal = QStringLiteral("El password no es correcto");
  const struct {
    const char* permitir;
    const char* usuario;
    const char* password;
    QString caja;
    bool entra;
  } casos[] = {
      {"No", "", "", {}, true},
      {"si", "Ana", "mal", {}, true},  // only "Si" asks
      {"Si", "Ana", "Secreto", {}, true},
      {"Si", "ana", "Secreto", {}, true},
      {"Si", "Ana", "secreto", kMal, false},
      {"Si", "Luis", "Secreto", kMal, false},
      {"Si", "Luis", "otra", {}, true},
      {"Si", "Administrador", "", kMal, false},
      {"Si", "Nadie", "pasadizo", kOlvido, true},
      {"Si", "Ana", "Pasadizo", kMal, false},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.permitir) + " " + c.usuario + " " + c.password);
    Escenario e;
    registraTodo(e);
    creaUsuario(e, QStringLiteral("Ana"), QStringLiteral("Secreto"));
    creaUsuario(e, QStringLiteral("Luis"), QStringLiteral("otra"));
    ponAjuste(e, "Usuarios", "Permitir", QLatin1String(c.permitir));
    if (!c.caja.isNull()) e.guion.esperaMensaje(c.caja);
    Teclado t(e.abre(QStringLiteral("FrmSeleccion")));
    const bool fijo = qstrcmp(c.permitir, "No") == 0;
    EXPECT_NE(t.control("TxtUsuario").isEnabled(), fijo);
    t.escribe("TxtEmpresa", QStringLiteral("Prueba"));
    t.intro();
    if (!fijo) {
      t.escribe("TxtUsuario", QLatin1String(c.usuario));
      t.intro();
    }
    t.teclea(QLatin1String(c.password));
    t.intro();
    EXPECT_EQ(t.enfocado(), QStringLiteral("CmdAceptar"));
    t.intro();
    EXPECT_EQ(abierta(e), c.entra ? QStringLiteral("FrmMenu") : QStringLiteral("FrmSeleccion"));
    EXPECT_TRUE(e.guion.agotado());
    const QString usuario =
        fijo ? QStringLiteral("Administrador") : QString(QLatin1String(c.usuario));
    EXPECT_EQ(e.ctx.sesion.UsuarioActual.toLower(), usuario.toLower());
    EXPECT_EQ(ajuste(e, "Entrada", "UltimoUsuario").toLower(), usuario.toLower());
    EXPECT_EQ(ajuste(e, "Entrada", "UltimaEmpresa"), QStringLiteral("Prueba"));
  }
}

TEST(FrmSeleccion, UsuarioElegidoDeLaLista) {
  Escenario e;
  registraTodo(e);
  creaUsuario(e, QStringLiteral("Ana"), QStringLiteral("Secreto"));
  ponAjuste(e, "Usuarios", "Permitir", QStringLiteral("Si"));
  ponAjuste(e, "Entrada", "UltimoUsuario", QStringLiteral("Administrador"));
  ponAjuste(e, "Entrada", "UltimaEmpresa", QStringLiteral("Prueba"));
  Teclado t(e.abre(QStringLiteral("FrmSeleccion")));
  EXPECT_EQ(t.textoDe("TxtEmpresa"), QStringLiteral("Prueba"));
  EXPECT_EQ(t.textoDe("TxtUsuario"), QStringLiteral("Administrador"));
  t.elige("TxtUsuario", QStringLiteral("Ana"));
  t.escribe("TxtPassword", QStringLiteral("Secreto"));
  t.mnemonico(QLatin1Char('a'));
  EXPECT_EQ(abierta(e), QStringLiteral("FrmMenu"));
  EXPECT_EQ(e.ctx.sesion.EmpresaActual, QStringLiteral("Prueba"));
}

TEST(FrmSeleccion, CancelarTerminaSinEscribirNada) {
  Escenario e;
  registraTodo(e);
  Teclado t(e.abre(QStringLiteral("FrmSeleccion")));
  t.escribe("TxtEmpresa", QStringLiteral("Otra"));
  t.escape();
  EXPECT_EQ(abierta(e), QString());
  EXPECT_EQ(e.finales, 1);
  EXPECT_EQ(ajuste(e, "Entrada", "UltimaEmpresa"), QString());
}

TEST(FrmSeleccion, LaPrimeraEmpresaQuedaPuesta) {
  Escenario e(Escenario::Catalogo);
  registraTodo(e);
  Teclado t(e.abre(QStringLiteral("FrmSeleccion")));
  e.guion.esperaDialogo(QStringLiteral("FrmEmpresas"), [](Teclado& alta) {
    EXPECT_EQ(alta.forma().windowTitle(), QStringLiteral("Alta de empresa"));
    alta.escribe("TxtNombreEmpresa", QStringLiteral("Comercial Ejemplo"));
    alta.pulsa("CmdAceptar");
  });
  t.pulsa("CmdEmpresaAlta");
  EXPECT_EQ(e.ctx.sesion.CodigoLlamada, 0);
  EXPECT_EQ(t.textoDe("TxtEmpresa"), QStringLiteral("Comercial Ejemplo"));
  EXPECT_TRUE(QFileInfo::exists(
      rutaSistema(e.ctx.sesion.rutaEmpresa(QStringLiteral("Comercial Ejemplo")))));
}
