// The cuentas of the plan in a list: where they are created, changed and deleted, and where the
// plan is sown or copied. It is searched as the list of the subcuentas is; Enter changes the row
// and
// "+" creates one.
#pragma once

#include <memory>

#include "accounts/buscaplan.h"
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

  // Reads the list again and stands on a code, for the dialog that has just written it.
  void situaEn(const QString& codigo);

 private:
  void CmdAltas_Click();
  void CmdBajas_Click();
  void CmdModifica_Click();
  void CmdCrearPlan_Click();
  void TxtBusquedaCuentas_Change();
  void TxtBusquedaCuentas_KeyPress(Tecla& tecla);

  std::unique_ptr<Ui::FrmCuentasLista> ui_;
  DataControl DtaCuentas_;
  OrdenPlan orden_ = OrdenPlan::Codigo;
};
