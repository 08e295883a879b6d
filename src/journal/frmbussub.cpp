#include "journal/frmbussub.h"

#include "common/formato.h"
#include "common/funciones.h"
#include "toolkit/principal.h"
#include "ui_frmbussub.h"

FrmBusSub::FrmBusSub(Contexto& contexto)
    : FrmBusca(contexto), ui(std::make_unique<Ui::FrmBusSub>()) {
  ui->setupUi(this);
  alSalir(ui->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBusSub::~FrmBusSub() = default;

void FrmBusSub::Form_Activate() {
  ui->TxtSubcuenta->setMaxLength(sesion().DigitosSubcuenta);
  ui->TxtSubcuenta->setText(ctx.principal->TxtSubcuenta().text());
  ui->TxtSubcuenta->selectAll();
}

void FrmBusSub::TxtSubcuenta_LostFocus() {
  const QString texto = ui->TxtSubcuenta->text();
  if (!texto.isEmpty() && texto.at(0).isDigit())
    ui->TxtSubcuenta->setText(ExpandeCodigo(texto, sesion().DigitosSubcuenta));
}

void FrmBusSub::CmdAceptar_Click() {
  const QString codigo = ui->TxtSubcuenta->text();
  if (codigo.isEmpty()) return error("No tiene ninguna cuenta introducida");
  if (codigo.size() != sesion().DigitosSubcuenta)
    return error("La cuenta introducida no tiene los digitos correspondientes");
  if (!EsNumerico(codigo)) return;
  localiza(
      "Select * from SqlDiarioPrincipalBlanco where Subcuenta='" + codigo + "' order by NAsiento",
      "La subcuenta introducida no existe");
}
