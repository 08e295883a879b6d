#include "journal/frmpartida.h"

#include <QLineEdit>

#include "accounts/widgets/subcuentatecleada.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "journal/apunte.h"
#include "toolkit/principal.h"
#include "ui_frmpartida.h"

FrmPartida::FrmPartida(Contexto& contexto)
    : Formulario(contexto),
      ui(std::make_unique<Ui::FrmPartida>()),
      DtaDiarioLista(contexto.motor),
      DtaConceptos(contexto.motor),
      DtaSubcuentas(contexto.motor) {
  ui->setupUi(this);
  ui->TxtConcepto->enlazar(DtaConceptos, "Descripcion");
  ui->TxtConcepto->lineEdit()->setMaxLength(50);
  ui->TxtConcepto->setCompleter(nullptr);
  soloNumero(ui->TxtAsiento);
  alTeclear(ui->TxtAsiento, [this](Tecla& tecla) { TxtAsiento_KeyPress(tecla); });
  alSalir(ui->TxtFecha, [this] { TxtFecha_LostFocus(); });
  alCambiar(ui->TxtSubcuenta, [this] { TxtSubcuenta_Change(); });
  alSalir(ui->TxtSubcuenta, [this] { TxtSubcuenta_LostFocus(); });
  sinIntro(ui->TxtConcepto);
  alTeclear(ui->TxtConcepto, [this](Tecla& tecla) { TxtConcepto_KeyPress(tecla); });
  alTeclear(ui->TxtDebeHaber, [this](Tecla& tecla) { TxtDebeHaber_KeyPress(tecla); });
  teclaDecimal(ui->TxtDebeHaber);
  alPulsar(ui->CmdLinFecha, [this] { CmdLinFecha_Click(); });
  alPulsar(ui->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui->CmdSalir, [this] { descargar(); });
}

FrmPartida::~FrmPartida() = default;

void FrmPartida::Form_Load() {
  ui->TxtSubcuenta->setMaxLength(sesion().DigitosSubcuenta);
  DtaConceptos.bind(sesion().rutaEmpresa(), "Select * from Conceptos");
}

void FrmPartida::Form_Activate() {
  const DataControl& diario = ctx.principal->DtaDiarioLista();
  ui->TxtSubcuenta->setText(diario.Fields("Subcuenta").display());
  FechaVieja = Format(diario.Fields("Fecha").Value(), "dd/mm/yyyy");
  ui->TxtFecha->setText(FechaVieja);
  AsientoViejo = diario.Fields("NAsiento").display();
  ui->TxtAsiento->setText(AsientoViejo);
  ui->TxtConcepto->ponerTexto(diario.Fields("Descripcion").display());
  DHViejo = diario.Fields("DH").display();
  ui->TxtDH->setText(DHViejo);
  // The sign of a haber line is cut off as text.
  const QString importe = diario.Fields("Importe").display();
  ui->TxtDebeHaber->setText(
      Format(DHViejo == "H" ? importe.mid(1) : importe, sesion().MascaraImporte));
  TxtSubcuenta_LostFocus();
}

// As in the entry line: "*" is the next number.
void FrmPartida::TxtAsiento_KeyPress(Tecla& tecla) {
  if (tecla.texto != u'*') return;
  tecla.tragar();
  ui->TxtAsiento->setText(QString::number(tomaAsiento(ctx.principal->DtaEmpresaActual())));
  ui->TxtAsiento->selectAll();
}

// There is no test of the year here; a date before the limit becomes today.
void FrmPartida::TxtFecha_LostFocus() {
  const QDate hoy = ctx.reloj->hoy();
  ui->TxtFecha->setText(NormalizaFecha(ui->TxtFecha->text(), sesion().AnoActual, hoy));
  const QString limite = sesion().FechaNoModificar;
  if (EsFecha(limite) && ui->TxtFecha->text() < limite) {
    ui->TxtFecha->setText(NormalizaFecha(Format(hoy, "dd/mm/yyyy"), sesion().AnoActual, hoy));
    mensaje("Usted no puede modificar ningun apunte anterior a la fecha " + limite, "Error");
  }
}

void FrmPartida::TxtSubcuenta_Change() {
  if (ui->TxtSubcuenta->text().size() != sesion().DigitosSubcuenta) return;
  ignorando([this] { buscaSubcuenta(); });
}

// Shows the name of the code in the field; 3021 if there is no such subcuenta.
void FrmPartida::buscaSubcuenta() {
  ui->TxtNombreCuenta->clear();
  ui->TxtNombreCuenta->setText(nombreDeSubcuenta(*ui->TxtSubcuenta, DtaSubcuentas, sesion()));
}

