#include "journal/frmbussub.h"

#include "common/formato.h"
#include "common/funciones.h"
#include "toolkit/principal.h"
#include "ui_frmbussub.h"

FrmBusSub::FrmBusSub(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusSub>()) {
  ui_->setupUi(this);
  alSalir(ui_->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusSub::~FrmBusSub() = default;

void FrmBusSub::Form_Activate() {
  ui_->TxtSubcuenta->setMaxLength(sesion().DigitosSubcuenta);
  ui_->TxtSubcuenta->setText(ctx.principal->TxtSubcuenta().text());
  ui_->TxtSubcuenta->selectAll();
}

void FrmBusSub::TxtSubcuenta_LostFocus() {
  const QString texto = ui_->TxtSubcuenta->text();
  if (!texto.isEmpty() && texto.at(0).isDigit())
    ui_->TxtSubcuenta->setText(ExpandeCodigo(texto, sesion().DigitosSubcuenta));
}

void FrmBusSub::CmdAceptar_Click() {
  const QString codigo = ui_->TxtSubcuenta->text();
  if (codigo.isEmpty()) return error("No tiene ninguna cuenta introducida");
  if (codigo.size() != sesion().DigitosSubcuenta)
    return error("La cuenta introducida no tiene los digitos correspondientes");
  if (!EsNumerico(codigo)) return;
  localiza(
      "Select * from SqlDiarioPrincipalBlanco where Subcuenta='" + codigo + "' order by NAsiento",
      "La subcuenta introducida no existe");
}
