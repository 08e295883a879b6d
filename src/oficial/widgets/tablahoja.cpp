#include "oficial/widgets/tablahoja.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>

#include "common/errorejecucion.h"
#include "common/ignorar.h"
#include "toolkit/formulario.h"

class TablaHoja::Modelo : public QAbstractTableModel {
 public:
  explicit Modelo(TablaHoja& tabla) : QAbstractTableModel(&tabla), tabla_(tabla) {}

  void pon(std::vector<ColumnaHojaPantalla> columnas, Fuente fuente) {
    beginResetModel();
    columnas_ = std::move(columnas);
    fuente_ = std::move(fuente);
    endResetModel();
  }
  void reinicia() {
    beginResetModel();
    endResetModel();
  }
  void cambia() {
    if (rowCount({}) > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount({}) - 1, columnas() - 1));
  }
  int columnas() const { return int(columnas_.size()); }
  const ColumnaHojaPantalla& columna(int c) const { return columnas_[size_t(c)]; }

  int rowCount(const QModelIndex& padre) const override {
    return padre.isValid() || !fuente_.filas ? 0 : fuente_.filas();
  }
  int columnCount(const QModelIndex& padre) const override {
    return padre.isValid() ? 0 : columnas();
  }
  QVariant data(const QModelIndex& i, int papel) const override {
    const int f = i.row(), c = i.column();
    switch (papel) {
      case Qt::DisplayRole:
      case Qt::EditRole:
        // Amounts come with the blanks of their mask; blanks before a text set it in.
        return columna(c).derecha ? fuente_.texto(f, c).trimmed() : fuente_.texto(f, c);
      case Qt::ToolTipRole:
        return fuente_.texto(f, c);
      case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (columna(c).derecha ? Qt::AlignRight : Qt::AlignLeft));
      case Qt::FontRole: {
        QFont letra = tabla_.font();
        letra.setBold(fuente_.resalta && fuente_.resalta(f, c));
        return letra;
      }
      case Qt::ForegroundRole:
        return fuente_.avisa && fuente_.avisa(f, c) ? QVariant(QColor(0xb0, 0x30, 0x20))
                                                    : QVariant();
      case Qt::BackgroundRole:
        return fuente_.editable && fuente_.editable(f, c)
                   ? QVariant(tabla_.palette().alternateBase())
                   : QVariant();
      default:
        return {};
    }
  }
  QVariant headerData(int c, Qt::Orientation sentido, int papel) const override {
    if (sentido != Qt::Horizontal) return {};
    if (papel == Qt::DisplayRole) return columna(c).titulo;
    if (papel == Qt::ToolTipRole) return columna(c).ayuda;
    if (papel == Qt::TextAlignmentRole)
      return QVariant::fromValue(Qt::AlignVCenter |
                                 (columna(c).derecha ? Qt::AlignRight : Qt::AlignLeft));
    return {};
  }
  Qt::ItemFlags flags(const QModelIndex& i) const override {
    const auto base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const bool si = fuente_.editable && fuente_.editable(i.row(), i.column());
    return si ? base | Qt::ItemIsEditable : base;
  }
  bool setData(const QModelIndex& i, const QVariant& valor, int papel) override {
    if (papel != Qt::EditRole || !fuente_.escribe) return false;
    const QString texto = valor.toString();
    if (texto == fuente_.texto(i.row(), i.column()).trimmed()) return true;
    try {
      fuente_.escribe(i.row(), i.column(), texto);
    } catch (const ErrorEjecucion& fallo) {
      // Told once the editor has gone: a box over it would end it a second time.
      QMetaObject::invokeMethod(
          &tabla_,
          [&tabla = tabla_, fallo] {
            Formulario::protegeEn(
                &tabla, [&] { throw fallo; }, tabla.objectName() + QStringLiteral("_Update"));
          },
          Qt::QueuedConnection);
    }
    cambia();
    return true;
  }

 private:
  TablaHoja& tabla_;
  std::vector<ColumnaHojaPantalla> columnas_;
  Fuente fuente_;
};

