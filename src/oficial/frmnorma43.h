// The bank's statements: reads them, and shows their movements beside the lines of the bank's
// subcuenta. Enter accepts the line that is proposed, or goes to where the missing one is posted.
#pragma once

#include <memory>

#include "journal/widgets/camposubcuenta.h"
#include "oficial/conciliacion.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmNorma43;
}

class FrmNorma43 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmNorma43(Contexto& contexto);
  ~FrmNorma43() override;
  void Form_Load() override;

 private:
  // A row of the table: a movement, a line or both, by their places; -1 for none.
  struct Fila {
    int movimiento = -1;
    int apunte = -1;
  };

  void CmdLeer_Click();
  void CmdAceptar_Click();
  void CmdTodas_Click();
  void CmdDeshacer_Click();
  void CmdAsentar_Click();
  void CmdAsentarReglas_Click();
  void CmdOlvidar_Click();
  void GrdMovimientos_KeyPress(int fila);
  void TxtSubcuenta_LostFocus();

  void preparaTabla();
  void llenaCuentas(const QString& elegida);
  void lee();
  void propone();
  void compone();
  void preparaAsiento();
  QString celda(int fila, int columna) const;
  QString deLosLibros(const Fila& fila, int columna) const;
  QString estado(const Fila& fila) const;
  QString importe(qint64 centimos) const;
  QString textoDeCuadre() const;

  std::unique_ptr<Database> empresa();
  Fila actual() const;
  const MovimientoGuardado* movimiento(const Fila& fila) const;
  bool esPropuesta(const Fila& fila) const;
  std::optional<Punteo> punteo();
  void cambia(const std::function<void()>& cambio);
  void acepta(const std::vector<Pareja>& parejas, const Punteo& marca);
  bool asienta(const std::vector<Contrapartida>& contrapartidas);

  std::unique_ptr<Ui::FrmNorma43> ui_;
  std::unique_ptr<CampoSubcuenta> subcuenta_, contrapartida_;
  Conciliacion conciliacion_;
  ReglasBanco reglas_;
  std::vector<Pareja> parejas_;
  std::vector<Fila> filas_;
};
