#include "commercial/frmarticulos.h"

#include "common/formato.h"
#include "common/rutas.h"
#include "ui_frmarticulos.h"

FrmArticulos::FrmArticulos(Contexto& contexto)
    : FrmFicha(contexto), ui_(std::make_unique<Ui::FrmArticulos>()) {
  ui_->setupUi(this);
  ui_->TxtTipoNombre->addItems({"Unidades", "Kilos", "Metros", "Litros"});
  conecta({{ui_->TxtCodigo, "Codigo"},
           {ui_->TxtNombre, "Descripcion"},
           {ui_->TxtMemo, "Comentario"},
           {ui_->TxtIvaSR, "IvaSR"},
           {ui_->TxtIvaCR, "IvaCR"},
           {ui_->TxtCosto, "Costo", true},
           {ui_->TxtPorcentaje, "MargenPorcentaje", true},
           {ui_->TxtMargenImporte, "MargenImporte", true},
           {ui_->TxtTipoCodigo, "Tipo", true},
           {ui_->TxtProveCodigo, "Proveedor"},
           {ui_->TxtFoto, "Foto"}},
          {ui_->TxtTipoNombre, ui_->TxtProveNombre, ui_->CmdBuscaFoto, ui_->CmdEliminaFoto});
  soloNumero(ui_->TxtIvaSR);
  soloNumero(ui_->TxtIvaCR);
  alElegir(ui_->TxtTipoNombre, [this](int tipo) {
    ui_->TxtTipoCodigo->setText(Format(tipo, sesion().MascaraImporte).trimmed());
  });
  alElegir(ui_->TxtProveNombre, [this](int) {
    ui_->TxtProveCodigo->setText(ui_->TxtProveNombre->currentData().toString());
  });
  alPulsar(ui_->CmdBuscaFoto, [this] { CmdBuscaFoto_Click(); });
  alPulsar(ui_->CmdEliminaFoto, [this] { ui_->TxtFoto->clear(); });
}

FrmArticulos::~FrmArticulos() = default;

void FrmArticulos::Form_Load() {
  for (const auto& [codigo, nombre] : lista("proveedores"))
    ui_->TxtProveNombre->addItem(nombre, codigo);
  FrmFicha::Form_Load();
}

void FrmArticulos::alNuevo() {
  const QString cero = Format("0", sesion().MascaraImporte).trimmed();
  for (QLineEdit* campo :
       {ui_->TxtCosto, ui_->TxtPorcentaje, ui_->TxtMargenImporte, ui_->TxtTipoCodigo})
    campo->setText(cero);
  ui_->TxtIvaSR->setText("3");
  ui_->TxtIvaCR->setText("7");
}

// What follows from the fields: the names of the codes, what it is sold for, the photograph.
void FrmArticulos::alMostrar() {
  const QString& mascara = sesion().MascaraImporte;
  const auto valor = [&](const QLineEdit* campo) {
    return ImporteDe(campo->text(), mascara).value_or(0);
  };
  const double costo = valor(ui_->TxtCosto);
  const double venta =
      costo + costo * valor(ui_->TxtPorcentaje) / 100 + valor(ui_->TxtMargenImporte);
  ui_->TxtVenta->setText(Format(venta, mascara).trimmed());
  const bool sinTipo = ui_->TxtTipoCodigo->text().isEmpty();
  ui_->TxtTipoNombre->setCurrentIndex(sinTipo ? -1 : static_cast<int>(valor(ui_->TxtTipoCodigo)));
  ui_->TxtProveNombre->setCurrentIndex(ui_->TxtProveNombre->findData(ui_->TxtProveCodigo->text()));
  const QPixmap foto(rutaSistema(ui_->TxtFoto->text()));
  ui_->Imagen->setPixmap(
      foto.isNull()
          ? foto
          : foto.scaled(ui_->Imagen->minimumSize(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void FrmArticulos::CmdBuscaFoto_Click() {
  const auto elegida = ctx.cajas->abrirFichero(this, "Foto", rutaSistema(sesion().DirDatos),
                                               "Fotos (*.jpg *.jpeg *.png *.bmp *.gif)");
  if (elegida) ui_->TxtFoto->setText(rutaPrograma(*elegida));
}
