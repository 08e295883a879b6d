// A small Gestion.MDB, as the commercial program would bring it.
#pragma once

#include "soporte/otropuesto.h"

inline void creaGestion(const QString& carpetaDatos) {
  preguntaFuera(carpetaDatos + "/Gestion.MDB", contenidoDe(rutaDato("gestion.sql")));
}
