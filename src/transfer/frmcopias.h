// Saves the open company to a zip archive, or puts the company of an archive in its place.
#pragma once

#include <memory>

#include "engine/advance.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmCopias;
}

class FrmCopias : public Formulario {
  Q_OBJECT
 public:
  explicit FrmCopias(Contexto& contexto);
  ~FrmCopias() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void BtonUnidad_Click();
  void CmdBuscaRestaura_Click();
  void BtonAceptar_Click();
  void guarda(const Advance& avance);
  void restaura(const Advance& avance);

  std::unique_ptr<Ui::FrmCopias> ui_;
  QString disquete_;
};
