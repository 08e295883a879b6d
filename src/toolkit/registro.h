// Forms by name, so that nobody includes a form to open it.
//
// Each folder registers its forms from main by an explicit call; menu entries whose form isn't
// registered stay disabled.
#pragma once

#include <functional>
#include <memory>
#include <QHash>
#include <QString>

struct Contexto;
class Formulario;

class Registro {
 public:
  using Fabrica = std::function<std::unique_ptr<Formulario>(Contexto&)>;

  explicit Registro(Contexto& contexto);
  ~Registro();

  void registra(const QString& nombre, const Fabrica& fabrica);
  template <class F>
  void registra() {
    registra(QString::fromLatin1(F::staticMetaObject.className()),
             [](Contexto& c) { return std::make_unique<F>(c); });
  }
  bool existe(const QString& nombre) const { return fabricas_.contains(nombre); }
  QStringList nombres() const { return fabricas_.keys(); }  // of all forms, in no order

  // Shows a dialog modally over the active form and returns when it has closed; false, with nothing
  // shown, when no such form is registered: the caller then does what its No would do.
  bool mostrar(const QString& nombre);
  // Shows a form that takes the place of the open ones (login, main window): they are closed first.
  bool cambiarA(const QString& nombre);
  // The open form of a name, the topmost if there are several; null when it isn't open. Other
  // forms' fields are reached by it: `formulario->findChild<QLineEdit*>("TxtSubcuenta")`.
  Formulario* abierto(const QString& nombre) const;

 private:
  friend class Formulario;
  void apuntar(Formulario& forma);
  void olvidar(Formulario& forma);
  void avisarDeFallo(int numero, const QString& descripcion);

  Contexto& contexto_;
  QHash<QString, Fabrica> fabricas_;
  QList<Formulario*> abiertos_;       // in order of opening
  std::unique_ptr<Formulario> base_;  // the form that stands alone at the bottom
};
