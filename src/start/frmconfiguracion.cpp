#include "start/frmconfiguracion.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "common/cini.h"
#include "common/funciones.h"
#include "common/rutas.h"
#include "engine/dbengine.h"
#include "toolkit/fallo.h"
#include "toolkit/protocolo.h"
#include "ui_frmconfiguracion.h"

namespace {

// What else there is in a company's folder than its books.
QStringList otrosFicheros(const QDir& carpeta, const QStringList& libros) {
  QStringList nombres =
      carpeta.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  for (const QString& suyo : libros)
    nombres.removeIf([&](const QString& n) { return n.compare(suyo, Qt::CaseInsensitive) == 0; });
  return nombres;
}

}  // namespace

FrmConfiguracion::FrmConfiguracion(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmConfiguracion>()),
      DtaUsuarios_(contexto.motor),
      DtaEmpresas_(contexto.motor) {
  ui_->setupUi(this);
  DtaUsuarios_.setObjectName(QStringLiteral("DtaUsuarios"));
  DtaEmpresas_.setObjectName(QStringLiteral("DtaEmpresas"));
  ui_->GrdUsuarios->enlazar(
      DtaUsuarios_,
      {{.campo = QStringLiteral("Nombre"), .titulo = QStringLiteral("Nombre"), .ancho = 32},
       {.campo = QStringLiteral("Password"), .titulo = QStringLiteral("Password"), .ancho = 12}});
  ui_->GrdUsuarios->permitirEdicion(Rejilla::Cambios | Rejilla::Altas | Rejilla::Bajas);
  ui_->GridEmpresas->enlazar(DtaEmpresas_, {{.campo = QStringLiteral("NombreEmpresa"),
                                             .titulo = QStringLiteral("Empresa"),
                                             .ancho = 40}});

  alPulsar(ui_->Command1,
           [this] { mostrar(QStringLiteral("FrmSelDirectorios"), llamada::kCarpetaPrograma); });
  alPulsar(ui_->Command2,
           [this] { mostrar(QStringLiteral("FrmSelDirectorios"), llamada::kCarpetaDatos); });
  alPulsar(ui_->CmdEmpAltas, [this] { CmdEmpAltas_Click(); });
  alPulsar(ui_->CmdEmpBajas, [this] { CmdEmpBajas_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmConfiguracion::~FrmConfiguracion() = default;

// Kept: this is the catalogue beside the program, not that of the data folder: with it the program
// is put right again after its folders were moved.
void FrmConfiguracion::Form_Load() {
  const QString catalogo = ctx.carpetaPrograma + QStringLiteral("Inicio.mdb");
  ui_->LblDirWindows->setText(AjustaBarra(rutaPrograma(QDir::rootPath())));
  DtaUsuarios_.bind(catalogo, QStringLiteral("Select * from usuarios order by nombre"));
  DtaEmpresas_.bind(catalogo, QStringLiteral("Select * from empresas order by nombreempresa"));
}

void FrmConfiguracion::Form_Activate() {
  ui_->TxtRutPrograma->setText(sesion().DirPrograma);
  ui_->TxtRutAcesoDatos->setText(sesion().DirDatos);
  ui_->TxtPermitirUser->setText(sesion().UsuariosPermitir);
  ui_->TxtDecimalOrigen->setText(sesion().DecimalOrigen);
  ui_->TxtDecimalDestino->setText(sesion().DecimalDestino);
}

void FrmConfiguracion::CmdEmpAltas_Click() {
  mostrar(QStringLiteral("FrmEmpresas"), llamada::kAlta);
  DtaEmpresas_.Refresh();
}

void FrmConfiguracion::CmdEmpBajas_Click() {
  try {
    const QString nombre = DtaEmpresas_.Fields(0).text();
    if (nombre.compare(sesion().EmpresaActual, Qt::CaseInsensitive) == 0) {
      mensaje(QStringLiteral("No puede eliminar la empresa actual"), QStringLiteral("Error"));
      return;
    }
    if (!pregunta(QStringLiteral("¿ Desea eliminar la empresa '%1' ?").arg(nombre),
                  QStringLiteral("Elimina")))
      return;
    borraEmpresa(nombre);
  } catch (const ErrorEjecucion& e) {
    avisa(ctx, this, {e, QStringLiteral("CmdEmpBajas_Click - Frmconfiguracion")},
          QStringLiteral("No se ha podido eliminar la empresa. ") + e.descripcion(),
          QStringLiteral("Error"));
  }
}

// The row goes last: a deletion that fails half-way leaves the company in the catalogue, and can be
// made again, whatever of it is already gone. Nothing goes while the folder couldn't go after it.
void FrmConfiguracion::borraEmpresa(const QString& nombre) {
  const QString libros = sesion().rutaEmpresa(nombre);
  const QDir carpeta(QFileInfo(rutaSistema(libros)).path());
  const QStringList ajenos = otrosFicheros(carpeta, ctx.motor.filesOf(libros));
  if (!ajenos.isEmpty())
    throw ErrorEjecucion(err::kErrorDeRuta,
                         QStringLiteral("en su carpeta %1 hay algo más que la empresa (%2). No se "
                                        "ha eliminado nada; quítelo de ella y repita la baja")
                             .arg(rutaPrograma(carpeta.path()), ajenos.join(QStringLiteral(", "))));
  if (carpeta.exists()) {
    if (!QFileInfo(QFileInfo(carpeta.path()).path()).isWritable())
      throw ErrorEjecucion(err::kPermisoDenegado, carpeta.path());
    ctx.motor.DeleteDatabase(libros);
    if (!carpeta.rmdir(carpeta.path())) throw ErrorEjecucion(err::kErrorDeRuta, carpeta.path());
  }
  DtaEmpresas_.Delete();
  DtaEmpresas_.Refresh();
}

// A folder typed by hand gets the final backslash that every path of the program counts on. An
// empty one stays so, and is set right by the next start.
void FrmConfiguracion::CmdAceptar_Click() {
  for (QLineEdit* carpeta : {ui_->TxtRutPrograma, ui_->TxtRutAcesoDatos}) {
    if (!carpeta->text().isEmpty()) carpeta->setText(AjustaBarra(rutaPrograma(carpeta->text())));
  }
  const struct {
    const char* seccion;
    const char* clave;
    QLineEdit* campo;
  } valores[] = {
      {"Directorios", "Programa", ui_->TxtRutPrograma},
      {"Directorios", "Datos", ui_->TxtRutAcesoDatos},
      {"Usuarios", "Permitir", ui_->TxtPermitirUser},
      {"Otros", "Decimal Origen", ui_->TxtDecimalOrigen},
      {"Otros", "Decimal Destino", ui_->TxtDecimalDestino},
  };
  for (const auto& v : valores)
    CIni().Grabar(ctx.carpetaPrograma + QStringLiteral("Config.ini"), QLatin1String(v.seccion),
                  QLatin1String(v.clave), v.campo->text());
  descargar();
}
