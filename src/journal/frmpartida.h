// Changes one line of the journal: the current row of the main window's grid.
//
// A line may change sides, date and asiento. Each of these is asked about: whether the side is
// meant, and whether the other lines of the asiento shall follow.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmPartida;
}
class CampoSubcuenta;

class FrmPartida : public Formulario {
  Q_OBJECT
 public:
  explicit FrmPartida(Contexto& contexto);
  ~FrmPartida() override;

  void Form_Load() override;
  void Form_Activate() override;

 private:
  void TxtAsiento_KeyPress(Tecla& tecla);
  void TxtFecha_LostFocus();
  void TxtSubcuenta_LostFocus();
  void CmdAceptar_Click();

  // Stores the line on one side ("D" or "H"), after asking if it comes from the other.
  void guardaEn(const QString& lado);
  void Comprueba();
  void cambiaEnAsiento(const QString& asiento, const QString& campo, const QString& valor);

  std::unique_ptr<Ui::FrmPartida> ui_;
  std::unique_ptr<CampoSubcuenta> subcuenta_;
  DataControl DtaDiarioLista_;  // the whole asiento, for the changes that reach its other lines
  DataControl DtaConceptos_;
  QString FechaVieja;
  QString AsientoViejo;
  QString linea_;  // its NLinea
  QString DHViejo;
};
