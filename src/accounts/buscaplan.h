// Looking for a row in a list of the plan as it is typed, a code or a name from its beginning.
#pragma once

#include <QString>

class DataControl;

enum class OrdenPlan { Codigo = 0, Nombre = 1 };

struct ListaPlan {
  const char* tabla;   // Cuentas or Subcuentas
  const char* codigo;  // its key
};
inline constexpr ListaPlan kListaCuentas{"Cuentas", "Cuenta"};
inline constexpr ListaPlan kListaSubcuentas{"Subcuentas", "Subcuenta"};

constexpr int kLargoNombre = 50;

// What a text asks for: a digit begins a code, a letter a name.
OrdenPlan ordenDe(const QString& texto);
// The statement of a list in an order.
QString fuentePlan(const ListaPlan& lista, OrdenPlan orden);
// Goes to the first row whose code or name begins with `texto`, which isn't empty. Where nothing is
// found, or the text can't stand in a criterion, the list stays where it was: false.
bool buscaEnPlan(DataControl& datos, const ListaPlan& lista, const QString& texto);
