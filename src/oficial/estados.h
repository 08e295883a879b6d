// The balance sheet and the profit-and-loss account as small companies file them.
//
// Both are data: a table of lines, each with the prefixes of the accounts that it takes and the
// lines that a total adds. An account goes to the line with its longest prefix.
#pragma once

#include <optional>
#include <QHash>
#include <QList>
#include <QString>

class Database;

enum class Estado { Balance, Resultados };

// The balance of each subcuenta at the end of some months, debit less credit.
using Saldos = QHash<QString, double>;

// Of the months `desde` to `hasta`. Without the lines that sweep the results and close the year:
// both statements are those of the day before.
Saldos saldosDelPeriodo(Database& empresa, int desde, int hasta);

// What no balance tells, by the number of its line: part of another line's amount, which the
// bookkeeper types. Some of these lines only say of what another one is made, some take their
// amount away from it.
using Desgloses = QHash<int, double>;

// Whether a line's amount is typed.
bool seEscribe(Estado cual, int orden);
// Those of a company in the months `desde` to `hasta`; typed for other months they don't count.
Desgloses desglosesDelPeriodo(Database& empresa, Estado cual, int desde, int hasta);
// Types the amount of a line for these months, nothing to forget it.
struct SitioDeDesglose {
  Estado cual;
  int orden;
  int desde, hasta;
};
void escribeDesglose(Database& empresa, const SitioDeDesglose& sitio,
                     std::optional<double> importe);

struct LineaDeEstado {
  int orden = 0;
  int nivel = 0;  // 0 for the grand totals
  QString clave;
  QString texto;
  QString casilla;        // of the form of the commercial registry
  bool opcional = false;  // only there when it is used
  double importe = 0;
  double anterior = 0;
};

struct EstadoOficial {
  QList<LineaDeEstado> lineas;  // all of them, in order
  Saldos sinLinea;              // balances of accounts of the statement that fall in no line
  Saldos sinLineaAnterior;
};

// Assets are debit less credit, all else credit less debit. `anterior` is the year before, from
// another company's books.
EstadoOficial calculaEstado(Estado cual, const Saldos& actual, const Saldos& anterior = {},
                            const Desgloses& desgloses = {},
                            const Desgloses& desglosesAnteriores = {});

// The amount of a line of a statement by its number, 0 without it; the totals that are compared.
double importeDeLinea(const EstadoOficial& estado, int orden,
                      double LineaDeEstado::*columna = &LineaDeEstado::importe);
namespace lineaestado {
inline constexpr int kActivo = 210, kPasivo = 610, kResultadoEnBalance = 320, kResultado = 280;
}

// What the period's own result is: of groups 6 and 7, whether the books hold it already in 129 too.
double resultadoDe(const Saldos& saldos);

// Whether a line is on show: totals always, others with an amount that the mask shows, or all but
// the optional ones when they are asked for.
bool seMuestra(const LineaDeEstado& linea, const QString& mascara, bool todas);
