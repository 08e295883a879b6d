// An invoice as it stands in the boxes of its dialog, and what its asiento and its register row are
// made of.
//
// Amounts are the texts of the boxes: what is on the screen, rounded by the company's mask, is what
// is stored. Nothing is computed here but what a field's reaction asks for.
#pragma once

#include <QString>

#include "iva/filarsiva.h"

struct FacturaIVA {
  QString NOrden;  // in its register
  QString CodigoProveedor;
  QString NombreProveedor;  // goes into the text of its lines
  QString NumFactura;
  QString Fecha;
  QString AsientoContable;  // anything that is no number takes the next free one
  QString Base;
  QString Iva;  // code in TiposIVA
  QString ImporteIva;
  QString Recargo;
  QString Total;
  QString CuentaIva;
  QString CuentaRecargo;
  QString Contrapartida;
  QString FechaContable;
  double PorcenIVA = 0;
  double PorcenREC = 0;
  // Of an invoice made by the commercial program, empty for all others.
  QString FacturaZuri;
  QString EmpresaZuri;
};

// What the dialog is open for, which its caption says: the register by its sixteenth character, the
// mode by its last word.
//   claseDe("Asiento de IVA Soportado (Alta)") == {Soportado, false}
struct ClaseDeFactura {
  LibroIVA libro = LibroIVA::Repercutido;
  bool modificacion = false;
};
ClaseDeFactura claseDe(const QString& titulo);
QString tituloDe(const ClaseDeFactura& clase);

// Quota, recargo and total from the base, and the base from the total. Each figure is rounded by
// the mask before the next is computed from it, so that those on show always add up; a total typed
// by hand may come out a cent off. A text that is no amount counts as zero.
void calculaDesdeBase(FacturaIVA& factura, const QString& mascara);
void calculaDesdeTotal(FacturaIVA& factura, const QString& mascara);

// The amount of a box with its sign turned, as text: a minus in front is taken off or put there.
// Only what the mask shows as negative in another way is written anew.
QString opuesto(const QString& importe, const QString& mascara);
// The same for an amount of the register's row of a sale: it is the sign of the base that decides,
// whatever sign the amount has.
//   opuestoSegunBase("16,00", "-100,00", mascara) == "6,00"
QString opuestoSegunBase(const QString& importe, const QString& base, const QString& mascara);

// Whether a box holds the zero of the mask, letter by letter. A zero in any other shape counts as
// an amount, and gives a line of zero.
bool esCero(const QString& importe, const QString& mascara);
