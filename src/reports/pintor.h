// Draws laid-out pages on whatever paints: the screen, a printer, a PDF.
#pragma once

#include <QString>

#include "reports/tarea.h"

class QPageLayout;
class QPainter;

namespace reports {

// Draws a page. The painter's unit must be the page's (scale it before).
void pinta(QPainter& pintor, const Pagina& pagina, const Tipografia& tipografia);

// Paper and orientation of a book, without margins of the device's own.
QPageLayout papelDe(const Plantilla& plantilla);

// The pages from `desde` to `hasta` as a PDF, a system path. The file appears whole or not at all.
class TareaPdf : public TareaPaginas {
 public:
  // Raises 75 when the file can't be written.
  TareaPdf(std::shared_ptr<Documento> documento, const QString& ruta, const QString& titulo,
           int desde, int hasta);
  ~TareaPdf() override;

 protected:
  void pon(const Pagina& pagina, bool primera) override;
  void acaba() override;

 private:
  struct Privado;
  std::unique_ptr<Privado> p_;
};

}  // namespace reports
