#include "toolkit/rejilla.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "toolkit/celdarejilla.h"
#include "toolkit/modelorejilla.h"

const char* const Rejilla::kTipoArrastre = "application/x-librano-celda";

namespace {
constexpr int kMargenDeMitad = 7;  // two columns under one button leave room for the scroll bar
constexpr int kAireDeFila = 6;
constexpr int kEsperaAlPintar = 50;  // milliseconds, for another station's lock
constexpr int kOtraVez = 500;
constexpr int kTextoQueCede = 12;  // digits that a text keeps where there is no room
}  // namespace

Rejilla::Rejilla(QWidget* padre) : QTableView(padre), modelo_(new ModeloRejilla(this)) {
  setModel(modelo_);
  setItemDelegate(new CeldaRejilla(*modelo_, this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->hide();
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setMinimumSectionSize(8);
  // The current row must be seen as well while the user types elsewhere.
  QPalette colores = palette();
  for (const auto papel : {QPalette::Highlight, QPalette::HighlightedText}) {
    colores.setColor(QPalette::Inactive, papel, colores.color(QPalette::Active, papel));
  }
  setPalette(colores);
  connect(qApp, &QApplication::focusChanged, this, &Rejilla::alCambiarFoco);
}

Rejilla::~Rejilla() {
  disconnect(qApp, nullptr, this, nullptr);  // the focus goes once more while it is destroyed
}

void Rejilla::enlazar(DataControl& datos, std::vector<Columna> columnas) {
  if (modelo_->datos()) disconnect(modelo_->datos(), nullptr, this, nullptr);
  modelo_->enlazar(datos, std::move(columnas));
  connect(&datos, &DataControl::refreshed, this, [this] {
    modelo_->anotarRefresco();
    restoPorLeer_ = true;
    aplazarSincronia();
  });
  connect(&datos, &DataControl::repositioned, this, [this] {
    aplazarSincronia();
    Q_EMIT filaCambiada();
  });
  connect(&datos, &DataControl::rowAdded, this, &Rejilla::aplazarSincronia);
  connect(&datos, &DataControl::rowChanged, this, [this] { viewport()->update(); });
  connect(&datos, &DataControl::rowDeleted, this, [this](int posicion) {
    modelo_->anotarBorrada(posicion);
    aplazarSincronia();
  });
  sinAnchos_ = restoPorLeer_ = true;
  updateGeometry();
  aplazarSincronia();
}

void Rejilla::setMascara(const QString& mascara) {
  modelo_->setMascara(mascara);
  viewport()->update();
}

void Rejilla::permitirEdicion(int cambios) {
  cambios_ = cambios;
  modelo_->setCambios(cambios);
  verticalHeader()->setVisible(cambios & Altas);
  setEditTriggers(cambios ? AnyKeyPressed | EditKeyPressed | DoubleClicked
                          : EditTriggers(NoEditTriggers));
  aplazarSincronia();
}

// --- both follow each other
// -----------------------------------------------------------------------

void Rejilla::aplazarSincronia() {
  if (pendiente_) return;
  pendiente_ = true;
  QTimer::singleShot(0, this, &Rejilla::sincronizar);
}

void Rejilla::sincronizar() {
  if (!pendiente_ || sincronizando_) return;
  const QScopedValueRollback<bool> guarda(sincronizando_, true);
  pendiente_ = false;
  const bool enNueva = modelo_->hayNueva();
  const int columna = qMax(0, currentIndex().column());
  modelo_->ponerAlDia();
  if (sinAnchos_) ajustarAnchos();
  executeDelayedItemsLayout();  // the bars must know of new rows to go to the current one
  // What is being typed in the row of additions isn't left because the recordset moved.
  if (enNueva && modelo_->hayNueva()) {
    setCurrentIndex(modelo_->index(modelo_->filaNueva(), columna));
    return;
  }
  recolocar(columna);
}

void Rejilla::recolocar(int columna) {
  auto* datos = modelo_->datos();
  const int posicion = datos && datos->isOpen() ? datos->Recordset().AbsolutePosition() : -1;
  const int fila = posicion < 0 ? modelo_->filaNueva()
                   : modelo_->borrada(posicion) || modelo_->filas() == 0
                       ? -1
                       : modelo_->filaDe(posicion);
  if (fila < 0) clearSelection();
  setCurrentIndex(fila < 0 ? QModelIndex() : modelo_->index(fila, columna));
}

void Rejilla::currentChanged(const QModelIndex& actual, const QModelIndex& anterior) {
  QTableView::currentChanged(actual, anterior);
  if (sincronizando_ || !modelo_->datos()) return;
  const int nueva = modelo_->filaNueva();
  if (anterior.isValid() && anterior.row() == nueva && actual.row() != nueva) {
    if (!modelo_->guardarNueva()) {
      const int columna = anterior.column();
      // Back to the refused row, once this move is over.
      QTimer::singleShot(0, this, [this, columna] {
        setCurrentIndex(modelo_->index(modelo_->filaNueva(), columna));
        mostrarFallo();
      });
      return;
    }
  }
  if (actual.isValid() && actual.row() != nueva) irA(actual.row());
}

void Rejilla::irA(int fila) {
  auto& datos = *modelo_->datos();
  const int posicion = modelo_->posicion(fila);
  bool llegado = false;
  protege([&] {
    if (datos.Recordset().AbsolutePosition() != posicion) datos.setAbsolutePosition(posicion);
    llegado = true;
  });
  if (!llegado) aplazarSincronia();
}

// --- what is on show
// ------------------------------------------------------------------------------

QString Rejilla::valor(const QString& campo) const {
  const auto* datos = modelo_->datos();
  if (!datos || !datos->isOpen()) return {};
  if (currentIndex().isValid() && currentIndex().row() == modelo_->filaNueva()) {
    const auto& columnas = modelo_->columnas();
    for (size_t i = 0; i < columnas.size(); ++i) {
      if (columnas[i].campo.compare(campo, Qt::CaseInsensitive) == 0) {
        return modelo_->textoNuevo(static_cast<int>(i));
      }
    }
    return {};
  }
  try {
    return datos->Fields(campo).display();
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kSinRegistroActivo && e.numero() != err::kRegistroEliminado) throw;
    return {};
  }
}

Rejilla& Rejilla::alDia() {
  protege([this] { leerTodas(); });
  sincronizar();
  return *this;
}

void Rejilla::leerTodas() {
  const auto* datos = modelo_->datos();
  if (!datos || !datos->isOpen()) return;
  const auto& filas = datos->Recordset();
  const int conocidas = filas.rowsKnown();
  if (filas.rowTotal() != conocidas) aplazarSincronia();
}

// Nobody asked for them: while another station has the file it is only tried again later.
void Rejilla::leerResto() {
  if (!modelo_->datos()) return;
  protege([&] {
    try {
      const DBEngine::Brief breve(modelo_->datos()->engine(), kEsperaAlPintar);
      leerTodas();
    } catch (const ErrorEjecucion& e) {
      if (e.numero() != err::kRegistroBloqueado) throw;
      QTimer::singleShot(kOtraVez, this, &Rejilla::leerResto);
    }
  });
}

QString Rejilla::textoDeCelda() const {
  const auto actual = currentIndex();
  return actual.isValid() ? modelo_->texto(actual.row(), actual.column()) : QString();
}

QString Rejilla::texto(int fila, int columna) const {
  return modelo_->texto(fila, columna);
}

int Rejilla::filas() const {
  return modelo_->filas();
}

int Rejilla::filaActual() const {
  return currentIndex().isValid() ? currentIndex().row() : -1;
}

// --- moving
// --------------------------------------------------------------------------------------

// Without a current row, from the place where the recordset is: that of a deleted one, or the end.
QModelIndex Rejilla::destino(Movimiento movimiento) {
  alDia();
  const int filas = modelo_->rowCount();
  const auto* datos = modelo_->datos();
  if (filas == 0 || !datos || !datos->isOpen()) return {};
  const auto actual = currentIndex();
  const int posicion = datos->Recordset().AbsolutePosition();
  const int hueco = posicion < 0 ? modelo_->filas() : modelo_->filaDe(posicion);
  int fila = 0;
  switch (movimiento) {
    case Primera:
      break;
    case Anterior:
      fila = (actual.isValid() ? actual.row() : hueco) - 1;
      break;
    case Siguiente:
      fila = actual.isValid() ? actual.row() + 1 : hueco;
      break;
    case Ultima:
      fila = modelo_->filas() - 1;
      break;
  }
  return modelo_->index(qBound(0, fila, filas - 1), qMax(0, actual.column()));
}

void Rejilla::mover(Movimiento movimiento) {
  const auto indice = destino(movimiento);
  if (indice.isValid()) setCurrentIndex(indice);
}

QModelIndex Rejilla::moveCursor(CursorAction accion, Qt::KeyboardModifiers teclas) {
  sincronizar();
  // What the focus asks for on its way in: it makes no row current that wasn't.
  if (accion == MoveNext || accion == MovePrevious) return currentIndex();
  const bool sinActual = !currentIndex().isValid();
  const bool deLineas = !cambios_ || teclas.testFlag(Qt::ControlModifier);
  if (accion == MoveHome && deLineas) return destino(Primera);
  if (accion == MoveEnd && deLineas) return destino(Ultima);
  if (sinActual && (accion == MoveUp || accion == MovePageUp)) return destino(Anterior);
  if (sinActual) return destino(Siguiente);
  return QTableView::moveCursor(accion, teclas);
}

void Rejilla::subeActual() {
  sincronizar();
  scrollTo(currentIndex(), PositionAtTop);
}

// --- widths
// --------------------------------------------------------------------------------------

int Rejilla::anchoDe(const Columna& columna) const {
  return fontMetrics().horizontalAdvance(QLatin1Char('0')) * (columna.ancho + 2);
}

// As wide as its columns, whatever the size of the letters. A grid under buttons has their width.
QSize Rejilla::sizeHint() const {
  QSize deseo = QTableView::sizeHint();
  if (!reparto_.empty()) return deseo;
  int ancho = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
  for (const Columna& columna : modelo_->columnas()) ancho += anchoDe(columna);
  deseo.setWidth(std::max(deseo.width(), ancho));
  return deseo;
}

void Rejilla::ajustarAnchos() {
  const auto& columnas = modelo_->columnas();
  if (columnas.empty()) return;
  sinAnchos_ = false;
  // The heading goes through all its rows for it, even where it is the same.
  const int alto = fontMetrics().height() + kAireDeFila;
  if (verticalHeader()->defaultSectionSize() != alto) verticalHeader()->setDefaultSectionSize(alto);
  if (reparto_.empty()) {
    for (size_t i = 0; i < columnas.size(); ++i) {
      setColumnWidth(static_cast<int>(i), anchoDe(columnas[i]));
    }
    return cederTexto();
  }
  horizontalHeader()->setStretchLastSection(false);
  for (size_t i = 0; i < columnas.size() && i < reparto_.size(); ++i) {
    const bool mitad = std::count(reparto_.begin(), reparto_.end(), reparto_[i]) > 1;
    const int ancho = reparto_[i]->width();
    setColumnWidth(static_cast<int>(i), mitad ? ancho / 2 - kMargenDeMitad : ancho);
  }
  // The vertical bar stands under the last of them too.
  const int ultima = static_cast<int>(columnas.size()) - 1;
  const int sobra = horizontalHeader()->length() - viewport()->width();
  if (sobra > 0 && sobra <= verticalScrollBar()->sizeHint().width() + 2 * frameWidth())
    setColumnWidth(ultima, columnWidth(ultima) - sobra);
}

// In a window that is narrower than the columns the widest text gives way, so that the amounts
// behind it are seen.
void Rejilla::cederTexto() {
  const auto& columnas = modelo_->columnas();
  int sobra = verticalScrollBar()->sizeHint().width() - maximumViewportSize().width();
  for (const Columna& columna : columnas) sobra += anchoDe(columna);
  const auto ancha = std::ranges::max_element(columnas, {}, [](const Columna& columna) {
    return columna.tipo == Columna::Tipo::Texto ? columna.ancho : 0;
  });
  const int menor = fontMetrics().horizontalAdvance(QString(kTextoQueCede, QLatin1Char('0')));
  if (sobra > 0 && ancha->tipo == Columna::Tipo::Texto && anchoDe(*ancha) > menor)
    setColumnWidth(int(ancha - columnas.begin()), std::max(anchoDe(*ancha) - sobra, menor));
}

void Rejilla::alinearCon(const std::vector<QWidget*>& reparto) {
  reparto_ = reparto;
  for (auto* boton : reparto_) boton->installEventFilter(this);
  ajustarAnchos();
}

bool Rejilla::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::Resize && objeto != viewport()) ajustarAnchos();
  return QTableView::eventFilter(objeto, evento);
}

