#include "transfer/frmimportarcontanet.h"

#include "common/rutas.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "transfer/importarcontanet.h"
#include "ui_frmimportarcontanet.h"

FrmImportarContanet::FrmImportarContanet(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmImportarContanet>()) {
  ui_->setupUi(this);
  filas_ = {{ui_->ChkPlan, ui_->TxtPlan, ui_->CmdPlan},
            {ui_->ChkDiario, ui_->TxtDiario, ui_->CmdDiario},
            {ui_->ChkDatos, ui_->TxtDatos, ui_->CmdDatos},
            {ui_->ChkIva, ui_->TxtIva, ui_->CmdIva}};
  for (const Fila& fila : filas_) alPulsar(fila.boton, [this, fila] { localiza(fila); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmImportarContanet::~FrmImportarContanet() = default;

void FrmImportarContanet::localiza(const Fila& fila) {
  const auto elegido = ctx.cajas->abrirFichero(this, "Localizar " + fila.marca->text(),
                                               rutaSistema(fila.ruta->text()),
                                               "Textos (*.csv *.txt);;Todos los ficheros (*)");
  if (elegido) fila.ruta->setText(rutaPrograma(*elegido));
}

std::optional<QString> FrmImportarContanet::elegida(const Fila& fila) {
  return fila.marca->isChecked() ? std::optional(fila.ruta->text()) : std::nullopt;
}

void FrmImportarContanet::CmdAceptar_Click() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  trabajaEnDiario(ctx, *ui_->Bar, [&](const Avance& avance) {
    contanet::importa(
        *empresa, {elegida(filas_[0]), elegida(filas_[1]), elegida(filas_[2]), elegida(filas_[3])},
        {sesion().DigitosCuenta, sesion().DigitosSubcuenta, sesion().MascaraImporte}, avance);
  });
  descargar();
}
