#include "reports/tipografia.h"

#include <cmath>
#include <QFont>

namespace reports {
namespace {
constexpr int kUnidadesPorPunto = kUnidadesPorPulgada / 72;
constexpr size_t kCaracteres = 0x10000;
const QChar kPuntos(0x2026);
constexpr double kPasosDeLetra = 20;
constexpr double kTextoMenor = 0.7;
constexpr double kCifraMenor = 0.1;
}  // namespace

Tipografia::Tipografia(const std::vector<Letra>& letras) {
  for (const Letra& l : letras) abre(l);
}

int Tipografia::abre(const Letra& l) const {
  QFont f(l.familia);
  f.setBold(l.negrita);
  f.setItalic(l.cursiva);
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(l.puntos * kUnidadesPorPunto))));
  f.setHintingPreference(QFont::PreferNoHinting);
  f.setKerning(false);
  Fuente fuente{l, QRawFont::fromFont(f), 0, 0, {}};
  fuente.subida = static_cast<int>(std::lround(fuente.raw.ascent()));
  fuente.alto = fuente.subida + static_cast<int>(std::lround(fuente.raw.descent()));
  fuentes_.push_back(std::move(fuente));
  return static_cast<int>(fuentes_.size()) - 1;
}

// In steps of a twentieth, so that a book takes few sizes.
int Tipografia::menor(int letra, double veces, bool cifras) const {
  const double pasos = std::floor(veces * kPasosDeLetra);
  const double menos = std::max(pasos / kPasosDeLetra, cifras ? kCifraMenor : kTextoMenor);
  Letra buscada = fuentes_[size_t(letra)].letra;
  buscada.puntos *= menos;
  for (size_t i = 0; i < fuentes_.size(); ++i) {
    if (fuentes_[i].letra == buscada) return static_cast<int>(i);
  }
  return abre(buscada);
}

qsizetype Tipografia::palabras(int letra, const QString& texto, double ancho) const {
  Fuente& f = fuentes_[size_t(letra)];
  double suma = 0;
  qsizetype corte = 0;
  for (qsizetype i = 0; i < texto.size(); ++i) {
    if (texto[i].isSpace()) corte = i;
    suma += glifo(f, texto[i]).avance;
    if (suma > ancho) return corte > 0 ? corte : std::max<qsizetype>(1, i);
  }
  return texto.size();
}

const Tipografia::Glifo& Tipografia::glifo(Fuente& fuente, QChar c) {
  auto& glifos = fuente.glifos;
  const size_t i = c.unicode();
  if (i >= glifos.size()) glifos.resize(i < 0x180 ? 0x180 : kCaracteres);
  Glifo& g = glifos[i];
  if (g.avance < 0) {
    const auto indices = fuente.raw.glyphIndexesForString(QString(c));
    g.indice = indices.isEmpty() ? 0 : indices[0];
    g.avance = static_cast<float>(fuente.raw.advancesForGlyphIndexes({g.indice})[0].x());
  }
  return g;
}

double Tipografia::ancho(int letra, QStringView texto) const {
  Fuente& f = fuentes_[size_t(letra)];
  double suma = 0;
  for (const QChar c : texto) suma += glifo(f, c).avance;
  return suma;
}

QString Tipografia::cabe(int letra, const QString& texto, double ancho) const {
  Fuente& f = fuentes_[size_t(letra)];
  const double queda = ancho - glifo(f, kPuntos).avance;
  double suma = 0;
  qsizetype corte = 0;
  for (qsizetype i = 0; i < texto.size(); ++i) {
    suma += glifo(f, texto[i]).avance;
    if (suma <= queda) corte = i + 1;
    if (suma > ancho) {
      while (corte > 0 && texto[corte - 1].isSpace()) --corte;
      return texto.left(corte) + kPuntos;
    }
  }
  return texto;
}

void Tipografia::coloca(int letra, QStringView texto, double x, int base, Tramo& tramo) const {
  Fuente& f = fuentes_[size_t(letra)];
  for (const QChar c : texto) {
    const Glifo& g = glifo(f, c);
    if (!c.isSpace()) {
      tramo.glifos << g.indice;
      tramo.sitios << QPointF(std::round(x), base);
    }
    x += g.avance;
  }
}

}  // namespace reports
