// The revision list: what was found in the books, each row opening what it tells of.
#pragma once

#include <memory>

#include "oficial/revision.h"
#include "toolkit/formulario.h"

class HojaImpresa;

namespace Ui {
class FrmRevision;
}

class FrmRevision : public Formulario {
  Q_OBJECT
 public:
  explicit FrmRevision(Contexto& contexto);
  ~FrmRevision() override;
  void Form_Load() override;

 private:
  void CmdAbrir_Click();
  void CmdImprimir_Click();
  void CmdExcel_Click();

  void revisaTodo();
  void abre(const Hallazgo& hallazgo);
  void abreExtracto(const QString& subcuenta);
  QString celda(int fila, int columna) const;
  HojaImpresa hoja();

  std::unique_ptr<Ui::FrmRevision> ui_;
  QList<Hallazgo> hallazgos_;
};
