// A company with a short plan, and its screens: 430 opens cards, 572 doesn't, and what begins
// otherwise has no cuenta.
#pragma once

#include "soporte/escenario.h"

class EscenarioPlan : public Escenario {
 public:
  EscenarioPlan() {
    registraAccounts(*formularios);
    inserta("Cuentas", {{"Cuenta", "430"},
                        {"Descripcion", "Clientes"},
                        {"GrupoN", "4"},
                        {"SubGrupoN", "43"},
                        {"DatosAuxiliares", true}});
    inserta("Cuentas",
            {{"Cuenta", "572"}, {"Descripcion", "Bancos"}, {"GrupoN", "5"}, {"SubGrupoN", "57"}});
    for (const auto& [codigo, nombre] : {std::pair{"43000001", "Álvarez"},
                                         {"43000002", "Bodegas Luna"},
                                         {"57200001", "Banco Duero"}})
      inserta("Subcuentas", subcuentaDe(codigo, nombre));
  }

  // The fields of a row; empty without it.
  QString cuenta(const QString& codigo) const {
    return fila("Select * from Cuentas where Cuenta='" + codigo + "'");
  }
  QString subcuenta(const QString& codigo) const {
    return fila("Select Cuenta, Descripcion from Subcuentas where Subcuenta='" + codigo + "'");
  }
};
