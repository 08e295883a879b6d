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
  DtaDiarioLista_.setKeepsRows(true);
  ui_->GrdApuntes->enlazar(DtaDiarioLista_,
                           {{QStringLiteral("Punteo"), QStringLiteral("P"), 3},
                            {QStringLiteral("Subcuenta"), QStringLiteral("Subcuenta"), 10},
                            {QStringLiteral("Fecha"), QStringLiteral("Fecha"), 11, Fecha},
                            {QStringLiteral("NAsiento"), QStringLiteral("Asiento"), 8, Numero},
                            {QStringLiteral("Descripcion"), QStringLiteral("Descripción"), 40},
                            {QStringLiteral("Debe"), QStringLiteral("Debe"), 14, Importe},
                            {QStringLiteral("Haber"), QStringLiteral("Haber"), 14, Importe}});
  ui_->GrdApuntes->permitirArrastre(true);
  const std::pair<QStringView, void (FrmMenu::*)()> alSoltar[] = {
      {u"CmdEliminarApunte", &FrmMenu::MnuEliminarapunte_Click},
      {u"CmdEliminarPartida", &FrmMenu::MnuEliminarPartida_Click},
      {u"CmdModificaApunte", &FrmMenu::MnuModificarApunte_Click}};
  for (const auto& [nombre, reaccion] : alSoltar) {
    aceptaArrastre(&menu_->boton(nombre),
                   [this, reaccion = reaccion](const QString&) { (this->*reaccion)(); });
  }
  alRecolocar(DtaDiarioLista_, [this] { AMarcado(); });
  connect(ui_->GrdApuntes, &Rejilla::intro, this,
          [this] { protege([this] { MnuModificarApunte_Click(); }); });
  connect(ui_->GrdApuntes, &Rejilla::espacio, this, [this] { protege([this] { puntea(); }); });
  connect(ui_->GrdApuntes, &Rejilla::dobleClic, this, [this] {
    protege([this] {
      if (punteoVisible()) puntea();
    });
  });
  connect(ui_->GrdApuntes, &Rejilla::botonDerecho, this, [this](const QPoint& sitio) {
    menu_->barra()->findChild<QMenu*>(QStringLiteral("MnuEdicion"))->popup(sitio);
  });

  const std::pair<QToolButton*, Rejilla::Movimiento> flechas[] = {
      {ui_->CmdPrimero, Rejilla::Primera},
      {ui_->CmdAnterior, Rejilla::Anterior},
      {ui_->CmdSiguiente, Rejilla::Siguiente},
      {ui_->CmdUltimo, Rejilla::Ultima}};
  for (const auto& [boton, movimiento] : flechas)
    alPulsar(boton, [this, movimiento = movimiento] { ui_->GrdApuntes->mover(movimiento); });
  alPulsar(ui_->CmdActivaPunteo, [this] { CmdActivaPunteo_Click(); });
  alPulsar(ui_->CmdCerrarPunteo, [this] { CmdCerrarPunteo_Click(); });
  alElegirOpcion(QStringLiteral("OptPunteo"), [this](int indice) { OptPunteo_Click(indice); });
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
  enfocar(ui_->TxtSubcuenta);
  if (!hayEmpresa()) return;
  muestraDiario(QStringLiteral("order by nasiento"));
  muestraTotales();
}

void FrmMenu::diarioCambiado() {
  if (!DtaDiarioLista_.isOpen()) return;
  const Rejilla& rejilla = ui_->GrdApuntes->alDia();
  const bool enUltima = rejilla.filaActual() == rejilla.filas() - 1;
  const QString linea = enUltima ? QString() : rejilla.valor(QStringLiteral("NLinea"));
  DtaDiarioLista_.Refresh();
  if (!linea.isEmpty()) DtaDiarioLista_.FindFirst(QStringLiteral("NLinea = ") + linea);
  const bool sigue = !linea.isEmpty() && !DtaDiarioLista_.Recordset().NoMatch();
  if (!sigue && !DtaDiarioLista_.Eof()) DtaDiarioLista_.MoveLast();
  muestraTotales();
}

// After a dialog that typed lines of its own: they stand at the end.
void FrmMenu::muestraApuntesNuevos() {
  diarioCambiado();
  ui_->GrdApuntes->mover(Rejilla::Ultima);
}

// --- totals -------------------------------------------------------------------------------------

void FrmMenu::muestraTotales() {
  ATotal();
  ACuenta();
  AAsiento();
  AMarcado();
}

void FrmMenu::muestraTotal(PanelTotales::Fila fila, const QString& clave,
                           const std::optional<Totales>& totales) {
  if (totales) totales_.poner(fila, clave, *totales, sesion().MascaraImporte);
}

void FrmMenu::ATotal() {
  muestraTotal(PanelTotales::Total, {}, totalDiario(DtaTotal_, sesion().rutaEmpresa()));
}