void FrmPartida::TxtSubcuenta_LostFocus() {
  if (ui->TxtSubcuenta->text().isEmpty()) return;
  try {
    buscaSubcuenta();
    // The main window's panel follows the subcuenta of the dialog.
    ctx.principal->TxtSubcuenta().setText(ui->TxtSubcuenta->text());
    ctx.principal->TxtSubcuenta_LostFocus();
  } catch (const ErrorEjecucion& e) {
    if (e.numero() == err::kSinRegistroActivo) return ofreceSubcuenta(ui->TxtSubcuenta->text());
    RegistraError(sesion().DirPrograma, e.numero(), e.descripcion(),
                  "TxtSubcuenta_LostFocus - FrmMenu");
  }
}

void FrmPartida::ofreceSubcuenta(const QString& codigo) {
  if (codigo.size() == sesion().DigitosSubcuenta && EsNumerico(codigo) &&
      pregunta("El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ",
               "Error")) {
    mostrar("FrmSubCuentas", 1, codigo);
    ignorando([this] { buscaSubcuenta(); });  // given up, or created under another code
    return;
  }
  sesion().CodigoAccion = 25;
  mostrar("FrmVisualizaPlan", 0, codigo);
  sesion().CodigoAccion = 0;
}

void FrmPartida::TxtConcepto_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  const QString texto = ui->TxtConcepto->texto();
  if (texto.isEmpty() || !texto.at(0).isDigit()) {
    focusNextChild();
    return;
  }
  try {
    DtaConceptos.FindFirst("NConcepto = '" + texto + "'");
    if (DtaConceptos.Recordset().NoMatch()) throw ErrorEjecucion(err::kNuloNoValido);
    ui->TxtConcepto->setEditText(DtaConceptos.Fields(1).text());
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kNuloNoValido)
      return RegistraError(sesion().DirPrograma, e.numero(), e.descripcion(),
                           "TxtConcepto_KeyPress - FrmMenu");
    mensaje("El código del concepto escrito no existe intente con otro", "Error");
    ui->TxtConcepto->setEditText(QString());
  }
}

// The last character is left out of the test, as in the entry line.
void FrmPartida::TxtDebeHaber_KeyPress(Tecla& tecla) {
  QLineEdit* campo = ui->TxtDebeHaber;
  if (tecla.esIntro() || tecla.esRetroceso() || !tecla.texto.isPrint()) return;
  if (campo->text().isEmpty()) {
    campo->setText(Format(0, sesion().MascaraImporte));
    campo->selectAll();
  }
  const QString ahora = campo->text();
  if (tecla.texto == u'-' || !EsNumerico('0' + ahora.left(ahora.size() - 1) + tecla.texto)) {
    pitido();
    tecla.tragar();
  }
}

void FrmPartida::CmdLinFecha_Click() {
  mostrar("FrmCalendario", 22);
  enfocar(ui->TxtFecha);
}

void FrmPartida::CmdAceptar_Click() {
  guardaEn(ui->TxtDH->text() == "D" ? "D" : "H");
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
  if (faltanDatos()) return mensaje(lado.faltan, "Error");

  Principal& menu = *ctx.principal;
  DataControl& diario = menu.DtaDiarioLista();
  diario.Edit();
  completa(diario, [&] {
    diario.Fields("NAsiento") = ui->TxtAsiento->text();
    diario.Fields("Fecha") = ui->TxtFecha->text();
    diario.Fields("Subcuenta") = ui->TxtSubcuenta->text();
    diario.Fields("Descripcion") = ui->TxtConcepto->texto();
    diario.Fields("DH") = signo;
    diario.Fields("Importe") = (signo == "H" ? "-" : "") + ui->TxtDebeHaber->text();
  });
  diario.MoveLast();
  menu.ATotal();
  menu.ACuenta();
  menu.AAsiento();
  Comprueba();
  descargar();
}

bool FrmPartida::faltanDatos() const {
  const QString importe = ui->TxtDebeHaber->text();
  return ui->TxtAsiento->text().isEmpty() || ui->TxtFecha->text().isEmpty() ||
         ui->TxtSubcuenta->text().isEmpty() || ui->TxtConcepto->texto().isEmpty() ||
         importe.isEmpty() || (EsNumerico(importe) && Variant(importe).number() == 0);
}

// The date goes first: lines that only then come under the new number keep their old date.
void FrmPartida::Comprueba() {
  const QString fecha = ui->TxtFecha->text();
  const QString asiento = ui->TxtAsiento->text();
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
  DtaDiarioLista.bind(sesion().rutaEmpresa(),
                      "Select * from SqlDiarioPrincipalBlanco where nasiento=" + asiento);
  for (; !DtaDiarioLista.Eof(); DtaDiarioLista.MoveNext()) {
    DtaDiarioLista.Edit();
    DtaDiarioLista.Fields(campo) = valor;
    DtaDiarioLista.Update();
  }
}
