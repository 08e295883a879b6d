#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "journal/frmmenu.h"
#include "journal/lineatecleada.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/lineaapunte.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmmenu.h"

namespace {

constexpr QChar kDebe = u'D';
constexpr QChar kHaber = u'H';

}  // namespace

void FrmMenu::conectaLinea() {
  soloNumero(ui_->TxtAsiento);
  alTeclear(ui_->TxtAsiento, [this](Tecla& t) { TxtAsiento_KeyPress(t); });
  alSalir(ui_->TxtAsiento, [this] { TxtAsiento_LostFocus(); });
  alCambiar(ui_->TxtFecha, [this] { fechaSinComprobar_ = true; });
  alSalir(ui_->TxtFecha, [this] { TxtFecha_LostFocus(); });
  subcuenta_ = std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{.codigo = *ui_->TxtSubcuenta,
                               .nombre = *ui_->TxtNombreCuenta,
                               .alCompletarse = true,
                               .ofreceAlta = true,
                               .puedeEstarVacia = true,
                               .vuelve = false,
                               .encontrada = [this] { ACuenta(); },
                               .lugarDeErrores = "TxtSubcuenta_LostFocus - FrmMenu"});
  alSalir(ui_->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  sinIntro(ui_->TxtNombreCuenta);
  alTeclear(ui_->TxtNombreCuenta, [this](Tecla& t) { TxtNombreCuenta_KeyPress(t); });
  alSalir(ui_->TxtNombreCuenta, [this] { TxtNombreCuenta_LostFocus(); });
  conectaConcepto(*this, *ui_->TxtConcepto, DtaConceptos_);
  sinIntro(ui_->TxtDebeHaber);
  alEntrar(ui_->TxtDebeHaber, [this] { TxtDebeHaber_GotFocus(); });
  alTeclear(ui_->TxtDebeHaber, [this](Tecla& t) { TxtDebeHaber_KeyPress(t); });
  conectaImporteSinSigno(*this, ctx, *ui_->TxtDebeHaber);

  alPulsar(ui_->CmdLinDebe, [this] { grabaConElBoton(kDebe); });
  alPulsar(ui_->CmdLinHaber, [this] { grabaConElBoton(kHaber); });
  alPulsar(ui_->CmdLinAsiento, [this] { tomaAsientoConElBoton(); });
  alPulsar(ui_->CmdLinFecha, [this] { CmdLinFecha_Click(); });
  alPulsar(ui_->CmdLinSubcuenta, [this] { CmdLinSubcuenta_Click(); });
  alPulsar(ui_->CmdLinConceptos, [this] { CmdLinConceptos_Click(); });

  const QList<QWidget*> campos = {ui_->TxtAsiento, ui_->TxtFecha, ui_->TxtSubcuenta,
                                  ui_->TxtConcepto, ui_->TxtDebeHaber};
  for (QWidget* campo : campos) aceptaArrastre(campo);
}

// --- asiento ------------------------------------------------------------------------------------

void FrmMenu::TxtAsiento_KeyPress(Tecla& tecla) {
  if (tecla.texto != u'*') return;
  tecla.tragar();
  CmdLinAsiento_Click();
}

// A number is used up the moment it is shown, whether or not a line is ever typed under it: so two
// stations never show the same one.
void FrmMenu::CmdLinAsiento_Click() {
  if (!hayEmpresa()) return;
  ui_->TxtAsiento->setText(QString::number(tomaAsiento(DtaEmpresaActual_)));
  ui_->TxtAsiento->selectAll();
}

// By the mouse the typing goes on with the date: left on the button, the next Enter would take
// another number, and so might leaving the number's own field.
void FrmMenu::tomaAsientoConElBoton() {
  CmdLinAsiento_Click();
  if (sesion().LimpiarAsiento) ignorando([this] { muestraAsiento(ui_->TxtAsiento->text()); });
  AAsiento();
  enfocar(ui_->TxtFecha);
}