void Rejilla::changeEvent(QEvent* evento) {
  QTableView::changeEvent(evento);
  if (evento->type() == QEvent::FontChange) ajustarAnchos();
}

// The row where one was stays in sight, however small the window is made.
void Rejilla::resizeEvent(QResizeEvent* evento) {
  const bool seVeia = QRect(QPoint(), evento->oldSize()).intersects(visualRect(currentIndex()));
  QTableView::resizeEvent(evento);
  if (!reparto_.empty()) ajustarAnchos();
  if (seVeia) scrollTo(currentIndex());
}

void Rejilla::updateGeometries() {
  if (recortando_) return;
  QTableView::updateGeometries();
  const QScopedValueRollback<bool> guarda(recortando_, true);
  QMargins margenes = viewportMargins();
  margenes.setBottom(viewport()->height() % std::max(1, verticalHeader()->defaultSectionSize()));
  if (margenes.bottom() == 0) return;
  setViewportMargins(margenes);
  // The end was reckoned with the room that is left over.
  verticalHeader()->resize(verticalHeader()->width(), viewport()->height());
  verticalHeader()->setOffsetToSectionPosition(verticalScrollBar()->value());
}

bool Rejilla::viewportEvent(QEvent* evento) {
  if (evento->type() != QEvent::ToolTip) return QTableView::viewportEvent(evento);
  const auto& ayuda = static_cast<QHelpEvent&>(*evento);
  const QModelIndex celda = indexAt(ayuda.pos());
  const QRect sitio = visualRect(celda);
  const QString todo = celda.isValid() ? texto(celda.row(), celda.column()) : QString();
  const int aire = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
  const bool cabe = fontMetrics().horizontalAdvance(todo) + aire <= sitio.width();
  QToolTip::showText(ayuda.globalPos(), cabe ? QString() : todo, viewport(), sitio);
  return true;
}

void Rejilla::paintEvent(QPaintEvent* evento) {
  sincronizar();
  {
    // What can't be read at once is painted as it was, and again a little later.
    std::optional<DBEngine::Brief> breve;
    if (modelo_->datos()) breve.emplace(modelo_->datos()->engine(), kEsperaAlPintar);
    QTableView::paintEvent(evento);
  }
  if (modelo_->tomarSinLeer())
    QTimer::singleShot(kOtraVez, viewport(), qOverload<>(&QWidget::update));
  if (!std::exchange(restoPorLeer_, false)) return;
  QTimer::singleShot(0, this, &Rejilla::leerResto);  // once the first ones are seen
}
