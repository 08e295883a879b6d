#include <algorithm>

#include "accounts/widgets/subcuentatecleada.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "journal/apunte.h"
#include "journal/frmmenu.h"
#include "toolkit/registro.h"
#include "ui_frmmenu.h"

namespace {

constexpr QChar kDebe = u'D';
constexpr QChar kHaber = u'H';

// Codes of the dialogs that the entry line opens.
constexpr int kAlta = 1;
constexpr int kCalendarioDelDiario = 20;

constexpr int kTextoDeConcepto = 1;

}  // namespace

void FrmMenu::conectaLinea() {
  soloNumero(ui->TxtAsiento);
  alTeclear(ui->TxtAsiento, [this](Tecla& t) { TxtAsiento_KeyPress(t); });
  alSalir(ui->TxtAsiento, [this] { TxtAsiento_LostFocus(); });
  alSalir(ui->TxtFecha, [this] { TxtFecha_LostFocus(); });
  alCambiar(ui->TxtSubcuenta, [this] { TxtSubcuenta_Change(); });
  alSalir(ui->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  sinIntro(ui->TxtNombreCuenta);
  alTeclear(ui->TxtNombreCuenta, [this](Tecla& t) { TxtNombreCuenta_KeyPress(t); });
  alSalir(ui->TxtNombreCuenta, [this] { TxtNombreCuenta_LostFocus(); });
  alTeclear(ui->TxtConcepto, [this](Tecla& t) { TxtConcepto_KeyPress(t); });
  sinIntro(ui->TxtDebeHaber);
  teclaDecimal(ui->TxtDebeHaber);
  alEntrar(ui->TxtDebeHaber, [this] { TxtDebeHaber_GotFocus(); });
  alTeclear(ui->TxtDebeHaber, [this](Tecla& t) { TxtDebeHaber_KeyPress(t); });

  alPulsar(ui->CmdLinDebe, [this] { graba(kDebe); });
  alPulsar(ui->CmdLinHaber, [this] { graba(kHaber); });
  alPulsar(ui->CmdLinAsiento, [this] { CmdLinAsiento_Click(); });
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
  ui->TxtAsiento->setText(QString::number(tomaAsiento(DtaEmpresaActual_)));
  ui->TxtAsiento->selectAll();
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
  ofreceAsientoDeIVA(sesion().CuentaIVA1, QStringLiteral("Soportado"), kIVASoportado);
  ofreceAsientoDeIVA(sesion().CuentaIVA2, QStringLiteral("Repercutido"), kIVARepercutido);
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
    for (CmdPrimero_Click(); !DtaDiarioLista_.Eof(); DtaDiarioLista_.MoveNext())
      DtaDiarioLista_.Delete();
  }
  mostrar(QStringLiteral("FrmIVASR"), codigoLlamada, asiento);
  refrescaDiario();
}

// --- date ---------------------------------------------------------------------------------------

void FrmMenu::TxtFecha_LostFocus() {
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
  const QString limite = sesion().FechaNoModificar;
  if (EsFecha(limite) && ui->TxtFecha->text() < limite) {
    mensaje(QStringLiteral("Usted no puede modificar ningun apunte anterior a la fecha ") + limite,
            QStringLiteral("Error"));
    enfocar(ui->TxtSubcuenta);
  }
}

void FrmMenu::CmdLinFecha_Click() {
  mostrar(QStringLiteral("FrmCalendario"), kCalendarioDelDiario);
  enfocar(ui->TxtFecha);
}

// --- subcuenta ----------------------------------------------------------------------------------

void FrmMenu::TxtSubcuenta_Change() {
  const int largo = static_cast<int>(ui->TxtSubcuenta->text().size());
  if (largo == 0 || largo != sesion().DigitosSubcuenta) return;
  ignorando([this] { buscaSubcuenta(); });
}

// Shows the name and the totals of the code in the field; 3021 if there is no such subcuenta.
void FrmMenu::buscaSubcuenta() {
  ui->TxtNombreCuenta->clear();
  ui->TxtNombreCuenta->setText(nombreDeSubcuenta(*ui->TxtSubcuenta, DtaSubcuenta_, sesion()));
  ACuenta();
}

void FrmMenu::TxtSubcuenta_LostFocus() {
  totales_.ponerCero(PanelTotales::Cuenta, sesion().MascaraImporte);
  if (ui->TxtSubcuenta->text().isEmpty()) return;
  try {
    buscaSubcuenta();
  } catch (const ErrorEjecucion& fallo) {
    if (fallo.numero() == err::kSinRegistroActivo) {
      ofreceAlta(ui->TxtSubcuenta->text());
    } else {
      RegistraError(ctx.carpetaPrograma, fallo.numero(), fallo.descripcion(),
                    QStringLiteral("TxtSubcuenta_LostFocus - FrmMenu"));
    }
  }
  sesion().ValorElegido.clear();
}

