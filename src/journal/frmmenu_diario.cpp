#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>

#include "common/formato.h"
#include "journal/descuadres.h"
#include "journal/frmmenu.h"
#include "journal/widgets/menuprincipal.h"
#include "toolkit/progreso.h"
#include "toolkit/protocolo.h"
#include "ui_frmmenu.h"

void FrmMenu::conectaDiario() {
  using enum Columna::Tipo;
  ui->GrdApuntes->enlazar(DtaDiarioLista_,
                          {{QStringLiteral("Punteo"), QStringLiteral("P"), 3},
                           {QStringLiteral("Subcuenta"), QStringLiteral("Subcuenta"), 10},
                           {QStringLiteral("Fecha"), QStringLiteral("Fecha"), 11, Fecha},
                           {QStringLiteral("NAsiento"), QStringLiteral("Asiento"), 8},
                           {QStringLiteral("Descripcion"), QStringLiteral("Descripción"), 40},
                           {QStringLiteral("Debe"), QStringLiteral("Debe"), 14, Importe},
                           {QStringLiteral("Haber"), QStringLiteral("Haber"), 14, Importe}});
  ui->GrdApuntes->permitirArrastre(true);
  const std::pair<QStringView, void (FrmMenu::*)()> alSoltar[] = {
      {u"CmdEliminarApunte", &FrmMenu::MnuEliminarapunte_Click},
      {u"CmdEliminarPartida", &FrmMenu::MnuEliminarPartida_Click},
      {u"CmdModificaApunte", &FrmMenu::MnuModificarApunte_Click}};
  for (const auto& [nombre, reaccion] : alSoltar) {
    aceptaArrastre(&menu_->boton(nombre),
                   [this, reaccion = reaccion](const QString&) { (this->*reaccion)(); });
  }
  alRecolocar(DtaDiarioLista_, [this] { AMarcado(); });
  connect(ui->GrdApuntes, &Rejilla::intro, this,
          [this] { protege([this] { MnuModificarApunte_Click(); }); });
  connect(ui->GrdApuntes, &Rejilla::espacio, this, [this] { protege([this] { puntea(); }); });
  connect(ui->GrdApuntes, &Rejilla::dobleClic, this, [this] {
    protege([this] {
      if (punteoVisible()) puntea();
    });
  });
  connect(ui->GrdApuntes, &Rejilla::botonDerecho, this, [this](const QPoint& sitio) {
    menu_->barra()->findChild<QMenu*>(QStringLiteral("MnuEdicion"))->popup(sitio);
  });

  alPulsar(ui->CmdPrimero, [this] { CmdPrimero_Click(); });
  alPulsar(ui->CmdAnterior, [this] { CmdAnterior_Click(); });
  alPulsar(ui->CmdSiguiente, [this] { CmdSiguiente_Click(); });
  alPulsar(ui->CmdUltimo, [this] { CmdUltimo_Click(); });
  alPulsar(ui->CmdActivaPunteo, [this] { CmdActivaPunteo_Click(); });
  alPulsar(ui->CmdCerrarPunteo, [this] { CmdCerrarPunteo_Click(); });
  alElegirOpcion(QStringLiteral("OptPunteo"), [this](int indice) { OptPunteo_Click(indice); });
}

// Each search button stands over its column at any width; that of the asientos out of balance
// has none of its own and shares the widest.
void FrmMenu::alineaBusqueda() {
  const auto boton = [this](QStringView nombre) { return &menu_->boton(nombre); };
  menu_->creaBotones(SitioBoton::Columna, *ui->FilaBusqueda);
  auto* ancha = new QWidget(this);
  auto* dentro = new QHBoxLayout(ancha);
  dentro->setContentsMargins(0, 0, 0, 0);
  dentro->setSpacing(0);
  dentro->addWidget(boton(u"CmdDescripcion"), 3);
  dentro->addWidget(boton(u"CmdDescuadres"), 2);
  ui->FilaBusqueda->insertWidget(ui->FilaBusqueda->indexOf(boton(u"CmdImporte")), ancha, 1);

  ensanchaBusqueda();
  const int marco = ui->GrdApuntes->frameWidth();
  ui->FilaBusqueda->setContentsMargins(marco, 0, marco, 0);
  ui->GrdApuntes->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  ui->GrdApuntes->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  ui->GrdApuntes->alinearCon({boton(u"CmdPunteo"), boton(u"CmdCodigo"), boton(u"CmdFecha"),
                              boton(u"CmdAsiento"), ancha, boton(u"CmdImporte"),
                              boton(u"CmdImporte")});
}

