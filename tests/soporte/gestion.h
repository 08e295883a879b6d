// A small Gestion.MDB, as the commercial program would bring it.
#pragma once

#include "soporte/otropuesto.h"

inline void creaGestion(const QString& carpetaDatos) {
  const QString sql = contenidoDe(rutaDato("gestion.sql"));
  EXPECT_EQ(preguntaFuera(carpetaDatos + "/Gestion.MDB", sql), "");
}