// Here one asiento ends and another begins.
void FrmMenu::TxtAsiento_LostFocus() {
  if (ui_->TxtAsiento->text().isEmpty()) CmdLinAsiento_Click();
  if (sesion().LimpiarAsiento) {
    ignorando([this] { muestraAsiento(ui_->TxtAsiento->text()); });
  }
  AAsiento();
  // A square asiento is done with; one out of balance keeps its number until it is finished.
  if (sesion().ControlarAsiento &&
      totales_.cuadra(PanelTotales::Asiento, sesion().MascaraImporte)) {
    CmdLinAsiento_Click();
  }
  AAsiento();
  ofreceAsientoDeIVA(sesion().CuentaIVA1, QStringLiteral("Soportado"), llamada::kIVASoportado);
  ofreceAsientoDeIVA(sesion().CuentaIVA2, QStringLiteral("Repercutido"), llamada::kIVARepercutido);
}

void FrmMenu::ofreceAsientoDeIVA(const QString& codigo, const QString& clase, int codigoLlamada) {
  if (codigo.isEmpty() || ui_->TxtSubcuenta->text() != codigo) return;
  const bool si = pregunta(QStringLiteral("La partida que introduce corresponde a un apunte de IVA "
                                          "¿desea crear un asiento de Iva %1 en este momento?")
                               .arg(clase),
                           QStringLiteral("IVA"));
  if (!si || !ctx.formularios->existe(QStringLiteral("FrmIVASR"))) return;
  const QString asiento = ui_->TxtAsiento->text();
  // The invoice writes its asiento whole, so the lines typed so far would stand twice. The first
  // asiento is the opening one: its lines are never taken for those of an invoice.
  if (!asiento.isEmpty() && asiento != u"1") {
    muestraAsiento(asiento);
    for (DtaDiarioLista_.Refresh(); !DtaDiarioLista_.Eof(); DtaDiarioLista_.MoveNext())
      DtaDiarioLista_.Delete();
  }
  mostrar(QStringLiteral("FrmIVASR"), codigoLlamada, asiento);
  muestraApuntesNuevos();
}

// --- date ---------------------------------------------------------------------------------------

void FrmMenu::TxtFecha_LostFocus() {
  if (!DtaEmpresaActual_.isOpen()) return;  // there is no year that it could miss
  const int ano = sesion().AnoActual;
  const QDate hoy = ctx.reloj->hoy();
  ui_->TxtFecha->setText(NormalizaFecha(ui_->TxtFecha->text(), ano, hoy));
  const QString delAno = QString::number(ano);
  if (ui_->TxtFecha->text().right(4) != delAno) {
    mensaje(QStringLiteral("La fecha introducida no es la del año actual"),
            QStringLiteral("Error"));
    ui_->TxtFecha->setText(NormalizaFecha(QStringLiteral("01/01/") + delAno, ano, hoy));
  }
  // A reminder only, and by text, day first: the line can still be posted. What stops changes
  // to older lines is the rule of the entries that change them.
  fechaSinComprobar_ = false;
  if (avisaDeFechaLimite(*this, ctx, ui_->TxtFecha->text())) enfocar(ui_->TxtSubcuenta);
}

// A date that was set and never left (today's, the calendar's) is looked at before a line is posted
// on it. False if it was of another year: what replaced it is for the bookkeeper to see first.
bool FrmMenu::compruebaFecha() {
  if (!fechaSinComprobar_ || ui_->TxtFecha->text().isEmpty()) return true;
  const QDate hoy = ctx.reloj->hoy();
  const QString completa = NormalizaFecha(ui_->TxtFecha->text(), sesion().AnoActual, hoy);
  TxtFecha_LostFocus();
  return ui_->TxtFecha->text() == completa;
}

void FrmMenu::CmdLinFecha_Click() {
  eligeFecha(*this, *ui_->TxtFecha, llamada::kFechaDelDiario);
}

// --- subcuenta ----------------------------------------------------------------------------------

