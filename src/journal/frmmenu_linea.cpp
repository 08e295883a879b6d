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
  soloNumero(ui->TxtAsiento);
  alTeclear(ui->TxtAsiento, [this](Tecla& t) { TxtAsiento_KeyPress(t); });
  alSalir(ui->TxtAsiento, [this] { TxtAsiento_LostFocus(); });
  alCambiar(ui->TxtFecha, [this] { fechaSinComprobar_ = true; });
  alSalir(ui->TxtFecha, [this] { TxtFecha_LostFocus(); });
  subcuenta_ = std::make_unique<CampoSubcuenta>(
      *this, ctx,
      CampoSubcuenta::Opciones{.codigo = *ui->TxtSubcuenta,
                               .nombre = *ui->TxtNombreCuenta,
                               .alCompletarse = true,
                               .ofreceAlta = true,
                               .puedeEstarVacia = true,
                               .vuelve = false,
                               .encontrada = [this] { ACuenta(); },
                               .lugarDeErrores = "TxtSubcuenta_LostFocus - FrmMenu"});
  alSalir(ui->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  sinIntro(ui->TxtNombreCuenta);
  alTeclear(ui->TxtNombreCuenta, [this](Tecla& t) { TxtNombreCuenta_KeyPress(t); });
  alSalir(ui->TxtNombreCuenta, [this] { TxtNombreCuenta_LostFocus(); });
  conectaConcepto(*this, *ui->TxtConcepto, DtaConceptos_);
  sinIntro(ui->TxtDebeHaber);
  alEntrar(ui->TxtDebeHaber, [this] { TxtDebeHaber_GotFocus(); });
  alTeclear(ui->TxtDebeHaber, [this](Tecla& t) { TxtDebeHaber_KeyPress(t); });
  conectaImporteSinSigno(*this, ctx, *ui->TxtDebeHaber);

  alPulsar(ui->CmdLinDebe, [this] { grabaConElBoton(kDebe); });
  alPulsar(ui->CmdLinHaber, [this] { grabaConElBoton(kHaber); });
  alPulsar(ui->CmdLinAsiento, [this] { tomaAsientoConElBoton(); });
  alPulsar(ui->CmdLinFecha, [this] { CmdLinFecha_Click(); });
  alPulsar(ui->CmdLinSubcuenta, [this] { CmdLinSubcuenta_Click(); });
  alPulsar(ui->CmdLinConceptos, [this] { CmdLinConceptos_Click(); });

  const QList<QWidget*> campos = {ui->TxtAsiento, ui->TxtFecha, ui->TxtSubcuenta, ui->TxtConcepto,
                                  ui->TxtDebeHaber};
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
  ui->TxtAsiento->setText(QString::number(tomaAsiento(DtaEmpresaActual_)));
  ui->TxtAsiento->selectAll();
}

// By the mouse the typing goes on with the date: left on the button, the next Enter would take
// another number, and so might leaving the number's own field.
void FrmMenu::tomaAsientoConElBoton() {
  CmdLinAsiento_Click();
  if (sesion().LimpiarAsiento) ignorando([this] { muestraAsiento(ui->TxtAsiento->text()); });
  AAsiento();
  enfocar(ui->TxtFecha);
}

