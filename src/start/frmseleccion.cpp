#include "start/frmseleccion.h"

#include "common/cini.h"
#include "engine/dbengine.h"
#include "start/leeconfiguracion.h"
#include "start/programas.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmseleccion.h"

namespace {
// Kept: lets in whoever has forgotten a user, for any name; the books of a small office must not be
// lost with a password.
const QString kProvisional = QStringLiteral("pasadizo");
}  // namespace

FrmSeleccion::FrmSeleccion(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmSeleccion>()),
      DtaEmpresa_(contexto.motor),
      DtaUsuarios_(contexto.motor) {
  ui_->setupUi(this);
  DtaEmpresa_.setObjectName(QStringLiteral("DtaEmpresa"));
  DtaUsuarios_.setObjectName(QStringLiteral("DtaUsuarios"));
  ui_->TxtEmpresa->enlazar(DtaEmpresa_, QStringLiteral("NombreEmpresa"));
  ui_->TxtUsuario->enlazar(DtaUsuarios_, QStringLiteral("Nombre"));

  // A name typed whole counts as picked: its password is the one asked for.
  alSalir(ui_->TxtUsuario, [this] { ui_->TxtUsuario->ponerTexto(ui_->TxtUsuario->texto()); });
  alPulsar(ui_->CmdEmpresaAlta, [this] { CmdEmpresaAlta_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSeleccion::~FrmSeleccion() = default;

void FrmSeleccion::Form_Load() {
  try {
    while (!cargaLibre()) {
      // A catalogue that is there and taken is no reason to begin the settings anew.
      if (!pregunta(QStringLiteral("Otro puesto tiene ocupada la lista de empresas. ¿Desea "
                                   "intentarlo de nuevo?"),
                    QStringLiteral("Librano")))
        return descargar();
    }
  } catch (const ErrorEjecucion&) {
    descargar();
    ctx.formularios->cambiarA(QStringLiteral("FrmInicioSoftware"));
  }
}

// False while another station has the catalogue.
bool FrmSeleccion::cargaLibre() {
  try {
    carga();
    return true;
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kRegistroBloqueado) throw;
    return false;
  }
}

void FrmSeleccion::carga() {
  LeeConfiguracion(ctx.carpetaPrograma + QStringLiteral("Config.ini"), sesion());
  // Without a data folder the path would be one of wherever the program was started from.
  if (sesion().DirDatos.isEmpty()) throw ErrorEjecucion(err::kBaseNoEncontrada);
  DtaEmpresa_.bind(sesion().rutaCatalogo(),
                   QStringLiteral("Select * from Empresas order by NombreEmpresa"));
  DtaUsuarios_.bind(sesion().rutaCatalogo(),
                    QStringLiteral("Select * from Usuarios order by nombre"));
  completaImpresos(ctx.carpetaPrograma, sesion().DirDatos);
  ui_->TxtEmpresa->ponerTexto(sesion().UltimaEmpresa);
  const bool fijo = sesion().UsuariosPermitir == QStringLiteral("No");
  ui_->TxtUsuario->ponerTexto(fijo ? QStringLiteral("Administrador") : sesion().UltimoUsuario);
  ui_->TxtUsuario->setDisabled(fijo);
}

void FrmSeleccion::CmdEmpresaAlta_Click() {
  mostrar(QStringLiteral("FrmEmpresas"), llamada::kAlta);
  DtaEmpresa_.Refresh();
  // The first company of all is the one that will be worked on.
  if (ui_->TxtEmpresa->texto().isEmpty() && DtaEmpresa_.Recordset().rowTotal() == 1)
    ui_->TxtEmpresa->ponerTexto(DtaEmpresa_.Fields(0).display());
}

void FrmSeleccion::CmdAceptar_Click() {
  const QString archivo = ctx.carpetaPrograma + QStringLiteral("Config.ini");
  const QString entrada = QStringLiteral("Entrada");
  CIni().Grabar(archivo, entrada, QStringLiteral("UltimoUsuario"), ui_->TxtUsuario->texto());
  CIni().Grabar(archivo, entrada, QStringLiteral("UltimaEmpresa"), ui_->TxtEmpresa->texto());
  sesion().EmpresaActual = ui_->TxtEmpresa->texto();
  sesion().UsuarioActual = ui_->TxtUsuario->texto();

  if (sesion().UsuariosPermitir != QStringLiteral("Si")) return entra();
  if (ui_->TxtPassword->text() == kProvisional) {
    mensaje(QStringLiteral("Atención usted esta entrando con un usuario que no recuerda, esta "
                           "contraseña es provisional"),
            QStringLiteral("Olvido de usuario"));
    return entra();
  }
  // A user without a password of his own (Null) is let in by no text, not even by an empty one.
  const Variant password = DtaUsuarios_.Fields(1).Value();
  if (!password.isNull() && password.text() == ui_->TxtPassword->text()) return entra();
  mensaje(QStringLiteral("El password no es correcto"), QStringLiteral("Error"));
}

void FrmSeleccion::entra() {
  ctx.formularios->cambiarA(QStringLiteral("FrmMenu"));
}
