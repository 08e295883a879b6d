// Sets the texts of bands on a page.
#pragma once

#include "reports/paginador.h"
#include "reports/tipografia.h"

namespace reports {

// A text on a page, and what it is found by: the whole of it, also where less was room for.
struct Texto {
  QString texto;
  QString entero;
  int x = 0, y = 0, ancho = 0, alto = 0;
};

struct Pagina {
  int numero = 0;
  std::vector<Mancha> manchas;
  std::vector<Tramo> tramos;  // by font
  std::vector<Texto> textos;
};

// What every heading shows of the company and of the run.
struct DatosInforme {
  QHash<QString, QString> textos;  // "empresa", "nif", "año", "limites", "hoy"...
  QString mascara;
};

class Dibujante : public Lienzo {
 public:
  Dibujante(const Plantilla& plantilla, const DatosInforme& datos, const Muestra& muestra,
            const Tipografia& tipografia)
      : plantilla_(plantilla), datos_(datos), muestra_(muestra), tipografia_(tipografia) {}

  // Empties a page and draws on it from now on. A page used again keeps its room. `paginas` is the
  // total, 0 while it isn't known.
  void empieza(Pagina& pagina, int numero, int paginas);
  void pon(const Banda& banda, int y, const Momento& momento) override;

 private:
  void ponCampo(const Campo& campo, int y, const Momento& momento);
  QString textoDe(const Campo& campo, const Momento& momento) const;
  static bool esResto(const Campo& campo);
  QString contenido(const Pieza& pieza, const Momento& momento) const;
  QString dato(const QString& nombre, const Momento& momento) const;
  QString columna(const Pieza& pieza, const Momento& momento) const;

  const Plantilla& plantilla_;
  const DatosInforme& datos_;
  const Muestra& muestra_;
  const Tipografia& tipografia_;
  Pagina* pagina_ = nullptr;
  int paginas_ = 0;
  QString resto_;  // of the last text that goes on in the long line
};

}  // namespace reports
