// The rate of an invoice as it is typed: its code in TiposIVA, with its name and its two
// percentages shown beside it.
//
// Left with a code that isn't in the table, the table opens and writes the chosen one back.
#pragma once

#include "engine/datacontrol.h"

class Formulario;
class QLabel;
class QLineEdit;
struct Contexto;

class CampoTipoIVA {
 public:
  struct Opciones {
    QLineEdit& codigo;
    QLabel& descripcion;
    QLabel& porcenIVA;
    QLabel& porcenRE;
    int accion;  // under which the table answers: one of accion::k...
  };
  CampoTipoIVA(Formulario& forma, Contexto& contexto, Opciones opciones);

  // What leaving the field does. True if the rate was there: it is then the current one, as it
  // stands in the table today; otherwise the one before stays so.
  bool deja();

  // The current rate, in percent; 0 before the first.
  double porcenIVA() const { return porcenIVA_; }
  double porcenREC() const { return porcenREC_; }

 private:
  Formulario& forma_;
  Contexto& ctx_;
  Opciones o_;
  DataControl DtaTipos_;
  double porcenIVA_ = 0;
  double porcenREC_ = 0;
};
