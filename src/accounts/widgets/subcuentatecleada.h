// The subcuenta of the code in a field, while it is typed and when it is left.
#pragma once

#include <QString>

class DataControl;
class QLineEdit;
struct Sesion;

// Writes the code out in full ("43.1" as "43000001") without telling the field's own reactions,
// puts `subcuentas` on its row and returns its name. The field holds at least one character. 3021
// if there is no such subcuenta in the company of the session.
QString nombreDeSubcuenta(QLineEdit& campo, DataControl& subcuentas, const Sesion& sesion);
