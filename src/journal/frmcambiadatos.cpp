#include "journal/frmcambiadatos.h"

#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/fallo.h"
#include "ui_frmcambiadatos.h"

FrmCambiadatos::FrmCambiadatos(Contexto& contexto)
    : Formulario(contexto), ui(std::make_unique<Ui::FrmCambiadatos>()) {
  ui->setupUi(this);
  ui->TxtCampo->addItems({"NAsiento", "Fecha", "Subcuenta", "Descripcion", "Importe"});
  fecha(ui->TxtFechaDesde);
  fecha(ui->TxtFechaHasta);
  // What is told under a field takes the room that there is.
  for (QLabel* leido : {ui->LblLeidoLoc, ui->LblLeidoCam, ui->LblLeidoDesde, ui->LblLeidoHasta})
    leido->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  ui->LblLeidoHasta->setMinimumWidth(
      fontMetrics().horizontalAdvance("se leerá 30 septiembre 2024 "));
  alSalir(ui->TxtDatoLoc, [this] { normaliza(ui->TxtDatoLoc); });
  alSalir(ui->TxtDatoCam, [this] { normaliza(ui->TxtDatoCam); });
  alElegir(ui->TxtCampo, [this](int) { ensenaLectura(); });
  for (QLineEdit* campo : {ui->TxtDatoLoc, ui->TxtDatoCam, ui->TxtFechaDesde, ui->TxtFechaHasta})
    alCambiar(campo, [this] { ensenaLectura(); });
  alPulsar(ui->ChkEliminarAsientos, [this] { ChkEliminarAsientos_Click(); });
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdCancelar, [this] { descargar(); });
}

FrmCambiadatos::~FrmCambiadatos() = default;

void FrmCambiadatos::Form_Load() {
  const QString ano = QString::number(sesion().AnoActual);
  ui->TxtFechaDesde->setText("01/01/" + ano);
  ui->TxtFechaHasta->setText("31/12/" + ano);
}

void FrmCambiadatos::ChkEliminarAsientos_Click() {
  const bool eliminar = ui->ChkEliminarAsientos->isChecked();
  if (eliminar) ui->TxtDatoCam->clear();
  ui->TxtDatoCam->setEnabled(!eliminar);
}

void FrmCambiadatos::normaliza(QLineEdit* campo) {
  switch (static_cast<CampoCambio>(ui->TxtCampo->currentIndex())) {
    case CampoCambio::Fecha:
      campo->setText(NormalizaFecha(campo->text(), sesion().AnoActual, ctx.reloj->hoy()));
      break;
    case CampoCambio::Subcuenta:
      campo->setText(ExpandeCodigo(campo->text(), sesion().DigitosSubcuenta));
      break;
    case CampoCambio::Importe:
      if (campo == ui->TxtDatoCam) compruebaNuevo();
      break;
    default:
      break;
  }
}

// What is no number is told beside the field.
void FrmCambiadatos::compruebaNuevo() {
  double importe = 0;
  ignorando([&] { importe = importeNuevo(ui->TxtDatoCam->text()); });
  exigeImporte(*this, *ui->TxtDatoCam, importe);
}

CambioMasivo FrmCambiadatos::cambio() const {
  CambioMasivo cambio;
  cambio.campo = static_cast<CampoCambio>(ui->TxtCampo->currentIndex());
  cambio.localizar = ui->TxtDatoLoc->text();
  cambio.cambiar = ui->TxtDatoCam->text();
  cambio.fechaDesde = ui->TxtFechaDesde->text();
  cambio.fechaHasta = ui->TxtFechaHasta->text();
  cambio.eliminar = ui->ChkEliminarAsientos->isChecked();
  return cambio;
}

void FrmCambiadatos::ensenaLectura() {
  const LecturaDeCambio lectura = lecturaDe(cambio(), sesion().MascaraImporte, sesion().AnoActual);
  ui->LblLeidoLoc->setText(lectura.localizar);
  ui->LblLeidoCam->setText(lectura.cambiar);
  ui->LblLeidoDesde->setText(lectura.desde);
  ui->LblLeidoHasta->setText(lectura.hasta);
}

void FrmCambiadatos::CmdAceptar_Click() {
  const CambioMasivo cambio = this->cambio();
  if (cambio.eliminar && cambio.campo == CampoCambio::NAsiento)
    return mensaje("No se puede eliminar asientos a la vez que localiza por ellos",
                   "Ejecución anulada");
  try {
    const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
    trabajaEnDiario(ctx, *ui->Bar,
                    [&](const Avance& avance) { cambiaDatos(*empresa, cambio, avance); });
  } catch (const ErrorEjecucion& e) {
    ui->Bar->hide();
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
