// Reckoned rows on paper, through the frame of all books: a template that the office may edit, the
// preview, PDF and spreadsheet.
//
// The rows are put into a file of their own, as the table Hoja with the columns C1, C2... of text
// and N1, N2... of amounts, beside a copy of the company's row. It goes when the program ends.
#pragma once

#include <QStringList>
#include <vector>

#include "common/variant.h"
#include "reports/informe.h"

struct Contexto;
class QWidget;

class HojaImpresa {
 public:
  HojaImpresa(Contexto& contexto, QWidget* padre) : ctx_(contexto), padre_(padre) {}

  // A row: at most 20 texts and 8 amounts, Null where there is none.
  void anade(const QStringList& textos, const QList<Variant>& importes = {}) {
    filas_.push_back({textos, importes});
  }
  // Shows the book; `plantilla` is the bare name of its template. What fails is told as for any
  // book.
  void muestra(const QString& titulo, const QString& plantilla, const QString& limites) const;
  // The same rows as a workbook, without showing them: whole, or 75. `ruta` is a system path.
  void guardaXlsx(const QString& ruta, const QString& plantilla) const;

 private:
  QString escribe() const;
  Informe informe(const QString& plantilla, Informe::Destino destino) const;

  Contexto& ctx_;
  QWidget* padre_;
  struct Fila {
    QStringList textos;
    QList<Variant> importes;
  };
  std::vector<Fila> filas_;
};