// The widths of the columns are those of the buttons over them.
void FrmMenu::ensanchaBusqueda() {
  const std::pair<QStringView, QString> anchos[] = {
      {u"CmdPunteo", QStringLiteral("WWW")},
      {u"CmdCodigo", QStringLiteral("000000000000000")},
      {u"CmdFecha", QStringLiteral("00/00/00000000")},
      {u"CmdAsiento", QStringLiteral("000000000000")},
      {u"CmdImporte", QStringLiteral("-000.000.000,00 -000.000.000,00 000")}};
  for (const auto& [nombre, muestra] : anchos)
    menu_->boton(nombre).setFixedWidth(fontMetrics().horizontalAdvance(muestra));
}

void FrmMenu::changeEvent(QEvent* evento) {
  Formulario::changeEvent(evento);
  if (evento->type() == QEvent::FontChange && menu_) ensanchaBusqueda();
}

// Puts lines of the journal on show, standing on the last of them. `seleccion` follows the
// source: a where, an order.
void FrmMenu::muestraDiario(const QString& seleccion) {
  DtaDiarioLista_.bind(sesion().rutaEmpresa(),
                       QStringLiteral("Select * from SqlDiarioPrincipalBlanco ") + seleccion);
  if (!DtaDiarioLista_.Eof()) DtaDiarioLista_.MoveLast();
}

void FrmMenu::muestraAsiento(const QString& numero) {
  muestraDiario(QStringLiteral("where Nasiento=") + numero);
}

void FrmMenu::CmdRecargar_Click() {
  enfocar(ui->TxtSubcuenta);
  muestraDiario(QStringLiteral("order by nasiento"));
}

// After a dialog that wrote lines of its own.
void FrmMenu::refrescaDiario() {
  DtaDiarioLista_.Refresh();
  if (!DtaDiarioLista_.Eof()) DtaDiarioLista_.MoveLast();
  ATotal();
  ACuenta();
  AAsiento();
}

void FrmMenu::CmdPrimero_Click() {
  if (DtaDiarioLista_.Recordset().rowTotal() > 0) DtaDiarioLista_.MoveFirst();
}

void FrmMenu::CmdAnterior_Click() {
  if (ui->GrdApuntes->filaActual() > 0) DtaDiarioLista_.MovePrevious();
}

void FrmMenu::CmdSiguiente_Click() {
  const int fila = ui->GrdApuntes->filaActual();
  if (fila >= 0 && fila + 1 < ui->GrdApuntes->filas()) DtaDiarioLista_.MoveNext();
}

void FrmMenu::CmdUltimo_Click() {
  if (DtaDiarioLista_.Recordset().rowTotal() > 0) DtaDiarioLista_.MoveLast();
}

// --- totals -------------------------------------------------------------------------------------

void FrmMenu::muestraTotal(PanelTotales::Fila fila, const std::optional<Totales>& totales) {
  if (totales) totales_.poner(fila, *totales, sesion().MascaraImporte);
}

void FrmMenu::ATotal() {
  muestraTotal(PanelTotales::Total, totalDiario(DtaTotal_, sesion().rutaEmpresa()));
}

void FrmMenu::ACuenta() {
  muestraTotal(PanelTotales::Cuenta,
               totalCuenta(DtaTotal_, sesion().rutaEmpresa(), ui->TxtSubcuenta->text()));
}

void FrmMenu::AAsiento() {
  muestraTotal(PanelTotales::Asiento,
               totalAsiento(DtaTotal_, sesion().rutaEmpresa(), ui->TxtAsiento->text()));
}

// Without a line nothing is marked, and the caption of a line that went away would mislead.
void FrmMenu::AMarcado() {
  const QString asiento = ui->GrdApuntes->valor(QStringLiteral("NAsiento"));
  muestraTotal(
      PanelTotales::Marcado,
      asiento.isEmpty() ? Totales() : totalAsiento(DtaTotal_, sesion().rutaEmpresa(), asiento));
}

// --- changing and deleting ----------------------------------------------------------------------

// A line that an invoice wrote is only changed through the invoice.
bool FrmMenu::lineaDeIVA() const {
  return !DtaDiarioLista_.Fields(QStringLiteral("ApunteIVA")).isNull();
}

