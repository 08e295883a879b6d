// Texts of files that may be older than this program's UTF-8.
#pragma once

#include <QByteArrayView>
#include <QString>

// Reads bytes as UTF-8 (with or without its signature), or, when they aren't valid UTF-8, in the
// Western code page, in which older files and those of other programs are written.
QString leeTexto(QByteArrayView bytes);

// The code pages of a byte a character that files of Western Europe are in: that of Windows (1252)
// and those of DOS.
enum class PaginaDeCodigos { Occidental, Dos437, Dos850 };

// Reads bytes in one page. A byte without a character there keeps its number.
//   leeTexto("Espa\xA4" "a", PaginaDeCodigos::Dos850) == "España"
QString leeTexto(QByteArrayView bytes, PaginaDeCodigos pagina);
