// Gives all lines of each asiento one date of the working year.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmCompruebaFechasAsientos;
}

class FrmCompruebaFechasAsientos : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCompruebaFechasAsientos(Contexto& contexto);
  ~FrmCompruebaFechasAsientos() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmCompruebaFechasAsientos> ui_;
};
