#include "accounts/frmcuentas.h"

#include "accounts/frmcuentaslista.h"
#include "common/comillas.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/comboenlazado.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmcuentas.h"

FrmCuentas::FrmCuentas(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmCuentas>()),
      DtaCuentas_(contexto.motor),
      DtaNivel1_(contexto.motor),
      DtaNivel2_(contexto.motor) {
  ui_->setupUi(this);
  DtaCuentas_.setObjectName("DtaCuentas");
  DtaNivel1_.setObjectName("DtaNivel1");
  DtaNivel2_.setObjectName("DtaNivel2");
  ui_->TxtN01T->enlazar(DtaNivel1_, "Descripcion");
  ui_->TxtN02T->enlazar(DtaNivel2_, "Descripcion");

  soloNumero(ui_->TxtCuenta);
  soloNumero(ui_->TxtN01N);
  soloNumero(ui_->TxtN02N);
  alCambiar(ui_->TxtN01N, [this] { TxtN01N_Change(); });
  alSalir(ui_->TxtN01N, [this] { TxtN01N_LostFocus(); });
  alElegir(ui_->TxtN01T, [this](int) { TxtN01T_Click(); });
  alSalir(ui_->TxtN02N, [this] { TxtN02N_LostFocus(); });
  alElegir(ui_->TxtN02T, [this](int) { TxtN02T_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCuentas::~FrmCuentas() = default;

void FrmCuentas::Form_Load() {
  ui_->TxtCuenta->setMaxLength(sesion().DigitosCuenta);
  DtaNivel1_.bind(sesion().rutaEmpresa(), "Select * from Nivel01");
  DtaNivel2_.setDatabaseName(sesion().rutaEmpresa());
  ofreceNivel2(QString());
  if (sesion().CodigoLlamada == llamada::kModificacion)
    abreModificacion();
  else if (sesion().CodigoLlamada == llamada::kAlta)
    abreAlta();
}

void FrmCuentas::abreModificacion() {
  ui_->TxtCuenta->setEnabled(false);
  DtaCuentas_.bind(sesion().rutaEmpresa(),
                   "Select * from Cuentas where Cuenta=" + entreComillas(sesion().ValorElegido));
  if (DtaCuentas_.Eof()) return;
  ui_->TxtCuenta->setText(DtaCuentas_.Fields("Cuenta").display());
  ui_->TxtDescripcion->setText(DtaCuentas_.Fields("Descripcion").display());
  ui_->TxtN01N->setText(DtaCuentas_.Fields("GrupoN").display());
  ui_->TxtN02N->setText(DtaCuentas_.Fields("SubGrupoN").display());
  muestraNivel(DtaNivel2_, ui_->TxtN02N->text(), *ui_->TxtN02T);
  ui_->TxtAbrirFicha->setChecked(DtaCuentas_.Fields("DatosAuxiliares").Value().toBool());
}

void FrmCuentas::abreAlta() {
  setWindowTitle("Alta de cuenta");
  const QString codigo = sesion().ValorElegido;
  if (codigo.isEmpty()) return;
  ui_->TxtCuenta->setText(codigo);
  ui_->TxtN01N->setText(codigo.left(1));
  ui_->TxtN02N->setText(codigo.left(2));
  TxtN02N_LostFocus();
}

// Looks from the row on show onwards, and past the last from the first: a level above the one on
// show is there too.
bool FrmCuentas::muestraNivel(DataControl& niveles, const QString& nivel, ComboEnlazado& nombre) {
  nombre.setCurrentIndex(-1);
  if (nivel.isEmpty()) return true;
  const QString criterio = "NNivel=" + entreComillas(nivel);
  const bool buscado = ignorando([&] {
    niveles.FindNext(criterio);
    if (niveles.Recordset().NoMatch()) niveles.FindFirst(criterio);
  });
  if (!buscado || niveles.Recordset().NoMatch()) return false;
  nombre.ponerTexto(niveles.Fields("Descripcion").display());
  return true;
}

void FrmCuentas::nivelDesconocido() {
  mensaje("El nivel que ha escrito no existe", "Error");
}

void FrmCuentas::TxtN01N_Change() {
  if (!muestraNivel(DtaNivel1_, ui_->TxtN01N->text(), *ui_->TxtN01T)) nivelDesconocido();
}

// The second levels on offer: those of a group, or all.
void FrmCuentas::ofreceNivel2(const QString& grupo) {
  const QString todos = "Select * from Nivel02";
  DtaNivel2_.setRecordSource(grupo.isEmpty() ? todos
                                             : todos + " where NNivel01=" + entreComillas(grupo));
  DtaNivel2_.Refresh();
}

void FrmCuentas::TxtN01T_Click() {
  ui_->TxtN01N->setText(DtaNivel1_.Fields("NNivel").display());
  grupoElegido_ = ui_->TxtN01N->text();
  ofreceNivel2(grupoElegido_);
}

// A group typed narrows the offer as one picked does, but a second level of another group may still
// be typed over it.
void FrmCuentas::TxtN01N_LostFocus() {
  const QString grupo = ui_->TxtN01N->text();
  if (grupo == grupoElegido_ && !grupo.isEmpty()) return;
  grupoElegido_.clear();
  ofreceNivel2(ui_->TxtN01T->currentIndex() < 0 ? QString() : grupo);
}

void FrmCuentas::TxtN02N_LostFocus() {
  const QString nivel = ui_->TxtN02N->text();
  bool conocido = muestraNivel(DtaNivel2_, nivel, *ui_->TxtN02T);
  if (!conocido && grupoElegido_.isEmpty()) {
    ofreceNivel2(QString());
    conocido = muestraNivel(DtaNivel2_, nivel, *ui_->TxtN02T);
  }
  if (!conocido)
    nivelDesconocido();
  else if (!nivel.isEmpty())
    ui_->TxtN01N->setText(nivel.left(1));
}

void FrmCuentas::TxtN02T_Click() {
  const QString nivel = DtaNivel2_.Fields("NNivel").display();
  ui_->TxtN02N->setText(nivel);
  ui_->TxtN01N->setText(nivel.left(1));
}

void FrmCuentas::CmdAceptar_Click() {
  const QString codigo = ui_->TxtCuenta->text();
  if (codigo.isEmpty()) {
    mensaje("Necesita introducir el código de la cuenta", "Error");
    return enfocar(ui_->TxtCuenta);
  }
  if (sesion().CodigoLlamada == llamada::kModificacion) {
    DtaCuentas_.Edit();
  } else {
    DtaCuentas_.bind(sesion().rutaEmpresa(), "Select * from Cuentas");
    DtaCuentas_.AddNew();
  }
  try {
    DtaCuentas_.Fields("Cuenta") = codigo;
    DtaCuentas_.Fields("Descripcion") = ui_->TxtDescripcion->text();
    DtaCuentas_.Fields("GrupoN") = ui_->TxtN01N->text();
    DtaCuentas_.Fields("SubGrupoN") = ui_->TxtN02N->text();
    DtaCuentas_.Fields("DatosAuxiliares") = ui_->TxtAbrirFicha->isChecked();
    DtaCuentas_.Update();
  } catch (const ErrorEjecucion&) {
    DtaCuentas_.CancelUpdate();  // the message is the house's own, but no edit may stay open
    throw;
  }
  if (auto* lista = qobject_cast<FrmCuentasLista*>(ctx.formularios->abierto("FrmCuentasLista")))
    lista->situaEn(codigo);
  descargar();
}
