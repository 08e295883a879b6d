// Rates of IVA with the dates between which they are in force.
//
// They come with the program; a company may keep a table of its own (TiposPorFechas), which then
// counts instead. A rate out of its dates is told and never refused: it stays right in a rectifying
// invoice of an operation of its time.
#pragma once

#include <optional>
#include <QDate>
#include <QList>
#include <QString>

class Database;

struct TipoConFechas {
  double IVA = 0;
  double RE = 0;  // its recargo de equivalencia
  QDate Desde;    // invalid: since before any books
  QDate Hasta;    // invalid: no end known
  QString Bienes;
  bool dudoso = false;  // its dates aren't certain

  bool enVigor(QDate fecha) const {
    return (!Desde.isValid() || fecha >= Desde) && (!Hasta.isValid() || fecha <= Hasta);
  }
};

class TiposPorFechas {
 public:
  // Those that come with the program.
  TiposPorFechas();
  // Those of a company, or the program's if it keeps none.
  explicit TiposPorFechas(Database& empresa);

  const QList<TipoConFechas>& todos() const { return tipos_; }
  QList<TipoConFechas> enVigor(QDate fecha) const;
  // What is to be told of an invoice of that date at that rate and recargo (0 for none); empty when
  // it fits, and when it has no quota at all.
  //   aviso(5, 0, QDate(2024, 10, 3)) ==
  //       "El 5 % de IVA rigió del 01/01/2023 al 30/09/2024, no el 03/10/2024"
  QString aviso(double iva, double recargo, QDate fecha) const;

 private:
  QString avisoNuevo(double iva, double recargo, QDate fecha) const;

  QList<TipoConFechas> tipos_;
};

// Makes the company's own table, with the program's rates, if it has none.
void aseguraTiposPorFechas(Database& empresa);

// Puts the rates in force on a day that TiposIVA lacks into its free codes, each without recargo
// and with it. A code is free when it has neither name nor rates and no invoice bears it. Tells the
// codes taken, and how many rates found none left.
struct TiposPuestos {
  QStringList codigos;
  int sinCodigo = 0;
};
TiposPuestos ponTiposEnVigor(Database& empresa, const TiposPorFechas& tipos, QDate fecha);
