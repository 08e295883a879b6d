// The seven groups of the plan, with their side in the balance, edited in place.
#pragma once

#include "accounts/frmtabla.h"

class FrmNivel1 : public FrmTabla {
  Q_OBJECT
 public:
  explicit FrmNivel1(Contexto& contexto);
};
