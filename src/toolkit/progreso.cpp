#include "toolkit/progreso.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QProgressBar>

#include "engine/dbengine.h"
#include "toolkit/contexto.h"

namespace {
constexpr int kPeriodo = 30;  // milliseconds: the eye sees it move, the work hardly notices
}

// Drops keys, clicks and the close button while the process runs; but not those for a box that the
// process itself shows.
class Progreso::Guardia : public QObject {
 public:
  Guardia() : dialogo_(QApplication::activeModalWidget()) { qApp->installEventFilter(this); }

 protected:
  bool eventFilter(QObject*, QEvent* evento) override {
    switch (evento->type()) {
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
        break;
      case QEvent::Close:
        if (!evento->spontaneous()) return false;
        evento->ignore();
        break;
      default:
        return false;
    }
    return QApplication::activeModalWidget() == dialogo_;
  }

 private:
  QPointer<QWidget> dialogo_;
};

Progreso::Progreso(Contexto& contexto, QProgressBar& barra, int maximo)
    : contexto_(contexto), barra_(barra), guardia_(std::make_unique<Guardia>()) {
  barra_.setRange(0, qMax(1, maximo));
  barra_.setValue(0);
  barra_.show();
  reloj_.start();
  atender();
}

Progreso::~Progreso() {
  atender();
}

void Progreso::atender() {
  barra_.setValue(valor_);
  QApplication::processEvents();
  reloj_.restart();
}

void Progreso::avanza(int valor) {
  valor_ = valor;
  contexto_.motor.breathe();
  if (reloj_.elapsed() >= kPeriodo) atender();
}

void Progreso::avanza() {
  avanza(valor_ + 1);
}

std::function<void(int valor, int maximo)> Progreso::avance() {
  return [this](int valor, int maximo) {
    if (barra_.maximum() != maximo) barra_.setMaximum(qMax(1, maximo));
    avanza(valor);
  };
}

void Progreso::oculta() {
  barra_.hide();
}
