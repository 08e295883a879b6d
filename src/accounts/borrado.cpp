#include "accounts/borrado.h"

#include <algorithm>

#include "common/comillas.h"
#include "engine/datacontrol.h"

bool tieneApuntes(DataControl& diario, const QString& ruta, const QString& subcuenta) {
  diario.bind(ruta, QStringLiteral("Select * from SqlDiarioPrincipalBlanco where Subcuenta = ") +
                        entreComillas(subcuenta) + QStringLiteral(" order by nasiento"));
  return !diario.Eof();
}

bool tieneSubcuentas(DataControl& subcuentas, const QString& ruta, const QString& cuenta) {
  subcuentas.bind(ruta,
                  QStringLiteral("Select * from SubCuentas where cuenta=") + entreComillas(cuenta));
  return !subcuentas.Eof();
}

void eliminaFila(DataControl& lista) {
  const int posicion = lista.Recordset().AbsolutePosition();
  lista.Delete();
  lista.Refresh();
  const int filas = lista.Recordset().rowTotal();
  if (filas > 0) lista.setAbsolutePosition(std::min(posicion, filas - 1));
}
