// The bar of a long process: it moves, the window stays painted, and other input is refused.
//
//   Progreso progreso(ctx, principal.Bar(), total);
//   while (!datos.Eof()) { ...; progreso.avanza(fila); }
//   progreso.oculta();
//
// A tool that counts its rows itself is given avance(), which sets the maximum too:
//
//   renumeraDiario(empresa, desde, progreso.avance());
//
// A process that fails leaves its bar as it stands. What another station keeps from being saved
// meanwhile doesn't stop it, and is asked about by the first box after it.
#pragma once

#include <functional>
#include <memory>
#include <QElapsedTimer>

#include "engine/dbengine.h"

struct Contexto;
class QProgressBar;
class SinEntrada;

class Progreso {
 public:
  // Shows the bar at 0 of `maximo`.
  Progreso(Contexto& contexto, QProgressBar& barra, int maximo = 0);
  ~Progreso();  // takes input again; keys and clicks that came meanwhile are dropped

  // To be called for each row: it costs nothing until some 30 milliseconds have passed. Gives the
  // engine its breath.
  void avanza(int valor);
  void avanza();  // by one
  std::function<void(int valor, int maximo)> avance();
  void oculta();

 private:
  void atender();

  Contexto& contexto_;
  QProgressBar& barra_;
  QElapsedTimer reloj_;
  int valor_ = 0;
  std::unique_ptr<SinEntrada> guardia_;
  DBEngine::LongWork trabajo_;
};
