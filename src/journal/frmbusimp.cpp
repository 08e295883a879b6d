#include "journal/frmbusimp.h"

#include "common/formato.h"
#include "common/funciones.h"
#include "ui_frmbusimp.h"

FrmBusImp::FrmBusImp(Contexto& contexto)
    : FrmBusca(contexto), ui(std::make_unique<Ui::FrmBusImp>()) {
  ui->setupUi(this);
  soloNumero(ui->TxtImporte);
  teclaDecimal(ui->TxtImporte);
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBusImp::~FrmBusImp() = default;

void FrmBusImp::CmdAceptar_Click() {
  if (ui->TxtImporte->text().isEmpty()) return error("No tiene ningun importe introducido");
  if (!EsNumerico(ui->TxtImporte->text())) return;
  const QString n = ComaAPunto(ui->TxtImporte->text());
  ui->TxtImporte->setText(n);
  localiza("Select * from SqlDiarioPrincipalBlanco where Importe =" + n + " or Importe =-" + n +
               " order by Nasiento",
           "El importe introducido no existe");
}
