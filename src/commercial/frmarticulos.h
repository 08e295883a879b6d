// The articles of the commercial program.
#pragma once

#include <memory>

#include "commercial/frmficha.h"

namespace Ui {
class FrmArticulos;
}

class FrmArticulos : public FrmFicha {
  Q_OBJECT
 public:
  explicit FrmArticulos(Contexto& contexto);
  ~FrmArticulos() override;

  void Form_Load() override;

 private:
  void alNuevo() override;
  void alMostrar() override;
  void CmdBuscaFoto_Click();

  std::unique_ptr<Ui::FrmArticulos> ui_;
};
