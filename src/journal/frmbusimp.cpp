#include "journal/frmbusimp.h"

#include "common/conversion.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "ui_frmbusimp.h"

FrmBusImp::FrmBusImp(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusImp>()) {
  ui_->setupUi(this);
  importeSinSigno(ui_->TxtImporte);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusImp::~FrmBusImp() = default;

void FrmBusImp::CmdAceptar_Click() {
  if (ui_->TxtImporte->text().isEmpty()) return error("No tiene ningun importe introducido");
  const auto importe = ImporteDe(ui_->TxtImporte->text(), sesion().MascaraImporte);
  if (!importe) return;
  const QString n = ComaAPunto(numberText(*importe));
  ui_->TxtImporte->setText(n);
  localiza("Select * from SqlDiarioPrincipalBlanco where Importe =" + n + " or Importe =-" + n +
               " order by Nasiento",
           "El importe introducido no existe");
}
