// From the start of the program to the main window: presentation, login, reinitialisation.
#include <zip.h>

#include "common/version.h"
#include "engine/libroendisco.h"
#include "engine/version.h"
#include "soporte/escenario.h"
#include "start/creaini.h"
#include "start/frmpresentacion.h"

namespace {

struct Arranque : Escenario {
  explicit Arranque(Hasta hasta = Empresa) : Escenario(hasta) {
    registraStart(*formularios);
    registraCompany(*formularios);
    formularios->registra("FrmMenu", [](Contexto& c) { return std::make_unique<Formulario>(c); });
  }

  QString abierta() const {
    for (const char* nombre : {"FrmPresentacion", "FrmSeleccion", "FrmInicioSoftware", "FrmMenu"})
      if (formularios->abierto(nombre)) return nombre;
    return {};
  }
};

}  // namespace

TEST(Seleccion, UnCatalogoOcupadoSeDiceYSeEsperaSinTocarLosAjustes) {
  Arranque e;
  e.motor.setLockTimeout(30);
  const QString pregunta =
      "Otro puesto tiene ocupada la lista de empresas. ¿Desea intentarlo de nuevo?";
  const auto ocupa = [&] {
    return std::make_unique<OtroPuesto>(rutaSistema(e.ctx.sesion.rutaCatalogo()),
                                        "BEGIN EXCLUSIVE;");
  };
  e.ponAjuste("Entrada", "UltimaEmpresa", "Prueba");
  auto otro = ocupa();
  e.guion.esperaPregunta(pregunta, true, "Librano", [&] { otro.reset(); });
  e.abre("FrmSeleccion");
  EXPECT_EQ(e.abierta(), "FrmSeleccion");
  e.cierra();
  otro = ocupa();
  e.guion.esperaPregunta(pregunta, false);
  e.formularios->cambiarA("FrmSeleccion");
  EXPECT_EQ(e.abierta(), QString());
  EXPECT_EQ(e.ajuste("Entrada", "UltimaEmpresa"), "Prueba");
}

TEST(PrimerInicio, DeUnaCarpetaVaciaALaSeleccion) {
  Arranque e(Escenario::Carpetas);
  e.ctx.sesion.VersionPrograma.clear();
  e.ctx.copiaUnica = [] { return false; };
  e.guion.esperaMensaje("Ya tiene un Librano ejecutandose en esta maquina", "Error");
  e.abre("FrmPresentacion");
  EXPECT_EQ(e.finales, 1);
  EXPECT_EQ(e.ctx.sesion.VersionPrograma, QString());  // it goes no further
  e.cierra();
  e.finales = 0;

  e.ctx.copiaUnica = nullptr;
  auto& presentacion = static_cast<FrmPresentacion&>(e.abre("FrmPresentacion"));
  presentacion.findChild<QTimer*>("TMR")->stop();
  for (int i = 1; i < 100; ++i) presentacion.TMR_Timer();
  EXPECT_EQ(e.abierta(), "FrmPresentacion");
  presentacion.TMR_Timer();
  ASSERT_EQ(e.abierta(), "FrmInicioSoftware");
  auto& inicio = *e.formularios->abierto("FrmInicioSoftware");
  activar(inicio);

  const std::tuple<const char*, const char*, QString> ajustes[] = {
      {"Directorios", "Programa", e.ctx.carpetaPrograma},
      {"Directorios", "Datos", e.ctx.carpetaPrograma},
      {"Usuarios", "Permitir", "No"},
      {"Otros", "Decimal Origen", "."},
      {"Otros", "Decimal Destino", ","},
      {"Version", "Version", "1.6"}};
  for (const auto& [seccion, clave, valor] : ajustes)
    EXPECT_EQ(e.ajuste(seccion, clave), valor) << clave;
  EXPECT_TRUE(e.ejecutados.isEmpty());
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().front().startsWith("Error n - 53 - "));
  EXPECT_TRUE(e.errores().front().endsWith(" - Producido en Form_Activate - FrmInicioSoftware"));

  Teclado(inicio).intro();  // the only button has the focus
  ASSERT_EQ(e.abierta(), "FrmSeleccion");
  const Teclado t(*e.formularios->abierto("FrmSeleccion"));
  EXPECT_EQ(t.textoDe("TxtUsuario"), "Administrador");
  EXPECT_FALSE(t.control("TxtUsuario").isEnabled());
  EXPECT_EQ(e.ctx.sesion.DirDatos, e.ctx.carpetaPrograma);
  EXPECT_EQ(e.finales, 0);
}

// A program folder that was moved with its companies keeps them, and remembers who worked where,
// whatever now stands where its data were; the workbook is opened hidden where there is a program
// for it.
TEST(Reinicio, UnCatalogoQueYaEstaSeQueda) {
  Arranque e(Escenario::Carpetas);
  const QString catalogo = e.ctx.carpetaPrograma + "Inicio.mdb";
  CrearInicio(e.ctx.motor, catalogo);
  e.ctx.motor.flush();
  const qint64 bytes = QFileInfo(rutaSistema(catalogo)).size();
  e.ponAjuste("Directorios", "Datos", e.ctx.sesion.DirDatos);
  haceFichero(e.carpetaDatos() + "/Inicio.mdb", QByteArray(4096, 'x'));
  e.ponAjuste("Entrada", "UltimoUsuario", "Ana");
  haceFichero(e.carpetaPrograma() + "/Inicio.xls", {});
  const QString hoja = haceFichero(e.carpetaPrograma() + "/localc", {});
  QFile::setPermissions(hoja, QFile::ReadOwner | QFile::ExeOwner);
  const QByteArray antes = qgetenv("PATH");
  qputenv("PATH", e.carpetaPrograma().toUtf8());

  e.guion.esperaMensaje(
      "Su programa es posible que lo halla cambiado de directorio, localizado el directorio nuevo",
      "Error");
  e.formularios->cambiarA("FrmSeleccion");
  qputenv("PATH", antes);
  EXPECT_EQ(e.abierta(), "FrmInicioSoftware");
  EXPECT_EQ(QFileInfo(rutaSistema(catalogo)).size(), bytes);
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), e.ctx.carpetaPrograma);
  EXPECT_EQ(e.ajuste("Entrada", "UltimoUsuario"), "Ana");
  ASSERT_EQ(e.ejecutados.size(), 1);
  EXPECT_TRUE(e.ejecutados.front().endsWith("/Inicio.xls"));
  EXPECT_TRUE(e.errores().isEmpty());
}

