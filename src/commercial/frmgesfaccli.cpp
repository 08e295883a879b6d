#include "commercial/frmgesfaccli.h"

#include "ui_frmgesfaccli.h"

FrmGesFacCli::FrmGesFacCli(Contexto& contexto)
    : FrmFicha(contexto), ui_(std::make_unique<Ui::FrmGesFacCli>()) {
  ui_->setupUi(this);
  conecta({{ui_->TxtCodigo, "Codigo"}, {ui_->TxtNombre, "Descripcion"}},
          {ui_->TxtProveCodigo, ui_->TxtProveNombre, ui_->TxtDireccion, ui_->TxtPoblacion,
           ui_->TxtDescuentoFijo, ui_->Command2, ui_->Command3, ui_->Command4});
  importe(ui_->TxtDescuentoFijo);
  alElegir(ui_->TxtProveNombre, [this](int) {
    ui_->TxtProveCodigo->setText(ui_->TxtProveNombre->currentData().toString());
  });
}

FrmGesFacCli::~FrmGesFacCli() = default;

void FrmGesFacCli::Form_Load() {
  for (const auto& [codigo, nombre] : lista("clientes"))
    ui_->TxtProveNombre->addItem(nombre, codigo);
  FrmFicha::Form_Load();
}
