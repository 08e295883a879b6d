#include "toolkit/foco.h"

bool Foco::llega(QWidget* control) {
  if (estado_ == Estado::Cerrado) return false;
  if (control == actual_) return true;
  const QPointer<QWidget> dejado = estado_ == Estado::Dentro     ? actual_
                                   : estado_ == Estado::Aplazado ? aplazado_
                                                                 : nullptr;
  aplazado_.clear();
  if (dejado && dejado != control && forma_.abandona(control)) {
    actual_ = control;
    aplazado_ = dejado;
    estado_ = Estado::Aplazado;
    return true;
  }
  actual_ = control;
  if (dejado && dejado != control) {
    estado_ = Estado::Saliendo;
    const std::weak_ptr<int> vivo = vivo_;
    forma_.sale(dejado);
    if (vivo.expired() || estado_ != Estado::Saliendo || actual_ != control) return false;
  }
  return entra(control);
}

bool Foco::entra(QWidget* control) {
  estado_ = Estado::Dentro;
  forma_.entra(control);
  return true;
}

void Foco::suelta() {
  if (estado_ == Estado::Cerrado) return;
  estado_ = Estado::Fuera;
  actual_.clear();
  aplazado_.clear();
}
