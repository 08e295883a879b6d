// How the main window looks: its drawings, its widths, its place on the screen.
#include <QHBoxLayout>
#include <QScreen>
#include <tuple>

#include "common/cini.h"
#include "common/formato.h"
#include "journal/frmmenu.h"
#include "journal/widgets/menuprincipal.h"
#include "toolkit/tema.h"
#include "ui_frmmenu.h"

namespace {

// Where the settings keep the place and size that the window was left with.
const QString kSeccionVentana = QStringLiteral("Ventana");
const QString kClaveGeometria = QStringLiteral("FrmMenu");
// What it shrinks to from full screen, the first time.
constexpr double kParteDePantalla = 0.8;
// What an amount of the entry line and of the grid has room for.
constexpr double kImporteAmplio = -999999999.99;

}  // namespace

void FrmMenu::preparaAspecto() {
  // A window of its own, not a dialog over another.
  setWindowFlags(Qt::Window);
  const QPixmap cerrado = icono(QStringLiteral("cerrada")).pixmap(22, 22);
  for (QLabel* imagen : {ui_->ImpEmp1, ui_->ImpEmp2, ui_->ImpEmp3}) {
    imagen->setPixmap(cerrado);
    // The journal must not jump when a closed year is opened.
    QSizePolicy politica = imagen->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    imagen->setSizePolicy(politica);
    imagen->hide();
  }
  ui_->Bar->hide();
  ui_->FrmPunteo->hide();

  ponGeometria();

  const std::pair<QToolButton*, const char*> flechas[] = {{ui_->CmdPrimero, "primero"},
                                                          {ui_->CmdAnterior, "anterior"},
                                                          {ui_->CmdSiguiente, "siguiente"},
                                                          {ui_->CmdUltimo, "ultimo"}};
  for (const auto& [boton, dibujo] : flechas) boton->setIcon(icono(QLatin1String(dibujo)));
  for (QAbstractButton* boton : findChildren<QAbstractButton*>()) {
    if (auto* pulsador = qobject_cast<QPushButton*>(boton)) pulsador->setAutoDefault(false);
    // Tab goes from field to field of the entry line; buttons are for the mouse and their keys.
    const bool graba = boton == ui_->CmdLinDebe || boton == ui_->CmdLinHaber;
    boton->setFocusPolicy(graba ? Qt::StrongFocus : Qt::ClickFocus);
  }
  ui_->TxtNombreCuenta->setFocusPolicy(Qt::ClickFocus);
  for (QToolButton* tecla : ui_->Frame1->findChildren<QToolButton*>()) {
    tecla->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    tecla->setMinimumSize(28, 28);
  }
}

// The journal is what is looked at all day: it gets all that the screen has, unless the user has
// given it another place.
void FrmMenu::ponGeometria() {
  resize(screen()->availableSize() * kParteDePantalla);
  QString geometria;
  CIni().Leer(ctx.carpetaPrograma + QStringLiteral("Config.ini"), kSeccionVentana, kClaveGeometria,
              geometria);
  if (!restoreGeometry(QByteArray::fromBase64(geometria.toLatin1())))
    setWindowState(Qt::WindowMaximized);
}

void FrmMenu::guardaGeometria() {
  if (!isVisible()) return;
  CIni().Grabar(ctx.carpetaPrograma + QStringLiteral("Config.ini"), kSeccionVentana,
                kClaveGeometria, QString::fromLatin1(saveGeometry().toBase64()));
}

