// The plan of 2007 in a company that stands: shows account by account what it would bring, and
// brings it.
#pragma once

#include <memory>

#include "accounts/plan2007.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmPlan2007;
}

class FrmPlan2007 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmPlan2007(Contexto& contexto);
  ~FrmPlan2007() override;
  void Form_Load() override;

 private:
  void muestra();
  void CmdAceptar_Click();
  Modelo2007 modelo() const;

  std::unique_ptr<Ui::FrmPlan2007> ui_;
  QList<CambioDePlan> cambios_;
};
