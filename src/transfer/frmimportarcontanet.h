// Brings the files that ContaNet exports into the open company.
#pragma once

#include <memory>
#include <optional>

#include "toolkit/formulario.h"

namespace Ui {
class FrmImportarContanet;
}
class QCheckBox;
class QPushButton;

class FrmImportarContanet : public Formulario {
  Q_OBJECT
 public:
  explicit FrmImportarContanet(Contexto& contexto);
  ~FrmImportarContanet() override;

 private:
  struct Fila {
    QCheckBox* marca;
    QLineEdit* ruta;
    QPushButton* boton;
  };
  void localiza(const Fila& fila);
  static std::optional<QString> elegida(const Fila& fila);
  void CmdAceptar_Click();

  std::unique_ptr<Ui::FrmImportarContanet> ui_;
  std::vector<Fila> filas_;  // in the order in which the files are read
};
