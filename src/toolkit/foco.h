// Which control of a form the user stands in, and when a field counts as left.
//
// Leaving runs what a form does with a field once it is typed (look a code up, complete a date), so
// it must happen once, before anything else reacts, and not at all when nothing typed matters any
// more. The states, by what happens to fields A and B and to the button Cancelar:
//   Tab from A to B                  Dentro(A) -> Saliendo(A to B) -> Dentro(B)   leaves A, enters
//   B A's reaction sends focus to C    Saliendo(A to B) -> Dentro(C)                enters C, never
//   B A's reaction takes it back       Saliendo(A to B) -> Dentro(A)                enters A again
//   A's reaction closes the form     Saliendo(A to B) -> Cerrado                  nothing more
//   the program places it (enfocar)  Dentro(A) -> Fuera -> Dentro(B)              enters B only
//   a click on Cancelar              Dentro(A) -> Aplazado(A at Cancelar)         nothing: if the
//                                    click closes the form A was never left
//   ... and on to B instead          Aplazado(A at Cancelar) -> Saliendo(A to B) -> Dentro(B)
//   ... or back to A                 Aplazado(A at Cancelar) -> Dentro(A)         enters A again
//   a menu, a box, another window    focus comes back to the same control         nothing
#pragma once

#include <functional>
#include <memory>
#include <QPointer>
#include <QWidget>

class Foco {
 public:
  enum class Estado { Fuera, Dentro, Saliendo, Aplazado, Cerrado };

  // What the form does at each step. Both may move the focus, close the form or destroy it.
  struct Forma {
    std::function<void(QWidget*)> sale;
    std::function<void(QWidget*)> entra;
    // Whether a control leaves the form without using its fields.
    std::function<bool(const QWidget*)> abandona;
  };

  explicit Foco(Forma forma) : forma_(std::move(forma)) {}

  // Focus stands on another control of the form. False if it was not entered: a reaction sent the
  // focus elsewhere, or closed the form.
  bool llega(QWidget* control);
  // The program is about to place the focus: what it stands in is not left.
  void suelta();
  // No reaction runs any more.
  void cierra() { estado_ = Estado::Cerrado; }

  Estado estado() const { return estado_; }
  // The control with the focus, also while another window has it; null before the first.
  QWidget* actual() const { return actual_; }

 private:
  bool entra(QWidget* control);

  Forma forma_;
  Estado estado_ = Estado::Fuera;
  QPointer<QWidget> actual_;
  QPointer<QWidget> aplazado_;  // in Aplazado: the field that has not been left yet
  std::shared_ptr<int> vivo_ = std::make_shared<int>();
};
