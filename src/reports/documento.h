// An open book: pages laid out as they are asked for, counted by a light pass, streamed for
// printing.
#pragma once

#include "reports/compositor.h"

namespace reports {

// Told how far long output has come; false cancels it. `de` is 0 while the total isn't known.
using Avance = std::function<bool(int hecho, int de)>;

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

  // Lays out the pages from `desde` to `hasta` in one forward pass, giving each to `cada`, which
  // ends the pass with false. No page is kept.
  void recorre(int desde, int hasta, const std::function<bool(const Pagina&)>& cada);

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

}  // namespace reports
