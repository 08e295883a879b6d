#include "accounts/frmsubcuentas.h"

#include "accounts/frmvisualizaplan.h"
#include "common/comillas.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/fallo.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmsubcuentas.h"

FrmSubCuentas::FrmSubCuentas(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmSubCuentas>()),
      DtaCuentas_(contexto.motor),
      DtaCuentas2_(contexto.motor),
      DtaSubcuenta_(contexto.motor) {
  ui_->setupUi(this);
  DtaCuentas_.setObjectName("DtaCuentas");
  DtaCuentas2_.setObjectName("DtaCuentas2");
  DtaSubcuenta_.setObjectName("DtaSubcuenta");
  ui_->GrigSubCuentas->enlazar(DtaCuentas2_,
                               {{.campo = "Cuenta", .titulo = "Cuenta", .ancho = 8},
                                {.campo = "Descripcion", .titulo = "Descripción", .ancho = 28}});
  ui_->GrigSubCuentas->hide();
  ui_->CmdDesplega->hide();
  ui_->CmdDatosAuxiliares->hide();

  soloCodigo(ui_->TxtSubcuenta);
  alCambiar(ui_->TxtSubcuenta, [this] { TxtSubcuenta_Change(); });
  alSalir(ui_->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  alPulsar(ui_->CmdDesplega, [this] { CmdDesplega_Click(); });
  alPulsar(ui_->CmdDatosAuxiliares, [this] { mostrar("FrmDatosAuxiliares"); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSubCuentas::~FrmSubCuentas() = default;

void FrmSubCuentas::Form_Activate() {
  const int digitos = sesion().DigitosSubcuenta;
  ui_->TxtSubcuenta->setMaxLength(digitos);
  ui_->TxtSubcuenta->setMinimumWidth(fontMetrics().horizontalAdvance(QString(digitos + 3, u'0')));
  if (!sesion().ValorElegido.isEmpty()) ui_->TxtSubcuenta->setText(sesion().ValorElegido);
  if (sesion().CodigoLlamada == llamada::kAlta) {
    setWindowTitle("Alta de subcuenta");
    ui_->CmdDesplega->show();
    DtaCuentas2_.bind(sesion().rutaEmpresa(), "Select * from Cuentas");
  } else if (sesion().CodigoLlamada == llamada::kModificacion) {
    setWindowTitle("Modificación de subcuenta");
    abreModificacion();
  }
}

void FrmSubCuentas::abreModificacion() {
  const QString codigo = sesion().ValorElegido;
  DtaCuentas_.bind(sesion().rutaEmpresa(), "Select * from Cuentas where Cuenta=" +
                                               entreComillas(codigo.left(sesion().DigitosCuenta)));
  ui_->CmdDatosAuxiliares->setVisible(tieneFicha());
  DtaSubcuenta_.bind(sesion().rutaEmpresa(),
                     "Select * from Subcuentas where subcuenta=" + entreComillas(codigo));
  if (DtaSubcuenta_.Eof()) return;
  ui_->TxtSubcuenta->setText(DtaSubcuenta_.Fields("Subcuenta").display());
  ui_->TxtDescripcion->setText(DtaSubcuenta_.Fields("Descripcion").display());
}

void FrmSubCuentas::CmdDesplega_Click() {
  despliega(ui_->CmdDesplega->text() == ">>");
}

void FrmSubCuentas::despliega(bool si) {
  ui_->GrigSubCuentas->setVisible(si);
  ui_->CmdDesplega->setText(si ? "<<" : ">>");
  layout()->activate();
  resize(width(), sizeHint().height());
}

void FrmSubCuentas::TxtSubcuenta_Change() {
  // The list is a help beside the typing: what it can't find stops nobody.
  ignorando(
      [this] { DtaCuentas2_.FindFirst("Cuenta = " + entreComillas(ui_->TxtSubcuenta->text())); });
}

bool FrmSubCuentas::tieneFicha() const {
  return DtaCuentas_.isOpen() && !DtaCuentas_.Eof() &&
         DtaCuentas_.Fields("DatosAuxiliares").Value().toBool();
}

QString FrmSubCuentas::cuentaEscrita() const {
  return ui_->TxtSubcuenta->text().left(ctx.sesion.DigitosCuenta);
}

void FrmSubCuentas::TxtSubcuenta_LostFocus() {
  if (ui_->TxtSubcuenta->text().isEmpty()) return;
  ui_->TxtSubcuenta->setText(ExpandeCodigo(ui_->TxtSubcuenta->text(), sesion().DigitosSubcuenta));
  DtaCuentas_.bind(sesion().rutaEmpresa(),
                   "Select * from Cuentas where Cuenta=" + entreComillas(cuentaEscrita()));
  if (!DtaCuentas_.Eof()) return;
  if (pregunta("La cuenta no existe en el plan de cuentas, ¿ Desea crear una cuenta ?", "Error"))
    creaCuenta(cuentaEscrita());
  else
    ui_->TxtSubcuenta->clear();
  enfocar(ui_->TxtSubcuenta);
}

// Creating is what was asked, also when the subcuenta is being changed; the mode comes back after.
void FrmSubCuentas::creaCuenta(const QString& cuenta) {
  mostrar("FrmCuentas", llamada::kAlta, cuenta);
  if (DtaCuentas2_.isOpen()) DtaCuentas2_.Refresh();
}

void FrmSubCuentas::CmdAceptar_Click() {
  const QString codigo = ui_->TxtSubcuenta->text();
  if (codigo.isEmpty()) {
    mensaje("Necesita introducir el código de la subcuenta", "Error");
    return enfocar(ui_->TxtSubcuenta);
  }
  try {
    graba();
    ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  } catch (const ErrorEjecucion& error) {
    if (DtaSubcuenta_.isOpen()) DtaSubcuenta_.CancelUpdate();
    if (error.numero() == err::kClaveDuplicada) {
      mensaje("La subcuenta que esta introduciendo ya existe", "Error");
      descargar();
    } else {
      avisa(ctx, this, {error, "CmdAceptar_Click FrmSubcuentas"}, error.descripcion(), "Error");
    }
    return;
  }
  if (auto* plan = qobject_cast<FrmVisualizaPlan*>(ctx.formularios->abierto("FrmVisualizaPlan")))
    ignorando([&] { plan->situaEn(codigo); });
  descargar();
}

void FrmSubCuentas::graba() {
  const bool alta = sesion().CodigoLlamada == llamada::kAlta;
  if (alta) {
    DtaSubcuenta_.bind(sesion().rutaEmpresa(), "Select * from Subcuentas");
    DtaSubcuenta_.AddNew();
  } else {
    DtaSubcuenta_.Edit();
  }
  DtaSubcuenta_.Fields("Subcuenta") = ui_->TxtSubcuenta->text();
  DtaSubcuenta_.Fields("Cuenta") = cuentaEscrita();
  DtaSubcuenta_.Fields("Descripcion") = ui_->TxtDescripcion->text();
  DtaSubcuenta_.Update();
  if (alta && tieneFicha()) mostrar("FrmDatosAuxiliares");
}
