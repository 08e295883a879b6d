// The settings of the installation, with the catalogue's users and companies.
//
// It manages the catalogue beside the program, while the login reads the one of the data folder:
// with the settings of a first start they are one file. New settings reach the session at the next
// login.
#pragma once

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmConfiguracion;
}

class FrmConfiguracion : public Formulario {
  Q_OBJECT
 public:
  explicit FrmConfiguracion(Contexto& contexto);
  ~FrmConfiguracion() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void CmdEmpAltas_Click();
  void CmdEmpBajas_Click();
  void CmdAceptar_Click();
  void borraEmpresa(const QString& nombre);

  std::unique_ptr<Ui::FrmConfiguracion> ui_;
  DataControl DtaUsuarios_;
  DataControl DtaEmpresas_;
};
