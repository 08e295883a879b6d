#include "journal/frmcambiadatos.h"

#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/fallo.h"
#include "ui_frmcambiadatos.h"

FrmCambiadatos::FrmCambiadatos(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCambiadatos>()) {
  ui_->setupUi(this);
  ui_->TxtCampo->addItems({"NAsiento", "Fecha", "Subcuenta", "Descripcion", "Importe"});
  fecha(ui_->TxtFechaDesde);
  fecha(ui_->TxtFechaHasta);
  // What is told under a field takes the room that there is.
  for (QLabel* leido : {ui_->LblLeidoLoc, ui_->LblLeidoCam, ui_->LblLeidoDesde, ui_->LblLeidoHasta})
    leido->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  for (QLabel* leida : {ui_->LblLeidoDesde, ui_->LblLeidoHasta})
    leida->setMinimumWidth(fontMetrics().horizontalAdvance("se leerá 30 septiembre 2024 "));
  alSalir(ui_->TxtDatoLoc, [this] { normaliza(ui_->TxtDatoLoc); });
  alSalir(ui_->TxtDatoCam, [this] { normaliza(ui_->TxtDatoCam); });
  alElegir(ui_->TxtCampo, [this](int) { ensenaLectura(); });
  for (QLineEdit* campo :
       {ui_->TxtDatoLoc, ui_->TxtDatoCam, ui_->TxtFechaDesde, ui_->TxtFechaHasta})
    alCambiar(campo, [this] { ensenaLectura(); });
  alPulsar(ui_->ChkEliminarAsientos, [this] { ChkEliminarAsientos_Click(); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmCambiadatos::~FrmCambiadatos() = default;

void FrmCambiadatos::Form_Load() {
  const QString ano = QString::number(sesion().AnoActual);
  ui_->TxtFechaDesde->setText("01/01/" + ano);
  ui_->TxtFechaHasta->setText("31/12/" + ano);
}

void FrmCambiadatos::ChkEliminarAsientos_Click() {
  const bool eliminar = ui_->ChkEliminarAsientos->isChecked();
  if (eliminar) ui_->TxtDatoCam->clear();
  ui_->TxtDatoCam->setEnabled(!eliminar);
}

void FrmCambiadatos::normaliza(QLineEdit* campo) {
  switch (static_cast<CampoCambio>(ui_->TxtCampo->currentIndex())) {
    case CampoCambio::Fecha:
      campo->setText(NormalizaFecha(campo->text(), sesion().AnoActual, ctx.reloj->hoy()));
      break;
    case CampoCambio::Subcuenta:
      campo->setText(ExpandeCodigo(campo->text(), sesion().DigitosSubcuenta));
      break;
    case CampoCambio::Importe:
      if (campo == ui_->TxtDatoCam) compruebaNuevo();
      break;
    default:
      break;
  }
}

// What is no number is told beside the field.
void FrmCambiadatos::compruebaNuevo() {
  double importe = 0;
  ignorando([&] { importe = importeNuevo(ui_->TxtDatoCam->text()); });
  exigeImporte(*this, *ui_->TxtDatoCam, importe);
}

CambioMasivo FrmCambiadatos::cambio() const {
  CambioMasivo cambio;
  cambio.campo = static_cast<CampoCambio>(ui_->TxtCampo->currentIndex());
  cambio.localizar = ui_->TxtDatoLoc->text();
  cambio.cambiar = ui_->TxtDatoCam->text();
  cambio.fechaDesde = ui_->TxtFechaDesde->text();
  cambio.fechaHasta = ui_->TxtFechaHasta->text();
  cambio.eliminar = ui_->ChkEliminarAsientos->isChecked();
  return cambio;
}

void FrmCambiadatos::ensenaLectura() {
  const LecturaDeCambio lectura = lecturaDe(cambio(), sesion().MascaraImporte, sesion().AnoActual);
  ui_->LblLeidoLoc->setText(lectura.localizar);
  ui_->LblLeidoCam->setText(lectura.cambiar);
  ui_->LblLeidoDesde->setText(lectura.desde);
  ui_->LblLeidoHasta->setText(lectura.hasta);
}

void FrmCambiadatos::CmdAceptar_Click() {
  const CambioMasivo cambio = this->cambio();
  if (cambio.eliminar && cambio.campo == CampoCambio::NAsiento)
    return mensaje("No se puede eliminar asientos a la vez que localiza por ellos",
                   "Ejecución anulada");
  try {
    const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
    trabajaEnDiario(ctx, *ui_->Bar,
                    [&](const Avance& avance) { cambiaDatos(*empresa, cambio, avance); });
  } catch (const ErrorEjecucion& e) {
    ui_->Bar->hide();
    return explica(e);
  }
  descargar();
}

void FrmCambiadatos::explica(const ErrorEjecucion& error) {
  switch (error.numero()) {
    case err::kSinRegistroActivo:
      return mensaje("No existe ningun apunte entre los límites seleccionados", "Error");
    case err::kErrorDeSintaxis:
      return mensaje("Una de las casillas no la ha rellenado correctamente", "Error");
    case err::kConversionDeDatos:
      return mensaje("El dato a convertir en la casilla de dato a cambiar, no es correcto",
                     "Error");
    default:
      return avisa(ctx, this, {error, "CmdAceptar_Click - FrmCambiadatos"}, error.descripcion(),
                   "Error");
  }
}
