#include "transfer/frmimportarcontaplus.h"

#include "common/rutas.h"
#include "engine/dbengine.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/principal.h"
#include "transfer/importarcontaplus.h"
#include "ui_frmimportarcontaplus.h"

FrmImportarContaplus::FrmImportarContaplus(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmImportarContaplus>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdLocalizaContaplus, [this] { CmdLocalizaContaplus_Click(); });
  alSalir(ui_->TxtDirectorioContaplus, [this] { TxtDirectorioContaplus_LostFocus(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmImportarContaplus::~FrmImportarContaplus() = default;

void FrmImportarContaplus::Form_Load() {
  ui_->LblDestino->setText(sesion().EmpresaActual + " (" + QString::number(sesion().AnoActual) +
                           ")");
}

void FrmImportarContaplus::CmdLocalizaContaplus_Click() {
  const auto elegido = ctx.cajas->abrirFichero(this, "Localizar Contaplw.exe",
                                               rutaSistema(ui_->TxtDirectorioContaplus->text()),
                                               "Contaplus (*.exe *.EXE);;Todos los ficheros (*)");
  if (!elegido) return;
  ui_->TxtDirectorioContaplus->setText(rutaPrograma(*elegido));
  ConectarEmpresas();
}

// A path typed by hand is looked at as one that was picked.
void FrmImportarContaplus::TxtDirectorioContaplus_LostFocus() {
  const QString ruta = ui_->TxtDirectorioContaplus->text();
  if (ruta != conectado_ && !ruta.isEmpty()) ConectarEmpresas();
}

void FrmImportarContaplus::ConectarEmpresas() {
  ui_->TxtEmpresa->clear();
  try {
    conectado_ = ui_->TxtDirectorioContaplus->text();
    ui_->TxtEmpresa->addItems(contaplus::empresas(conectado_));
    ui_->TxtEmpresa->setCurrentIndex(-1);
  } catch (const ErrorEjecucion&) {
    conectado_.clear();
    mensaje("El directorio de contaplus no es el correcto", "Error");
    ui_->TxtDirectorioContaplus->clear();
  }
}

void FrmImportarContaplus::CmdAceptar_Click() {
  if (ui_->TxtDirectorioContaplus->text().isEmpty())
    return mensaje("Especifique un directorio de contaplus", "Error");
  if (ui_->TxtEmpresa->currentText().isEmpty())
    return mensaje("Especifique una empresa de contaplus", "Error");
  importa();
  mensaje("Proceso terminado con exito", "Fín");
  descargar();
}

void FrmImportarContaplus::importa() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const QString carpeta =
      contaplus::carpeta(ui_->TxtDirectorioContaplus->text(), ui_->TxtEmpresa->currentText());
  trabajaEnDiario(ctx, ctx.principal->Bar(), [&](const Avance& avance) {
    if (ui_->ChkPlan->isChecked())
      contaplus::importaPlan(*empresa, carpeta, sesion().DigitosCuenta, avance);
    if (ui_->ChkDiario->isChecked()) contaplus::importaDiario(*empresa, carpeta, avance);
    if (ui_->ChkIva->isChecked()) contaplus::importaIVA(*empresa, carpeta, avance);
  });
}
