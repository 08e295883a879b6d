// The table of rates of IVA, edited in place, which is also the look-up of the invoice dialogs: the
// row on which it stands goes to the field that asked for it.
#pragma once

#include <memory>
#include <optional>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmTiposIVA;
}

class FrmTiposIVA : public Formulario {
  Q_OBJECT
 public:
  explicit FrmTiposIVA(Contexto& contexto);
  ~FrmTiposIVA() override;

  void Form_Load() override;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;

 private:
  void entrega();
  void GrdIVA_KeyPress();

  std::unique_ptr<Ui::FrmTiposIVA> ui_;
  DataControl DtaIVA_;
  std::optional<QString> enCampo_;  // what the field held; nothing when no field asked
  bool abierta_ = false;            // the row of the opening is no choice of anybody's
};
