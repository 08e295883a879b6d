// What the locate dialogs share: they narrow the journal on show to what was asked.
//
// The narrowing stays until the whole journal is asked for again. When nothing is found the grid
// stays empty and so does the number of the asiento being typed, so that the next one starts
// afresh.
#pragma once

#include "toolkit/formulario.h"

class FrmBusca : public Formulario {
  Q_OBJECT
 public:
  using Formulario::Formulario;

 protected:
  // Puts the rows of a statement on show and closes. With no rows the user reads `sinFilas`, unless
  // it is empty. Any other failure (a quote in a text, a lock of another station) goes up, with the
  // journal on show as it was and the dialog open.
  void localiza(const QString& sentencia, const QString& sinFilas);
  void error(const QString& texto) { mensaje(texto, QStringLiteral("Error")); }
};
