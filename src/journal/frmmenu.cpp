#include "journal/frmmenu.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <utility>

#include "common/cini.h"
#include "common/formato.h"
#include "common/funciones.h"
#include "common/ignorar.h"
#include "company/indices.h"
#include "company/sesionempresa.h"
#include "engine/dbengine.h"
#include "journal/widgets/camposubcuenta.h"
#include "journal/widgets/menuprincipal.h"
#include "toolkit/registro.h"
#include "ui_frmmenu.h"

FrmMenu::FrmMenu(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmMenu>()),
      DtaEmpresa_(contexto.motor),
      DtaEmpresaActual_(contexto.motor),
      DtaDiarioLista_(contexto.motor),
      DtaConceptos_(contexto.motor),
      DtaTotal_(contexto.motor),
      DtaDescuadres_(contexto.motor),
      DtaIVA_(contexto.motor) {
  ui_->setupUi(this);
  menu_ = std::make_unique<MenuPrincipal>(*this, *ctx.formularios, [this](const EntradaMenu& e) {
    protege([&] { ejecutaEntrada(e); });
  });
  layout()->setMenuBar(menu_->barra());
  menu_->creaBotones(SitioBoton::Barra, *ui_->BarraHerramientas);
  ui_->BarraHerramientas->addStretch();
  alineaBusqueda();
  totales_.tomaTextos(*this);
  ctx.principal = this;

  preparaAspecto();
  ajustaAnchos();
  conectaVentana();
  conectaLinea();
  conectaDiario();
  conectaAyudante();
}

FrmMenu::~FrmMenu() {
  if (ctx.principal == this) ctx.principal = nullptr;
}

void FrmMenu::conectaVentana() {
  setBotonDeCierre(&menu_->boton(u"CmdSalir"));
  connect(ui_->TxtEmpresa, &ComboEnlazado::elegido, this, &FrmMenu::TxtEmpresa_Change);
  alElegir(ui_->TxtEmpresa, [this](int) { TxtEmpresa_Click(); });
  // The Data controls have read again by then, and the totals must not keep what isn't in the file.
  connect(&ctx.motor, &DBEngine::undone, this, [this] { protege([this] { muestraTotales(); }); });
  for (const BotonMenu& boton : botonesPrincipal()) {
    alPulsar(&menu_->boton(boton.control), [this, &boton] {
      enfocar(ui_->TxtSubcuenta);
      if (const EntradaMenu* entrada = entradaMenu(boton.igualQue)) {
        ejecutaEntrada(*entrada);
      } else {
        ejecutaRutina(boton.control);
      }
    });
  }
}

// The form that takes its place may need the company's file free.
void FrmMenu::done(int resultado) {
  guardaGeometria();
  Formulario::done(resultado);
  for (DataControl* datos : {&DtaEmpresa_, &DtaEmpresaActual_, &DtaDiarioLista_, &DtaConceptos_,
                             &subcuenta_->fila(), &DtaTotal_, &DtaDescuadres_, &DtaIVA_}) {
    datos->unbind();
  }
}

void FrmMenu::termina() {
  guardaGeometria();
  ctx.terminar();
}

// Escape leaves dialogs; it must not offer to leave the day's work.
void FrmMenu::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Escape) return;
  Formulario::keyPressEvent(evento);
}

QLineEdit& FrmMenu::TxtAsiento() {
  return *ui_->TxtAsiento;
}
QLineEdit& FrmMenu::TxtSubcuenta() {
  return *ui_->TxtSubcuenta;
}
QLineEdit& FrmMenu::TxtNombreCuenta() {
  return *ui_->TxtNombreCuenta;
}
QProgressBar& FrmMenu::Bar() {
  return *ui_->Bar;
}
bool FrmMenu::punteoVisible() const {
  return !ui_->FrmPunteo->isHidden();
}

QString FrmMenu::cero() const {
  return Format(QStringLiteral("0"), ctx.sesion.MascaraImporte);
}

void FrmMenu::Form_Load() {
  DtaEmpresa_.bind(sesion().rutaCatalogo(),
                   QStringLiteral("Select * from Empresas order by NombreEmpresa"));
  ui_->TxtEmpresa->enlazar(DtaEmpresa_, QStringLiteral("NombreEmpresa"));
  const QString empresa = sesion().EmpresaActual;
  if (!empresa.isEmpty()) {
    ofreceConceptos();
    if (!ui_->TxtEmpresa->ponerTexto(empresa)) protege([&] { abreEmpresa(empresa); });
  }
  totales_.ponerCero(sesion().MascaraImporte);
  EmpresaCerrada();
  ATotal();
  recienCargada_ = true;
}

// The concepts on offer are those of the first company that the window opens, also after another
// one is picked: a bookkeeper who keeps several sets of books for one client works with one list of
// concepts.
void FrmMenu::ofreceConceptos() {
  if (DtaConceptos_.isOpen()) return;
  ignorando([&] {
    DtaConceptos_.bind(sesion().rutaEmpresa(), QStringLiteral("Select * from Conceptos"));
  });
  ui_->TxtConcepto->enlazar(DtaConceptos_, QStringLiteral("Descripcion"),
                            QStringLiteral("NConcepto"));
}

