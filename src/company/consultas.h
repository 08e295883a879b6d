// The stored queries of a company's file: every balance and book is a selection from one of them.
#pragma once

#include <span>

struct Consulta {
  const char* nombre;
  const char* texto;  // word for word as stored, UTF-8
};

// In order of creation. A query may stand before one it rests on: names are looked up when it runs.
std::span<const Consulta> consultasDeEmpresa();
