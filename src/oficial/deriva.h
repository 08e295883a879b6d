// How the data of a register row are derived from what the row and its third party tell.
#pragma once

#include <memory>

#include "oficial/datosregistro.h"

class Database;

class Derivador {
 public:
  // Reads names and third parties of a company as they are needed. With `retenciones`, an asiento
  // that also posts to a subcuenta of retentions of income tax (4751, 473) has one.
  Derivador(Database& empresa, bool retenciones);
  ~Derivador();

  // Sets all data of a row; what was typed for it stands.
  void deriva(LineaRegistro& linea);

 private:
  struct Privado;
  std::unique_ptr<Privado> p_;
};
