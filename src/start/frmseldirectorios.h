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
  void Form_Activate() override;

 private:
  void Unidad_Change(int indice);
  void CmdAceptar_Click();
  void enSuSitio();
  QLineEdit* destino() const;  // null when no form with that field is open

  std::unique_ptr<Ui::FrmSelDirectorios> ui_;
  QFileSystemModel carpetas_;
  QPersistentModelIndex inicial_;  // the folder of the field
};
