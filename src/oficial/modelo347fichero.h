// The 347 as the law wants it: third parties with operations above a limit, taxes included,
// purchases and sales apart, by quarters; its file.
//
// What other declarations tell stays out: operations with the Union, imports and exports, and those
// with retention of income tax. What is typed for a third party is kept with the company.
#pragma once

#include <array>
#include <vector>

#include "oficial/datosregistro.h"
#include "oficial/declarante.h"
#include "oficial/inmuebles347.h"

class Database;

// One record of the file: a person and a side; what has to stand apart (rent of premises, reverse
// charge, cash basis) has a record of its own.
struct Tercero347 {
  QString clave;    // "A" purchases, "B" sales
  QString tercero;  // its NIF, or its subcuenta where it has none: what the typed is kept under
  QString nif, tipoNif, nombre;
  QString provincia;  // two figures, 99 outside Spain
  QString pais;       // only outside
  QString calle, pueblo;
  std::array<qint64, 4> trimestres{};
  qint64 total = 0;
  qint64 metalico = 0;  // received in cash, typed
  int ejercicioMetalico = 0;
  bool local = false, inversion = false, caja = false;
  bool excluido = false;  // by the user
  QStringList codigos;    // of its rows

  // What keeps its record from being right; nothing when all is there.
  QStringList faltas() const;
};

// What can be typed for a third party.
enum class Dato347 { Metalico, EjercicioMetalico, Provincia, Pais, Excluido };

class Modelo347 {
 public:
  static constexpr qint64 kLimite = 300506;  // cents: above this it is declared

  Modelo347(Database& empresa, int ejercicio, qint64 limite = kLimite);

  int ejercicio() const { return ejercicio_; }
  // Those above the limit, sides apart, by name.
  const std::vector<Tercero347>& terceros() const { return terceros_; }
  int fueraPorRetencion() const { return conRetencion_; }
  int fueraPorOtros() const { return deOtros_; }
  // Of the records that go into the file.
  int cuantos() const;
  qint64 importe() const;

  // The premises let, each of a tenant among the declared ones; the others stay out of the file.
  std::vector<Inmueble347> inmuebles() const;
  // What is to be told of the premises: their own lacks, tenants without any, rents that aren't
  // those of the invoices.
  QStringList faltasDeInmuebles() const;
  // Adds one for each tenant that has none; the result is how many.
  int proponeInmuebles(Database& empresa) const;

  // Types a datum for a third party, empty to forget it. 3421 with a text for the user for a value
  // that it can't have.
  void escribe(Database& empresa, size_t lugar, Dato347 dato, const QString& texto);

  // The file of a year from 2014 on, 500 bytes a record; `fin` follows each record. 5 for a year
  // without layout and for what doesn't fit a field.
  QByteArray fichero(const Declarante& declarante, const QByteArray& fin) const;

 private:
  void suma(const std::vector<LineaRegistro>& lineas);
  void completaDatos(Database& empresa);
  bool vaAparte(const LineaRegistro& linea);
  std::vector<const Tercero347*> arrendatarios() const;

  int ejercicio_;
  int conRetencion_ = 0, deOtros_ = 0;
  std::vector<Tercero347> terceros_;
  std::vector<Inmueble347> inmuebles_;
  QHash<QString, QString> subcuentas_;  // of each third party, one of its subcuentas
  QHash<QString, QString> paises_;      // and its country, as its rows have it
};
