// The login: who works, and on which company.
//
// Reads the settings and opens the catalogue; when either fails the program is initialised anew
// instead.
#pragma once

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmSeleccion;
}

class FrmSeleccion : public Formulario {
  Q_OBJECT
 public:
  explicit FrmSeleccion(Contexto& contexto);
  ~FrmSeleccion() override;

  void Form_Load() override;

 private:
  void CmdEmpresaAlta_Click();
  void CmdAceptar_Click();
  void carga();
  bool cargaLibre();
  void entra();

  std::unique_ptr<Ui::FrmSeleccion> ui_;
  DataControl DtaEmpresa_;
  DataControl DtaUsuarios_;
};
