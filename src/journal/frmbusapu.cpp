#include "journal/frmbusapu.h"

#include <QRadioButton>

#include "ui_frmbusapu.h"

FrmBusApu::FrmBusApu(Contexto& contexto)
    : FrmBusca(contexto), ui_(std::make_unique<Ui::FrmBusApu>()) {
  ui_->setupUi(this);
  // No mark is chosen at the start: the first that takes the focus must not choose itself.
  ui_->CmdAceptar->setFocus();
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmBusApu::~FrmBusApu() = default;

void FrmBusApu::CmdAceptar_Click() {
  QString marca;
  const auto opciones = ui_->Marcas->findChildren<QRadioButton*>();
  for (const QRadioButton* opcion : opciones) {
    if (opcion->isChecked()) marca = opcion->text();
  }
  localiza("Select * from SqlDiarioPrincipalBlanco where Punteo ='" + marca + "' order by Nasiento",
           "No se ha encontrado ninguna partida con el punteo seleccionado");
}