void FrmMenu::Form_Activate() {
  setWindowTitle(QStringLiteral("Librano ") + sesion().VersionPrograma);
  setOpcion(QStringLiteral("OptPunteo"), 0);
  ui_->TxtFecha->setText(NormalizaFecha(ctx.reloj->hoy().toString(QStringLiteral("dd/MM/yyyy")),
                                        sesion().AnoActual, ctx.reloj->hoy()));
  // Loading has just put the journal on show: a long one isn't read twice.
  if (std::exchange(recienCargada_, false)) {
    enfocar(ui_->TxtSubcuenta);
    AMarcado();
  } else if (DtaEmpresaActual_.isOpen()) {
    CmdRecargar_Click();
  }
  avisaDeVersion();
}

void FrmMenu::avisaDeVersion() {
  if (sesion().VersionPrograma == sesion().VersionConfig) return;
  mensaje(
      QStringLiteral("Atención su copia de Librano se ha actualizado, siga los pasos que le marcan "
                     "en la actualización y recuerde reindexar las empresas."),
      QStringLiteral("Librano"));
  CIni().Grabar(ctx.carpetaPrograma + QStringLiteral("Config.ini"), QStringLiteral("Version"),
                QStringLiteral("Version"), sesion().VersionPrograma);
  sesion().VersionConfig = sesion().VersionPrograma;
}

// After a dialog where companies may have come and gone, or the open one has got another mask. The
// open one stays picked.
void FrmMenu::refrescaEmpresa() {
  const QSignalBlocker callado(ui_->TxtEmpresa);
  DtaEmpresa_.Refresh();
  ui_->TxtEmpresa->ponerTexto(sesion().EmpresaActual);
  if (!DtaEmpresaActual_.isOpen()) return;
  ui_->GrdApuntes->setMascara(sesion().MascaraImporte);
  totales_.ponerCero(sesion().MascaraImporte);
  ajustaAnchos();
  muestraTotales();
}

void FrmMenu::TxtEmpresa_Change() {
  const QString elegida = ui_->TxtEmpresa->texto();
  abreEmpresa(elegida.isEmpty() ? sesion().EmpresaActual : elegida);
}

void FrmMenu::TxtEmpresa_Click() {
  CIni().Grabar(ctx.carpetaPrograma + QStringLiteral("Config.ini"), QStringLiteral("Entrada"),
                QStringLiteral("UltimaEmpresa"), ui_->TxtEmpresa->texto());
}

void FrmMenu::abreEmpresa(const QString& nombre) {
  const QString fuente = QStringLiteral("Select * from Empresa");
  const bool otraEmpresa = nombre != sesion().EmpresaActual;
  try {
    DtaEmpresaActual_.bind(sesion().rutaEmpresa(nombre), fuente);
  } catch (const ErrorEjecucion&) {
    if (sesion().EmpresaActual.isEmpty() || sesion().EmpresaActual == nombre) throw;
    // The company that was open stays so, and the combo says it.
    const QSignalBlocker callado(ui_->TxtEmpresa);
    ui_->TxtEmpresa->ponerTexto(sesion().EmpresaActual);
    DtaEmpresaActual_.bind(sesion().rutaEmpresa(), fuente);
    throw;
  }
  cuidaIndices(ctx.motor, sesion().rutaEmpresa(nombre));
  const QString otra = leeEmpresa(DtaEmpresaActual_.Recordset(), sesion(), nombre);
  if (!otra.isEmpty()) anotaCambioDeNombre(otra);
  ctx.motor.setYear(sesion().AnoActual);
  ui_->TxtAñoActual->setText(QString::number(sesion().AnoActual));
  if (otraEmpresa) {
    // A code of the other company's plan may be another account here.
    ui_->TxtSubcuenta->clear();
    ui_->TxtNombreCuenta->clear();
  }
  ofreceConceptos();
  subcuenta_->ajustaDigitos();
  ui_->GrdApuntes->setMascara(sesion().MascaraImporte);
  EmpresaCerrada();
  ajustaAnchos();
  CmdRecargar_Click();
  ui_->TxtFecha->setText(
      NormalizaFecha(ui_->TxtFecha->text().left(6) + QString::number(sesion().AnoActual),
                     sesion().AnoActual, ctx.reloj->hoy()));
}

void FrmMenu::anotaCambioDeNombre(const QString& otra) {
  ignorando([&] {
    RegistraError(ctx.carpetaPrograma, 0,
                  QStringLiteral("Los datos de la empresa %1 llevaban el nombre %2; toman el suyo")
                      .arg(sesion().EmpresaActual, otra),
                  QStringLiteral("TxtEmpresa_Change - FrmMenu"));
  });
}

// A sign, not a lock: nothing in the entry line asks for it.
void FrmMenu::EmpresaCerrada() {
  const bool cerrada = empresaCerrada(sesion());
  for (QLabel* imagen : {ui_->ImpEmp1, ui_->ImpEmp2, ui_->ImpEmp3}) imagen->setVisible(cerrada);
  menu_->barra()->findChild<QAction*>(QStringLiteral("MnuInvertirCierre"))->setVisible(cerrada);
}
