#include "journal/frmpartida.h"

#include <QLineEdit>

#include "common/formato.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "journal/lineatecleada.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/lineaapunte.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmpartida.h"

FrmPartida::FrmPartida(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmPartida>()),
      DtaDiarioLista_(contexto.motor),
      DtaConceptos_(contexto.motor) {
  ui_->setupUi(this);
  subcuenta_ = std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{.codigo = *ui_->TxtSubcuenta,
                               .nombre = *ui_->TxtNombreCuenta,
                               .accion = accion::kPartida,
                               .alCompletarse = true,
                               .ofreceAlta = true,
                               .puedeEstarVacia = true,
                               .vuelve = false,
                               // Kept: the log names the entry line, whichever form it stands in.
                               .lugarDeErrores = "TxtSubcuenta_LostFocus - FrmMenu"});
  ui_->TxtConcepto->enlazar(DtaConceptos_, "Descripcion", "NConcepto");
  soloNumero(ui_->TxtAsiento);
  alTeclear(ui_->TxtAsiento, [this](Tecla& tecla) { TxtAsiento_KeyPress(tecla); });
  alSalir(ui_->TxtFecha, [this] { TxtFecha_LostFocus(); });
  alSalir(ui_->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  conectaConcepto(*this, *ui_->TxtConcepto, DtaConceptos_);
  conectaImporteSinSigno(*this, ctx, *ui_->TxtDebeHaber);
  alSalir(ui_->TxtDebeHaber,
          [this] { exigeImporte(*this, *ui_->TxtDebeHaber, importeDe(*ui_->TxtDebeHaber, ctx)); });
  alPulsar(ui_->CmdLinFecha,
           [this] { eligeFecha(*this, *ui_->TxtFecha, llamada::kFechaDePartida); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmPartida::~FrmPartida() = default;

void FrmPartida::Form_Load() {
  subcuenta_->ajustaDigitos();
  DtaConceptos_.bind(sesion().rutaEmpresa(), "Select * from Conceptos");
}

void FrmPartida::Form_Activate() {
  const DataControl& diario = ctx.principal->DtaDiarioLista();
  linea_ = diario.Fields("NLinea").display();
  ui_->TxtSubcuenta->setText(diario.Fields("Subcuenta").display());
  FechaVieja = Format(diario.Fields("Fecha").Value(), "dd/mm/yyyy");
  ui_->TxtFecha->setText(FechaVieja);
  AsientoViejo = diario.Fields("NAsiento").display();
  ui_->TxtAsiento->setText(AsientoViejo);
  ui_->TxtConcepto->ponerTexto(diario.Fields("Descripcion").display());
  DHViejo = diario.Fields("DH").display();
  ui_->TxtDH->setText(DHViejo);
  // The sign of a haber line is cut off as text.
  const QString importe = diario.Fields("Importe").display();
  ui_->TxtDebeHaber->setText(
      Format(DHViejo == "H" ? importe.mid(1) : importe, sesion().MascaraImporte));
  TxtSubcuenta_LostFocus();
}

// As in the entry line: "*" is the next number.
void FrmPartida::TxtAsiento_KeyPress(Tecla& tecla) {
  if (tecla.texto != u'*') return;
  tecla.tragar();
  ui_->TxtAsiento->setText(QString::number(tomaAsiento(ctx.principal->DtaEmpresaActual())));
  ui_->TxtAsiento->selectAll();
}

// There is no test of the year here; a date before the limit becomes today.
void FrmPartida::TxtFecha_LostFocus() {
  const QDate hoy = ctx.reloj->hoy();
  ui_->TxtFecha->setText(NormalizaFecha(ui_->TxtFecha->text(), sesion().AnoActual, hoy));
  if (avisaDeFechaLimite(*this, ctx, ui_->TxtFecha->text()))
    ui_->TxtFecha->setText(Format(hoy, "dd/mm/yyyy"));
}

void FrmPartida::TxtSubcuenta_LostFocus() {
  if (!subcuenta_->deja()) return;
  // The main window's panel follows the subcuenta of the dialog.
  ctx.principal->TxtSubcuenta().setText(ui_->TxtSubcuenta->text());
  ctx.principal->TxtSubcuenta_LostFocus();
}

void FrmPartida::CmdAceptar_Click() {
  guardaEn(ui_->TxtDH->text() == "D" ? "D" : "H");
}

namespace {

struct Lado {
  const char* signo;
  const char* otro;
  const char* cambio;
  const char* faltan;
};

const Lado kDebe = {"D", "H",
                    "Atención su partida anterior era en el 'HABER' , ¿Desea cambiarlo al 'DEBE'?",
                    "Le faltan datos para entrar la partida al debe"};
const Lado kHaber = {"H", "D",
                     "Atención su partida anterior era en el 'DEBE' , ¿Desea cambiarlo al 'HABER'?",
                     "Le faltan datos para entrar la partida al haber"};

}  // namespace

void FrmPartida::guardaEn(const QString& signo) {
  const Lado& lado = signo == "D" ? kDebe : kHaber;
  if (DHViejo == lado.otro && !pregunta(lado.cambio, "Atención")) return guardaEn(lado.otro);
  const LineaTecleada linea{.asiento = ui_->TxtAsiento->text(),
                            .fecha = ui_->TxtFecha->text(),
                            .subcuenta = ui_->TxtSubcuenta->text(),
                            .concepto = ui_->TxtConcepto->texto(),
                            .importe = ui_->TxtDebeHaber->text()};
  const QString mascara = sesion().MascaraImporte;
  if (faltanDatos(linea, mascara)) return mensaje(lado.faltan, "Error");

  Principal& menu = *ctx.principal;
  DataControl& diario = menu.DtaDiarioLista();
  // Accepted again after it was given up, it is still the line that it was opened for.
  if (diario.Fields("NLinea").display() != linea_) {
    diario.FindFirst("NLinea = " + linea_);
    if (diario.Recordset().NoMatch()) throw ErrorEjecucion(err::kRegistroEliminado);
  }
  cambiaApunte(diario, apunteEn(signo.at(0), linea, mascara));
  diario.MoveLast();
  menu.ATotal();
  menu.ACuenta();
  menu.AAsiento();
  Comprueba();
  ctx.cajas->guardaPendiente(this);  // given up, what was typed still stands
  descargar();
}

// The date goes first: lines that only then come under the new number keep their old date.
void FrmPartida::Comprueba() {
  const QString fecha = ui_->TxtFecha->text();
  const QString asiento = ui_->TxtAsiento->text();
  if (fecha != FechaVieja &&
      pregunta("La fecha ha sido modificada, ¿desea que Librano modifique la fecha en cada partida "
               "del mismo asiento?",
               "Atención"))
    cambiaEnAsiento(asiento, "Fecha", fecha);
  if (asiento != AsientoViejo &&
      pregunta("El asiento ha sido modificado, ¿desea que Librano modifique el número de asiento "
               "en cada partida del mismo asiento?",
               "Atención"))
    cambiaEnAsiento(AsientoViejo, "NAsiento", asiento);
}

void FrmPartida::cambiaEnAsiento(const QString& asiento, const QString& campo,
                                 const QString& valor) {
  DtaDiarioLista_.bind(sesion().rutaEmpresa(),
                       "Select * from SqlDiarioPrincipalBlanco where nasiento=" + asiento);
  for (; !DtaDiarioLista_.Eof(); DtaDiarioLista_.MoveNext()) {
    DtaDiarioLista_.Edit();
    DtaDiarioLista_.Fields(campo) = valor;
    DtaDiarioLista_.Update();
  }
}
