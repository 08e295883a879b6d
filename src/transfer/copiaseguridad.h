// The backup of a company: its one file, in a zip archive that any tool opens.
#pragma once

#include <QString>

#include "engine/advance.h"

class DBEngine;

// Packs the company's file as it stands into `archivo` (both as the program writes paths), in place
// of an older archive of that name. It has its name only once what was packed has been found sound
// and read back from it, so a copy that fails leaves the older one. Other stations go on working.
// Raises 76 without the folder, 3024 and 3343 for a file that can't be copied, 75, 3026, 3043.
void guardaCopia(DBEngine& motor, const QString& rutaEmpresa, const QString& archivo,
                 const Advance& avance = {});

// Puts the company of `archivo` in the place of the one at `rutaEmpresa`, under the name `empresa`,
// whatever company it was. It is checked first, and then written as one change: whatever fails, the
// company is as it was. A file that is no longer a database, or is gone, is made anew. Raises what
// descomprime does; 321 for a database that isn't a company; 3343, 3026; 3186 while another station
// is writing.
void restauraCopia(DBEngine& motor, const QString& archivo, const QString& rutaEmpresa,
                   const QString& empresa, const Advance& avance = {});
