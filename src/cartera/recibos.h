// The cartera de efectos: receipts and payments due, which live apart from the journal until they
// are posted.
//
// A recibo has no key: two that say the same in every field are the same recibo twice, and it makes
// no difference which of them is changed or deleted.
#pragma once

#include <QString>

#include "common/variant.h"

struct AsientoGrabado;
class DataControl;
class Database;
class ErrorEjecucion;
class Recordset;

struct Recibo {
  Variant Vencimiento;
  Variant Subcuenta;  // customer or supplier
  Variant Titulo;
  Variant Factura;
  Variant Tipo;
  Variant Banco;  // subcuenta of bank or cash
  Variant CA;     // "C" cargo, "A" abono
  Variant Importe;
  Variant FraZuri;  // of the commercial program; never written here

  bool operator==(const Recibo&) const = default;
};

// The current row of Recibos or of a query that has its fields.
Recibo leeRecibo(Recordset& filas);

// Puts `recibos`, which knows its file, on the row of a recibo. 3167 if there is none any more,
// because another station has changed, posted or deleted it.
void situaEn(DataControl& recibos, const Recibo& recibo);

// Adds a recibo, after which it is the last row, or writes all its fields but FraZuri over the
// current row. 3421 or 3163 for a value that doesn't fit its field; nothing is written then.
void altaRecibo(DataControl& recibos, const Recibo& recibo);
void cambiaRecibo(DataControl& recibos, const Recibo& recibo);

// The side of a recibo, from its account: what a supplier is paid is a cargo, all else an abono.
QString cargoAbono(const QString& subcuenta, const QString& cuentaProveedores);

// The tables as the screens hold them open: the rows of Recibos on the one that is posted, the
// journal on show, the row of Empresa.
struct TablasRecibo {
  DataControl& recibos;
  DataControl& diario;
  DataControl& empresa;
};

// The boxes of a recibo as texts, which is what is posted: the amount too.
struct ReciboTecleado {
  QString Vencimiento;
  QString Subcuenta;
  QString Titulo;
  QString Banco;
  QString CA;
  QString Importe;
};

// Posts a recibo: two lines on the day that it is due, then the number of the asiento is counted,
// and then the row of the recibo is deleted. A cargo debits the account and credits the
// bank, an abono the opposite. Nothing is checked, and a step that fails leaves those before it:
// 3163 for a title of more than 50 characters, 3421 for a date that is none or, at the second line,
// for an amount with a minus.
void contabilizaRecibo(const ReciboTecleado& recibo, const QString& mascara,
                       const TablasRecibo& tablas, AsientoGrabado& grabado);

// What the user reads of a posting that failed: the error, and how the books were left.
QString textoDeFallo(const ErrorEjecucion& error, Database& empresa, const AsientoGrabado& grabado);
