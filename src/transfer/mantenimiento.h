// The upkeep of a company's file: rebuilt from its rows, repaired, its amounts rounded.
#pragma once

#include <functional>
#include <optional>
#include <QString>

#include "engine/advance.h"

class Database;
class DBEngine;
class ErrorEjecucion;

// The file in which a company is made anew, beside its own.
QString rutaDeTrabajo(const QString& dirDatos, const QString& empresa);

struct Reindexado {
  QString ruta;   // the company's file
  QString nuevo;  // the one that is made (3204 if it is there)
  int digitosCuenta = 0;
  int digitosSubcuenta = 0;
};

// What a rebuilding tells and asks while it goes.
struct MarchaReindexado {
  std::function<void(int tabla)> tabla;  // which of kTablasReindexadas it begins
  Advance fila;                          // how far in it
  // A row, or a value of one, can't be taken over: true leaves it out and goes on. What the disk
  // refuses isn't asked about.
  std::function<bool(const ErrorEjecucion&)> omite;
};
inline constexpr int kTablasReindexadas = 8;

// Makes the company's file anew, empty, and copies its tables into it row by row. The result is
// what ReplaceDatabase wants as `asRead`; nothing if it was given up. Whatever is raised, or given
// up, leaves the company's file untouched and no other; except 3204.
std::optional<qint64> reindexa(DBEngine& motor, const Reindexado& obra,
                               const MarchaReindexado& marcha);

// Repairs a company's file and puts a compacted one, made as `nuevo`, in its place. If anything
// fails before that its rows are all where they were, and nothing of `nuevo` is left. 3343 for a
// file that can't be repaired; 3260 or 3186 while another station is using it.
void reparaEmpresa(DBEngine& motor, const QString& ruta, const QString& nuevo,
                   const Advance& avance = {});

// Rounds the amount of each line of the journal as `mascara` shows it. 3021 without lines.
void compruebaImportes(Database& empresa, const QString& mascara, const Advance& avance);
