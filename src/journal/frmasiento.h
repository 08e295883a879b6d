// One asiento at a glance, from the extract.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmAsiento;
}

class FrmAsiento : public Formulario {
  Q_OBJECT
 public:
  explicit FrmAsiento(Contexto& contexto);
  ~FrmAsiento() override;

  void Form_Activate() override;

 private:
  void CmdVerAsiento_Click();

  std::unique_ptr<Ui::FrmAsiento> ui_;
  DataControl DtaDiario_;
};
