#include "toolkit/sinentrada.h"

#include <QApplication>
#include <QKeyEvent>

SinEntrada::SinEntrada() : dialogo_(QApplication::activeModalWidget()) {
  qApp->installEventFilter(this);
}

bool SinEntrada::eventFilter(QObject*, QEvent* evento) {
  switch (evento->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
      if (static_cast<QKeyEvent*>(evento)->key() == Qt::Key_Escape) escape_ = true;
      break;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
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
