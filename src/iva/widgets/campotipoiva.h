// The rate of an invoice as it is typed: its code in TiposIVA, with its name and its two
// percentages shown beside it.
//
// Left with a code that isn't in the table, the table opens and writes the chosen one back.
#pragma once

#include <optional>

#include "engine/datacontrol.h"
#include "iva/tiposfechas.h"

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
    QLabel& aviso;
    int accion;  // under which the table answers: one of accion::k...
  };
  CampoTipoIVA(Formulario& forma, Contexto& contexto, Opciones opciones);

  // What leaving the field does. True if the rate was there: it is then the current one, as it
  // stands in the table today; otherwise the one before stays so.
  bool deja();
  // Tells whether the current rate was in force on the invoice's date, and of a text that is no
  // date nothing. Nothing is refused: an old rate stays right where an operation of its time is
  // rectified.
  void avisa(const QString& fecha);

  // The current rate, in percent; 0 before the first.
  double porcenIVA() const { return porcenIVA_; }
  double porcenREC() const { return porcenREC_; }

 private:
  Formulario& forma_;
  Contexto& ctx_;
  Opciones o_;
  DataControl DtaTipos_;
  std::optional<TiposPorFechas> tipos_;
  double porcenIVA_ = 0;
  double porcenREC_ = 0;
};
