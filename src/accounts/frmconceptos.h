// The standing concept texts of the company, edited in place.
#pragma once

#include "accounts/frmtabla.h"

class FrmConceptos : public FrmTabla {
  Q_OBJECT
 public:
  explicit FrmConceptos(Contexto& contexto);
};
