#include "accounts/frmvisualizaplan.h"

#include <QKeyEvent>
#include <QTimer>
#include <utility>

#include "accounts/borrado.h"
#include "accounts/buscaplan.h"
#include "accounts/widgets/teclasdebusqueda.h"
#include "common/errorejecucion.h"
#include "common/ignorar.h"
#include "engine/dbengine.h"
#include "toolkit/consulta.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "toolkit/registro.h"
#include "ui_frmvisualizaplan.h"

namespace {

// A field that will have the focus again stands as on entering it: the next code is typed over.
void muestraEn(QLineEdit& campo, const QString& codigo) {
  campo.setText(codigo);
  if (campo.window()->focusWidget() == &campo) campo.selectAll();
}

}  // namespace

FrmVisualizaPlan::FrmVisualizaPlan(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmVisualizaPlan>()),
      DtaSubcuentas_(contexto.motor) {
  ui_->setupUi(this);
  DtaSubcuentas_.setObjectName("DtaSubcuentas");
  DtaSubcuentas_.setKeepsRows(true);
  ui_->GrigSubCuentas->enlazar(DtaSubcuentas_,
                               {{.campo = "Subcuenta", .titulo = "Subcuenta", .ancho = 12},
                                {.campo = "Descripcion", .titulo = "Descripción", .ancho = 44},
                                {.campo = "Nif", .titulo = "NIF", .ancho = 14}});
  ui_->CmdImpresos->setEnabled(contexto.formularios->existe("FrmSubcuentasImpresos"));

  alRecolocar(DtaSubcuentas_, [this] { DtaSubcuentas_Reposition(); });
  alElegirOpcion("OptClasifica", [this](int orden) { OptClasifica_Click(orden); });
  alCambiar(ui_->TxtBusquedaCuentas, [this] { TxtBusquedaCuentas_Change(); });
  alBajarTecla(ui_->GrigSubCuentas, [this](QKeyEvent& evento) {
    return llevaABusqueda(*ui_->TxtBusquedaCuentas, evento);
  });
  alBajarTecla(ui_->TxtBusquedaCuentas,
               [this](QKeyEvent& evento) { return mueveConFlechas(DtaSubcuentas_, evento); });
  alTeclear(ui_->TxtBusquedaCuentas, [this](Tecla& tecla) { TxtBusquedaCuentas_KeyPress(tecla); });
  alPulsarMatriz("CmdMayor", [this](int grupo) { busca(QString::number(grupo)); });
  connect(ui_->GrigSubCuentas, &Rejilla::dobleClic, this, [this] { GrigSubCuentas_DblClick(); });
  connect(ui_->GrigSubCuentas, &Rejilla::intro, this, [this] { GrigSubCuentas_DblClick(); });
  connect(ui_->GrigSubCuentas, &Rejilla::mas, this,
          [this] { protege([this] { CmdAltas_Click(); }, "CmdAltas_Click"); });
  alPulsar(ui_->CmdAltas, [this] { CmdAltas_Click(); });
  alPulsar(ui_->CmdBajas, [this] { CmdBajas_Click(); });
  alPulsar(ui_->CmdModifica, [this] { CmdModifica_Click(); });
  alPulsar(ui_->CmdImpresos, [this] { CmdImpresos_Click(); });
  alPulsar(ui_->Command2, [this] { mostrar("FrmCuentasLista"); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmVisualizaPlan::~FrmVisualizaPlan() = default;

void FrmVisualizaPlan::Form_Load() {
  DtaSubcuentas_.setDatabaseName(sesion().rutaEmpresa());
  anotaCampos();
  QString inicio = std::exchange(sesion().ValorElegido, {});
  if (inicio.isEmpty()) inicio = enCampo_.value_or(enLinea_);
  if (inicio.isEmpty()) {
    setOpcion("OptClasifica", static_cast<int>(OrdenPlan::Codigo));
  } else {
    // The first row, on show where nothing is found, is no answer to what was typed.
    entrega_ = false;
    ui_->TxtBusquedaCuentas->setText(inicio);  // sets the order that its text asks for
    entrega_ = true;
    if (encontrada_) DtaSubcuentas_Reposition();
  }
  ui_->GrigSubCuentas->setFocus();
}

// How many rows fit is known once the list is on the screen.
void FrmVisualizaPlan::Form_Activate() {
  if (encontrada_) QTimer::singleShot(0, ui_->GrigSubCuentas, &Rejilla::subeActual);
}

void FrmVisualizaPlan::anotaCampos() {
  if (ctx.principal) enLinea_ = ctx.principal->TxtSubcuenta().text();
  enCampo_ = textoDeDestino(ctx, destinosDeSubcuenta());
}

// Leaving by Escape is having looked: the fields hold again what they held.
void FrmVisualizaPlan::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Escape) {
    if (ctx.principal) muestraEn(ctx.principal->TxtSubcuenta(), enLinea_);
    if (enCampo_) entregarConsulta(ctx, destinosDeSubcuenta(), *enCampo_);
  }
  Formulario::keyPressEvent(evento);
}

void FrmVisualizaPlan::situaEn(const QString& codigo) {
  DtaSubcuentas_.Refresh();
  busca(codigo);
}

// Searching again for the text on show brings the list back to it.
void FrmVisualizaPlan::busca(const QString& texto) {
  if (ui_->TxtBusquedaCuentas->text() == texto)
    TxtBusquedaCuentas_Change();
  else
    ui_->TxtBusquedaCuentas->setText(texto);
}

void FrmVisualizaPlan::OptClasifica_Click(int orden) {
  try {
    ordena(static_cast<OrdenPlan>(orden));
  } catch (const ErrorEjecucion&) {
    // The rows that stay are in the other order.
    if (DtaSubcuentas_.isOpen()) setOpcion("OptClasifica", 1 - orden);
    throw;
  }
}

// By the rows on show, not by the option: an order that couldn't be read is tried again.
void FrmVisualizaPlan::ordena(OrdenPlan orden) {
  const QString fuente = fuentePlan(kListaSubcuentas, orden);
  if (DtaSubcuentas_.isOpen() && DtaSubcuentas_.RecordSource() == fuente) return;
  DtaSubcuentas_.setRecordSource(fuente);
  DtaSubcuentas_.Refresh();
}

// The order changes only with the kind of text: reading 50 thousand rows in another order at each
// letter would be felt.
void FrmVisualizaPlan::TxtBusquedaCuentas_Change() {
  const QString texto = ui_->TxtBusquedaCuentas->text();
  if (texto.isEmpty()) return;
  const OrdenPlan orden = ordenDe(texto);
  encontrada_ = false;
  ordena(orden);
  if (opcion("OptClasifica") != static_cast<int>(orden))
    setOpcion("OptClasifica", static_cast<int>(orden));
  ui_->TxtBusquedaCuentas->setMaxLength(orden == OrdenPlan::Codigo ? sesion().DigitosSubcuenta
                                                                   : kLargoNombre);
  encontrada_ = buscaEnPlan(DtaSubcuentas_, kListaSubcuentas, ui_->TxtBusquedaCuentas->text());
  if (encontrada_) ui_->GrigSubCuentas->subeActual();
}

void FrmVisualizaPlan::TxtBusquedaCuentas_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  descargar();
}

