// A subcuenta as a bookkeeper types it into a form: its code, or a dot for the zeros, or the
// beginning of its name, with the name shown beside it.
//
// Left with a code that isn't in the plan, the plan browser opens on what was typed and writes the
// chosen code back into the field; F2 opens it at any time. Made in the form's constructor, once
// for each pair of field and name, and kept as long as the form:
//   proveedor_(*this, ctx, {.codigo = *ui->TxtCodigoProveedor, .nombre = *ui->TxtCDescripcion,
//                           .accion = accion::kIVAProveedor})
//   ...
//   proveedor_.conecta();
#pragma once

#include <functional>

#include "engine/datacontrol.h"

class Formulario;
class QLineEdit;
class QWidget;
struct Contexto;

class CampoSubcuenta {
 public:
  struct Opciones {
    QLineEdit& codigo;
    QWidget& nombre;  // a QLabel or a QLineEdit
    int accion = 0;   // under which the plan browser answers: one of accion::k...
    // Looks the code up as soon as it has all its digits, and not only when the field is left.
    bool alCompletarse = false;
    // A whole code that isn't in the plan may be created, after a question.
    bool ofreceAlta = false;
    // Nothing typed is nothing to look for; otherwise the browser opens on the whole plan.
    bool puedeEstarVacia = false;
    // The focus comes back to the field after the browser.
    bool vuelve = true;
    // Runs whenever the row of the code has been found and its name shown.
    std::function<void()> encontrada = {};
    // The place under which errors other than "no such subcuenta" are logged, and end quietly;
    // empty for errors that reach the reaction's own box.
    QString lugarDeErrores = {};
  };
  CampoSubcuenta(Formulario& forma, Contexto& contexto, Opciones opciones);

  // Sets the length of the code and the width of its field to the open company's digits.
  void ajustaDigitos();
  // Wires the field of the form: deja() runs when it is left. A form that does more then wires
  // that itself and calls deja().
  void conecta();

  // What leaving the field does: expands the code, shows its name, or lets another be chosen.
  // True if the row of what was typed was there. For forms that fill the field themselves too.
  bool deja();
  // Expands the code in the field and shows its name. 3021 if there is no such subcuenta; the
  // field must not be empty.
  void busca();
  // Opens the plan browser on what the field holds.
  void consulta();

  // Stands on the row of the subcuenta on show.
  DataControl& fila() { return DtaSubcuenta_; }

 private:
  void Change();
  void elige();
  bool esCodigoEntero() const;
  void muestraNombre(const QString& nombre);

  Formulario& forma_;
  Contexto& ctx_;
  Opciones o_;
  DataControl DtaSubcuenta_;
};
