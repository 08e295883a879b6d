// Walks every invoice of the registers through its dialog, where quota and total are computed from
// the base again.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmIVARevisarBases;
}

class FrmIVARevisarBases : public Formulario {
  Q_OBJECT
 public:
  explicit FrmIVARevisarBases(Contexto& contexto);
  ~FrmIVARevisarBases() override;

 private:
  void CmdAceptar_Click();
  bool recorre();  // false for empty registers
  void ponBotones(bool activos);

  std::unique_ptr<Ui::FrmIVARevisarBases> ui_;
};
