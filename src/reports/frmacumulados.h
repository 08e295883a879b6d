// The twelve monthly totals of one subcuenta.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmAcumulados;
}

class FrmAcumulados : public Formulario {
  Q_OBJECT
 public:
  explicit FrmAcumulados(Contexto& contexto);
  ~FrmAcumulados() override;

  void Form_Load() override;

 private:
  void encabeza();
  void llena(const QString& subcuenta);
  void ajusta();
  void pon(int fila, int columna, const QString& texto);
  double importe(int fila, int columna) const;

  std::unique_ptr<Ui::FrmAcumulados> ui_;
  DataControl DtaSaldos_;
};
