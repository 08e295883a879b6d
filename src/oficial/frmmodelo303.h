// The worksheet of the 303: its casillas, the rows that make each, what is typed by hand, the file.
#pragma once

#include <memory>

#include "oficial/modelo303.h"
#include "reports/informe.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmModelo303;
}
class Declarante;

class FrmModelo303 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmModelo303(Contexto& contexto);
  ~FrmModelo303() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Database> empresa();
  void lee();
  void muestraResultado();
  QString celda(int fila, int columna) const;
  void escribe(int fila, const QString& texto);
  QString importe(const Casilla303& casilla, qint64 valor) const;
  QString tipo() const;
  ValoresFijos datos(const Declarante& declarante) const;
  QStringList avisosDelFichero(const Declarante& declarante) const;
  void abreFilas(const QString& casilla);
  void CmdFichero_Click();
  void CmdPresentar_Click();
  void CmdImprimir_Click();

  std::unique_ptr<Ui::FrmModelo303> ui_;
  std::unique_ptr<Hoja303> hoja_;
  std::vector<int> visibles_;  // of the casillas
  std::vector<Cuadre303> descuadres_;
};