// A whole code that isn't in the plan is new or mistyped; anything else is a name to look for.
void FrmMenu::ofreceAlta(const QString& codigo) {
  const bool entero = codigo.size() == sesion().DigitosSubcuenta && EsNumerico(codigo);
  if (entero &&
      pregunta(QStringLiteral(
                   "El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? "),
               QStringLiteral("Error")) &&
      mostrar(QStringLiteral("FrmSubCuentas"), kAlta, codigo)) {
    ignorando([this] { buscaSubcuenta(); });  // given up, or created under another code
    return;
  }
  mostrar(QStringLiteral("FrmVisualizaPlan"), 0, codigo);
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
    ignorando([this] { buscaSubcuenta(); });  // its name is shown again
    return;
  }
  DtaSubcuenta_.Edit();
  DtaSubcuenta_.Fields(QStringLiteral("Descripcion")) = ui->TxtNombreCuenta->text();
  DtaSubcuenta_.Update();
}

// --- concept ------------------------------------------------------------------------------------

// Enter turns a code into its text and stays, so that the text can be completed; on a text it moves
// on.
void FrmMenu::TxtConcepto_KeyPress(Tecla& tecla) {
  const QString texto = ui->TxtConcepto->texto();
  if (!tecla.esIntro() || texto.isEmpty() || !texto.at(0).isDigit()) return;
  tecla.tragar();
  try {
    DtaConceptos_.FindFirst(QStringLiteral("NConcepto = '%1'").arg(texto));
    if (DtaConceptos_.Recordset().NoMatch()) throw ErrorEjecucion(err::kNuloNoValido);
    ui->TxtConcepto->setEditText(DtaConceptos_.Fields(kTextoDeConcepto).text());
    ui->TxtConcepto->lineEdit()->end(false);
  } catch (const ErrorEjecucion& fallo) {
    if (fallo.numero() == err::kNuloNoValido) {
      mensaje(QStringLiteral("El código del concepto escrito no existe intente con otro"),
              QStringLiteral("Error"));
      ui->TxtConcepto->setEditText({});
    } else {
      RegistraError(ctx.carpetaPrograma, fallo.numero(), fallo.descripcion(),
                    QStringLiteral("TxtConcepto_KeyPress - FrmMenu"));
    }
  }
}

void FrmMenu::CmdLinConceptos_Click() {
  enfocar(ui->TxtConcepto);
  if (mostrar(QStringLiteral("FrmConceptos")) && DtaConceptos_.isOpen()) DtaConceptos_.Refresh();
}

// --- amount and posting -------------------------------------------------------------------------

// Offers what squares the asiento, so that its last line needs one key only; the side is the key's.
void FrmMenu::TxtDebeHaber_GotFocus() {
  QString importe = totales_.descuadre(PanelTotales::Asiento);
  if (importe.startsWith(u'-')) importe.remove(0, 1);
  ui->TxtDebeHaber->setText(importe);
  ui->TxtDebeHaber->selectAll();
}

void FrmMenu::TxtDebeHaber_KeyPress(Tecla& tecla) {
  const QString texto = ui->TxtDebeHaber->text();
  const bool vacio = texto.isEmpty();
  if (vacio) {
    ui->TxtDebeHaber->setText(cero());
    ui->TxtDebeHaber->selectAll();
  }
  if (tecla.esIntro() || tecla.texto == u'+') {
    tecla.tragar();
    if (vacio) return;
    // The line is posted with the focus where the next one starts.
    ui->TxtSubcuenta->setFocus();
    graba(tecla.esIntro() ? kDebe : kHaber);
    return;
  }
  if (tecla.esRetroceso() || !tecla.texto.isPrint()) return;
  // The last character is left out: on entry it is the blank of the mask, under the selection.
  // Under some masks a zero is shown as nothing, and there is none.
  const QString ahora = ui->TxtDebeHaber->text();
  const QString prueba = u'0' + ahora.left(ahora.size() - 1) + tecla.texto;
  if (tecla.texto == u'-' || !EsNumerico(prueba)) {
    tecla.tragar();
    pitido();
  }
}

bool FrmMenu::faltanDatos() const {
  const QStringList campos = {ui->TxtAsiento->text(), ui->TxtFecha->text(),
                              ui->TxtSubcuenta->text(), ui->TxtConcepto->texto(),
                              ui->TxtDebeHaber->text()};
  if (std::ranges::any_of(campos, &QString::isEmpty)) return true;
  return EsNumerico(ui->TxtDebeHaber->text()) && Variant(ui->TxtDebeHaber->text()).number() == 0;
}

void FrmMenu::graba(QChar lado) {
  if (faltanDatos()) {
    mensaje(lado == kDebe ? QStringLiteral("Le faltan datos para entrar la partida al debe")
                          : QStringLiteral("Le faltan datos para entrar la partida al haber"),
            QStringLiteral("Error"));
    return;
  }
  Apunte apunte;
  apunte.NAsiento = ui->TxtAsiento->text();
  apunte.Fecha = ui->TxtFecha->text();
  apunte.Subcuenta = ui->TxtSubcuenta->text();
  apunte.Descripcion = ui->TxtConcepto->texto();
  apunte.DH = QString(lado);
  apunte.Importe = (lado == kHaber ? QStringLiteral("-") : QString()) + ui->TxtDebeHaber->text();
  grabaApunte(DtaDiarioLista_, DtaEmpresaActual_, apunte);
  if (sesion().LimpiarAsiento) {
    muestraAsiento(ui->TxtAsiento->text());
  } else {
    DtaDiarioLista_.MoveLast();
  }
  ATotal();
  ACuenta();
  AAsiento();
}
