// What may be taken out of the plan of accounts.
#pragma once

#include <QString>

class DataControl;

// Leaves in `diario` the lines of a subcuenta in the file at `ruta`. A subcuenta with lines stays.
bool tieneApuntes(DataControl& diario, const QString& ruta, const QString& subcuenta);

// Leaves in `subcuentas` those of a cuenta. A cuenta with subcuentas stays.
bool tieneSubcuentas(DataControl& subcuentas, const QString& ruta, const QString& cuenta);

// Deletes the current row of a list, which then stands on the one that follows, or on the last.
void eliminaFila(DataControl& lista);
