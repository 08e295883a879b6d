// The plan's subcuentas in a list: the look-up that every account field falls back on.
//
// ValorElegido is the text to start from, a code or a name, and CodigoAccion says which field of
// which form is to receive the code. It is delivered while the list moves, not at closing, and the
// main window's entry line follows always. A text that finds nothing leaves them as they are until
// a row is gone to or chosen. Without a text it starts from what the field holds, and Escape gives
// the fields back what they held.
#pragma once

#include <memory>
#include <optional>

#include "accounts/buscaplan.h"
#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmVisualizaPlan;
}

class FrmVisualizaPlan : public Formulario {
  Q_OBJECT
 public:
  explicit FrmVisualizaPlan(Contexto& contexto);
  ~FrmVisualizaPlan() override;
  void Form_Load() override;
  void Form_Activate() override;

  // Reads the list again and stands on a code, for the dialog that has just written it.
  void situaEn(const QString& codigo);

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void OptClasifica_Click(int orden);
  void TxtBusquedaCuentas_Change();
  void TxtBusquedaCuentas_KeyPress(Tecla& tecla);
  void DtaSubcuentas_Reposition();
  void GrigSubCuentas_DblClick();
  void CmdAltas_Click();
  void CmdBajas_Click();
  void CmdModifica_Click();
  void CmdImpresos_Click();

  void busca(const QString& texto);
  void ordena(OrdenPlan orden);
  void anotaCampos();

  std::unique_ptr<Ui::FrmVisualizaPlan> ui_;
  DataControl DtaSubcuentas_;
  QString enLinea_;                 // what the entry line held
  std::optional<QString> enCampo_;  // and the field that asked, if any
  bool entrega_ = true;             // the code of each row goes to the fields
  bool encontrada_ = false;         // the last search found a row
};
