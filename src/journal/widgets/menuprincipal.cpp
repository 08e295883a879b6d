#include "journal/widgets/menuprincipal.h"

#include <QAction>
#include <QBoxLayout>
#include <QFrame>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>

#include "toolkit/formulario.h"
#include "toolkit/registro.h"

MenuPrincipal::MenuPrincipal(QWidget& ventana, const Registro& formularios,
                             std::function<void(const EntradaMenu&)> alElegir)
    : ventana_(ventana),
      formularios_(formularios),
      alElegir_(std::move(alElegir)),
      barra_(new QMenuBar(&ventana)) {
  for (const EntradaMenu& entrada : menuPrincipal()) {
    QWidget* padre = barra_;
    if (!entrada.padre.isEmpty()) padre = barra_->findChild<QMenu*>(entrada.padre.toString());
    if (entrada.separa) {
      auto* raya = new QAction(padre);
      raya->setSeparator(true);
      padre->addAction(raya);
    }
    if (entrada.accion == AccionMenu::Menu) {
      auto* menu = new QMenu(entrada.rotulo.toString(), padre);
      menu->setObjectName(entrada.control.toString());
      padre->addAction(menu->menuAction());
      continue;
    }
    auto* accion = new QAction(entrada.rotulo.toString(), padre);
    accion->setObjectName(entrada.control.toString());
    accion->setEnabled(disponible(entrada));
    if (!entrada.atajo.isEmpty()) accion->setShortcut(QKeySequence(entrada.atajo.toString()));
    QObject::connect(accion, &QAction::triggered, &ventana_,
                     [this, &entrada] { alElegir_(entrada); });
    padre->addAction(accion);
  }
}

bool MenuPrincipal::disponible(const EntradaMenu& entrada) const {
  if (entrada.accion != AccionMenu::Modal && entrada.accion != AccionMenu::Sale) return true;
  return formularios_.existe(entrada.destino.toString());
}

QAbstractButton* MenuPrincipal::creaBoton(const BotonMenu& boton) {
  QAbstractButton* nuevo = nullptr;
  const QIcon icono(boton.icono.toString());
  if (boton.sitio == SitioBoton::Columna) {
    auto* pulsador = new QPushButton(icono, boton.rotulo.toString(), &ventana_);
    pulsador->setAutoDefault(false);
    nuevo = pulsador;
  } else {
    auto* herramienta = new QToolButton(&ventana_);
    herramienta->setIcon(icono);
    herramienta->setIconSize(QSize(24, 24));
    herramienta->setAutoRaise(true);
    nuevo = herramienta;
  }
  nuevo->setObjectName(boton.control.toString());
  nuevo->setToolTip(boton.ayuda.toString());
  nuevo->setAccessibleName(boton.ayuda.toString());
  if (!boton.atajo.isEmpty()) nuevo->setShortcut(QKeySequence(boton.atajo.toString()));
  nuevo->setFocusPolicy(Qt::ClickFocus);
  const EntradaMenu* entrada = entradaMenu(boton.igualQue);
  nuevo->setEnabled(!entrada || disponible(*entrada));
  return nuevo;
}

void MenuPrincipal::creaBotones(SitioBoton sitio, QBoxLayout& fila) {
  for (const BotonMenu& boton : botonesPrincipal()) {
    if (boton.sitio != sitio) continue;
    if (boton.separa) {
      auto* raya = new QFrame(&ventana_);
      raya->setFrameShape(QFrame::VLine);
      raya->setFrameShadow(QFrame::Sunken);
      fila.addSpacing(4);
      fila.addWidget(raya);
      fila.addSpacing(4);
    }
    fila.addWidget(creaBoton(boton));
  }
}

QAbstractButton& MenuPrincipal::boton(QStringView control) const {
  return *ventana_.findChild<QAbstractButton*>(control.toString());
}
