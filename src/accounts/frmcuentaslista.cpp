#include "accounts/frmcuentaslista.h"

#include "accounts/borrado.h"
#include "accounts/llamada.h"
#include "engine/dbengine.h"
#include "ui_frmcuentaslista.h"

FrmCuentasLista::FrmCuentasLista(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmCuentasLista>()),
      DtaCuentas(contexto.motor) {
  ui_->setupUi(this);
  DtaCuentas.setObjectName("DtaCuentas");
  ui_->GrigCuentas->enlazar(DtaCuentas,
                            {{.campo = "Cuenta", .titulo = "Cuenta", .ancho = 10},
                             {.campo = "Descripcion", .titulo = "Descripción", .ancho = 60}});
  alPulsar(ui_->CmdAltas, [this] { CmdAltas_Click(); });
  alPulsar(ui_->CmdBajas, [this] { CmdBajas_Click(); });
  alPulsar(ui_->CmdModifica, [this] { CmdModifica_Click(); });
  alPulsar(ui_->CmdCrearPlan, [this] { CmdCrearPlan_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmCuentasLista::~FrmCuentasLista() = default;

void FrmCuentasLista::Form_Load() {
  DtaCuentas.bind(sesion().rutaEmpresa(), "Select * from Cuentas");
}

void FrmCuentasLista::CmdAltas_Click() {
  const QString codigo = ui_->GrigCuentas->valor("Cuenta");
  const int filas = ui_->GrigCuentas->filas();
  mostrar("FrmCuentas", kAlta);
  recarga(codigo);
  if (ui_->GrigCuentas->filas() > filas) DtaCuentas.MoveLast();  // where a new row stands
}

void FrmCuentasLista::CmdModifica_Click() {
  const QString codigo = ui_->GrigCuentas->valor("Cuenta");
  mostrar("FrmCuentas", kModificacion, codigo);
  recarga(codigo);
}

void FrmCuentasLista::CmdCrearPlan_Click() {
  const QString codigo = ui_->GrigCuentas->valor("Cuenta");
  mostrar("FrmCrearPlan");
  recarga(codigo);
}

void FrmCuentasLista::recarga(const QString& codigo) {
  DtaCuentas.Refresh();
  DtaCuentas.FindFirst("Cuenta = '" + codigo + "'");
}

void FrmCuentasLista::CmdBajas_Click() {
  if (!pregunta("¿Desea eliminar la cuenta de su plan contable?", "Eliminar")) return;
  DataControl subcuentas(ctx.motor);
  if (tieneSubcuentas(subcuentas, sesion().rutaEmpresa(), ui_->GrigCuentas->valor("Cuenta")))
    mensaje(
        "Esta cuenta no puede ser eliminada, porque tiene subcuentas creadas, elimine primero "
        "las subcuentas asociadas",
        "Eliminar");
  else
    eliminaFila(DtaCuentas);
}
