// Archives of one file, as copies of a company are kept: any tool that knows zip reads them, and
// they are read whatever tool wrote them.
//
// Nothing of what an archive says is believed: neither its names, which may lead out of any folder,
// nor its sizes, nor that the file in it is what its name says.
#pragma once

#include <functional>
#include <QString>

#include "engine/advance.h"

// Packs a file under a plain name into an archive, which is made anew at `archivo`, and reads it
// back to the last byte. Both are the system's paths. `avance` is told how far it is, and may give
// it up by answering false (3059). Raises 75 when it can't be written, 3026 when it doesn't fit,
// 3043 when what is read back isn't what was packed.
void comprime(const QString& fichero, const QString& archivo, const QString& nombre,
              const std::function<bool(int hecho, int total)>& avance);

// Takes the file of a plain name (in any case, whatever folder the archive puts it into) out of an
// archive and writes it to `destino`; what else the archive holds stays in it. A link isn't taken
// for a file. Raises 53 without the archive; 321, with what is the matter with it, if it isn't a
// sound archive, doesn't hold the file or holds several, needs a password, or if the file isn't a
// database; 3026 if the disk hasn't room for the size that it tells, 75 when it can't be written.
void descomprime(const QString& archivo, const QString& nombre, const QString& destino,
                 const Advance& avance);
