#include "journal/totales.h"

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "engine/datacontrol.h"

namespace {

double suma(const FieldRef& campo) {
  return campo.isNull() ? 0 : campo.number();
}

// Where a source keeps its sums.
struct Ordinales {
  int debe;
  int haber;
  int saldo = -1;  // a column of its own, or -1 for the sum of the two
};

std::optional<Totales> lee(DataControl& total, const QString& ruta, const QString& sentencia,
                           Ordinales ordinales) {
  try {
    total.bind(ruta, sentencia);
    Totales totales;
    if (total.Eof()) return totales;
    totales.Debe = suma(total.Fields(ordinales.debe));
    totales.Haber = suma(total.Fields(ordinales.haber));
    totales.Descuadre =
        ordinales.saldo < 0 ? totales.Debe + totales.Haber : suma(total.Fields(ordinales.saldo));
    return totales;
  } catch (const ErrorEjecucion&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<Totales> totalDiario(DataControl& total, const QString& ruta) {
  return lee(total, ruta, QStringLiteral("Select * from SqlSumaDiario"), {0, 1});
}

std::optional<Totales> totalCuenta(DataControl& total, const QString& ruta,
                                   const QString& subcuenta) {
  return lee(total, ruta,
             QStringLiteral("Select * from SqlDiarioSaldosCuentasTotal where subcuenta=") +
                 entreComillas(subcuenta),
             {2, 3, 4});
}

std::optional<Totales> totalAsiento(DataControl& total, const QString& ruta,
                                    const QString& asiento) {
  return lee(total, ruta,
             QStringLiteral("Select * from SqlSumaDiarioPorAsientos where NAsiento = ") + asiento,
             {1, 2});
}
