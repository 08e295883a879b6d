// Rounds every amount of the journal to the decimals of the company's mask.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmCompruebaEmpresa;
}

class FrmCompruebaEmpresa : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCompruebaEmpresa(Contexto& contexto);
  ~FrmCompruebaEmpresa() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmCompruebaEmpresa> ui_;
};
