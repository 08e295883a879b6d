// The invoices to customers of the commercial program.
//
// Kept: it goes through the articles, as its companion does; the lists of both are one.
#pragma once

#include <memory>

#include "commercial/frmficha.h"

namespace Ui {
class FrmGesFacCli;
}

class FrmGesFacCli : public FrmFicha {
  Q_OBJECT
 public:
  explicit FrmGesFacCli(Contexto& contexto);
  ~FrmGesFacCli() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Ui::FrmGesFacCli> ui_;
};
