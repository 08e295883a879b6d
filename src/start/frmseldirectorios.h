// Picks a folder for a field of the form that called it.
#pragma once

#include <QFileSystemModel>

#include "toolkit/formulario.h"

namespace Ui {
class FrmSelDirectorios;
}

class FrmSelDirectorios : public Formulario {
  Q_OBJECT
 public:
  explicit FrmSelDirectorios(Contexto& contexto);
  ~FrmSelDirectorios() override;

  void Form_Load() override;

 private:
  void Unidad_Change(int indice);
  void CmdAceptar_Click();
  QLineEdit* destino() const;  // null when no form with that field is open

  std::unique_ptr<Ui::FrmSelDirectorios> ui_;
  QFileSystemModel carpetas_;
};
