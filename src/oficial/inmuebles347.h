// The business premises that a landlord lets without retention: a record each in the 347.
//
// They are typed, since the books know the tenant and the rent but not the building; they stand in
// the company's table Inmuebles347, a row each.
#pragma once

#include <span>
#include <vector>

#include "oficial/registrofijo.h"

class Database;

// A datum of one: its column, its name in the layout of the file, and how it is shown.
struct DatoDeInmueble {
  const char* campo;
  const char* nombre;
  const char* titulo;
  int ancho;  // in digits
};
std::span<const DatoDeInmueble> datosDeInmueble();

struct Inmueble347 {
  QString nif, nombre;   // of the tenant
  qint64 importe = 0;    // the year's rent in cents, taxes included
  ValoresFijos valores;  // its record

  // What keeps its record from being right; nothing when all is there.
  QStringList faltas() const;
};

std::vector<Inmueble347> leeInmuebles(Database& empresa);
void aseguraInmuebles(Database& empresa);
// Adds a premises for a tenant, to be completed.
void anadeInmueble(Database& empresa, const Inmueble347& inmueble);
