// As long as it stands keys, clicks and the close button are dropped, so that the windows can be
// kept painted while something works.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

// A box that the work itself shows takes its keys and clicks as ever.
class SinEntrada : public QObject {
 public:
  SinEntrada();
  bool escape() const { return escape_; }  // it was pressed meanwhile

 protected:
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  QPointer<QWidget> dialogo_;
  bool escape_ = false;
};
