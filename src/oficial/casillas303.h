// Which casillas of the 303 each row of the registers makes: the rules as a table.
#pragma once

#include <string_view>
#include <vector>

#include "oficial/datosregistro.h"
#include "oficial/periodo.h"

// What a row puts into one casilla.
struct Aportacion {
  std::string_view casilla;
  qint64 importe = 0;
  // Of a casilla that holds the quota of a rate: that rate in hundredths of a point and the
  // casilla where it stands, when the period lets it vary.
  int tipo = 0;
  std::string_view casillaTipo;
};

// All that a row puts into the return of a period; nothing for a row that isn't in it.
std::vector<Aportacion> aportaciones(const LineaRegistro& linea, const Periodo& periodo);

// Whether a row that puts nothing in would be expected to.
bool deberiaAportar(const LineaRegistro& linea);

// The rate that stands in a casilla of a rate where the period lets it vary and no row tells it, in
// hundredths of a point.
int tipoPorDefecto(const QString& casilla, const Periodo& periodo);
