// One recibo: typed, changed, or posted to the journal, as its caller's code says (llamada::kAlta,
// kModificacion, kContabilizacion). It works on the current row of the list that opened it.
#pragma once

#include <memory>

#include "cartera/recibos.h"
#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmRecibos;
}
class CampoSubcuenta;
class FrmRecibosLista;

class FrmRecibos : public Formulario {
  Q_OBJECT
 public:
  explicit FrmRecibos(Contexto& contexto);
  ~FrmRecibos() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void TxtCuenta_LostFocus();
  void TxtCA_LostFocus();
  void TxtTitulo_GotFocus();
  void CmdTipos_Click();
  void CmdAceptar_Click();

  bool estaLleno() const;
  Recibo tecleado() const;
  void guarda();
  bool contabiliza();

  std::unique_ptr<Ui::FrmRecibos> ui_;
  std::unique_ptr<CampoSubcuenta> cuenta_;
  std::unique_ptr<CampoSubcuenta> contrapartida_;
  DataControl DtaTiposRecibos_;
  DataControl DtaRecibos_;  // the rows of Recibos where it writes
  FrmRecibosLista* lista_ = nullptr;
  int uso_ = 0;
  Recibo leido_;  // as it stood in the list
};
