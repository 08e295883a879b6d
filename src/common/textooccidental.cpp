#include "common/textooccidental.h"

#include <QStringDecoder>

namespace {

// Where the Western code page differs from Latin-1: 0x80 to 0x9F. 0 marks a byte without a
// character.
constexpr char16_t kOccidental[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

QString leeTexto(const QByteArray& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString texto = utf8(bytes);
  if (!utf8.hasError()) return texto;
  QString occidental = QString::fromLatin1(bytes);
  for (QChar& c : occidental) {
    if (c.unicode() < 0x80 || c.unicode() > 0x9F) continue;
    const char16_t propio = kOccidental[c.unicode() - 0x80];
    if (propio != 0) c = QChar(propio);
  }
  return occidental;
}
