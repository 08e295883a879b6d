#include "journal/frmbusdes.h"

#include "ui_frmbusdes.h"

FrmBusDes::FrmBusDes(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusDes>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusDes::~FrmBusDes() = default;

void FrmBusDes::CmdAceptar_Click() {
  localiza("Select * from SqlDiarioPrincipalBlanco where ucase(Descripcion) like '*" +
               ui_->TxtDescripcion->text().toUpper() + "*' order by Nasiento",
           "Ninguna partida tiene los caracteres introducidos");
}
