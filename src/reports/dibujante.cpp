#include "reports/dibujante.h"

#include <cmath>

namespace reports {

void Dibujante::empieza(Pagina& pagina, int numero, int paginas) {
  pagina_ = &pagina;
  paginas_ = paginas;
  pagina.numero = numero;
  pagina.manchas.clear();
  pagina.textos.clear();
  for (Tramo& t : pagina.tramos) {
    t.glifos.clear();
    t.sitios.clear();
  }
}

void Dibujante::pon(const Banda& banda, int y, const Momento& momento) {
  for (Mancha m : banda.manchas) {
    m.x += plantilla_.izquierda;
    m.y += y;
    pagina_->manchas.push_back(m);
  }
  for (const Campo& c : banda.campos) ponCampo(c, y + c.y, momento);
}

QString Dibujante::textoDe(const Campo& campo, const Momento& momento) const {
  if (campo.piezas.size() == 1) return contenido(campo.piezas[0], momento);
  // A label without what it labels is left out.
  QString texto;
  bool datos = false, vacio = true;
  for (const Pieza& p : campo.piezas) {
    const QString parte = contenido(p, momento);
    if (p.clase != Pieza::Clase::Literal) {
      datos = true;
      vacio = vacio && parte.isEmpty();
    }
    texto += parte;
  }
  return datos && vacio ? QString() : texto;
}

void Dibujante::ponCampo(const Campo& campo, int y, const Momento& momento) {
  QString entero = textoDe(campo, momento);
  // Masks may end in a blank for one sign only; figures must stand under each other.
  if (campo.alineacion == Alineacion::Derecha) {
    while (entero.endsWith(u' ')) entero.chop(1);
  }
  QString texto = entero;
  int letra = campo.letra;
  double ancho = tipografia_.ancho(letra, texto);
  if (campo.parte && momento.largo) {
    // The line for the rest stands there already: counted by letters, narrow ones might all fit
    // here.
    const qsizetype corte =
        tipografia_.palabras(letra, texto, std::min<double>(campo.ancho, ancho - 1));
    texto = entero.left(corte);
    resto_ = entero.mid(corte).trimmed();
    ancho = tipografia_.ancho(letra, texto);
  }
  if (ancho > campo.ancho) {
    // An amount with some of its digits gone would be another amount.
    const bool cifra = std::any_of(campo.piezas.begin(), campo.piezas.end(),
                                   [](const Pieza& p) { return esDeImporte(p.formato); });
    letra = tipografia_.menor(letra, campo.ancho / ancho, cifra);
    if (!cifra) texto = tipografia_.cabe(letra, texto, campo.ancho);
    ancho = tipografia_.ancho(letra, texto);
  }
  if (texto.isEmpty()) return;
  double x = plantilla_.izquierda + campo.x;
  if (campo.alineacion == Alineacion::Derecha) x += campo.ancho - ancho;
  if (campo.alineacion == Alineacion::Centro) x += (campo.ancho - ancho) / 2;
  if (pagina_->tramos.size() <= size_t(letra)) pagina_->tramos.resize(size_t(letra) + 1);
  // Smaller letters stand on the base line of their row.
  const int base = y + tipografia_.subida(campo.letra);
  tipografia_.coloca(letra, texto, x, base, pagina_->tramos[size_t(letra)]);
  // What goes on in the long line is found where it begins.
  if (esResto(campo)) entero.clear();
  pagina_->textos.push_back({texto, entero, static_cast<int>(x), y,
                             static_cast<int>(std::ceil(ancho)), tipografia_.alto(campo.letra)});
}

bool Dibujante::esResto(const Campo& campo) {
  return campo.piezas.size() == 1 && campo.piezas[0].clase == Pieza::Clase::Dato &&
         campo.piezas[0].texto == u"resto";
}

QString Dibujante::contenido(const Pieza& pieza, const Momento& momento) const {
  switch (pieza.clase) {
    case Pieza::Clase::Literal:
      return pieza.texto;
    case Pieza::Clase::Suma:
      return muestra_.importe(importeDe(momento.sumas[size_t(pieza.acumulador)]), pieza.formato);
    case Pieza::Clase::Dato:
      return dato(pieza.texto, momento);
    case Pieza::Clase::Columna:
      break;
  }
  return columna(pieza, momento);
}

QString Dibujante::dato(const QString& nombre, const Momento& momento) const {
  if (nombre == u"pagina") return QString::number(momento.numero);
  if (nombre == u"paginas") return paginas_ ? QString::number(paginas_) : QStringLiteral("…");
  if (nombre == u"continua") return momento.continua ? QStringLiteral("(continuación)") : QString();
  if (nombre == u"resto") return resto_;
  return datos_.textos.value(nombre);
}

QString Dibujante::columna(const Pieza& pieza, const Momento& momento) const {
  const Cursor& cursor = momento.cursor;
  const int c = pieza.ordinal;
  if (momento.resumido) return muestra_.valor(momento.resumido->valores.at(c), pieza.formato);
  switch (momento.fila) {
    case Momento::Fila::Actual:
      if (pieza.formato == Formato::Texto) return cursor.texto(c);
      return muestra_.valor(cursor.valor(c), pieza.formato);
    case Momento::Fila::Anterior:
      return muestra_.valor(cursor.valorAnterior(c), pieza.formato);
    case Momento::Fila::Ninguna:
      break;
  }
  return {};
}

}  // namespace reports
