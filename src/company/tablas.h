// The tables of a company's file.
//
// Much of the program reads fields by ordinal, so the order of the fields is part of the books.
#pragma once

#include <QStringList>
#include <span>

#include "engine/tabledef.h"

class Database;

// Widths that are the company's own: those of its codes. A column of one of them holds a code.
namespace ancho {
inline constexpr int kCuenta = -1;
inline constexpr int kSubcuenta = -2;
}  // namespace ancho

struct CampoDeTabla {
  const char* nombre;
  FieldType tipo;
  int ancho = 0;  // of a text, or one of those above
  const char* porDefecto = "";
};

struct TablaDeEmpresa {
  const char* nombre;
  std::span<const CampoDeTabla> campos;
  int clave;  // so many of the first fields are the primary key; 0 where equal rows may stand
};

// The twelve tables of every file, in order of creation.
std::span<const TablaDeEmpresa> tablasDeEmpresa();

// Makes a table that came later than the files of the companies, if this one's lacks it, codes as
// wide as in its plan. Another station that makes it at the same time is no failure.
void aseguraTabla(Database& empresa, const TablaDeEmpresa& tabla);

// What is given to the engine to make one. The code columns take the company's widths.
TableDef definicionDeTabla(const TablaDeEmpresa& tabla, int digitosCuenta, int digitosSubcuenta);
