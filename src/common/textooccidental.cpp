#include "common/textooccidental.h"

#include <algorithm>
#include <QStringDecoder>

namespace {

// Where the Western code page differs from Latin-1: 0x80 to 0x9F. 0 marks a byte without a
// character.
constexpr char16_t kOccidental[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The upper halves of the pages of DOS.
constexpr char16_t kDos437[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
    u"áíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
    u"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
constexpr char16_t kDos850[] =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒ"
    u"áíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐"
    u"└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀"
    u"ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0";
static_assert(std::size(kDos437) == 129 && std::size(kDos850) == 129);

char16_t letraOccidental(char16_t byte) {
  if (byte < 0x80 || byte > 0x9F) return byte;
  const char16_t propia = kOccidental[byte - 0x80];
  return propia != 0 ? propia : byte;
}

}  // namespace

QString leeTexto(QByteArrayView bytes) {
  // Most texts read the same in all pages.
  if (std::none_of(bytes.begin(), bytes.end(), [](char c) { return c & 0x80; }))
    return QString::fromLatin1(bytes);
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString texto = utf8(bytes);
  return utf8.hasError() ? leeTexto(bytes, PaginaDeCodigos::Occidental) : texto;
}

QString leeTexto(QByteArrayView bytes, PaginaDeCodigos pagina) {
  QString texto = QString::fromLatin1(bytes);
  const auto alta = [](QChar c) { return c.unicode() >= 0x80; };
  for (auto c = std::find_if(texto.begin(), texto.end(), alta); c != texto.end();
       c = std::find_if(c + 1, texto.end(), alta)) {
    if (pagina == PaginaDeCodigos::Occidental)
      *c = QChar(letraOccidental(c->unicode()));
    else
      *c = QChar((pagina == PaginaDeCodigos::Dos437 ? kDos437 : kDos850)[c->unicode() - 0x80]);
  }
  return texto;
}
