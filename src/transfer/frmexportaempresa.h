// Takes the chosen tables of the open company out of the program, as a database file.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmExportaEmpresa;
}

class FrmExportaEmpresa : public Formulario {
  Q_OBJECT
 public:
  explicit FrmExportaEmpresa(Contexto& contexto);
  ~FrmExportaEmpresa() override;

 private:
  void CmdExportar_Click();

  std::unique_ptr<Ui::FrmExportaEmpresa> ui_;
};