void FrmMenu::ACuenta() {
  const QString subcuenta = ui_->TxtSubcuenta->text();
  muestraTotal(PanelTotales::Cuenta, subcuenta,
               totalCuenta(DtaTotal_, sesion().rutaEmpresa(), subcuenta));
}

void FrmMenu::AAsiento() {
  const QString asiento = ui_->TxtAsiento->text();
  muestraTotal(PanelTotales::Asiento, asiento,
               totalAsiento(DtaTotal_, sesion().rutaEmpresa(), asiento));
}

// Without a line nothing is marked, and the caption of a line that went away would mislead.
void FrmMenu::AMarcado() {
  const QString asiento = ui_->GrdApuntes->valor(QStringLiteral("NAsiento"));
  muestraTotal(
      PanelTotales::Marcado, asiento,
      asiento.isEmpty() ? Totales() : totalAsiento(DtaTotal_, sesion().rutaEmpresa(), asiento));
}

// --- changing and deleting ----------------------------------------------------------------------

// A line that an invoice wrote is only changed through the invoice.
bool FrmMenu::lineaDeIVA() const {
  return !DtaDiarioLista_.Fields(QStringLiteral("ApunteIVA")).isNull();
}

bool FrmMenu::apunteElegido() {
  if (!ui_->GrdApuntes->valor(QStringLiteral("NLinea")).isEmpty()) return true;
  ui_->GrdApuntes->setFocus();
  mensaje(kSinApunte.toString(), QStringLiteral("Error"));
  return false;
}

void FrmMenu::MnuModificarApunte_Click() {
  if (!apunteElegido()) return;
  const Rejilla& rejilla = *ui_->GrdApuntes;
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
    mostrar(QStringLiteral("FrmPartida"), 0, rejilla.valor(QStringLiteral("NLinea")));
    muestraTotales();  // the other lines of its asiento may have gone along
  } else if (mostrar(QStringLiteral("FrmIVASR"), llamada::kIVAModificacion,
                     rejilla.valor(QStringLiteral("NAsiento")))) {
    muestraApuntesNuevos();
  }
}

// Neither the closing date nor the kind of invoice forbids it: an intra-community line can't be
// changed, so deleting it is the way to put it right.
void FrmMenu::MnuEliminarPartida_Click() {
  enfocar(ui_->TxtSubcuenta);
  if (!apunteElegido()) return;
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
  const QString asiento = ui_->GrdApuntes->valor(QStringLiteral("NAsiento"));
  if (asiento.isEmpty()) return;
  muestraAsiento(asiento);
  mostrar(QStringLiteral("FrmEliminaAsiento"), 0, asiento);
  enfocar(ui_->TxtSubcuenta);
  muestraTotales();
}

// --- asientos out of balance --------------------------------------------------------------------

void FrmMenu::MnuDescuadre_Click() {
  DtaDescuadres_.bind(sesion().rutaEmpresa(),
                      QStringLiteral("Select * from SqlSumaDiarioPorAsientos order by nasiento"));
  Recordset& asientos = DtaDescuadres_.Recordset();
  bool seguir = true;
  const auto alEncontrar = [&](int numero, const QString&) {
    muestraAsiento(QString::number(numero));
    seguir = pregunta(QStringLiteral("Asiento %1 descuadrado, ¿desea seguir viendo asientos "
                                     "descuadrados?")
                          .arg(numero),
                      QStringLiteral("Descuadre localizado"));
    return seguir;
  };
  Progreso progreso(ctx, *ui_->Bar, asientos.rowTotal());
  try {
    recorreDescuadres(asientos, sesion().MascaraImporte, progreso.avance(), alEncontrar);
  } catch (...) {
    progreso.oculta();  // the window stays: its bar must not tell of work that is over
    throw;
  }
  progreso.oculta();
  if (!seguir) return;
  mensaje(QStringLiteral("Fín de la busqueda de asientos descuadrados"), QStringLiteral("Fín"));
}

// --- ticking off --------------------------------------------------------------------------------

void FrmMenu::CmdActivaPunteo_Click() {
  ui_->FrmPunteo->show();
  setCursor(Qt::PointingHandCursor);
}

void FrmMenu::CmdCerrarPunteo_Click() {
  ui_->FrmPunteo->hide();
  unsetCursor();
}

void FrmMenu::OptPunteo_Click(int indice) {
  const auto* opcion = findChild<QRadioButton*>(QStringLiteral("OptPunteo_%1").arg(indice));
  sesion().MarcaPunteo = opcion->text();
}

// A marked line is cleared by any mark; none replaces another in one step.
void FrmMenu::puntea() {
  if (ui_->GrdApuntes->valor(QStringLiteral("NLinea")).isEmpty()) return;
  const FieldRef marca = DtaDiarioLista_.Fields(QStringLiteral("Punteo"));
  const QString nueva = marca.display().isEmpty() ? sesion().MarcaPunteo : QStringLiteral("");
  DtaDiarioLista_.Edit();
  DtaDiarioLista_.Fields(QStringLiteral("Punteo")) = nueva;
  DtaDiarioLista_.Update();
}
