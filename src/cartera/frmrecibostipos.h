// The kinds of recibo, edited in place.
#pragma once

#include "accounts/frmtabla.h"

class FrmRecibosTipos : public FrmTabla {
  Q_OBJECT
 public:
  explicit FrmRecibosTipos(Contexto& contexto);
};
