// What the files of a folder hold, read with nothing but the file library, and whether they are
// sound. No file may be open in this process: another handle on it would drop its locks.
#pragma once

#include <QString>

// The companies of a folder: of each file the rows of its journal, its registers and its counters.
// Two folders that tell the same hold the same books. A file that can't be read tells why.
QString contenidoDeLibros(const QString& carpeta);

// What is wrong with the companies of a folder; empty when the library finds each file sound, the
// sums are those of the lines, and the counter stands beyond the last line.
QString quejasDeLibros(const QString& carpeta);
