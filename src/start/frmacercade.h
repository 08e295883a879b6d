// What program this is: its name, version and year, and what it stands on with their licences.
#pragma once

#include "toolkit/formulario.h"

namespace Ui {
class FrmAcercaDe;
}

class FrmAcercaDe : public Formulario {
  Q_OBJECT
 public:
  explicit FrmAcercaDe(Contexto& contexto);
  ~FrmAcercaDe() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Ui::FrmAcercaDe> ui_;
};
