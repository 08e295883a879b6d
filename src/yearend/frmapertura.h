// Opens the company with the balances that another one, of the year before, was closed with.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"
#include "yearend/widgets/pasoanual.h"

namespace Ui {
class FrmApertura;
}

class FrmApertura : public Formulario {
  Q_OBJECT
 public:
  explicit FrmApertura(Contexto& contexto);
  ~FrmApertura() override;

  void Form_Activate() override;

 private:
  AsientoAnual campos() const;
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmApertura> ui_;
  DataControl DtaEmpresa_;
};