// Each search button stands over its column at any width; that of the asientos out of balance
// has none of its own and shares the widest.
void FrmMenu::alineaBusqueda() {
  const auto boton = [this](QStringView nombre) { return &menu_->boton(nombre); };
  menu_->creaBotones(SitioBoton::Columna, *ui_->FilaBusqueda);
  auto* ancha = new QWidget(this);
  auto* dentro = new QHBoxLayout(ancha);
  dentro->setContentsMargins(0, 0, 0, 0);
  dentro->setSpacing(0);
  dentro->addWidget(boton(u"CmdDescripcion"), 3);
  dentro->addWidget(boton(u"CmdDescuadres"), 2);
  ui_->FilaBusqueda->insertWidget(ui_->FilaBusqueda->indexOf(boton(u"CmdImporte")), ancha, 1);

  const int marco = ui_->GrdApuntes->frameWidth();
  ui_->FilaBusqueda->setContentsMargins(marco, 0, marco, 0);
  ui_->GrdApuntes->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  ui_->GrdApuntes->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  ui_->GrdApuntes->alinearCon({boton(u"CmdPunteo"), boton(u"CmdCodigo"), boton(u"CmdFecha"),
                               boton(u"CmdAsiento"), ancha, boton(u"CmdImporte"),
                               boton(u"CmdImporte")});
}

// Codes, dates and amounts are as wide as they need with these letters and this company; names and
// concepts get the rest. The columns of the grid take the widths of the buttons over them.
void FrmMenu::ajustaAnchos() {
  const auto cabe = [this](const QString& muestra) {
    return fontMetrics().horizontalAdvance(muestra + QStringLiteral("00"));
  };
  const int subcuenta = cabe(QString(sesion().DigitosSubcuenta, QLatin1Char('0')));
  const int fecha = cabe(QStringLiteral("00/00/0000"));
  const int importe = cabe(Format(kImporteAmplio, sesion().MascaraImporte));
  const int asiento = cabe(QStringLiteral("0000000"));

  const std::pair<QStringView, int> columnas[] = {{u"CmdPunteo", cabe(QStringLiteral("W"))},
                                                  {u"CmdCodigo", subcuenta},
                                                  {u"CmdFecha", fecha},
                                                  {u"CmdAsiento", asiento},
                                                  {u"CmdImporte", 2 * importe}};
  for (const auto& [nombre, ancho] : columnas) {
    QAbstractButton& boton = menu_->boton(nombre);
    boton.setFixedWidth(std::max(ancho, boton.iconSize().width() + cabe(boton.text())));
  }
  const std::tuple<QWidget*, int, QWidget*> linea[] = {
      {ui_->TxtAsiento, asiento, ui_->CmdLinAsiento},
      {ui_->TxtFecha, fecha, ui_->CmdLinFecha},
      {ui_->TxtSubcuenta, subcuenta, ui_->CmdLinSubcuenta},
      {ui_->TxtDebeHaber, importe, ui_->LblDebeHaber}};
  for (const auto& [campo, ancho, encima] : linea)
    campo->setFixedWidth(std::max(ancho, encima->sizeHint().width()));
  totales_.ajustaAnchos(sesion().MascaraImporte, sesion().DigitosSubcuenta);
  ajustaAlAncho();
}

// On a small screen, or with large letters, the journal and its entry line are what must be whole:
// the calculator beside them makes way.
void FrmMenu::ajustaAlAncho() {
  const QMargins margenes = ui_->Marco->contentsMargins();
  const int lados = margenes.left() + margenes.right();
  const int diario = ui_->Izquierda->minimumSize().width();
  const int filas = std::max(ui_->FilaEmpresa->minimumSize().width(),
                             ui_->BarraHerramientas->minimumSize().width());
  setMinimumWidth(lados + std::max(diario, filas));
  const int conEl =
      lados + diario + ui_->Cuerpo->spacing() + ui_->Frame1->minimumSizeHint().width();
  ui_->Frame1->setVisible(width() >= conEl);
}

void FrmMenu::resizeEvent(QResizeEvent* evento) {
  Formulario::resizeEvent(evento);
  ajustaAlAncho();
}

void FrmMenu::changeEvent(QEvent* evento) {
  Formulario::changeEvent(evento);
  if (evento->type() == QEvent::FontChange && menu_) ajustaAnchos();
}
