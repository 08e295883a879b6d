// Texts of files that may be older than this program's UTF-8.
#pragma once

#include <QByteArray>
#include <QString>

// Reads bytes as UTF-8 (with or without its signature), or, when they aren't valid UTF-8, in the
// Western code page, in which older files and those of other programs are written.
QString leeTexto(const QByteArray& bytes);
