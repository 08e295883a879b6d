// Filling the plan of accounts of a company, from the standing plan or from another company.
#pragma once

#include <QString>

class Database;
class Recordset;

// Adds the cuentas of the standing plan to the company's own, with codes of `digitosCuenta` digits.
// A cuenta that is there stays as it is, so sowing again adds only what is missing.
void siembraPlan(Database& empresa, int digitosCuenta);

// The same, one group at a time, into the open table of cuentas.
void Crea100(Recordset& cuentas, int digitosCuenta);
void Crea200(Recordset& cuentas, int digitosCuenta);
void Crea300(Recordset& cuentas, int digitosCuenta);
void Crea400(Recordset& cuentas, int digitosCuenta);
void Crea500(Recordset& cuentas, int digitosCuenta);
void Crea600(Recordset& cuentas, int digitosCuenta);
void Crea700(Recordset& cuentas, int digitosCuenta);

// What goes along with the cuentas when a plan is copied.
struct CopiaPlan {
  bool Subcuentas = false;
  bool TiposIva = false;
  bool TiposCartera = false;
  bool RestoCartera = false;
};

// Whether the codes of `origen` can be copied into a company of these widths. Only a company that
// differs in both is refused.
bool anchurasCopiables(Database& origen, int digitosCuenta, int digitosSubcuenta);

// Copies the cuentas, and what `copia` asks for. A cuenta that `destino` already has raises 3022,
// and what was copied before it stays; rows of the other tables that can't be written are passed
// over. The rates and the kinds of receipt are all written over the one first row of the target, so
// the last one that fits remains.
void copiaPlan(Database& origen, Database& destino, const CopiaPlan& copia);
