// Glyphs and widths of a template's fonts, on the grid of a page.
//
// Glyphs are placed one by one from a table of widths, without shaping: it is what lets a book of a
// million lines be set in half a minute, and what makes each page the same on every device.
#pragma once

#include <QList>
#include <QPointF>
#include <QRawFont>

#include "reports/plantilla.h"

namespace reports {

// What one font draws on a page.
struct Tramo {
  QList<quint32> glifos;
  QList<QPointF> sitios;
};

class Tipografia {
 public:
  explicit Tipografia(const std::vector<Letra>& letras);

  const QRawFont& fuente(size_t letra) const { return fuentes_[letra].raw; }
  // From the top of a field to its base line, and the height of a line.
  int subida(int letra) const { return fuentes_[size_t(letra)].subida; }
  int alto(int letra) const { return fuentes_[size_t(letra)].alto; }

  double ancho(int letra, QStringView texto) const;
  // The same letter in a size at which what was 1 wide is `veces` at the most. Texts shrink as far
  // as they can be read; figures, which must not be cut, as far as need be.
  int menor(int letra, double veces, bool cifras) const;
  // How many characters fit into a width without breaking a word, unless it is a single one.
  qsizetype palabras(int letra, const QString& texto, double ancho) const;
  // The text as it fits into a width, ended by "…" when it doesn't.
  QString cabe(int letra, const QString& texto, double ancho) const;
  void coloca(int letra, QStringView texto, double x, int base, Tramo& tramo) const;

 private:
  struct Glifo {
    quint32 indice = 0;
    float avance = -1;  // not looked up yet
  };
  struct Fuente {
    Letra letra;
    QRawFont raw;
    int subida = 0;
    int alto = 0;
    std::vector<Glifo> glifos;  // by character
  };
  static const Glifo& glifo(Fuente& fuente, QChar c);
  int abre(const Letra& letra) const;
  // Looking a character or a size up for the first time notes it.
  mutable std::vector<Fuente> fuentes_;
};

}  // namespace reports
