// A small Gestion.MDB, as the commercial program would bring it.
#pragma once

#include <QString>

class DBEngine;

// In the data folder, a text path with its final backslash. Articles "0001" to "0003", two
// suppliers and a customer; without `articulos`, none.
void creaGestion(DBEngine& motor, const QString& dirDatos, bool articulos = true);
