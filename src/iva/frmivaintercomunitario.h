// An acquisition from another member state: its quota, borne and charged at once.
//
// The quota is typed and nothing here computes it. What it writes can't be changed afterwards, only
// deleted and typed anew.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmIVAIntercomunitario;
}
class CampoSubcuenta;
class CampoTipoIVA;
struct FacturaIntracomunitaria;

class FrmIVAIntercomunitario : public Formulario {
  Q_OBJECT
 public:
  explicit FrmIVAIntercomunitario(Contexto& contexto);
  ~FrmIVAIntercomunitario() override;

  void Form_Activate() override;

 private:
  void TxtIva_LostFocus();
  void CmdAceptar_Click();
  FacturaIntracomunitaria factura() const;

  std::unique_ptr<Ui::FrmIVAIntercomunitario> ui_;
  std::unique_ptr<CampoTipoIVA> tipo_;
  std::vector<std::unique_ptr<CampoSubcuenta>> cuentas_;
  DataControl DtaIVA_;
};
