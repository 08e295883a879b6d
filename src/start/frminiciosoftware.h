// The reinitialisation: settings with their defaults and a catalogue beside the program.
//
// Shown when the login finds no settings or no catalogue: a first start, a program folder that was
// moved, a damaged file.
#pragma once

#include "toolkit/formulario.h"

namespace Ui {
class FrmInicioSoftware;
}

class FrmInicioSoftware : public Formulario {
  Q_OBJECT
 public:
  explicit FrmInicioSoftware(Contexto& contexto);
  ~FrmInicioSoftware() override;

  void Form_Activate() override;

 private:
  void escribeConfiguracion();
  void creaCatalogo();
  void abreLibro();

  std::unique_ptr<Ui::FrmInicioSoftware> ui_;
};
