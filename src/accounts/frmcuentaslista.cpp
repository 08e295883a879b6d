#include "accounts/frmcuentaslista.h"

#include <QKeyEvent>

#include "accounts/borrado.h"
#include "accounts/buscaplan.h"
#include "accounts/widgets/teclasdebusqueda.h"
#include "common/comillas.h"
#include "engine/dbengine.h"
#include "toolkit/protocolo.h"
#include "ui_frmcuentaslista.h"

FrmCuentasLista::FrmCuentasLista(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmCuentasLista>()),
      DtaCuentas_(contexto.motor) {
  ui_->setupUi(this);
  DtaCuentas_.setObjectName("DtaCuentas");
  ui_->GrigCuentas->enlazar(DtaCuentas_,
                            {{.campo = "Cuenta", .titulo = "Cuenta", .ancho = 10},
                             {.campo = "Descripcion", .titulo = "Descripción", .ancho = 60}});
  ui_->TxtBusquedaCuentas->setMaxLength(kLargoNombre);
  alCambiar(ui_->TxtBusquedaCuentas, [this] { TxtBusquedaCuentas_Change(); });
  alBajarTecla(ui_->TxtBusquedaCuentas,
               [this](QKeyEvent& evento) { return mueveConFlechas(DtaCuentas_, evento); });
  alTeclear(ui_->TxtBusquedaCuentas, [this](Tecla& tecla) { TxtBusquedaCuentas_KeyPress(tecla); });
  alBajarTecla(ui_->GrigCuentas, [this](QKeyEvent& evento) {
    return llevaABusqueda(*ui_->TxtBusquedaCuentas, evento);
  });
  for (const auto senal : {&Rejilla::intro, &Rejilla::dobleClic})
    connect(ui_->GrigCuentas, senal, this,
            [this] { protege([this] { CmdModifica_Click(); }, "CmdModifica_Click"); });
  connect(ui_->GrigCuentas, &Rejilla::mas, this,
          [this] { protege([this] { CmdAltas_Click(); }, "CmdAltas_Click"); });
  alPulsar(ui_->CmdAltas, [this] { CmdAltas_Click(); });
  alPulsar(ui_->CmdBajas, [this] { CmdBajas_Click(); });
  alPulsar(ui_->CmdModifica, [this] { CmdModifica_Click(); });
  alPulsar(ui_->CmdCrearPlan, [this] { CmdCrearPlan_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmCuentasLista::~FrmCuentasLista() = default;

void FrmCuentasLista::Form_Load() {
  DtaCuentas_.bind(sesion().rutaEmpresa(), fuentePlan(kListaCuentas, orden_));
  ui_->GrigCuentas->setFocus();
}

void FrmCuentasLista::TxtBusquedaCuentas_Change() {
  const QString texto = ui_->TxtBusquedaCuentas->text();
  if (texto.isEmpty()) return;
  if (ordenDe(texto) != orden_) {
    orden_ = ordenDe(texto);
    DtaCuentas_.setRecordSource(fuentePlan(kListaCuentas, orden_));
    DtaCuentas_.Refresh();
  }
  if (buscaEnPlan(DtaCuentas_, kListaCuentas, texto)) ui_->GrigCuentas->subeActual();
}

void FrmCuentasLista::TxtBusquedaCuentas_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  CmdModifica_Click();
}

void FrmCuentasLista::CmdAltas_Click() {
  mostrar("FrmCuentas", llamada::kAlta);
}

void FrmCuentasLista::CmdModifica_Click() {
  const QString codigo = ui_->GrigCuentas->valor("Cuenta");
  if (!codigo.isEmpty()) mostrar("FrmCuentas", llamada::kModificacion, codigo);
}

void FrmCuentasLista::CmdCrearPlan_Click() {
  const QString codigo = ui_->GrigCuentas->valor("Cuenta");
  mostrar("FrmCrearPlan");
  situaEn(codigo);
}

void FrmCuentasLista::situaEn(const QString& codigo) {
  DtaCuentas_.Refresh();
  DtaCuentas_.FindFirst("Cuenta = " + entreComillas(codigo));
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
    eliminaFila(DtaCuentas_);
}
