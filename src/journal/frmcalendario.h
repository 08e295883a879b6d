// A month on show, from which a date field of another form is filled.
//
// Choosing a day writes it at once into the field that the caller's code names; choosing it twice
// closes the calendar too.
#pragma once

#include <memory>

#include "toolkit/formulario.h"

namespace Ui {
class FrmCalendario;
}

class FrmCalendario : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCalendario(Contexto& contexto);
  ~FrmCalendario() override;

  void Form_Load() override;

 private:
  QLineEdit* destino() const;
  void escribe(QDate dia);

  std::unique_ptr<Ui::FrmCalendario> ui_;
};
