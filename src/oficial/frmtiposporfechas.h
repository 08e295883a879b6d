// The rates of IVA with their dates, and those of a day into the table of rates.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmTiposPorFechas;
}

class FrmTiposPorFechas : public Formulario {
  Q_OBJECT
 public:
  explicit FrmTiposPorFechas(Contexto& contexto);
  ~FrmTiposPorFechas() override;

  void Form_Load() override;

 private:
  void CmdPoner_Click();

  std::unique_ptr<Ui::FrmTiposPorFechas> ui_;
  DataControl DtaTipos_;
};
