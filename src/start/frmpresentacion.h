// The first screen: refuses a second copy on the machine, then gives way to the login.
#pragma once

#include <QSvgRenderer>
#include <QTimer>

#include "toolkit/formulario.h"

namespace Ui {
class FrmPresentacion;
}

class FrmPresentacion : public Formulario {
  Q_OBJECT
 public:
  explicit FrmPresentacion(Contexto& contexto);
  ~FrmPresentacion() override;

  void Form_Load() override;
  void Form_Activate() override;
  void TMR_Timer();  // one step of the bar; the hundredth shows FrmSeleccion

 protected:
  void paintEvent(QPaintEvent* evento) override;

 private:
  std::unique_ptr<Ui::FrmPresentacion> ui_;
  QTimer TMR_;
  QSvgRenderer dibujo_;
};
