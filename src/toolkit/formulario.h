// The base of every screen: events wired by name, the common keyboard, errors caught in one place.
//
// A form names its controls as the screens do and writes its reactions as members called
// Control_Evento. They are connected in one place, the constructor, through `alX` below; whatever a
// reaction throws is shown in a box and logged, and ends that action only.
//
// Leaving a field means that focus moved to another control of a form. A menu, another window
// coming forward, a box, and the form closing are no leaving. Clicking a button by mouse, mnemonic
// or key first moves focus to it, so that the leaving reaction of the field runs before the
// click's.
#pragma once

#include <functional>
#include <memory>
#include <QDialog>

#include "toolkit/cajas.h"
#include "toolkit/contexto.h"

class DataControl;
class ErrorEjecucion;
class QAbstractButton;
class QButtonGroup;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;

// A key on its way into a control. Set `texto` to another character to change it, or call
// tragar() to drop it.
struct Tecla {
  QChar texto;     // the character, null for keys without one
  int codigo = 0;  // Qt::Key
  bool tragada = false;
  void tragar() { tragada = true; }
  bool esIntro() const;
  bool esRetroceso() const;
};

class Formulario : public QDialog {
  Q_OBJECT
 public:
  explicit Formulario(Contexto& contexto);
  ~Formulario() override;

  // Runs once before the form is shown, and each time it is shown after that. A dialog over it that
  // closes, or another program's window, is no activation.
  virtual void Form_Load() {}
  virtual void Form_Activate() {}

  // Runs Form_Load if it hasn't run yet; false if the form unloaded itself in it. Showing does it.
  bool cargar();
  // Closes the form ("unload"). No leaving reaction runs any more.
  void descargar();
  // For what a form reads as it loads and would show blanks or zeros without: where that fails the
  // form unloads itself, and the failure goes on.
  void leeONoAbre(const std::function<void()>& lectura);
  // What the close button and Escape do: the click of this button (CmdCancelar or CmdSalir by name
  // unless set).
  void setBotonDeCierre(QAbstractButton* boton);

  // Runs a reaction as a wired one: whatever it throws is shown in a box titled "Librano" and
  // logged under `lugar` ("CmdAceptar_Click"), and ends it. For signals without a helper below.
  void protege(const std::function<void()>& reaccion, const QString& lugar = {});
  // The same for a control that doesn't know its form: that of the form around it.
  static void protegeEn(const QWidget* control, const std::function<void()>& reaccion,
                        const QString& lugar = {});
  // What protege does with an error: the box and the line in the log.
  void avisarError(int numero, const QString& texto, const QString& lugar = {});
  // How many keys have been refused with a beep.
  int pitidos() const;

  void setVisible(bool visible) override;
  void done(int resultado) override;
  void reject() override;  // Escape

  // The helpers below are public for the controls that several forms share (a subcuenta with its
  // name, a concept with its code): those wire themselves into the form they stand in.

  // --- wiring -----------------------------------------------------------------------------------
  // Each `reaccion` may be a member function of the form without arguments, or any callable.
  void alPulsar(QAbstractButton* boton, std::function<void()> reaccion);        // _Click
  void alCambiar(QWidget* campo, std::function<void()> reaccion);               // _Change
  void alElegir(QComboBox* combo, std::function<void(int)> reaccion);           // _Click of combo
  void alEntrar(QWidget* campo, std::function<void()> reaccion);                // _GotFocus
  void alSalir(QWidget* campo, std::function<void()> reaccion);                 // _LostFocus
  void alTeclear(QWidget* campo, std::function<void(Tecla&)> reaccion);         // _KeyPress
  void alBajarTecla(QWidget* campo, std::function<bool(QKeyEvent&)> reaccion);  // _KeyDown
  void alDobleClic(QWidget* campo, std::function<void()> reaccion);             // _DblClick
  void alRecolocar(DataControl& datos, std::function<void()> reaccion);         // _Reposition
  // Arrays of controls, by the name before their index: OptPunteo for OptPunteo_0, OptPunteo_1...
  // The first runs whenever another option is set, by the user or by the program.
  void alElegirOpcion(const QString& matriz, std::function<void(int)> reaccion);         // _Click
  void alPulsarMatriz(const QString& matriz, const std::function<void(int)>& reaccion);  // _Click
  int opcion(const QString& matriz) const;  // the index set, -1 for none
  void setOpcion(const QString& matriz, int indice);
  // The control takes the text of a cell dragged from a grid. Without a reaction a field shows it.
  void aceptaArrastre(QWidget* destino, std::function<void(const QString&)> reaccion = {});

  // --- what a field is --------------------------------------------------------------------------
  // Every text field turns Enter into Tab and selects itself on entry without being told. These add
  // the filters (filtros.h), which judge the text as it will be after the key and answer with a
  // beep; a form's own alTeclear runs before them and may swallow the key. What is pasted or
  // dropped goes through them too.
  void soloNumero(QLineEdit* campo);       // digits: the number of an asiento, a whole code
  void soloCodigo(QLineEdit* campo);       // digits and the dot that stands for zeros
  void numeroConSigno(QLineEdit* campo);   // a number of either sign, a minus first and never last
  void importe(QLineEdit* campo);          // the same by the company's mask, with the decimal key
  void importeSinSigno(QLineEdit* campo);  // an amount whose side is told apart: no signs
  void teclaDecimal(QWidget* campo);       // the decimal key alone
  void fecha(QLineEdit* campo);            // normalised on leaving
  void sinSeleccion(QLineEdit* campo);     // places the caret instead of selecting
  void sinIntro(QWidget* campo);           // Enter isn't Tab here: the form tells what it is

  // --- showing ----------------------------------------------------------------------------------
  void mensaje(const QString& texto, const QString& titulo, Icono icono = Icono::Ninguno);
  bool pregunta(const QString& texto, const QString& titulo, Icono icono = Icono::Ninguno);
  // A dialog by name, with its code of the dialog protocol (protocolo.h) set before and put back
  // after. A null `valorElegido` leaves the session's as it is, before and after: for a value that
  // comes back; any other is emptied after it. False if there is no such dialog.
  bool mostrar(const QString& nombre);
  bool mostrar(const QString& nombre, int codigoLlamada, const QString& valorElegido = {});
  // A look-up by name, from the field that `codigoAccion` stands for (0 for the entry line),
  // starting at the text that stands in it.
  bool consultar(const QString& nombre, int codigoAccion, const QString& texto);
  // Focus with the field's text selected, without running the leaving reaction of the field left.
  void enfocar(QWidget* campo);
  void pitido();  // the beep of a refused key
  // Writes a failure that ends quietly to the error log. `lugar` is the whole place, routine and
  // form: "TxtSubcuenta_LostFocus - FrmMenu". Raises 75 when the log can't be written.
  void anota(const ErrorEjecucion& error, const QString& lugar);

 protected:
  Contexto& ctx;
  Sesion& sesion() { return ctx.sesion; }

  void closeEvent(QCloseEvent* evento) override;
  void keyPressEvent(QKeyEvent* evento) override;
  void showEvent(QShowEvent* evento) override;
  bool eventFilter(QObject* objeto, QEvent* evento) override;

 private:
  friend class Registro;
  void retirar();  // to be destroyed, once no reaction of it is running

  struct Privado;
  std::unique_ptr<Privado> p_;
};
