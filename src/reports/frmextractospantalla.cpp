#include "reports/frmextractospantalla.h"

#include <QMenuBar>

#include "common/formato.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "reports/extracto.h"
#include "toolkit/principal.h"
#include "toolkit/tema.h"
#include "ui_frmextractospantalla.h"

FrmExtractosPantalla::FrmExtractosPantalla(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmExtractosPantalla>()),
      DtaExtracto_(contexto.motor) {
  ui_->setupUi(this);
  ui_->ImpresionEntreCuentas->setIcon(icono("consulta"));
  ui_->LocalizarFecha->setIcon(icono("buscar-fecha"));
  ui_->CmdImpresos->setIcon(icono("imprimir"));
  ui_->CmdSalir->setIcon(icono("salir"));
  creaMenu();
  ui_->GridExtracto->enlazar(
      DtaExtracto_,
      {{.campo = "Punteo", .titulo = "Punteo", .ancho = 6},
       {.campo = "NAsiento", .titulo = "Asiento", .ancho = 8, .tipo = Columna::Tipo::Numero},
       {.campo = "Fecha", .titulo = "Fecha", .ancho = 11, .tipo = Columna::Tipo::Fecha},
       {.campo = "Descripcion", .titulo = "Descripción", .ancho = 32},
       {.campo = "Debe", .titulo = "Debe", .ancho = 13, .tipo = Columna::Tipo::Importe},
       {.campo = "Haber", .titulo = "Haber", .ancho = 13, .tipo = Columna::Tipo::Importe},
       {.campo = "Saldo", .titulo = "Saldo", .ancho = 13, .tipo = Columna::Tipo::Importe}});
  connect(ui_->GridExtracto, &Rejilla::espacio, this, [this] { protege([this] { puntea(); }); });
  connect(ui_->GridExtracto, &Rejilla::dobleClic, this,
          [this] { protege([this] { GridExtracto_DblClick(); }); });
  alPulsar(ui_->ImpresionEntreCuentas, [this] { MnuVisualizarApunte_Click(); });
  alPulsar(ui_->LocalizarFecha, [this] { MnuBuscarDesde_Click(); });
  alPulsar(ui_->CmdImpresos, [this] { MnuImprimir_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmExtractosPantalla::~FrmExtractosPantalla() = default;

void FrmExtractosPantalla::creaMenu() {
  auto* barra = new QMenuBar(this);
  QMenu* menu = barra->addMenu("Utilidades y opciones");
  menu->setObjectName("MnuUtilidades");
  const auto entrada = [&](const char* nombre, const QString& texto, const QString& tecla,
                           void (FrmExtractosPantalla::*reaccion)()) {
    QAction* accion = menu->addAction(texto);
    accion->setObjectName(nombre);
    accion->setShortcut(QKeySequence(tecla));
    connect(accion, &QAction::triggered, this,
            [this, reaccion] { protege([&] { (this->*reaccion)(); }); });
  };
  entrada("MnuBuscarDesde", "Buscar desde", "Ctrl+B", &FrmExtractosPantalla::MnuBuscarDesde_Click);
  entrada("MnuImprimir", "Imprimir extracto", "Ctrl+P", &FrmExtractosPantalla::MnuImprimir_Click);
  entrada("MnuVisualizarApunte", "Visualizar apunte marcado", "Ctrl+V",
          &FrmExtractosPantalla::MnuVisualizarApunte_Click);
  entrada("MnuVolver", "Volver", "", &FrmExtractosPantalla::descargar);
  layout()->setMenuBar(barra);
}

void FrmExtractosPantalla::Form_Load() {
  resize(fontMetrics().horizontalAdvance('0') * 124, fontMetrics().height() * 36);
  ui_->GridExtracto->setMascara(sesion().MascaraImporte);
}

void FrmExtractosPantalla::Form_Activate() {
  Subcuenta = sesion().ValorElegido;
  setWindowTitle("Extracto de la subcuenta " + ctx.principal->TxtNombreCuenta().text() + " - " +
                 Subcuenta);
  // Bound before: the lines are to be seen even when another station doesn't let them be written.
  DtaExtracto_.bind(sesion().rutaEmpresa(), sentenciaExtracto(Subcuenta));
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  escribeSaldos(*empresa, Subcuenta, sesion().MascaraImporte);
  DtaExtracto_.Refresh();
  if (!DtaExtracto_.Eof()) DtaExtracto_.MoveLast();
  ui_->GridExtracto->setFocus();
}

// A line that bears a mark loses it, whatever the mark in force.
void FrmExtractosPantalla::puntea() {
  if (DtaExtracto_.Eof()) return;
  const bool vacia = DtaExtracto_.Fields("Punteo").display().isEmpty();
  DtaExtracto_.Edit();
  DtaExtracto_.Fields("Punteo") = vacia ? sesion().MarcaPunteo : QString("");
  DtaExtracto_.Update();
}

void FrmExtractosPantalla::GridExtracto_DblClick() {
  if (ctx.principal->punteoVisible()) return puntea();
  const QString asiento = ui_->GridExtracto->valor("NAsiento");
  if (asiento.isEmpty())
    return mensaje("Debe seleccionar un apunte de la lista de apuntes", "Error");
  mostrar("FrmAsiento", 0, asiento);
}

void FrmExtractosPantalla::MnuVisualizarApunte_Click() {
  if (!ui_->GridExtracto->valor("Punteo").isEmpty()) GridExtracto_DblClick();
}

void FrmExtractosPantalla::MnuBuscarDesde_Click() {
  const QDate hoy = ctx.reloj->hoy();
  const auto respuesta = ctx.cajas->entrada(this, "Introduzca una fecha a localizar",
                                            "Localizador de fecha", Format(hoy, "dd/mm/yyyy"));
  // Here a wrong answer isn't today: the line in sight stays.
  const auto fecha = FechaTecleada(respuesta.value_or(QString()), sesion().AnoActual, hoy);
  if (fecha) DtaExtracto_.FindFirst("Fecha >=#" + Format(*fecha, "m-d-yy") + "#");
}

// The subcuenta is the one that the window's title ends in.
void FrmExtractosPantalla::MnuImprimir_Click() {
  mostrar("FrmExtractos", 0, windowTitle().right(sesion().DigitosSubcuenta));
}