// Lost settings lead to the defaults, wherever the program was started from; a catalogue that can't
// be read must not keep anybody from leaving.
TEST(Reinicio, SinAjustesYConSalida) {
  Arranque e(Escenario::Carpetas);
  CrearInicio(e.ctx.motor, e.ctx.carpetaPrograma + "Inicio.mdb");
  const QString antes = QDir::currentPath();
  QDir::setCurrent(e.carpetaPrograma());
  e.guion.esperaMensaje(
      "Su programa es posible que lo halla cambiado de directorio, localizado el directorio nuevo");
  e.formularios->cambiarA("FrmSeleccion");
  QDir::setCurrent(antes);
  ASSERT_EQ(e.abierta(), "FrmInicioSoftware");
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), e.ctx.carpetaPrograma);
  e.formularios->abierto("FrmInicioSoftware")->close();
  reposar();
  EXPECT_EQ(e.abierta(), QString());
  EXPECT_EQ(e.finales, 1);
}

TEST(FrmSeleccion, QuienEntraYConQue) {
  for (const QStringList& f : leeCsv("usuarios.csv")) {
    SCOPED_TRACE(f.join(' ').toStdString());
    Arranque e;
    preguntaFuera(
        rutaSistema(e.ctx.sesion.rutaCatalogo()),
        "INSERT INTO Usuarios(Nombre, Password) VALUES ('Ana','Secreto'),('Luis','otra')");
    e.ponAjuste("Usuarios", "Permitir", f[0]);
    e.ponAjuste("Entrada", "UltimoUsuario", "Administrador");
    if (!f[3].isEmpty()) e.guion.esperaMensaje(f[3]);
    Teclado t(e.abre("FrmSeleccion"));
    EXPECT_EQ(t.textoDe("TxtUsuario"), "Administrador");
    t.entra("TxtEmpresa", "Prueba");
    if (t.control("TxtUsuario").isEnabled()) t.entra("TxtUsuario", f[1]);
    t.entra(f[2]);
    EXPECT_EQ(t.enfocado(), "CmdAceptar");
    t.intro();
    EXPECT_EQ(e.abierta(), f[4] == "sí" ? "FrmMenu" : "FrmSeleccion");
    EXPECT_TRUE(e.guion.agotado());
    EXPECT_EQ(e.ctx.sesion.EmpresaActual, "Prueba");
    EXPECT_EQ(e.ctx.sesion.UsuarioActual.compare(f[1], Qt::CaseInsensitive), 0);
    EXPECT_EQ(e.ajuste("Entrada", "UltimoUsuario"), e.ctx.sesion.UsuarioActual);
    EXPECT_EQ(e.ajuste("Entrada", "UltimaEmpresa"), "Prueba");
  }
}

TEST(FrmSeleccion, CancelarTerminaSinEscribirNada) {
  Arranque e;
  e.ponAjuste("Entrada", "UltimaEmpresa", "Prueba");
  Teclado t(e.abre("FrmSeleccion"));
  EXPECT_EQ(t.textoDe("TxtEmpresa"), "Prueba");
  t.escribe("TxtEmpresa", "Otra");
  t.escape();
  EXPECT_EQ(e.abierta(), QString());
  EXPECT_EQ(e.finales, 1);
  EXPECT_EQ(e.ajuste("Entrada", "UltimaEmpresa"), "Prueba");
}

TEST(FrmAcercaDe, DiceQueEsYEnQueSeApoya) {
  Escenario e;
  registraStart(*e.formularios);
  const Teclado t(e.abre("FrmAcercaDe"));
  EXPECT_EQ(t.textoDe("LblVersion"), QString("Versión 1.6 · %1").arg(anoDelPrograma()));
  const auto& tabla = t.control<QTableWidget>("LstBibliotecas");
  const QHash<QString, QString> versiones = {
      {"Qt", qVersion()}, {"SQLite", versionDelMotor()}, {"libzip", zip_libzip_version()}};
  int dichas = 0;
  for (int fila = 0; fila < tabla.rowCount(); ++fila) {
    const QString nombre = tabla.item(fila, 0)->text();
    EXPECT_FALSE(tabla.item(fila, 3)->text().isEmpty()) << qPrintable(nombre);
    if (!versiones.contains(nombre)) continue;
    ++dichas;
    EXPECT_EQ(tabla.item(fila, 1)->text(), versiones[nombre]);
  }
  EXPECT_EQ(dichas, versiones.size());
  EXPECT_FALSE(tabla.horizontalScrollBar()->isVisible() || tabla.verticalScrollBar()->isVisible());
}
