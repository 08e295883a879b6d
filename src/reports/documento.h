// An open book: pages laid out as they are asked for, counted by a light pass, streamed for
// printing.
#pragma once

#include "reports/compositor.h"

namespace reports {

class Documento {
 public:
  Documento(Plantilla plantilla, DatosInforme datos, std::unique_ptr<Fuente> fuente);

  const Plantilla& plantilla() const { return plantilla_; }
  const Tipografia& tipografia() const { return tipografia_; }
  const Fuente& fuente() const { return *fuente_; }
  const DatosInforme& datos() const { return datos_; }

  // A page by its number from 1; null beyond the last. Counts on to it when need be, and keeps the
  // last pages asked for.
  std::shared_ptr<const Pagina> pagina(int numero);

  // The light pass: counts some more rows' pages; true once all are counted. Without an argument,
  // to the end.
  bool cuenta(qint64 filas = -1);
  bool contado() const { return contado_; }
  int paginas() const { return static_cast<int>(marcas_.size()); }  // counted so far

 private:
  Plantilla plantilla_;
  DatosInforme datos_;
  std::unique_ptr<Fuente> fuente_;
  Tipografia tipografia_;

  std::vector<Marca> marcas_;  // where each counted page begins
  bool contado_ = false;
  std::unique_ptr<CursorAvance> cursorCuenta_;
  std::unique_ptr<Compositor> cuenta_;

  std::unique_ptr<CursorSuelto> cursorPaginas_;
  std::unique_ptr<Compositor> compone_;
  QList<std::shared_ptr<const Pagina>> recientes_;
  int totalRecientes_ = 0;  // the total that they show
};

// The pages of a book from the first on, each laid out once and kept by nobody.
class Recorrido {
 public:
  explicit Recorrido(const Documento& documento);
  // The next page, or one skipped with null; false when there was none left.
  bool siguiente(Pagina* destino);

 private:
  const Documento& documento_;
  CursorAvance cursor_;
  Compositor compositor_;
  bool quedan_ = true;
};

}  // namespace reports
