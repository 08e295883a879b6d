// A new company: what can be said against it before anything is written, and making it whole.
#pragma once

#include <functional>
#include <optional>
#include <QString>

#include "company/datosempresa.h"

class DBEngine;

struct Reparo {
  QString texto;                 // for the user
  QString DatosEmpresa::*campo;  // the field to be put right
};

// The first thing that keeps `datos` from becoming a company in the data folder: a name that no
// folder can bear on any of the systems that share it, a folder of that name which is none of ours,
// levels that are no numbers, a code longer than its level, two special subcuentas with one code.
// Nothing when there is none. A name that the catalogue has is left to creaEmpresa.
std::optional<Reparo> reparoDelAlta(DBEngine& motor, const QString& dirDatos,
                                    const DatosEmpresa& datos);

// What of it is about the name alone; empty when nothing is against it.
QString reparoDelNombre(DBEngine& motor, const QString& dirDatos, const QString& nombre);

// Makes the company in the data folder (with its final backslash): its row in the catalogue, its
// folder, its file. All is on the disk when it returns; if anything fails neither row nor folder is
// left. What a creation left that was killed half-way is taken over by the next one of that name.
// Raises 3022 for a name that the catalogue has, 75 when the folder can't be made, 13 when the
// digits aren't numbers, and what CrearBase raises.
void creaEmpresa(DBEngine& motor, const QString& dirDatos, const DatosEmpresa& datos);

// The same with a file of which `construye` is told where to make it.
using ConstruyeEmpresa = std::function<void(const QString& fichero)>;
void creaEmpresa(DBEngine& motor, const QString& dirDatos, const QString& nombre,
                 const ConstruyeEmpresa& construye);
