// Sweeps expenses and income into the result, an asiento for each of the two groups.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

class CampoSubcuenta;
namespace Ui {
class FrmPerdidasyGanacias;
}

class FrmPerdidasyGanacias : public Formulario {
  Q_OBJECT
 public:
  explicit FrmPerdidasyGanacias(Contexto& contexto);
  ~FrmPerdidasyGanacias() override;

  void Form_Activate() override;

 private:
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmPerdidasyGanacias> ui_;
  std::unique_ptr<CampoSubcuenta> resultado_;
};