// Here one asiento ends and another begins.
void FrmMenu::TxtAsiento_LostFocus() {
  if (ui->TxtAsiento->text().isEmpty()) CmdLinAsiento_Click();
  if (sesion().LimpiarAsiento) {
    ignorando([this] { muestraAsiento(ui->TxtAsiento->text()); });
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
  if (codigo.isEmpty() || ui->TxtSubcuenta->text() != codigo) return;
  const bool si = pregunta(QStringLiteral("La partida que introduce corresponde a un apunte de IVA "
                                          "¿desea crear un asiento de Iva %1 en este momento?")
                               .arg(clase),
                           QStringLiteral("IVA"));
  if (!si || !ctx.formularios->existe(QStringLiteral("FrmIVASR"))) return;
  const QString asiento = ui->TxtAsiento->text();
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
  ui->TxtFecha->setText(NormalizaFecha(ui->TxtFecha->text(), ano, hoy));
  const QString delAno = QString::number(ano);
  if (ui->TxtFecha->text().right(4) != delAno) {
    mensaje(QStringLiteral("La fecha introducida no es la del año actual"),
            QStringLiteral("Error"));
    ui->TxtFecha->setText(NormalizaFecha(QStringLiteral("01/01/") + delAno, ano, hoy));
  }
  // A reminder only, and by text, day first: the line can still be posted. What stops changes
  // to older lines is the rule of the entries that change them.
  fechaSinComprobar_ = false;
  if (avisaDeFechaLimite(*this, ctx, ui->TxtFecha->text())) enfocar(ui->TxtSubcuenta);
}

// A date that was set and never left (today's, the calendar's) is looked at before a line is posted
// on it. False if it was of another year: what replaced it is for the bookkeeper to see first.
bool FrmMenu::compruebaFecha() {
  if (!fechaSinComprobar_ || ui->TxtFecha->text().isEmpty()) return true;
  const QDate hoy = ctx.reloj->hoy();
  const QString completa = NormalizaFecha(ui->TxtFecha->text(), sesion().AnoActual, hoy);
  TxtFecha_LostFocus();
  return ui->TxtFecha->text() == completa;
}

void FrmMenu::CmdLinFecha_Click() {
  eligeFecha(*this, *ui->TxtFecha, llamada::kFechaDelDiario);
}

// --- subcuenta ----------------------------------------------------------------------------------

void FrmMenu::TxtSubcuenta_LostFocus() {
  totales_.ponerCero(PanelTotales::Cuenta, sesion().MascaraImporte);
  subcuenta_->deja();
}

void FrmMenu::CmdLinSubcuenta_Click() {
  enfocar(ui->TxtSubcuenta);
  mostrar(QStringLiteral("FrmVisualizaPlan"));
}

void FrmMenu::TxtNombreCuenta_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  ui->TxtSubcuenta->setFocus();
}

void FrmMenu::TxtNombreCuenta_LostFocus() {
  if (ui->TxtSubcuenta->text().size() != sesion().DigitosSubcuenta) return;
  // The title is that of the form's other questions about a subcuenta.
  if (!pregunta(QStringLiteral("¿Desea cambiar el nombre de la subcuenta?"),
                QStringLiteral("Eliminar"))) {
    ignorando([this] { subcuenta_->busca(); });  // its name is shown again
    return;
  }
  DataControl& fila = subcuenta_->fila();
  fila.Edit();
  fila.Fields(QStringLiteral("Descripcion")) = ui->TxtNombreCuenta->text();
  fila.Update();
}

// --- concept ------------------------------------------------------------------------------------

void FrmMenu::CmdLinConceptos_Click() {
  enfocar(ui->TxtConcepto);
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
  ui->TxtDebeHaber->setText(importe);
  ui->TxtDebeHaber->selectAll();
}

void FrmMenu::TxtDebeHaber_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro() && tecla.texto != u'+') return;
  tecla.tragar();
  if (ui->TxtDebeHaber->text().isEmpty()) {
    // Nothing typed is no order to post: the zero is shown first.
    ui->TxtDebeHaber->setText(cero());
    ui->TxtDebeHaber->selectAll();
    return;
  }
  // The line is posted with the focus where the next one starts.
  ui->TxtSubcuenta->setFocus();
  graba(tecla.esIntro() ? kDebe : kHaber);
}

void FrmMenu::grabaConElBoton(QChar lado) {
  ui->TxtSubcuenta->setFocus();
  graba(lado);
}

void FrmMenu::graba(QChar lado) {
  if (!compruebaFecha()) return;
  const LineaTecleada linea{.asiento = ui->TxtAsiento->text(),
                            .fecha = ui->TxtFecha->text(),
                            .subcuenta = ui->TxtSubcuenta->text(),
                            .concepto = ui->TxtConcepto->texto(),
                            .importe = ui->TxtDebeHaber->text()};
  const QString mascara = sesion().MascaraImporte;
  if (faltanDatos(linea, mascara)) {
    mensaje(lado == kDebe ? QStringLiteral("Le faltan datos para entrar la partida al debe")
                          : QStringLiteral("Le faltan datos para entrar la partida al haber"),
            QStringLiteral("Error"));
    return;
  }
  grabaApunte(DtaDiarioLista_, DtaEmpresaActual_, apunteEn(lado, linea, mascara));
  if (sesion().LimpiarAsiento) {
    muestraAsiento(ui->TxtAsiento->text());
  } else {
    DtaDiarioLista_.MoveLast();
  }
  ATotal();
  ACuenta();
  AAsiento();
}
