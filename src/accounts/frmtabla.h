// A table of the open company edited in place in a grid: all that some screens are.
//
// What is typed in a cell is in the file when the cell is left; rows are neither added nor deleted.
#pragma once

#include <memory>

#include "engine/datacontrol.h"
#include "toolkit/formulario.h"
#include "toolkit/rejilla.h"

namespace Ui {
class FrmTabla;
}

class FrmTabla : public Formulario {
  Q_OBJECT
 public:
  ~FrmTabla() override;
  void Form_Load() override;

 protected:
  // `nombre` and `titulo` are the screen's, `tabla` the table in the company's file.
  FrmTabla(Contexto& contexto, const QString& nombre, const QString& titulo, const QString& tabla,
           std::vector<Columna> columnas);

 private:
  std::unique_ptr<Ui::FrmTabla> ui_;
  QString tabla_;
  DataControl DtaTabla_;
};
