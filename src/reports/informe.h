// The report object of a dialog: filled in member by member, then run.
//
// What it names is text as dialogs write it: the template under the data directory, the company's
// file, the selections. Running it opens the book and hands it to the preview. The heading's
// company, year and tax number, and the mask of amounts, are those of the file's own Empresa row.
#pragma once

#include <memory>
#include <QStringList>

#include "common/reloj.h"
#include "engine/dbengine.h"
#include "reports/documento.h"

class Informe {
 public:
  struct Destino {
    // The printers that the system knows; none is error 28663, before anything is opened.
    std::function<QStringList()> impresoras;
    // Shows the book under a window title.
    std::function<void(std::shared_ptr<reports::Documento>, const QString& titulo)> muestra;
  };
  Informe(DBEngine& motor, const Reloj& reloj, Destino destino);

  QString WindowTitle;
  QString ReportFileName;  // full path of the template, with backslashes
  QString SelectionFormula;
  QString GroupSelectionFormula;
  QString& DataFiles(int numero);        // only 0: the company's file
  QString& ParameterFields(int numero);  // only 0: "Limites;Desde : ...;True"

  // Raises 28663 without a printer, 53 without the template, kPlantillaDefectuosa,
  // kFormulaRechazada, 13 for an impossible date in a selection, 3024 without the company's file,
  // and what the statement raises. Nothing is shown then.
  void PrintReport();

 private:
  DBEngine& motor_;
  const Reloj& reloj_;
  Destino destino_;
  QString fichero_;
  QString parametro_;
};
