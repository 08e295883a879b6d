// Posting: how an invoice becomes a row of its register and the lines of its asiento.
//
// Nothing is checked: what stands in the invoice is written, step by step in the order told here,
// and a step that fails leaves those before it. One invoice of several rates is several of these
// under one asiento.
#pragma once

#include <optional>

#include "iva/facturaiva.h"
#include "journal/apunte.h"

class DataControl;
class Database;
class ErrorEjecucion;

// The tables as the screens hold them open: RSIVA, the journal on show, the row of Empresa. The
// control of RSIVA knows its file.
struct TablasIVA {
  DataControl& registro;
  DataControl& diario;
  DataControl& empresa;
};

// How far an accept has come, for who has to tell of its failure.
struct GrabadoIVA : AsientoGrabado {
  QString codigo;              // of the register's row
  std::optional<int> borrada;  // a line that a change has taken away with the other old ones
  bool fila = false;           // the register's row is written
};

// Writes an invoice. A new one sets its register's counter to its order number as it stands, writes
// the row, and takes the next free asiento unless it was given one; then come the lines: purchases
// or sales, quota and recargo unless they are zero, supplier or customer. A change deletes all the
// lines on show in `tablas.diario`, which are those of its asiento, edits the row on show in
// `tablas.registro` and writes its lines anew; only NLinDiario moves.
//
// Errors as they come from the tables: 3421 for an amount, a date or a number that can't be read,
// 3022 for an order number that is taken, 5 for one of eleven digits, 3260 when another station
// holds the file.
void grabaFactura(const FacturaIVA& factura, const ClaseDeFactura& clase, const QString& mascara,
                  const TablasIVA& tablas, GrabadoIVA& grabado);

// An acquisition from another member state: one quota, borne and charged by the same books, so its
// asiento nets out and holds neither base nor supplier.
struct FacturaIntracomunitaria {
  QString NumFactura;
  QString Fecha;
  QString Iva;  // code in TiposIVA
  QString ImporteIva;
  QString Recargo;
  QString IVASoportado;
  QString IVARepercutido;
  QString RESoportado;
  QString RERepercutido;
  double PorcenIVA = 0;
  double PorcenREC = 0;
};

// Writes its two register rows and their lines, always in an asiento of its own. Both rows are
// numbered by the counter of repercutido. Errors as above.
void grabaIntracomunitaria(const FacturaIntracomunitaria& factura, const QString& mascara,
                           const TablasIVA& tablas, GrabadoIVA& grabado);

// What the user reads of an accept that failed: the error, and how the books were left.
QString textoDeFallo(const ErrorEjecucion& error, Database& empresa, const GrabadoIVA& grabado);
