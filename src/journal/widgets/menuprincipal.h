// The menu bar and the buttons of the main window, made from the menu table.
//
// Each action and each button bears the control name of its entry. An entry whose form isn't
// registered stands disabled, and so does a button that repeats it.
#pragma once

#include <functional>

#include "start/menu/tablamenu.h"

class QAbstractButton;
class QBoxLayout;
class QMenuBar;
class QWidget;
class Registro;

class MenuPrincipal {
 public:
  // `alElegir` runs when an entry is chosen.
  MenuPrincipal(QWidget& ventana, const Registro& formularios,
                std::function<void(const EntradaMenu&)> alElegir);

  QMenuBar* barra() const { return barra_; }

  // Adds the buttons of one place to `fila`, with tool-tips, icons and separators.
  void creaBotones(SitioBoton sitio, QBoxLayout& fila);

  // A button of either place by its control name.
  QAbstractButton& boton(QStringView control) const;

 private:
  bool disponible(const EntradaMenu& entrada) const;
  QAbstractButton* creaBoton(const BotonMenu& boton);

  QWidget& ventana_;
  const Registro& formularios_;
  std::function<void(const EntradaMenu&)> alElegir_;
  QMenuBar* barra_;
};
