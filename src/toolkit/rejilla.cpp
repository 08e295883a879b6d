#include "toolkit/rejilla.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

#include "common/errorejecucion.h"
#include "toolkit/formulario.h"
#include "toolkit/modelorejilla.h"

const char* const Rejilla::kTipoArrastre = "application/x-librano-celda";

namespace {
constexpr int kMargenDeMitad = 7;  // two columns under one button leave room for the scroll bar
constexpr int kAireDeFila = 6;

// A plain field over the cell: the engine tells what doesn't fit, not the field.
class EditorDeCelda : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QWidget* createEditor(QWidget* padre, const QStyleOptionViewItem&,
                        const QModelIndex&) const override {
    auto* campo = new QLineEdit(padre);
    campo->setFrame(false);
    auto* rejilla = qobject_cast<Rejilla*>(parent());
    QMetaObject::invokeMethod(rejilla, "editorAbierto", Q_ARG(QWidget*, campo));
    return campo;
  }
};
}  // namespace

Rejilla::Rejilla(QWidget* padre) : QTableView(padre), modelo_(new ModeloRejilla(this)) {
  setModel(modelo_);
  setItemDelegate(new EditorDeCelda(this));
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
  if (posicion < 0 || modelo_->filas() == 0) {
    const int nueva = modelo_->filaNueva();
    return setCurrentIndex(nueva < 0 ? QModelIndex() : modelo_->index(nueva, columna));
  }
  const int fila = qBound(0, modelo_->filaDe(posicion), modelo_->filas() - 1);
  setCurrentIndex(modelo_->index(fila, columna));
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
  if (!actual.isValid() || actual.row() == nueva) return;
  if (anterior.isValid() && anterior.row() == actual.row()) return;
  const int posicion = modelo_->posicion(actual.row());
  protege([&] { modelo_->datos()->setAbsolutePosition(posicion); });
}

// --- what is on show
// ------------------------------------------------------------------------------

QString Rejilla::valor(const QString& campo) const {
  const_cast<Rejilla*>(this)->sincronizar();
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

QString Rejilla::textoDeCelda() const {
  const_cast<Rejilla*>(this)->sincronizar();
  const auto actual = currentIndex();
  return actual.isValid() ? modelo_->texto(actual.row(), actual.column()) : QString();
}

QString Rejilla::texto(int fila, int columna) const {
  const_cast<Rejilla*>(this)->sincronizar();
  return modelo_->texto(fila, columna);
}

void Rejilla::leerResto() {
  const auto* datos = modelo_->datos();
  if (!datos || !datos->isOpen()) return;
  const int conocidas = datos->Recordset().rowsKnown();
  protege([&] { datos->Recordset().rowTotal(); });
  if (datos->Recordset().rowsKnown() != conocidas) aplazarSincronia();
}

int Rejilla::filas() const {
  const_cast<Rejilla*>(this)->leerResto();
  const_cast<Rejilla*>(this)->sincronizar();
  return modelo_->filas();
}

int Rejilla::filaActual() const {
  const_cast<Rejilla*>(this)->sincronizar();
  return currentIndex().isValid() ? currentIndex().row() : -1;
}

void Rejilla::subeActual() {
  sincronizar();
  scrollTo(currentIndex(), PositionAtTop);
}

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
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kAireDeFila);
  if (reparto_.empty()) {
    for (size_t i = 0; i < columnas.size(); ++i) {
      setColumnWidth(static_cast<int>(i), anchoDe(columnas[i]));
    }
    return;
  }
  horizontalHeader()->setStretchLastSection(false);
  for (size_t i = 0; i < columnas.size() && i < reparto_.size(); ++i) {
    const bool mitad = std::count(reparto_.begin(), reparto_.end(), reparto_[i]) > 1;
    const int ancho = reparto_[i]->width();
    setColumnWidth(static_cast<int>(i), mitad ? ancho / 2 - kMargenDeMitad : ancho);
  }
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
  if (seVeia) scrollTo(currentIndex());
}

void Rejilla::paintEvent(QPaintEvent* evento) {
  sincronizar();
  QTableView::paintEvent(evento);
  if (!std::exchange(restoPorLeer_, false)) return;
  QTimer::singleShot(0, this, &Rejilla::leerResto);  // once the first ones are seen
}
