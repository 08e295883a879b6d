#include "toolkit/registro.h"

#include <QApplication>
#include <QPointer>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>

#include "common/errorejecucion.h"
#include "engine/dbengine.h"
#include "toolkit/cajas.h"
#include "toolkit/contexto.h"
#include "toolkit/fallo.h"
#include "toolkit/formulario.h"

namespace {
// What is put around a window beyond what it draws itself, as it was around the one below it.
QSize marcoDe(const QWidget* ventana) {
  return ventana ? ventana->frameGeometry().size() - ventana->size() : QSize(0, 0);
}
}  // namespace

Registro::Registro(Contexto& contexto) : contexto_(contexto) {
  QObject::connect(&contexto.motor, &DBEngine::commitFailed, &contexto.motor,
                   [&contexto](int numero, const QString& descripcion) {
                     if (auto* registro = contexto.formularios) {
                       registro->avisarDeFallo(numero, descripcion);
                     }
                   });
  contexto.motor.setSaver(
      [&contexto] { contexto.cajas->guardaPendiente(QApplication::activeWindow()); });
}

Registro::~Registro() {
  contexto_.motor.setSaver({});
  if (contexto_.formularios == this) contexto_.formularios = nullptr;
}

void Registro::registra(const QString& nombre, const Fabrica& fabrica) {
  fabricas_.insert(nombre, fabrica);
}

// Nobody is left to catch what fails at the return to the event loop: it is told over the form on
// top. The engine goes on trying meanwhile, so one box at a time.
void Registro::avisarDeFallo(int numero, const QString& descripcion) {
  QWidget* padre = abiertos_.isEmpty() ? nullptr : abiertos_.last();
  const Fallo fallo(numero, descripcion, padre ? padre->objectName() : QStringLiteral("Registro"));
  if (numero != err::kNoSePuedeGuardar) return avisa(contexto_, padre, fallo);
  if (contexto_.cajas->eligiendo()) return;
  anota(contexto_, fallo);
  try {
    contexto_.cajas->guardaPendiente(padre);
  } catch (const ErrorEjecucion& e) {
    avisa(contexto_, padre, {e, fallo.lugar});
  }
}

bool Registro::mostrar(const QString& nombre) {
  const auto fabrica = fabricas_.constFind(nombre);
  if (fabrica == fabricas_.cend()) return false;
  QWidget* padre = abiertos_.isEmpty() ? nullptr : abiertos_.last();
  const QPointer<Formulario> forma = (*fabrica)(contexto_).release();
  const auto borra = qScopeGuard([&] { delete forma.data(); });
  forma->setObjectName(nombre);
  // Over its parent on the screen; if that one goes away first it takes this one along.
  forma->setParent(padre, forma->windowFlags() | Qt::Dialog);
  if (forma->cargar()) {
    // As large as its contents ask for: left alone, a window takes two thirds of the screen at most
    // and its grids hide behind bars. Whatever it asks for, its title bar and its buttons are seen.
    const QSize pide = forma->testAttribute(Qt::WA_Resized) ? forma->size() : forma->sizeHint();
    forma->resize(pide.boundedTo(forma->screen()->availableSize() - marcoDe(padre)));
    contexto_.cajas->modal(*forma);
  }
  return true;
}

bool Registro::cambiarA(const QString& nombre) {
  const auto fabrica = fabricas_.constFind(nombre);
  if (fabrica == fabricas_.cend()) return false;
  // While everything is still open: what can't be written may be given up, or the change of forms.
  contexto_.cajas->guardaPendiente(abiertos_.isEmpty() ? nullptr : abiertos_.last());
  // Between two of these no window is open: the program ends by `terminar` alone.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  const auto abiertos = abiertos_;
  for (auto it = abiertos.crbegin(); it != abiertos.crend(); ++it) (*it)->descargar();
  if (base_) base_.release()->retirar();  // a reaction of it may be asking for this

  base_ = (*fabrica)(contexto_);
  const QPointer<Formulario> forma = base_.get();
  forma->setObjectName(nombre);
  forma->setWindowFlags(Qt::Window);
  forma->show();
  return true;
}

Formulario* Registro::abierto(const QString& nombre) const {
  for (auto it = abiertos_.crbegin(); it != abiertos_.crend(); ++it) {
    if ((*it)->objectName() == nombre) return *it;
  }
  return nullptr;
}

void Registro::apuntar(Formulario& forma) {
  abiertos_.append(&forma);
}

void Registro::olvidar(Formulario& forma) {
  if (!abiertos_.removeOne(&forma) || !abiertos_.isEmpty()) return;
  // With nothing open the program ends; unless the reaction that closed this one opens another.
  QTimer::singleShot(0, &contexto_.motor, [&contexto = contexto_] {
    const auto* registro = contexto.formularios;
    if (registro && registro->abiertos_.isEmpty() && contexto.terminar) contexto.terminar();
  });
}
