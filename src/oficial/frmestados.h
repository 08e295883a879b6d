// The balance sheet (CodigoLlamada 1) and the profit-and-loss account (2) of small companies: on
// screen as their limits change, and printed from there.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "oficial/imprimeestado.h"
#include "reports/frmlistado.h"

namespace Ui {
class FrmEstados;
}

class FrmEstados : public FrmListado {
  Q_OBJECT
 public:
  explicit FrmEstados(Contexto& contexto);
  ~FrmEstados() override;
  void Form_Load() override;

 private:
  void muestra();
  void calcula();
  void avisa(Database& empresa, const EstadoOficial& otro, double resultado);
  Saldos anteriores();
  Listado listado();

  std::unique_ptr<Ui::FrmEstados> ui_;
  DataControl DtaEmpresas_;
  Estado cual_ = Estado::Balance;
  EstadoImpreso impreso_;
};
