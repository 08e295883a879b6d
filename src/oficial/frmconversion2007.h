// The conversion of the open company to the plan of 2007: the proposal as a table to be put right,
// then the change itself, with a copy of the file beside it.
#pragma once

#include <memory>
#include <QSet>

#include "oficial/conversion.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmConversion2007;
}
class QTableWidgetItem;

class FrmConversion2007 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmConversion2007(Contexto& contexto);
  ~FrmConversion2007() override;
  void Form_Load() override;

 private:
  void propone();
  void ensena();
  void ajustaNotas();
  void cambiada(QTableWidgetItem* celda);
  void resume();
  void CmdIgual_Click();
  void CmdNoUsadas_Click();
  void CmdAceptar_Click();
  void CmdImprimir_Click();
  bool seQuiere(Database& empresa);
  Convertido convierte(Database& empresa);
  void ensenaSumas();
  Modelo2007 modelo() const;
  void ponBotones(bool si);

  std::unique_ptr<Ui::FrmConversion2007> ui_;
  QList<FilaConversion> filas_;
  QSet<QString> tecleadas_;  // the codes that the user has decided
  Convertido hecho_;         // once it is made
  bool ensenando_ = false;
};
