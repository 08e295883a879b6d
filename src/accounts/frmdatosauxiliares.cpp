#include "accounts/frmdatosauxiliares.h"

#include "common/comillas.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/registro.h"
#include "ui_frmdatosauxiliares.h"

FrmDatosAuxiliares::FrmDatosAuxiliares(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmDatosAuxiliares>()),
      DtaSubcuenta_(contexto.motor) {
  ui_->setupUi(this);
  DtaSubcuenta_.setObjectName("DtaSubcuenta");
  campos_ = {ui_->TxtDireccion, ui_->TxtProvincia, ui_->TxtCodigoPostal,
             ui_->TxtPoblacion, ui_->TxtPais,      ui_->TxtNif,
             ui_->TxtTelefono,  ui_->TxtFax,       ui_->TxtGerente};
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmDatosAuxiliares::~FrmDatosAuxiliares() = default;

void FrmDatosAuxiliares::Form_Load() {
  if (const Formulario* subcuenta = ctx.formularios->abierto("FrmSubCuentas")) {
    for (QLabel* rotulo : {ui_->TxtSubcuenta, ui_->TxtDescripcion})
      rotulo->setText(subcuenta->findChild<QLineEdit*>(rotulo->objectName())->text());
  }
  // A code typed over and not yet accepted has no row: the card is empty.
  leeONoAbre([this] { saltando([this] { lee(); }); });
}

void FrmDatosAuxiliares::lee() {
  DtaSubcuenta_.bind(sesion().rutaEmpresa(), "Select * from Subcuentas where subcuenta=" +
                                                 entreComillas(ui_->TxtSubcuenta->text()));
  for (int i = 0; i < int(campos_.size()); ++i)
    campos_[i]->setText(DtaSubcuenta_.Fields(kPrimerCampo + i).display());
}

void FrmDatosAuxiliares::CmdAceptar_Click() {
  // What a busy file didn't take stays typed, to be accepted again.
  if (!saltando([this] { graba(); })) ignorando([this] { DtaSubcuenta_.CancelUpdate(); });
  descargar();
}

void FrmDatosAuxiliares::graba() {
  DtaSubcuenta_.Edit();
  for (int i = 0; i < int(campos_.size()); ++i)
    DtaSubcuenta_.Fields(kPrimerCampo + i) = campos_[i]->text();
  DtaSubcuenta_.Update();
}
