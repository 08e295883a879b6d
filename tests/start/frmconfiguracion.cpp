// The installation's settings, users and companies.

#include "soporte/escenario.h"
#include "start/creaini.h"

namespace {

// Program and data in one folder, as a first start leaves them, with these companies.
struct Instalacion : Escenario {
  explicit Instalacion(const QStringList& empresas = {"Prueba"}) : Escenario(Carpetas) {
    ctx.sesion.DirPrograma = ctx.carpetaPrograma;
    ctx.sesion.DirDatos = ctx.carpetaPrograma;
    ctx.sesion.UsuariosPermitir = "No";
    ctx.sesion.DecimalOrigen = ".";
    ctx.sesion.DecimalDestino = ",";
    CrearInicio(ctx.motor, ctx.sesion.rutaCatalogo());
    for (const QString& nombre : empresas) {
      DatosEmpresa datos = empresaDePrueba();
      datos.NombreEmpresa = nombre;
      creaEmpresa(datos);
    }
    abreEmpresa(empresas.front());
    registraStart(*formularios);
    t.emplace(abre("FrmConfiguracion"));
  }

  void pestana(int indice) {
    t->control<QTabWidget>("Tabla").setCurrentIndex(indice);
    reposar();
  }
  // What the catalogue holds for another program.
  QStringList catalogo(const QString& sql) {
    ctx.motor.flush();
    return preguntaFuera(rutaSistema(ctx.sesion.rutaCatalogo()), sql).split('\n');
  }

  std::optional<Teclado> t;
};

}  // namespace

TEST(FrmConfiguracion, AceptarEscribeYLaSesionSigueIgual) {
  Instalacion e;
  e.t->escribe("TxtRutAcesoDatos", "/otra carpeta");
  e.pestana(1);
  e.t->escribe("TxtPermitirUser", "Si");
  e.pestana(3);
  e.t->escribe("TxtDecimalOrigen", "*");
  e.t->pulsa("CmdAceptar");
  EXPECT_FALSE(e.formularios->abierto("FrmConfiguracion"));
  EXPECT_EQ(e.ajuste("Directorios", "Programa"), e.ctx.sesion.DirPrograma);
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), "\\otra carpeta\\");
  EXPECT_EQ(e.ajuste("Usuarios", "Permitir"), "Si");
  EXPECT_EQ(e.ajuste("Otros", "Decimal Origen"), "*");
  EXPECT_EQ(e.ajuste("Otros", "Decimal Destino"), ",");
  EXPECT_EQ(e.ctx.sesion.DirDatos, e.ctx.carpetaPrograma);
  EXPECT_EQ(e.ctx.sesion.UsuariosPermitir, "No");
}

TEST(FrmConfiguracion, LaRejillaEscribeAunqueSeCancele) {
  Instalacion e;
  e.t->escribe("TxtRutAcesoDatos", "\\otra\\");
  e.pestana(1);
  auto& rejilla = e.t->control<Rejilla>("GrdUsuarios");
  e.t->enfoca("GrdUsuarios");
  rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
  e.t->teclea("Ana");
  e.t->tab();
  e.t->teclea("Secreto8");
  e.t->tecla(Qt::Key_Up);
  e.pestana(0);
  e.t->pulsa("CmdCancelar");
  EXPECT_EQ(e.catalogo("SELECT Nombre, Password FROM Usuarios"),
            (QStringList{"Administrador|", "Ana|Secreto8"}));
  EXPECT_EQ(e.ajuste("Directorios", "Datos"), QString());
}

