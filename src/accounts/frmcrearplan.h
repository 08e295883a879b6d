// Fills the plan of a company: the standing national plan, or a copy of another company's.
//
// The company is the one being created while its dialog is open behind this one, otherwise the open
// one.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmCrearPlan;
}

class FrmCrearPlan : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCrearPlan(Contexto& contexto);
  ~FrmCrearPlan() override;
  void Form_Load() override;

 private:
  struct Destino {
    QString empresa;
    int digitosCuenta;
    int digitosSubcuenta;
  };

  void OptCreaAPartirDe_Click(int origen);
  void CmdAceptar_Click();

  Destino destino() const;
  bool copia(const Destino& destino);
  void cierra();

  std::unique_ptr<Ui::FrmCrearPlan> ui_;
  DataControl DtaEmpresas_;
};
