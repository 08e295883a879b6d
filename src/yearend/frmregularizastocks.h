// Posts the final value of the stocks in the place of the present one.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmRegularizaStocks;
}
class Database;

class FrmRegularizaStocks : public Formulario {
  Q_OBJECT
 public:
  explicit FrmRegularizaStocks(Contexto& contexto);
  ~FrmRegularizaStocks() override;

  void Form_Activate() override;

 private:
  void muestraCompras(Database& empresa);
  void TxtDescripcion_LostFocus();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmRegularizaStocks> ui_;
  DataControl DtaRegulariza_;
};
