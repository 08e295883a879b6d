// The balance sheet (CodigoLlamada 1) and the profit-and-loss account (2) of small companies: on
// screen as their limits change, with the lines that are typed, and printed from there.
#pragma once

#include <memory>
#include <vector>

#include "engine/datacontrol.h"
#include "oficial/estados.h"
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
  void ponRejilla();
  void muestra();
  void calcula();
  void avisa(Database& empresa, const EstadoOficial& otro, double resultado);
  void avisaDeCuentasSinLinea(Database& empresa);
  std::unique_ptr<Database> delAnoAnterior();
  void escribe(int fila, const QString& texto);
  void imprime();

  const LineaDeEstado& linea(int fila) const {
    return estado_.lineas[visibles_[static_cast<size_t>(fila)]];
  }
  QString celda(int fila, int columna) const;
  int desde() const;
  int hasta() const;

  std::unique_ptr<Ui::FrmEstados> ui_;
  DataControl DtaEmpresas_;
  Estado cual_ = Estado::Balance;
  EstadoOficial estado_;
  std::vector<qsizetype> visibles_;  // of its lines
  QString rotuloAnterior_;           // over the column of the year before; empty without one
  QStringList avisos_;               // told on the screen and under the printed lines
};
