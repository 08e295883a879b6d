// Real books in a temporary folder, without screens: a data folder with its catalogue, and
// companies in it.
#pragma once

#include "company/datosempresa.h"
#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "journal/apunte.h"
#include "soporte/prueba.h"

class Libros {
 public:
  // A data folder with a catalogue and the company "Tienda" of 2024, of 3 and 8 digits.
  Libros();

  // Makes another company, in the catalogue too.
  void creaEmpresa(const DatosEmpresa& datos);
  // What the screen of a new company holds, with the default accounts of these widths.
  static DatosEmpresa datosPorDefecto(const QString& nombre, int digitosCuenta,
                                      int digitosSubcuenta);

  QString dirDatos() const;  // with its final backslash
  QString rutaEmpresa(const QString& nombre = "Tienda") const;
  std::unique_ptr<Database> abre(const QString& nombre = "Tienda");

  // Adds a row, and changes a field of the first row of a source.
  void inserta(const QString& tabla, const Valores& valores, const QString& empresa = "Tienda");
  void cambia(const QString& fuente, const QString& campo, const Variant& valor);

  // All rows of a source, each as its fields' texts joined by "|" and Null as "-".
  QStringList filas(const QString& fuente, const QString& empresa = "Tienda");

  // Adds subcuentas and posts the journal of a real-looking quarter: 312 lines in 120 asientos,
  // whose balances stand in trimestre/saldos-trimestre.csv. The standing plan is sown first.
  void asientaTrimestre();

  DBEngine motor;

 private:
  QTemporaryDir carpeta_;
};

// A line to be posted, the sign of its amount its side.
Apunte apunteDe(const Variant& asiento, const Variant& fecha, const QString& subcuenta,
                const QString& descripcion, const Variant& importe);

// The plan of accounts and the subcuentas of the quarter, for a company of 3 and 8 digits.
void altaSubcuentasTrimestre(Database& empresa);

// Posts the journal of the quarter into a company's file that has its subcuentas.
void asientaDiarioTrimestre(DBEngine& motor, const QString& rutaEmpresa);

// The rows of a file of tests/datos with semicolons between fields, without its first line.
QList<QStringList> leeCsv(const QString& fichero);
