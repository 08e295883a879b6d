// The cuentas of the plan in a list: where they are created, changed and deleted, and where the
// plan is sown or copied.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmCuentasLista;
}

class FrmCuentasLista : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCuentasLista(Contexto& contexto);
  ~FrmCuentasLista() override;
  void Form_Load() override;

 private:
  void CmdAltas_Click();
  void CmdBajas_Click();
  void CmdModifica_Click();
  void CmdCrearPlan_Click();

  void recarga(const QString& codigo);

  std::unique_ptr<Ui::FrmCuentasLista> ui_;
  DataControl DtaCuentas;
};
