// Replaces a value by another in all the lines found, or deletes their asientos.
#pragma once

#include <memory>

#include "common/errorejecucion.h"
#include "journal/masivos.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmCambiadatos;
}

class FrmCambiadatos : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCambiadatos(Contexto& contexto);
  ~FrmCambiadatos() override;

  void Form_Load() override;

 private:
  void ChkEliminarAsientos_Click();
  void normaliza(QLineEdit* campo);
  void compruebaNuevo();
  CambioMasivo cambio() const;
  void ensenaLectura();
  void CmdAceptar_Click();
  void explica(const ErrorEjecucion& error);

  std::unique_ptr<Ui::FrmCambiadatos> ui_;
};
