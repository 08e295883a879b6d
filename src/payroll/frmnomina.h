// One payroll typed into one asiento: the amounts of the paper, each with its subcuenta. The total
// for the social security body and the net paid follow while they are typed.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "payroll/nomina.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmNomina;
}
class CampoSubcuenta;
class QCheckBox;
class QLabel;

class FrmNomina : public Formulario {
  Q_OBJECT
 public:
  explicit FrmNomina(Contexto& contexto);
  ~FrmNomina() override;

  void Form_Load() override;

 private:
  // The controls of a concept, in the order of the lines.
  struct Fila {
    QCheckBox* casilla;  // null where the concept is always written
    QLineEdit* subcuenta;
    QLabel* nombre;
    QLineEdit* importe;
    int accion;
  };
  std::array<Fila, kConceptosNomina> filas() const;
  void conectaFila(const Fila& fila);
  void conectaImporteDeNomina(QLineEdit& importe);
  void Chk_Click(const Fila& fila);
  void CmdAceptar_Click();

  Nomina nomina() const;
  void calculaTotal();
  void rechaza(const QString& texto, const QString& titulo);
  QString cero() const;

  std::unique_ptr<Ui::FrmNomina> ui_;
  std::vector<std::unique_ptr<CampoSubcuenta>> subcuentas_;
};
