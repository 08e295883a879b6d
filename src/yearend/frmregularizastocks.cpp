#include "yearend/frmregularizastocks.h"

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "ui_frmregularizastocks.h"
#include "yearend/ejercicio.h"
#include "yearend/widgets/pasoanual.h"

FrmRegularizaStocks::FrmRegularizaStocks(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmRegularizaStocks>()),
      DtaRegulariza_(contexto.motor) {
  ui_->setupUi(this);
  ui_->GridExtracto->enlazar(
      DtaRegulariza_,
      {{.campo = "Subcuenta", .titulo = "Subcuenta", .ancho = 14},
       {.campo = "Debe", .titulo = "Debe", .ancho = 16, .tipo = Columna::Tipo::Importe},
       {.campo = "Haber", .titulo = "Haber", .ancho = 16, .tipo = Columna::Tipo::Importe}});
  conectaImporte(*this, ctx, *ui_->TxtExistenciasFinales);
  conectaFechaDeAsiento(*this, ctx, *ui_->TxtFechaAsiento, true);
  ui_->TxtDescripcion->setMaxLength(kLargoDeDescripcion);
  alSalir(ui_->TxtDescripcion, [this] { TxtDescripcion_LostFocus(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmRegularizaStocks::~FrmRegularizaStocks() = default;

void FrmRegularizaStocks::Form_Activate() {
  ui_->GridExtracto->setMascara(sesion().MascaraImporte);
  DtaRegulariza_.bind(sesion().rutaEmpresa(), "Select * from SqlRegularizaStock");
  if (!DtaRegulariza_.Eof()) {
    // Which of them is regularised is for the user to say.
    DtaRegulariza_.MoveLast();
    DtaRegulariza_.MoveNext();
  }
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  ui_->TxtExistenciasIniciales->setText(
      Format(valorDeExistencias(*empresa), sesion().MascaraImporte));
  ponImporte(*ui_->TxtExistenciasFinales, 0, ctx);
  muestraCompras(*empresa);
  ui_->TxtFechaAsiento->setText(NormalizaFecha("31/12/" + QString::number(sesion().AnoActual),
                                               sesion().AnoActual, ctx.reloj->hoy()));
}

// A new company hasn't got it, and what is posted to a subcuenta out of the plan is in no balance.
void FrmRegularizaStocks::muestraCompras(Database& empresa) {
  const QString codigo = ExpandeCodigo("61.1", sesion().DigitosSubcuenta);
  ui_->TxtSubcuentaCompras->setText(codigo);
  const auto fila = empresa.OpenRecordset("Select Descripcion from Subcuentas where Subcuenta=" +
                                          entreComillas(codigo));
  ui_->LblSubcuentaCompras->setText(fila->Eof() ? "No está en el plan de subcuentas"
                                                : fila->Fields(0).display());
}

void FrmRegularizaStocks::TxtDescripcion_LostFocus() {
  if (ui_->TxtDescripcion->text().isEmpty()) ui_->TxtDescripcion->setText("Regularización Stocks");
}

void FrmRegularizaStocks::CmdAceptar_Click() {
  if (DtaRegulariza_.Eof()) {
    mensaje("Seleccione en la lista la subcuenta de existencias", "Error");
    return enfocar(ui_->GridExtracto);
  }
  const QString existencias = DtaRegulariza_.Fields(0).display();
  // Kept: it only tells. The asiento shows in the journal what is missing.
  if (existencias.isEmpty()) mensaje("No dispone de una cuenta de mercaderias", {});
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  AsientoGrabado grabado;
  try {
    trabajaEnDiario(ctx, [&] {
      regularizaStocks(*empresa,
                       {.compras = ui_->TxtSubcuentaCompras->text(),
                        .existencias = existencias,
                        .iniciales = ui_->TxtExistenciasIniciales->text(),
                        .finales = ui_->TxtExistenciasFinales->text()},
                       {.asiento = {},
                        .fecha = ui_->TxtFechaAsiento->text(),
                        .descripcion = ui_->TxtDescripcion->text(),
                        .mascara = sesion().MascaraImporte},
                       grabado);
    });
  } catch (const ErrorEjecucion& error) {
    return avisarError(error.numero(),
                       textoDeFallo(error, *empresa, grabado, "La regularización no está entera"),
                       "CmdAceptar_Click");
  }
  mensaje("Proceso realizado con exito", "Regularización de Stocks");
  descargar();
}
