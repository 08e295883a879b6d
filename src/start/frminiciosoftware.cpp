#include "start/frminiciosoftware.h"

#include <QFileInfo>

#include "common/cini.h"
#include "common/rutas.h"
#include "engine/dbengine.h"
#include "start/creaini.h"
#include "start/programas.h"
#include "toolkit/registro.h"
#include "ui_frminiciosoftware.h"

FrmInicioSoftware::FrmInicioSoftware(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmInicioSoftware>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { ctx.formularios->cambiarA(QStringLiteral("FrmSeleccion")); });
}

FrmInicioSoftware::~FrmInicioSoftware() = default;

void FrmInicioSoftware::Form_Activate() {
  escribeConfiguracion();
  creaCatalogo();
  abreLibro();
}

// The last user and company aren't touched: they are still right where the program was only moved.
void FrmInicioSoftware::escribeConfiguracion() {
  const QString& carpeta = ctx.carpetaPrograma;
  const struct {
    const char* seccion;
    const char* clave;
    QString valor;
  } valores[] = {
      {"Directorios", "Programa", carpeta},
      {"Directorios", "Datos", carpeta},
      {"Usuarios", "Permitir", QStringLiteral("No")},
      {"Otros", "Decimal Origen", QStringLiteral(".")},
      {"Otros", "Decimal Destino", QStringLiteral(",")},
      {"Version", "Version", sesion().VersionPrograma},
  };
  for (const auto& v : valores)
    CIni().Grabar(carpeta + QStringLiteral("Config.ini"), QLatin1String(v.seccion),
                  QLatin1String(v.clave), v.valor);
}

// A catalogue that is already there stays in use, so a program that was moved with its companies
// keeps them.
void FrmInicioSoftware::creaCatalogo() {
  try {
    CrearInicio(ctx.motor, ctx.carpetaPrograma + QStringLiteral("Inicio.mdb"));
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kBaseYaExiste) throw;
    mensaje(QStringLiteral("Su programa es posible que lo halla cambiado de directorio, localizado "
                           "el directorio nuevo"),
            QStringLiteral("Error"));
  }
}

// The workbook warms up the spreadsheet for later reports. Neither need be there.
void FrmInicioSoftware::abreLibro() {
  const QString libro = ctx.carpetaPrograma + QStringLiteral("Inicio.xls");
  try {
    const auto hoja = hojaDeCalculoOculta(libro);
    if (!hoja || !QFileInfo::exists(rutaSistema(libro)))
      throw ErrorEjecucion(err::kFicheroNoEncontrado, libro);
    ctx.ejecutar(hoja->programa, hoja->argumentos);
  } catch (const ErrorEjecucion& e) {
    anota(e, QStringLiteral("Form_Activate - FrmInicioSoftware"));
  }
}
