// The grid under the user's hands: keys, mouse, editing in place.
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>

#include "common/errorejecucion.h"
#include "toolkit/formulario.h"
#include "toolkit/modelorejilla.h"

void Rejilla::protege(const std::function<void()>& accion) {
  Formulario::protegeEn(this, accion, objectName() + QStringLiteral("_Update"));
}

void Rejilla::mostrarFallo() {
  if (const auto fallo = modelo_->tomarFallo()) {
    protege([&] { throw ErrorEjecucion(*fallo); });
  }
}

bool Rejilla::guardarFila() {
  // The button of the window takes no focus: the cell under it may still be open.
  if (QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr) {
    commitData(editor);
    const bool rechazada = modelo_->hayFallo();
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (rechazada) return false;
  }
  if (modelo_->guardarNueva()) return true;
  mostrarFallo();
  return false;
}

void Rejilla::alCambiarFoco(QWidget* antes, QWidget* ahora) {
  const auto dentro = [this](QWidget* w) { return w && (w == this || isAncestorOf(w)); };
  if (!ahora || ahora->window() != window() || dentro(ahora) || !dentro(antes)) return;
  guardarFila();
}

// --- keys
// -----------------------------------------------------------------------------------------

bool Rejilla::tratarTecla(QKeyEvent& evento) {
  const bool escribible = modelo_->editable(currentIndex().column());
  switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT intro();
      return true;
    case Qt::Key_Delete:
      if (!cambios_) return false;
      if (cambios_ & Bajas) {
        borrarFila();
      } else if (escribible) {
        modelo_->setData(currentIndex(), QString(), Qt::EditRole);
        mostrarFallo();
      }
      return true;
    case Qt::Key_Escape:
      if (!modelo_->hayNueva()) return false;
      modelo_->dejarNueva();
      return true;
    default:
      break;
  }
  if (escribible) return false;
  if (evento.text() == QLatin1String("+")) {
    Q_EMIT mas();
    return true;
  }
  if (evento.text() == QLatin1String(" ")) {
    Q_EMIT espacio();
    return true;
  }
  return false;
}

void Rejilla::keyPressEvent(QKeyEvent* evento) {
  sincronizar();
  if (!tratarTecla(*evento)) QTableView::keyPressEvent(evento);
}

void Rejilla::borrarFila() {
  if (currentIndex().row() == modelo_->filaNueva()) return modelo_->dejarNueva();
  if (!currentIndex().isValid()) return;
  protege([this] {
    auto& datos = *modelo_->datos();
    datos.Delete();
    datos.MoveNext();
    if (datos.Eof() && modelo_->filas() > 1) datos.MoveLast();
  });
}

// --- editing in place
// -----------------------------------------------------------------------------

bool Rejilla::edit(const QModelIndex& indice, EditTrigger motivo, QEvent* evento) {
  if (sincronizando_ || pendiente_) return false;
  // A cell that can't be read isn't opened: what stands in it would be typed over unseen.
  const bool abre = motivo != NoEditTriggers && editTriggers().testFlag(motivo) &&
                    indice.isValid() && modelo_->editable(indice.column());
  bool legible = true;
  if (abre || motivo == AllEditTriggers) {
    legible = false;
    protege([&] {
      modelo_->texto(indice.row(), indice.column());
      legible = true;
    });
  }
  return legible && QTableView::edit(indice, motivo, evento);
}

void Rejilla::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint motivo) {
  QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
  if (modelo_->hayFallo()) {
    setFocus();
    return mostrarFallo();
  }
  const auto actual = currentIndex();
  const bool adelante = motivo == QAbstractItemDelegate::SubmitModelCache ||
                        motivo == QAbstractItemDelegate::EditNextItem;
  if (!adelante || !actual.isValid()) return;
  for (int columna = actual.column() + 1; columna < modelo_->columnCount(); ++columna) {
    if (modelo_->editable(columna)) return setCurrentIndex(actual.siblingAtColumn(columna));
  }
  if (actual.row() + 1 >= modelo_->rowCount() && actual.row() != modelo_->filaNueva()) return;
  // From the last column to the first of the row below; the row of additions is written by then.
  int primera = 0;
  while (!modelo_->editable(primera)) ++primera;
  if (actual.row() == modelo_->filaNueva()) {
    if (!guardarFila()) return;
    sincronizar();
    return setCurrentIndex(modelo_->index(modelo_->filaNueva(), primera));
  }
  setCurrentIndex(modelo_->index(actual.row() + 1, primera));
}

// --- mouse
// ----------------------------------------------------------------------------------------

void Rejilla::mousePressEvent(QMouseEvent* evento) {
  sincronizar();
  pulsado_ = evento->pos();
  arrastrable_ = arrastre_ && evento->button() == Qt::LeftButton &&
                 evento->modifiers().testFlag(Qt::ShiftModifier);
  QTableView::mousePressEvent(evento);
  // Also on the row that is highlighted already: the recordset may have been refused there before.
  const auto indice = indexAt(evento->pos());
  if (indice.isValid() && indice == currentIndex() && indice.row() != modelo_->filaNueva()) {
    irA(indice.row());
  }
}

void Rejilla::mouseMoveEvent(QMouseEvent* evento) {
  if (!arrastrable_) return QTableView::mouseMoveEvent(evento);
  const int distancia = (evento->pos() - pulsado_).manhattanLength();
  if (!(evento->buttons() & Qt::LeftButton) || distancia < QApplication::startDragDistance()) {
    return;
  }
  arrastrable_ = false;
  std::optional<QString> texto;
  protege([&] { texto = textoDeCelda(); });
  if (!texto) return;
  auto* contenido = new QMimeData;
  contenido->setText(*texto);
  contenido->setData(QLatin1String(kTipoArrastre), {});
  auto* arrastre = new QDrag(this);
  arrastre->setMimeData(contenido);
  arrastre->exec(Qt::CopyAction);
}

void Rejilla::mouseDoubleClickEvent(QMouseEvent* evento) {
  QTableView::mouseDoubleClickEvent(evento);
  if (evento->button() == Qt::LeftButton && indexAt(evento->pos()).isValid()) Q_EMIT dobleClic();
}

void Rejilla::contextMenuEvent(QContextMenuEvent* evento) {
  QPoint donde = evento->globalPos();
  if (evento->reason() == QContextMenuEvent::Keyboard) {
    donde = viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft());
  } else if (const auto indice = indexAt(evento->pos()); indice.isValid()) {
    setCurrentIndex(indice);
  }
  evento->accept();
  Q_EMIT botonDerecho(donde);
}
