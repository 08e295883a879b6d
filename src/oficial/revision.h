// The revision of a company's books: what a bookkeeper looks over before the year's forms are
// filed.
//
// It reads and changes nothing. The journal is gone through once for all checks.
#pragma once

#include <QList>
#include <QStringList>

class Database;

// Where what was found is looked at.
enum class Sitio {
  Declarante,
  Subcuenta,  // its own data
  Extracto,   // its lines
  Asiento,
  Factura,   // the asiento of an invoice
  Registro,  // a row of the registers without asiento
};

struct Hallazgo {
  QString control;  // the title of its check
  QString texto;
  Sitio sitio = Sitio::Declarante;
  QString codigo;  // of the subcuenta, or of the row of the registers
  int asiento = 0;
  QString donde() const { return asiento != 0 ? QString::number(asiento) : codigo; }
};

// The titles of the checks, in the order in which they are done.
QStringList controlesDeRevision();

// All that was found, check by check. `ano` is the company's; amounts are written by `mascara`.
QList<Hallazgo> revisa(Database& empresa, int ano, const QString& mascara);

// The numbers that are missing in a series of invoices after one of them, with the text around the
// number: ranges as one. A number is the last one in a text, or the one before it if that is the
// year.
//   huecosDeSerie({"A/1", "A/2", "A/5"}, 2024): {"A/2", "A/3 a A/4"}
struct HuecoDeSerie {
  QString antes, falta;
};
QList<HuecoDeSerie> huecosDeSerie(const QStringList& facturas, int ano);
