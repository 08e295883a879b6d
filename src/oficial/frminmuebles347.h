// The premises let of the 347, each a row to be typed: tenant, rent, and where it lies.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmInmuebles347;
}

class FrmInmuebles347 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmInmuebles347(Contexto& contexto);
  ~FrmInmuebles347() override;
  void Form_Load() override;

 private:
  void CmdProponer_Click();

  std::unique_ptr<Ui::FrmInmuebles347> ui_;
  DataControl DtaInmuebles_;
};
