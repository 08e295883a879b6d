// Draws laid-out pages on whatever paints: the screen, a printer, a PDF.
#pragma once

#include <QString>

#include "reports/documento.h"

class QPageLayout;
class QPainter;

namespace reports {

// Draws a page. The painter's unit must be the page's (scale it before).
void pinta(QPainter& pintor, const Pagina& pagina, const Tipografia& tipografia);

// Paper and orientation of a book, without margins of the device's own.
QPageLayout papelDe(const Plantilla& plantilla);

// Saves the pages from `desde` to `hasta` as a PDF, a system path. The file appears whole or not at
// all: false, and nothing written, when `avance` cancels it; 75 when it can't be written.
bool guardaPdf(Documento& documento, const QString& ruta, const QString& titulo, int desde,
               int hasta, const Avance& avance);

}  // namespace reports
