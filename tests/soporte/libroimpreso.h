// A printed book as its reader sees it: the text of its PDF, page by page.
#pragma once

#include <QList>
#include <QStringList>

class Guion;
class VistaPrevia;
struct Contexto;

struct LibroImpreso {
  QString titulo;              // of its window
  QList<QStringList> paginas;  // the lines of each page, with single blanks

  QStringList lineas() const;  // of all pages
  // The first line that begins so, empty if there is none; on one page or on all.
  QString linea(const QString& comienzo, int pagina = 0) const;
};

QList<QStringList> paginasDePdf(const QString& pdf);

// The delivered templates into the data folder of a scenario, as a login puts them there.
void ponPlantillas(const Contexto& ctx);
// The preview on show; null when there is none.
VistaPrevia* vistaAbierta();
// Saves the book of the preview on show as PDF by its key and closes the window.
void guardaVista(Guion& guion, const QString& pdf);
// The same, and reads it.
LibroImpreso leeVista(Guion& guion);