TablaHoja::TablaHoja(QWidget* padre) : QTableView(padre), modelo_(new Modelo(*this)) {
  setModel(modelo_);
  setSelectionMode(SingleSelection);
  setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setShowGrid(true);
  verticalHeader()->hide();
  horizontalHeader()->setHighlightSections(false);
  connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& i) {
    if (!(modelo_->flags(i) & Qt::ItemIsEditable)) Q_EMIT intro(i.row());
  });
}

TablaHoja::~TablaHoja() = default;

void TablaHoja::enlazar(std::vector<ColumnaHojaPantalla> columnas, Fuente fuente) {
  const int cifra = fontMetrics().horizontalAdvance(u'0');
  modelo_->pon(std::move(columnas), std::move(fuente));
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + cifra);
  for (int c = 0; c < modelo_->columnas(); ++c) {
    const int titulo = fontMetrics().horizontalAdvance(modelo_->columna(c).titulo) + 2 * cifra;
    setColumnWidth(c, qMax(titulo, (modelo_->columna(c).ancho + 1) * cifra));
  }
  horizontalHeader()->setStretchLastSection(true);
}

void TablaHoja::refresca() {
  const int antes = fila(), columna = currentIndex().column();
  modelo_->reinicia();
  const int filas = modelo_->rowCount({});
  if (filas > 0) irA(qBound(0, antes, filas - 1), qMax(0, columna));
}

void TablaHoja::repinta() {
  modelo_->cambia();
}

void TablaHoja::irA(int fila, int columna) {
  setCurrentIndex(modelo_->index(fila, columna));
  scrollTo(currentIndex());
}

QString TablaHoja::textoDe(int fila, int columna) const {
  return modelo_->data(modelo_->index(fila, columna), Qt::DisplayRole).toString();
}

void TablaHoja::cierraCelda() {
  QPointer<QWidget> editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
  if (editor) commitData(editor);
  if (editor) closeEditor(editor, QAbstractItemDelegate::NoHint);
}

QSize TablaHoja::sizeHint() const {
  int ancho = 2 * frameWidth() + 3 * fontMetrics().horizontalAdvance(u'0');
  for (int c = 0; c < modelo_->columnas(); ++c) ancho += columnWidth(c);
  return {ancho, 18 * verticalHeader()->defaultSectionSize()};
}

void TablaHoja::keyPressEvent(QKeyEvent* evento) {
  // The editor of a cell lets its Enter pass on: it ends the cell and nothing else.
  if (state() == EditingState) return evento->accept();
  const bool editable = modelo_->flags(currentIndex()) & Qt::ItemIsEditable;
  const bool esIntro = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
  if (esIntro && currentIndex().isValid()) {
    Q_EMIT intro(currentIndex().row());
    return evento->accept();
  }
  if (evento->key() == Qt::Key_Delete && editable) {
    modelo_->setData(currentIndex(), QString(), Qt::EditRole);
    return evento->accept();
  }
  if (evento->key() == Qt::Key_Tab || evento->key() == Qt::Key_Backtab) return evento->ignore();
  QTableView::keyPressEvent(evento);
}

void TablaHoja::currentChanged(const QModelIndex& actual, const QModelIndex& anterior) {
  QTableView::currentChanged(actual, anterior);
  if (actual.row() != anterior.row()) Q_EMIT filaCambiada(actual.row());
}

void guardaCelda(Formulario& forma, Contexto& contexto, std::function<void()> relee) {
  const auto guarda = [&forma, &contexto, relee = std::move(relee)] {
    try {
      contexto.cajas->guardaPendiente(&forma);
    } catch (const ErrorEjecucion&) {
      ignorando(relee);
      throw;
    }
  };
  QMetaObject::invokeMethod(
      &forma, [&forma, guarda] { forma.protege(guarda, "Celda_AfterUpdate"); },
      Qt::QueuedConnection);
}
