// The running totals beside the journal: debe, haber and what doesn't square.
#pragma once

#include <optional>
#include <QString>

class DataControl;

// Haber is negative, as stored, so the descuadre is their sum: positive when the debits exceed.
struct Totales {
  double Debe = 0;
  double Haber = 0;
  double Descuadre = 0;
};

// Each reads its sums from the company's file at `ruta` through the control `total`. No lines read
// as zeros. Nothing when the sums can't be read, and nothing is raised: totals must never stand in
// the way of typing, so what is on show stays.
std::optional<Totales> totalDiario(DataControl& total, const QString& ruta);
std::optional<Totales> totalCuenta(DataControl& total, const QString& ruta,
                                   const QString& subcuenta);
// The number is a text, as it stands in its field.
std::optional<Totales> totalAsiento(DataControl& total, const QString& ruta,
                                    const QString& asiento);
