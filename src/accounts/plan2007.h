// The national plan of accounts of 2007 (Real Decreto 1514/2007, and 1515/2007 for small
// companies).
//
// It is data: the resource plan2007 holds its groups, subgroups and accounts of three and four
// digits, each with the models that have it.
#pragma once

#include <QDate>
#include <QList>
#include <QString>

class Database;

enum class Modelo2007 { Normal, Pymes };

struct CuentaDe2007 {
  QString codigo;
  QString nombre;
};

// The accounts of a company whose cuentas have so many digits, in order of code. With three they
// are those of the plan; with more, an account that the plan divides by a fourth digit is there as
// its parts only, and zeros follow up to the width.
//   cuentasDe2007(Modelo2007::Pymes, 4) has 1030 and 1034 but no plain 103, and 1290 for 129
QList<CuentaDe2007> cuentasDe2007(Modelo2007 modelo, int digitosCuenta);
QList<CuentaDe2007> subgruposDe2007(Modelo2007 modelo);  // two digits
QList<CuentaDe2007> gruposDe2007(Modelo2007 modelo);     // one

// A name in so many characters. What is too long is shortened word by word, with the mildest
// abbreviations first and no more of them than it takes; it is never cut.
QString abreviaNombre(const QString& nombre, int largo);

// Adds the accounts that the company hasn't got and gives the levels their names of 2007; subgroups
// that the plan hasn't got go when no cuenta is theirs. A cuenta that is there stays as it is. The
// result is how many were added.
int siembraPlan2007(Database& empresa, Modelo2007 modelo, int digitosCuenta);
void ponNivelesDe2007(Database& empresa, Modelo2007 modelo);

// What sowing does to an account of the plan: `actual` is the name it has in the company, empty
// where the account isn't there.
struct CambioDePlan {
  QString codigo;
  QString actual;
  QString nuevo;
  bool esNueva() const { return actual.isNull(); }
  bool cambiaNombre() const { return !esNueva() && actual != nuevo; }
};
// For every account of the plan, in order of code.
QList<CambioDePlan> cambiosAl2007(Database& empresa, Modelo2007 modelo, int digitosCuenta);

// Sows the plan, with `nombres` under the names of 2007 where an account is there by another one.
// The company follows the plan from `desde` on, unless accounts are left that may mean another
// thing.
void estrenaPlan2007(Database& empresa, Modelo2007 modelo, int digitosCuenta, const QDate& desde,
                     bool nombres = false);

// A company's file says since when its codes are those of 2007, so that it isn't converted twice.
struct Plan2007DeEmpresa {
  bool sigue = false;
  Modelo2007 modelo = Modelo2007::Pymes;
  QDate desde;
};
Plan2007DeEmpresa plan2007De(Database& empresa);
void anotaPlan2007(Database& empresa, Modelo2007 modelo, const QDate& desde);
