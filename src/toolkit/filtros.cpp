#include "toolkit/filtros.h"

#include <algorithm>

#include "common/formato.h"

namespace {

bool esCifra(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool esSigno(QChar c) {
  return c == u'-' || c == u'+';
}

// A text that is no amount yet may become one with its last signs.
bool empiezaUnImporte(const QString& texto, const QString& mascara) {
  const bool abierto = texto.startsWith(u'(') && !texto.contains(u')');
  const QString cierre = abierto ? QStringLiteral(")") : QString();
  if (std::ranges::any_of(texto, esCifra)) {
    // A sign behind the digits can be read, but whoever types one has slipped.
    return !esSigno(texto.trimmed().back()) && ImporteDe(texto + cierre, mascara).has_value();
  }
  return ImporteDe(texto + u'1' + cierre, mascara).has_value();
}

}  // namespace

QString textoTras(const Edicion& antes, const QString& insertado) {
  const qsizetype desde = antes.largo > 0 ? antes.seleccion : antes.cursor;
  return antes.texto.left(desde) + insertado + antes.texto.mid(desde + antes.largo);
}

bool soloQuita(const QString& antes, const QString& ahora) {
  if (ahora.size() >= antes.size()) return false;
  const auto delante = std::ranges::mismatch(ahora, antes).in1 - ahora.begin();
  return antes.endsWith(ahora.mid(delante));
}

bool admite(Filtro filtro, const QString& texto, const QString& mascara) {
  if (texto.isEmpty()) return true;
  switch (filtro) {
    case Filtro::Ninguno:
      return true;
    case Filtro::Digitos:
      return std::ranges::all_of(texto, esCifra);
    case Filtro::Codigo:
      return texto.count(u'.') <= 1 &&
             std::ranges::all_of(texto, [](QChar c) { return esCifra(c) || c == u'.'; });
    case Filtro::Importe:
      return empiezaUnImporte(texto, mascara);
    case Filtro::ImporteSinSigno:
      return !std::ranges::any_of(texto, esSigno) && !texto.contains(u'(') &&
             empiezaUnImporte(texto, mascara);
  }
  return true;
}
