// The catalogue of companies and users, Inicio.mdb.
#pragma once

#include <QString>

class DBEngine;

// The sort order in which every file of the program is made.
inline constexpr char kOrdenGeneral[] = ";LANGID=0x0409;CP=1252;COUNTRY=0";

// Makes the catalogue with its one user, "Administrador", without a password. Raises 3204 and
// touches nothing when the file exists: a program folder that was moved keeps its companies.
void CrearInicio(DBEngine& motor, const QString& ruta);
