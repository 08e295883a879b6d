// The end of the year: the steps that take a company's books from one year into the next.
//
// In their order: the stocks are put at their final value, expenses and income are swept into the
// result, what is left is closed, and the company of the new year opens with what was closed.
// Nothing holds anyone to that order: each step reads the journal as it stands.
//
// Lines are written one by one. A failure goes to the caller, and what was written before it stays.
#pragma once

#include <QString>

#include "journal/avance.h"

class Database;
struct AsientoGrabado;

// What a step's screen holds, as typed, and the mask under which every amount is rounded.
struct PasoAnual {
  QString asiento;  // its number; the stocks take the next of the company instead
  QString fecha;
  QString descripcion;
  QString mascara;
};

// --- stocks -------------------------------------------------------------------------------------

// What the subcuentas of group 30 stand at, as their rows in SqlRegularizaStock add up.
double valorDeExistencias(Database& empresa);

struct RegularizacionStocks {
  QString compras;      // subcuenta of purchases
  QString existencias;  // subcuenta of stocks
  QString iniciales;    // amounts as shown, under the mask
  QString finales;
};

// Posts the asiento of four lines that takes the initial value out of the stocks and puts the final
// one in, and moves the counter of asientos once they are written. 3421 for an amount that can't
// take another minus: a negative value has no place here.
void regularizaStocks(Database& empresa, const RegularizacionStocks& stocks, const PasoAnual& paso,
                      AsientoGrabado& grabado);

// --- result -------------------------------------------------------------------------------------

// Sweeps each subcuenta whose code begins with `grupo` into the one of the result, with a line on
// either: those of no balance too, so that the asiento tells of every subcuenta of the group. 3021
// when the journal has no line of it.
void barreGrupo(Database& empresa, QChar grupo, const QString& resultado, const PasoAnual& paso,
                const Avance& avance);

// --- closing and opening ------------------------------------------------------------------------

// Brings each subcuenta of groups up to 5 to zero, in lines marked as closing, but for those whose
// balance is zero under the mask. It needs no line against them, since the result is one of them.
// Then no line before the last day of `ano` may be changed any more. 3021 when the journal has no
// line of those groups; nothing is written then.
void cierraEjercicio(Database& empresa, int ano, const PasoAnual& paso, const Avance& avance);

// Posts the closing lines of `cerrada` into `empresa` with their signs inverted, whatever their
// side says, as its opening. Their marks go along. A company without closing lines gives none.
void abreEjercicio(Database& cerrada, Database& empresa, const PasoAnual& paso,
                   const Avance& avance, AsientoGrabado& grabado);

// The date before which no line may be changed, as text; empty for none. A text that is no date is
// refused with 3421.
QString fechaDeCierre(Database& empresa);
void ponFechaDeCierre(Database& empresa, const QString& fecha);
