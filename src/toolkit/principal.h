// What other forms reach of the main window.
//
// The main window is the hub: its counters, its journal and its totals serve every form that posts.
#pragma once

class DataControl;
class QLineEdit;
class QProgressBar;
class QWidget;

class Principal {
 public:
  virtual ~Principal() = default;

  virtual QWidget* ventana() = 0;

  // The one row of Empresa, with the counters, and the journal on show.
  virtual DataControl& DtaEmpresaActual() = 0;
  virtual DataControl& DtaDiarioLista() = 0;
  virtual DataControl& DtaIVA() = 0;

  // What others read and set of the entry line.
  virtual QLineEdit& TxtAsiento() = 0;
  virtual QLineEdit& TxtSubcuenta() = 0;
  virtual QLineEdit& TxtNombreCuenta() = 0;
  virtual QProgressBar& Bar() = 0;
  // True while the frame of the marks is on show.
  virtual bool punteoVisible() const = 0;

  // The totals of the whole journal, of the subcuenta, of the asiento and of the marked asiento.
  virtual void ATotal() = 0;
  virtual void ACuenta() = 0;
  virtual void AAsiento() = 0;
  virtual void AMarcado() = 0;
  // To be called when anything else has written to the journal, also when it failed half-way: its
  // lines, the totals and the marked asiento are those of the file again. It stays on the line
  // where it stood, or on the last one if it stood there or the line is gone.
  virtual void diarioCambiado() = 0;
  // Shows or hides the signs of a closed year.
  virtual void EmpresaCerrada() = 0;
  virtual void CmdLinAsiento_Click() = 0;
  virtual void TxtSubcuenta_LostFocus() = 0;
};
