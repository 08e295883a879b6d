// A company's file copied for others: as another company of the catalogue, or as a file of tables
// to be taken out of the program.
#pragma once

#include <QString>

#include "engine/advance.h"

class DBEngine;

// Makes a company of the data folder (with its final backslash) out of the file of another one,
// whose books it holds under its own name. All or nothing, as when a company is created: 3022 for a
// name that the catalogue has, 75 when its folder can't be made; 3163 for one that is too long.
void clonaEmpresa(DBEngine& motor, const QString& dirDatos, const QString& origen,
                  const QString& nombre, const Advance& avance = {});

// What of a company an exported file keeps.
struct PartesExportadas {
  bool plan = false;
  bool diario = false;
  bool iva = false;
  bool recibos = false;
};

// Whether a file to be written is one that the program keeps books in: those of the catalogue or of
// any company of the data folder. `fichero` is the system's path.
bool esDelPrograma(const QString& dirDatos, const QString& fichero);

// Takes out of a copy of a company's file what nobody asked for: all its stored queries, and all
// its tables but those chosen. What can't be taken out stays, without a word. Nothing of what went
// can be found in the file afterwards.
void dejaLoElegido(DBEngine& motor, const QString& fichero, const PartesExportadas& partes,
                   const Advance& avance = {});
