// Posting: how a line reaches the journal and how its counters move.
//
// The counters stand in the one row of Empresa. Each is read after the edit that will use it has
// begun, because from that moment no other station can take it.
#pragma once

#include <functional>
#include <memory>
#include <QString>
#include <vector>

#include "common/variant.h"

class Database;
class DataControl;
class ErrorEjecucion;
class Recordset;

// Characters of a line's Descripcion.
inline constexpr int kLargoDeDescripcion = 50;

// An amount's text as what its column takes: the number that it shows under the mask, or the text
// itself if it shows none, which no column takes (3421).
Variant importeEscrito(const QString& importe, const QString& mascara);
// The same for its other side: the text with a minus in front. One that has its own takes no
// second: it comes back with both, which no column takes (3421).
Variant importeAlHaber(const QString& importe, const QString& mascara);

// A line to be written. What stays Null keeps the table's default: an ordinary line has no
// ApunteIVA.
struct Apunte {
  Variant NAsiento;
  Variant Fecha;
  Variant Subcuenta;
  Variant Descripcion;
  Variant DH;       // "D" debe, "H" haber
  Variant Importe;  // signed: positive on the debe, negative on the haber; a number or its text
  Variant ApunteIVA;
  Variant FacturaZuri;
  Variant TipoFactura;
  Variant TipoDiario;
  Variant EmpresaZuri;
  Variant Punteo;
  Variant ApunteCartera;
};

// Adds a line to the journal and then moves NLinDiario: a number is used before it is counted, so a
// line that can't be written costs none. Returns its NLinea. `diario` is Diario or a query that
// keeps to it, `empresa` the row with the counters. Raises 3421 or 3163 for a value that doesn't
// fit its column, 3022 when another station took the number, 3260 when the file is locked; nothing
// is written then and no edit stays open.
int grabaApunte(DataControl& diario, DataControl& empresa, const Apunte& apunte);
int grabaApunte(Recordset& diario, Recordset& empresa, const Apunte& apunte);

// Lines posted one after the other in great number, as those of an imported journal: each as
// grabaApunte does it, with the next asiento the one after its own. The counters are written for
// some hundreds of lines at a time. Before the first of these NLinDiario is moved beyond them all,
// and after the last one to its place: whenever the books are put on the disk, no number that is in
// use is on offer.
//
//   ApuntesEnSerie serie(empresa);
//   for (...) { if (!serie.abierta()) avance(i, total); serie.graba(apunte); }
//   serie.cierra();
class ApuntesEnSerie {
 public:
  explicit ApuntesEnSerie(Database& empresa);
  ~ApuntesEnSerie();

  // The rows that are written; only lines added here are among them.
  Recordset& diario() { return *diario_; }
  // What grabaApunte raises; the counters are in their place then.
  void graba(const Apunte& apunte);
  // Whether lines have been written that aren't counted yet: no time to let others in.
  bool abierta() const { return quedan_ > 0; }
  // Counts what was written. To be called at the end.
  void cierra();

 private:
  void abre();
  void escribe(const Apunte& apunte);

  std::unique_ptr<Recordset> diario_;
  std::unique_ptr<Recordset> contadores_;
  std::vector<int> ordinales_;  // of the fields of an Apunte
  int linea_ = 0;               // the next one
  int quedan_ = 0;              // numbers taken and not used yet
  Variant asiento_;             // the next one, once a line was written
};

// Writes what isn't Null over the current row; NLinea and the counters stay. 3421 or 3163 for a
// value that doesn't fit its column, 3260 when the file is locked; nothing is written then.
void cambiaApunte(DataControl& diario, const Apunte& apunte);

// The next free number of an asiento, consumed by the asking. Nothing gives it back.
int tomaAsiento(DataControl& empresa);
int tomaAsiento(Recordset& empresa);

// The same number, not yet consumed: for who counts it only once its lines are written. From here
// to the end of the group no other station can take it.
int proximoAsiento(DataControl& empresa);
int proximoAsiento(Recordset& empresa);

// How far the writing of an asiento has come, for who has to tell of its failure.
struct AsientoGrabado {
  QString asiento;  // empty until it has a number
  int apuntes = 0;  // lines written
  int primera = 0;  // the number of the first one

  void apunta(int linea) {
    if (apuntes++ == 0) primera = linea;
  }
};
// Whether `queda`, which looks in the file, finds something of what was written before a failure: a
// disk that takes nothing undoes it, and so does the user. What can't be looked at is told by the
// failure.
bool quedaAlgo(const ErrorEjecucion& error, const std::function<bool()>& queda);
bool quedanApuntes(Database& empresa, const AsientoGrabado& grabado);
// Whether its number is its own: after a failure that undid its lines the next one gets it.
bool esSuyoElNumero(const AsientoGrabado& grabado, const DataControl& empresa);
// What the user reads of one that failed: the error and, if lines of it stand, where to look for
// them. `parte` says what isn't whole.
//   textoDeFallo(error, *empresa, grabado, "La nómina no está entera")
QString textoDeFallo(const ErrorEjecucion& error, Database& empresa, const AsientoGrabado& grabado,
                     const QString& parte);

// Takes the value of any counter of Empresa ("NLinDiario", "NLinIVAS"...) and moves it on by one.
int tomaContador(DataControl& empresa, const QString& contador);
int tomaContador(Recordset& empresa, const QString& contador);

// The code of a register row: its side, 'S' soportado or 'R' repercutido, and its order number, as
// typed, in ten digits. 5 for a number of more.
//   codigoRegistro('S', "12") == "S0000000012"
QString codigoRegistro(QChar lado, const QString& orden);
