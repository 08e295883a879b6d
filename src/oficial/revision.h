// The revision of a company's books: what a bookkeeper looks over before the year's forms are
// filed.
//
// It reads and changes nothing. The journal is gone through once for all checks.
#pragma once

#include <QList>
#include <QString>
#include <span>

class Database;

struct Hallazgo {
  QString control;  // the title of its check
  QString texto;
  // What it tells of: an asiento, the asiento of an invoice, or a subcuenta; by what isn't empty.
  int asiento = 0;
  bool factura = false;
  QString subcuenta;
  QString donde() const { return asiento != 0 ? QString::number(asiento) : subcuenta; }
};

// The titles of the checks, in the order in which they are done.
QStringList controlesDeRevision();

// All that was found, check by check. `ano` is the company's; amounts are written by `mascara`.
QList<Hallazgo> revisa(Database& empresa, int ano, const QString& mascara);

// The numbers that are missing in a series of invoices, with the text around the number: ranges as
// one. A number is the last one in a text, or the one before it if that is the year.
//   huecosDeSerie({"A/1", "A/2", "A/5"}, 2024) == {"A/3 a A/4"}
QStringList huecosDeSerie(const QStringList& facturas, int ano);

// The list as a sheet. 75 when it can't be written; `ruta` is a system path.
void escribeRevision(const QString& ruta, const QList<Hallazgo>& hallazgos, const QString& titulo);