// Kept: the main window's entry line follows also when the list serves a field of another form, and
// so do its totals: one sees at once how the subcuenta stands.
void FrmVisualizaPlan::DtaSubcuentas_Reposition() {
  if (!entrega_) return;
  // Between two orders, and past the ends, the list stands on no row.
  ignorando([this] {
    const QString codigo = DtaSubcuentas_.Fields("Subcuenta").text();
    if (ctx.principal) muestraEn(ctx.principal->TxtSubcuenta(), codigo);
    entregarConsulta(ctx, destinosDeSubcuenta(), codigo);
  });
}

void FrmVisualizaPlan::GrigSubCuentas_DblClick() {
  DtaSubcuentas_Reposition();  // the row is chosen even if the list hasn't moved to it
  descargar();
}

void FrmVisualizaPlan::CmdAltas_Click() {
  mostrar("FrmSubCuentas", llamada::kAlta);
}

void FrmVisualizaPlan::CmdModifica_Click() {
  mostrar("FrmSubCuentas", llamada::kModificacion, ui_->GrigSubCuentas->valor("Subcuenta"));
}

void FrmVisualizaPlan::CmdBajas_Click() {
  const QString codigo = ui_->GrigSubCuentas->valor("Subcuenta");
  if (codigo.isEmpty()) return;
  DataControl diario(ctx.motor);
  if (tieneApuntes(diario, sesion().rutaEmpresa(), codigo))
    mensaje(
        "No se puede eliminar la subcuenta, existen apuntes en el diario, elimine esos "
        "apuntes para eliminarla",
        "Error");
  else if (pregunta("Esta seguro de eliminar la subcuenta " + codigo, "Eliminar"))
    eliminaFila(DtaSubcuentas_);
}

void FrmVisualizaPlan::CmdImpresos_Click() {
  descargar();
  mostrar("FrmSubcuentasImpresos");
}
