// Hands on a form: real keys, clicks and focus, as they reach a window.
//
// After each action what it set going has come to rest. Controls are named as on the screen; a name
// that the form hasn't got is a failure of the test.
#pragma once

#include <QPointer>
#include <QWidget>

// Brings a window forward and waits for it: without an active window no field is ever left.
void activar(QWidget& ventana);
// Lets everything that waits in the event loop happen.
void reposar();

// Fields of a form with what is typed into them.
using Campos = std::vector<std::pair<const char*, QString>>;

class Teclado {
 public:
  explicit Teclado(QWidget& forma) : forma_(&forma) {}

  QWidget& forma() const { return *forma_; }
  template <class C = QWidget>
  C& control(const char* nombre) const {
    return *qobject_cast<C*>(buscar(nombre, C::staticMetaObject));
  }

  void teclea(const QString& texto);  // to whatever has the focus
  void entra(const QString& texto) {  // and goes on by Enter
    teclea(texto);
    intro();
  }
  void tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores = Qt::NoModifier);
  void intro() { tecla(Qt::Key_Return); }
  void tab() { tecla(Qt::Key_Tab); }
  void atras() { tecla(Qt::Key_Backtab, Qt::ShiftModifier); }
  void escape() { tecla(Qt::Key_Escape); }
  void mnemonico(QChar letra);  // Alt and the letter

  void llega(const char* campo);  // Tab, as often as it takes

  void pulsa(const char* boton);      // with the mouse
  void dobleClic(const char* campo);  // in its middle
  void enfoca(const char* campo);     // as by Tab: the field left reacts
  // Goes to the field, types over what it holds and stays in it.
  void escribe(const char* campo, const QString& texto);
  void entra(const char* campo, const QString& texto) {
    escribe(campo, texto);
    intro();
  }
  void escribe(const Campos& campos) {
    for (const auto& [campo, texto] : campos) escribe(campo, texto);
  }
  void elige(const char* combo, const QString& texto);  // a row of its list, as picked
  void marca(const char* casilla, bool si = true);
  void cierra();  // the window's close button
  // Drops the text of a grid's cell on a control.
  void suelta(const char* campo, const QString& texto);

  QString textoDe(const char* campo) const;  // of a field, combo, label, button
  QStringList textosDe(std::initializer_list<const char*> campos) const;
  QString enfocado() const;  // the name of the control with the focus
  bool visible(const char* campo) const { return control(campo).isVisible(); }

 private:
  QObject* buscar(const char* nombre, const QMetaObject& clase) const;

  QPointer<QWidget> forma_;
};

// While it lives the letters are so many times as large.
class LetraAumentada {
 public:
  explicit LetraAumentada(double veces);
  ~LetraAumentada();

 private:
  QFont antes_;
};
