// The rows of the registers of IVA with the data that the law wants of each, to be looked at and
// corrected.
//
// It opens on a whole year, or, called by the 303 (303) or the 347 (347) with what it asks for, on
// the rows of one casilla ("1T 07", "1T -" for those in none) or of one third party.
#pragma once

#include <memory>

#include "oficial/datosregistro.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmDatosRegistros;
}
class Database;

class FrmDatosRegistros : public Formulario {
  Q_OBJECT
 public:
  explicit FrmDatosRegistros(Contexto& contexto);
  ~FrmDatosRegistros() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Database> empresa();
  void lee();
  void elige();
  bool entra(const LineaRegistro& linea, size_t lugar) const;
  QString celda(int fila, int columna) const;
  void escribe(int fila, int columna, const QString& texto);
  void abreFactura(int fila);
  bool puedeAbrirse(const LineaRegistro& linea);

  std::unique_ptr<Ui::FrmDatosRegistros> ui_;
  std::vector<LineaRegistro> lineas_;
  std::vector<QStringList> avisos_;  // of each row
  std::vector<int> visibles_;
  TiposPorFechas tipos_;
  QStringList codigos_;  // the only rows wanted; empty for all
  bool soloCodigos_ = false;
};
