// Repairs the file of the open company after a power cut, and makes it as small as it can be.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmReparaEmpresa;
}

class FrmReparaEmpresa : public Formulario {
  Q_OBJECT
 public:
  explicit FrmReparaEmpresa(Contexto& contexto);
  ~FrmReparaEmpresa() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmReparaEmpresa> ui_;
};
