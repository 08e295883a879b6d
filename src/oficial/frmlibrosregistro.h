// The register books in the common electronic format, with what should be put right before.
#pragma once

#include <memory>

#include "oficial/librosregistro.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmLibrosRegistro;
}

class FrmLibrosRegistro : public Formulario {
  Q_OBJECT
 public:
  explicit FrmLibrosRegistro(Contexto& contexto);
  ~FrmLibrosRegistro() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Database> empresa();
  void lee();
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmLibrosRegistro> ui_;
  std::unique_ptr<LibrosRegistro> libros_;
};