void FrmMenu::MnuModificarApunte_Click() {
  const Rejilla& rejilla = *ui->GrdApuntes;
  const QString linea = rejilla.valor(QStringLiteral("NLinea"));
  if (linea.isEmpty()) {
    ui->GrdApuntes->setFocus();
    mensaje(QStringLiteral("Debe seleccionar un apunte de la lista de apuntes"),
            QStringLiteral("Error"));
    return;
  }
  if (rejilla.valor(QStringLiteral("TipoFactura")) == u"I") {
    mensaje(QStringLiteral("No puede modificar una partida creada con IVA intracomunitario, "
                           "elimine la partida y cree una nueva"),
            QStringLiteral("Partida intracomunitaria"));
    return;
  }
  const QString limite = sesion().FechaNoModificar;
  const Variant fecha = DtaDiarioLista_.Fields(QStringLiteral("Fecha")).Value();
  if (EsFecha(limite) && !fecha.isNull() && fecha.date() < Variant(limite).date()) {
    mensaje(QStringLiteral("Usted no puede modificar ningún apunte anterior a la fecha ") + limite,
            QStringLiteral("Error"));
    return;
  }
  if (!lineaDeIVA()) {
    mostrar(QStringLiteral("FrmPartida"), 0, linea);
  } else if (mostrar(QStringLiteral("FrmIVASR"), llamada::kIVAModificacion,
                     rejilla.valor(QStringLiteral("NAsiento")))) {
    refrescaDiario();
  }
}

// Neither the closing date nor the kind of invoice forbids it: an intra-community line can't be
// changed, so deleting it is the way to put it right.
void FrmMenu::MnuEliminarPartida_Click() {
  enfocar(ui->TxtSubcuenta);
  if (ui->GrdApuntes->filaActual() < 0) return;
  if (lineaDeIVA()) {
    mensaje(QStringLiteral("Usted no puede eliminar una partida creada por un apunte de IVA"),
            QStringLiteral("Error"));
    return;
  }
  if (pregunta(
          QStringLiteral("Esta a punto de eliminar una partida del diario, ¿ Desea continuar ?"),
          QStringLiteral("Eliminar"))) {
    DtaDiarioLista_.Delete();
  }
  ATotal();
  AMarcado();
}

// The asiento to be deleted is put on show before the dialog asks.
void FrmMenu::MnuEliminarapunte_Click() {
  const QString asiento = ui->GrdApuntes->valor(QStringLiteral("NAsiento"));
  if (asiento.isEmpty()) return;
  muestraAsiento(asiento);
  mostrar(QStringLiteral("FrmEliminaAsiento"), 0, asiento);
  enfocar(ui->TxtSubcuenta);
  ATotal();
}

// --- asientos out of balance --------------------------------------------------------------------

void FrmMenu::MnuDescuadre_Click() {
  DtaDescuadres_.bind(sesion().rutaEmpresa(),
                      QStringLiteral("Select * from SqlSumaDiarioPorAsientos order by nasiento"));
  Recordset& asientos = DtaDescuadres_.Recordset();
  Progreso progreso(ctx, *ui->Bar, asientos.rowTotal());
  bool seguir = true;
  recorreDescuadres(
      asientos, sesion().MascaraImporte, [&](int posicion, int) { progreso.avanza(posicion); },
      [&](int numero, const QString&) {
        muestraAsiento(QString::number(numero));
        seguir = pregunta(QStringLiteral("Asiento %1 descuadrado, ¿desea seguir viendo asientos "
                                         "descuadrados?")
                              .arg(numero),
                          QStringLiteral("Descuadre localizado"));
        return seguir;
      });
  progreso.oculta();
  if (!seguir) return;
  mensaje(QStringLiteral("Fín de la busqueda de asientos descuadrados"), QStringLiteral("Fín"));
}

// --- ticking off --------------------------------------------------------------------------------

void FrmMenu::CmdActivaPunteo_Click() {
  ui->FrmPunteo->show();
  setCursor(Qt::PointingHandCursor);
}

void FrmMenu::CmdCerrarPunteo_Click() {
  ui->FrmPunteo->hide();
  unsetCursor();
}

void FrmMenu::OptPunteo_Click(int indice) {
  const auto* opcion = findChild<QRadioButton*>(QStringLiteral("OptPunteo_%1").arg(indice));
  sesion().MarcaPunteo = opcion->text();
}

// A marked line is cleared by any mark; none replaces another in one step.
void FrmMenu::puntea() {
  if (ui->GrdApuntes->filaActual() < 0) return;
  const FieldRef marca = DtaDiarioLista_.Fields(QStringLiteral("Punteo"));
  const QString nueva = marca.display().isEmpty() ? sesion().MarcaPunteo : QStringLiteral("");
  DtaDiarioLista_.Edit();
  DtaDiarioLista_.Fields(QStringLiteral("Punteo")) = nueva;
  DtaDiarioLista_.Update();
}
