// Closes the year: every subcuenta of the balance to zero, and the date before which no line may be
// changed. The lock and its marks come when the company is opened again.
#pragma once

#include <memory>

#include "toolkit/formulario.h"
#include "yearend/widgets/pasoanual.h"

namespace Ui {
class FrmCierre;
}

class FrmCierre : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCierre(Contexto& contexto);
  ~FrmCierre() override;

  void Form_Activate() override;

 private:
  AsientoAnual campos() const;
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmCierre> ui_;
};
