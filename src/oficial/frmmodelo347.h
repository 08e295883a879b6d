// The 347: third parties above the limit, what is missing of each, letters to them and the file.
#pragma once

#include <memory>

#include "oficial/modelo347fichero.h"
#include "toolkit/formulario.h"

namespace Ui {
class FrmModelo347;
}

class FrmModelo347 : public Formulario {
  Q_OBJECT
 public:
  explicit FrmModelo347(Contexto& contexto);
  ~FrmModelo347() override;

  void Form_Load() override;

 private:
  std::unique_ptr<Database> empresa();
  void lee();
  void muestraTotales();
  QString importe(qint64 centimos) const;
  QString celda(int fila, int columna) const;
  void escribe(int fila, int columna, const QString& texto);
  void abreFilas(int fila);
  void CmdCartas_Click();
  void CmdFichero_Click();

  std::unique_ptr<Ui::FrmModelo347> ui_;
  std::unique_ptr<Modelo347> modelo_;
};