TEST(FrmConfiguracion, BajaDeEmpresa) {
  Instalacion e({"Mayor", "Menor", "Otra"});
  e.ctx.sesion.EmpresaActual = "mayor";
  e.pestana(2);
  auto& rejilla = e.t->control<Rejilla>("GridEmpresas");
  const auto carpeta = [&](const char* nombre) {
    return QFileInfo(rutaSistema(e.ctx.sesion.rutaEmpresa(nombre))).path();
  };
  e.guion.esperaMensaje("No puede eliminar la empresa actual", "Error");
  e.t->pulsa("CmdEmpBajas");

  rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
  e.guion.esperaPregunta("¿ Desea eliminar la empresa 'Menor' ?", false, "Elimina");
  e.t->pulsa("CmdEmpBajas");
  EXPECT_EQ(e.catalogo("SELECT NombreEmpresa FROM Empresas").size(), 3);
  EXPECT_TRUE(QFileInfo::exists(carpeta("Menor")));

  e.guion.esperaPregunta("¿ Desea eliminar la empresa 'Menor' ?", true);
  e.t->pulsa("CmdEmpBajas");
  EXPECT_EQ(e.catalogo("SELECT NombreEmpresa FROM Empresas"), (QStringList{"Mayor", "Otra"}));
  EXPECT_FALSE(QFileInfo::exists(carpeta("Menor")));
  EXPECT_EQ(rejilla.filas(), 2);
  EXPECT_TRUE(e.errores().isEmpty());

  // Something of somebody else's in the folder: nothing goes, it is told, and once that is gone the
  // deletion is made again; also when the file or the folder went already.
  QFile ajeno(carpeta("Otra") + "/notas.txt");
  ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
  const auto elimina = [&](const QString& aviso) {
    rejilla.setCurrentIndex(rejilla.model()->index(1, 0));
    e.guion.esperaPregunta("¿ Desea eliminar la empresa 'Otra' ?", true);
    if (!aviso.isEmpty()) e.guion.esperaMensaje(aviso, "Error");
    e.t->pulsa("CmdEmpBajas");
    EXPECT_TRUE(e.guion.agotado());
  };
  elimina(
      "No se ha podido eliminar la empresa. No se puede usar la ruta o el fichero: en su "
      "carpeta " +
      rutaPrograma(carpeta("Otra")) +
      " hay algo más que la empresa (notas.txt). No se ha eliminado nada; quítelo de ella y repita "
      "la baja");
  EXPECT_EQ(e.catalogo("SELECT NombreEmpresa FROM Empresas").size(), 2);
  EXPECT_TRUE(QFileInfo::exists(rutaSistema(e.ctx.sesion.rutaEmpresa("Otra"))));
  ASSERT_EQ(e.errores().size(), 1);
  EXPECT_TRUE(e.errores().front().endsWith("Producido en CmdEmpBajas_Click - Frmconfiguracion"));
  ajeno.remove();
  QFile::remove(rutaSistema(e.ctx.sesion.rutaEmpresa("Otra")));
  elimina({});
  EXPECT_EQ(e.catalogo("SELECT NombreEmpresa FROM Empresas"), QStringList{"Mayor"});
}

TEST(FrmSelDirectorios, EscribeEnElCampoQueLoPidio) {
  Instalacion e;
  const QString nueva = e.carpetaPrograma() + "/año nuevo";
  QDir().mkpath(nueva);
  for (int i = 0; i < 60; ++i) QDir().mkpath(e.carpetaPrograma() + QString("/../Otra %1").arg(i));
  for (const auto& [boton, campo] :
       {std::pair("Command1", "TxtRutPrograma"), {"Command2", "TxtRutAcesoDatos"}}) {
    e.guion.esperaDialogo("FrmSelDirectorios", [](Teclado& d) { d.escape(); });
    e.t->pulsa(boton);
    EXPECT_EQ(e.t->textoDe(campo), e.ctx.carpetaPrograma) << campo;
    e.guion.esperaDialogo("FrmSelDirectorios", [&](Teclado& d) {
      auto& arbol = d.control<QTreeView>("Carpetas");
      auto* modelo = qobject_cast<QFileSystemModel*>(arbol.model());
      // It opens where the field stands, in sight however many there are around it.
      EXPECT_EQ(modelo->filePath(arbol.currentIndex()), e.carpetaPrograma());
      for (int i = 0; i < 100 && modelo->rowCount(arbol.currentIndex().parent()) < 62; ++i)
        QTest::qWait(20);
      reposar();
      EXPECT_TRUE(arbol.viewport()->rect().contains(arbol.visualRect(arbol.currentIndex())));
      arbol.setCurrentIndex(modelo->index(nueva));
      d.pulsa("CmdAceptar");
    });
    e.t->pulsa(boton);
    EXPECT_EQ(e.t->textoDe(campo), e.ctx.carpetaPrograma + "año nuevo\\");
    EXPECT_EQ(e.ctx.sesion.CodigoLlamada, 0);
  }
}