void FrmMenu::TxtSubcuenta_LostFocus() {
  totales_.ponerCero(PanelTotales::Cuenta, sesion().MascaraImporte);
  subcuenta_->deja();
}

void FrmMenu::CmdLinSubcuenta_Click() {
  enfocar(ui_->TxtSubcuenta);
  mostrar(QStringLiteral("FrmVisualizaPlan"));
}

void FrmMenu::TxtNombreCuenta_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  ui_->TxtSubcuenta->setFocus();
}

void FrmMenu::TxtNombreCuenta_LostFocus() {
  if (ui_->TxtSubcuenta->text().size() != sesion().DigitosSubcuenta) return;
  // The title is that of the form's other questions about a subcuenta.
  if (!pregunta(QStringLiteral("¿Desea cambiar el nombre de la subcuenta?"),
                QStringLiteral("Eliminar"))) {
    ignorando([this] { subcuenta_->busca(); });  // its name is shown again
    return;
  }
  DataControl& fila = subcuenta_->fila();
  fila.Edit();
  fila.Fields(QStringLiteral("Descripcion")) = ui_->TxtNombreCuenta->text();
  fila.Update();
}

// --- concept ------------------------------------------------------------------------------------

void FrmMenu::CmdLinConceptos_Click() {
  enfocar(ui_->TxtConcepto);
  if (mostrar(QStringLiteral("FrmConceptos")) && DtaConceptos_.isOpen()) DtaConceptos_.Refresh();
}

// --- amount and posting -------------------------------------------------------------------------

// Offers what squares the asiento, so that its last line needs one key only; the side is the key's.
void FrmMenu::TxtDebeHaber_GotFocus() {
  QString importe = totales_.descuadre(PanelTotales::Asiento);
  const QString mascara = sesion().MascaraImporte;
  if (importe.startsWith(u'-')) {
    importe.remove(0, 1);
  } else if (const auto valor = ImporteDe(importe, mascara); valor && *valor < 0) {
    importe = Format(-*valor, mascara);  // a mask that shows a minus in another way
  }
  ui_->TxtDebeHaber->setText(importe);
  ui_->TxtDebeHaber->selectAll();
}

void FrmMenu::TxtDebeHaber_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro() && tecla.texto != u'+') return;
  tecla.tragar();
  if (ui_->TxtDebeHaber->text().isEmpty()) {
    // Nothing typed is no order to post: the zero is shown first.
    ui_->TxtDebeHaber->setText(cero());
    ui_->TxtDebeHaber->selectAll();
    return;
  }
  // The line is posted with the focus where the next one starts.
  ui_->TxtSubcuenta->setFocus();
  graba(tecla.esIntro() ? kDebe : kHaber);
}

void FrmMenu::grabaConElBoton(QChar lado) {
  ui_->TxtSubcuenta->setFocus();
  graba(lado);
}

void FrmMenu::graba(QChar lado) {
  if (!compruebaFecha()) return;
  const LineaTecleada linea{.asiento = ui_->TxtAsiento->text(),
                            .fecha = ui_->TxtFecha->text(),
                            .subcuenta = ui_->TxtSubcuenta->text(),
                            .concepto = ui_->TxtConcepto->texto(),
                            .importe = ui_->TxtDebeHaber->text()};
  const QString mascara = sesion().MascaraImporte;
  if (faltanDatos(linea, mascara)) {
    mensaje(lado == kDebe ? QStringLiteral("Le faltan datos para entrar la partida al debe")
                          : QStringLiteral("Le faltan datos para entrar la partida al haber"),
            QStringLiteral("Error"));
    return;
  }
  grabaApunte(DtaDiarioLista_, DtaEmpresaActual_, apunteEn(lado, linea, mascara));
  if (sesion().LimpiarAsiento) {
    muestraAsiento(ui_->TxtAsiento->text());
  } else {
    DtaDiarioLista_.MoveLast();
  }
  ATotal();
  ACuenta();
  AAsiento();
}
