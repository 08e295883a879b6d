#include "toolkit/progreso.h"

#include <QApplication>
#include <QProgressBar>

#include "toolkit/contexto.h"
#include "toolkit/sinentrada.h"

namespace {
constexpr int kPeriodo = 30;  // milliseconds: the eye sees it move, the work hardly notices
}

Progreso::Progreso(Contexto& contexto, QProgressBar& barra, int maximo)
    : contexto_(contexto),
      barra_(barra),
      guardia_(std::make_unique<SinEntrada>()),
      trabajo_(contexto.motor) {
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
