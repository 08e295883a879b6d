#include "journal/frmbusdes.h"

#include "ui_frmbusdes.h"

FrmBusDes::FrmBusDes(Contexto& contexto)
    : FrmBusca(contexto), ui(std::make_unique<Ui::FrmBusDes>()) {
  ui->setupUi(this);
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmBusDes::~FrmBusDes() = default;

void FrmBusDes::CmdAceptar_Click() {
  localiza("Select * from SqlDiarioPrincipalBlanco where ucase(Descripcion) like '*" +
               ui->TxtDescripcion->text().toUpper() + "*' order by Nasiento",
           "Ninguna partida tiene los caracteres introducidos");
}
