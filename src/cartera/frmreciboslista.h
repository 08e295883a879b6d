// The home of the cartera: all the recibos, or those that one of the buttons over the columns
// looks for, and what can be done with the current one.
#pragma once

#include <memory>

#include "cartera/recibos.h"
#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmRecibosLista;
}

class FrmRecibosLista : public Formulario {
  Q_OBJECT
 public:
  explicit FrmRecibosLista(Contexto& contexto);
  ~FrmRecibosLista() override;

  void Form_Load() override;

  DataControl& DtaRecibos() { return DtaRecibos_; }
  // Where it is to stand when the dialog of a recibo has closed.
  void situateEn(const Recibo& recibo) { buscado_ = recibo; }

 private:
  void repartePorColumnas();
  void conectaFiltros();
  void CmdVencimiento_Click();
  void CmdImporte_Click();
  void CmdLocalizarTodos_Click();
  void CmdModifica_Click();
  void CmdContabiliza_Click();
  void CmdElimina_Click();

  void abreRecibo(int uso);
  // Reads the list again, as it is filtered, and stands on the recibo looked for; where it isn't
  // there, on the row that has taken the place of the current one.
  void relee();
  QString pide(const char* texto);
  void localiza(const QString& fuente);
  bool hayRecibo();
  bool situa(const Recibo& recibo);

  std::unique_ptr<Ui::FrmRecibosLista> ui_;
  DataControl DtaRecibos_;
  Recibo buscado_;
};
