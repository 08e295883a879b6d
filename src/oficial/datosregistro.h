// What the law wants of each row of the registers of IVA beyond the row itself: the type of
// invoice, the key of its operation, whether it is exempt, whose number it bears...
//
// Each datum is derived from the row and its third party, as fits an ordinary company, unless one
// was typed for it (table DatosRegistros). Amounts are whole cents with the sign that a reader
// expects: positive in an ordinary invoice of either register.
#pragma once

#include <QDate>
#include <QHash>
#include <QStringList>
#include <span>
#include <vector>

#include "iva/filarsiva.h"
#include "iva/tiposfechas.h"

struct LineaRegistro {
  // The row.
  QString codigo;
  LibroIVA libro = LibroIVA::Soportado;
  QString cliPro, factura, tipoIVA, ctaIVA, ctaRE, ctaCon;
  int asiento = 0;
  QDate fecha;   // of the invoice
  QDate fechaC;  // of its asiento
  double porcenIVA = 0, porcenRE = 0;
  qint64 base = 0, iva = 0, recargo = 0;
  // What it comes to with its taxes; the base alone where the buyer owes them.
  qint64 total = 0;

  // Its data, derived or typed.
  QString tipoFactura;   // F1 to F6, R1 to R5, LC, SF, DV, AJ
  QString clave;         // of the operation, 01 to 19
  QString calificacion;  // S1, S2, N1, N2; issued ones only, and one of the two
  QString exenta;        // E1 to E6
  QString tipoNif;       // empty for a Spanish one, 02 of the Union, 03 to 06 others
  QString pais;          // ISO, two letters
  QString nif;
  QString nombre;
  QDate fechaOperacion;  // invalid where it is that of the invoice
  bool bienInversion = false;
  bool inversion = false;  // reverse charge: the receiver owes the quota
  bool retencion = false;  // of income tax: it goes in another declaration
  bool local = false;      // rent of business premises
  qint64 deducible = 0;    // what of the quota may be deducted

  qint64 baseDeFila = 0;  // as it is stored, whatever was typed for it
  // One of the two halves of an acquisition as its own screen writes them: no base, no third party.
  bool adquisicion = false;
  // The half of an acquisition that only charges the quota which the other half bears: no operation
  // of its own.
  bool autorrepercusion = false;
  bool baseDeducida = false;        // the row has none: computed from its quota and rate
  QHash<QString, Variant> escrito;  // what was typed, by field of DatosRegistros
  QString escritoComo;              // and the code that the row had then

  bool emitida() const { return libro == LibroIVA::Repercutido; }
  bool negativa() const { return base < 0 || (base == 0 && iva < 0); }
  // The date by which it falls into a period: of an issued one that of the operation, of a received
  // one that of its entry in the register, never before the invoice.
  QDate fechaDeRegistro() const;
};

// Which rows are wanted.
struct FiltroRegistros {
  QDate desde, hasta;       // by fechaDeRegistro(); both invalid for all rows
  bool retenciones = true;  // whether each asiento is looked up for a retention
};

// The rows of both registers, soportado first, in the order of their writing. What was typed for a
// row follows its invoice when the register was renumbered; `perdidos`, if given, takes how many
// such data fit no invoice any more.
std::vector<LineaRegistro> leeRegistros(Database& empresa, const FiltroRegistros& filtro,
                                        int* perdidos = nullptr);

// A datum that can be typed.
struct DatoDeRegistro {
  const char* campo;   // of DatosRegistros
  const char* titulo;  // of its column
  int ancho;           // in characters
  // Its values, separated by blanks; empty for free ones. A second list for received invoices.
  const char* emitidas;
  const char* recibidas;
  const char* ayuda;
};
std::span<const DatoDeRegistro> datosDeRegistro();
// As it is shown: "S" for yes and nothing for no, an amount under the mask, a date.
QString valorDeDato(const LineaRegistro& linea, const QString& campo, const QString& mascara);

// Types a datum of a row and derives the others anew; an empty text goes back to what is derived.
// Raises 3421 with a text for the user for a value that it can't have; nothing is written then.
void escribeDato(Database& empresa, LineaRegistro& linea, const QString& campo,
                 const QString& texto);

// What is to be told of a row before it goes into a file, the gravest first; nothing when all is in
// order.
QStringList avisosDe(const LineaRegistro& linea, const TiposPorFechas& tipos);
