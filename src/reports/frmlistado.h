// What the dialogs of printed books share: the launch of a book under one trap, and the limits'
// fields.
//
// The dialog stays open after its book is on show: closing it is the user's act.
#pragma once

#include <functional>

#include "reports/informe.h"
#include "reports/listado.h"
#include "toolkit/formulario.h"

class FrmListado : public Formulario {
  Q_OBJECT
 public:
  explicit FrmListado(Contexto& contexto);
  ~FrmListado() override;

 protected:
  // Prepares the book and launches it. Whatever fails, an impossible date included, is told in a
  // box of its own and leaves the dialog as it was.
  void lanza(const std::function<Listado()>& prepara);
  // The same without the trap.
  void lanzaSinTrampa(const Listado& listado);

  // The first and the last day of the working year in two date fields.
  void ponAnoEntero(QLineEdit* desde, QLineEdit* hasta);
  // The twelve months in two choosers, the first and the last chosen.
  void ponMeses(QComboBox* desde, QComboBox* hasta);

  Informe Rpt01;
};
