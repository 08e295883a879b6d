#include "accounts/borrado.h"

#include "foundation/data/datacontrol.h"

bool tieneApuntes(DataControl& diario, const QString& ruta, const QString& subcuenta) {
  diario.bind(ruta, QStringLiteral("Select * from SqlDiarioPrincipalBlanco where Subcuenta = '") +
                        subcuenta + QStringLiteral("' order by nasiento"));
  return !diario.Eof();
}

bool tieneSubcuentas(DataControl& subcuentas, const QString& ruta, const QString& cuenta) {
  subcuentas.bind(
      ruta, QStringLiteral("Select * from SubCuentas where cuenta='") + cuenta + QLatin1Char('\''));
  return !subcuentas.Eof();
}
