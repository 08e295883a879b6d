// The data of who declares, which official files ask for.
#pragma once

#include <memory>

#include "oficial/declarante.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmDeclarante;
}

class FrmDeclarante : public Formulario {
  Q_OBJECT
 public:
  explicit FrmDeclarante(Contexto& contexto);
  ~FrmDeclarante() override;

  void Form_Load() override;

 private:
  void muestraFaltas();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmDeclarante> ui_;
  std::unique_ptr<Declarante> declarante_;
};
