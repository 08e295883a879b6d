// A company's settings: creates a company (CodigoLlamada 1) or changes the open one (2).
//
// It is the one place where the widths of the account codes are chosen: they, the name and the year
// can't be changed once the company exists.
#pragma once

#include "common/errorejecucion.h"
#include "company/datosempresa.h"
#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmEmpresas;
}

class FrmEmpresas : public Formulario {
  Q_OBJECT
 public:
  explicit FrmEmpresas(Contexto& contexto);
  ~FrmEmpresas() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void cablea();
  void TxtMayNivel_Change();
  void TxtSubNivel_Change();
  void TxtSubNivel_LostFocus();
  void TxtMesInicio_LostFocus();
  void TxtNoModifica_LostFocus();
  void Tabla_Click(int pestana);
  void CmdAceptar_Click();

  void CalculaCuentas();
  void pasaPestana(Tecla& tecla, QWidget* primero);
  void porDefecto();
  void expande(QLineEdit& campo, const QLineEdit& nivelDelCodigo);
  void rechaza(const QString& texto, QLineEdit& campo);
  void crea();
  void creacionFallida(const ErrorEjecucion& e);
  void modifica();
  void refrescaSesion();
  DatosEmpresa datos() const;
  void muestra(const DatosEmpresa& datos);

  std::unique_ptr<Ui::FrmEmpresas> ui_;
  DataControl DtaEmpresas_;
};
