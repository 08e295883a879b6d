// The subgroups of the plan, edited in place.
#pragma once

#include "accounts/frmtabla.h"

class FrmNivel2 : public FrmTabla {
  Q_OBJECT
 public:
  explicit FrmNivel2(Contexto& contexto);
};
