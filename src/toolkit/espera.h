// The windows while the engine waits: painted, telling it, and deaf to everything but Escape.
#pragma once

#include <memory>
#include <QElapsedTimer>

#include "engine/wait.h"

class DBEngine;
class QLabel;
class SinEntrada;

// Shows "Esperando a otro puesto..." over the window at hand once a wait has lasted half a second,
// and likewise what takes long. Escape gives it up. One for the whole program, as long as it runs.
class Espera : public Wait {
 public:
  explicit Espera(DBEngine& motor);
  ~Espera() override;
  Espera(const Espera&) = delete;
  Espera& operator=(const Espera&) = delete;

  bool waiting(qint64 elapsed) override;
  bool working(Work work, qint64 elapsed) override;
  void over() override;

 private:
  bool sigue(const QString& texto);

  DBEngine& motor_;
  std::unique_ptr<SinEntrada> guardia_;
  std::unique_ptr<QLabel> letrero_;
  QElapsedTimer atendido_;
};
