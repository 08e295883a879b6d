// A row of the registers of IVA (table RSIVA): one invoice at one rate.
//
// Both registers stand in one table. A row of soportado (purchases) holds its amounts as they stand
// on the paper; one of repercutido (sales) holds them with the opposite sign. Whoever shows or adds
// up a row turns them back.
#pragma once

#include <QString>
#include <span>

#include "common/variant.h"

class Database;
class Recordset;

// Which of the two registers, as the first letter of a code tells it.
enum class LibroIVA { Soportado, Repercutido };

// The letter of a register, 'S' or 'R', and the field of Empresa that counts its rows.
QChar letraDe(LibroIVA libro);
QString contadorDe(LibroIVA libro);

// The fields of a row as they are stored, amounts with the stored sign. What is Null is not
// written: the field keeps its default, or what it held.
struct FilaRSIVA {
  Variant Codigo;  // letter and ten digits: "S0000000012". The key, and the ApunteIVA of its lines
  Variant Base;
  Variant IVA;
  Variant Recargo;
  Variant PorcenIVA;  // the rates of the day it was written, never signed
  Variant PorcenREC;
  Variant Neto;
  Variant CliPro;  // subcuenta of the supplier or customer
  Variant Factura;
  Variant TipoIVA;  // code in TiposIVA
  Variant Asiento;
  Variant CtaIVA;
  Variant FechaC;  // of the asiento
  Variant CtaRE;
  Variant CtaCon;  // purchases or sales
  Variant Fecha;   // of the invoice

  // By the first letter of the code: anything but "S" is repercutido.
  LibroIVA libro() const;
};

// The amounts of a row with the sign that a reader expects in either register: positive for an
// ordinary invoice, negative for a rectifying one. Null is zero.
struct ImportesIVA {
  double base = 0;
  double iva = 0;
  double recargo = 0;
  double neto = 0;
};
ImportesIVA importesDe(const FilaRSIVA& fila);

// The current row. 3021 without one, 3167 if it is gone.
FilaRSIVA leeFila(Recordset& registro);

// The fields in the order in which a row is written.
struct CampoRSIVA {
  const char* nombre;
  Variant FilaRSIVA::*valor;
};
std::span<const CampoRSIVA> camposRSIVA();

// Sets the fields of a row being added or edited. `registro` is a Recordset or a DataControl on
// RSIVA. 3421 for a text that can't be read as its field's type, 3163 for one too long.
template <class Filas>
void escribe(Filas& registro, const FilaRSIVA& fila) {
  for (const auto& [nombre, valor] : camposRSIVA()) {
    if (!(fila.*valor).isNull()) registro.Fields(QLatin1String(nombre)) = fila.*valor;
  }
}

// Has every line of an asiento point to a row of the register; none for a Null asiento.
void ponCodigoEnAsiento(Database& empresa, const Variant& asiento, const QString& codigo);
