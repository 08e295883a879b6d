// The worksheet of a 303: every casilla of a period, the register rows that make it, what is typed
// by hand, the result, and the file.
//
// A casilla holds what its rows come to, or the formula of its layout, or what was typed for it,
// which counts instead. What was typed is kept with the company, and so is the return as it was
// filed, from which the next period takes what is to be compensated.
#pragma once

#include <optional>

#include "oficial/casillas303.h"
#include "oficial/registrofijo.h"

class Database;

struct Casilla303 {
  QString numero;
  QString titulo;
  QString pagina;
  QString formula;          // computed from others
  bool porcentaje = false;  // a rate, not an amount
  bool fija = false;        // a rate that the layout fixes
  bool sinSigno = false;    // can't be negative
  qint64 calculado = 0;     // from the rows
  std::optional<qint64> aMano;
  std::vector<int> lineas;  // of Hoja303::lineas() that make it

  bool editable() const { return formula.isEmpty() && !fija; }
};

// A quota account in the period: what the registers say of it and what the journal does, debit
// positive.
struct Cuadre303 {
  QString subcuenta;
  qint64 registros = 0;
  qint64 diario = 0;
};

class Hoja303 {
 public:
  // Reads the period from the company's file. The layout is that of the period; before 2024 there
  // is none, and that of early 2024 stands in for the screen (conDiseno() is false).
  Hoja303(Database& empresa, const Periodo& periodo);

  const Periodo& periodo() const { return periodo_; }
  const DisenoFijo& diseno() const { return diseno_; }
  bool conDiseno() const { return periodo_.ejercicio >= 2024; }
  // In the order of the form. Those of the volume of the year come only when asked for.
  const std::vector<Casilla303>& casillas() const { return casillas_; }
  const std::vector<LineaRegistro>& lineas() const { return lineas_; }
  // Rows with a quota that make no casilla, as indexes of lineas().
  const std::vector<int>& sinCasilla() const { return sinCasilla_; }
  const Casilla303* casilla(const QString& numero) const;

  // What a casilla comes to, in cents (a rate in hundredths of a point); 0 for one that the layout
  // hasn't got.
  qint64 valor(const QString& numero) const;
  qint64 resultado() const { return valor(QStringLiteral("71")); }
  bool sinActividad() const;

  // Types a casilla by hand, or forgets what was typed. Raises 5 with a text for the user for one
  // that is computed, and for a negative amount where there can't be one.
  void escribe(Database& empresa, const QString& numero, std::optional<qint64> importe);

  // The quota accounts whose figures differ.
  std::vector<Cuadre303> descuadres(Database& empresa) const;
  // What the user should know before filing, in sentences.
  QStringList avisos() const;

  // The kind of return that its result asks for: I, N, C, or D at the end of the year when a refund
  // is wanted.
  QString tipoPropuesto(bool devolucion) const;
  // Remembers the return as filed. What is left to compensate is taken by the next period, unless
  // its result is refunded.
  void presenta(Database& empresa, const QString& tipo) const;

 private:
  void ponCasillas();
  void reparte();
  void ponTipos();
  void leeAMano(Database& empresa);
  void leePendiente(Database& empresa);
  Casilla303* busca(const QString& numero);
  qint64 evalua(const QString& formula) const;
  qint64 aplicable() const;

  Periodo periodo_;
  DisenoFijo diseno_;
  std::vector<Casilla303> casillas_;
  std::vector<LineaRegistro> lineas_;
  std::vector<int> sinCasilla_;
  QStringList avisos_;
  QString avisoPendiente_;
  qint64 pendiente_ = 0;  // to be compensated, from the period before
};

// The name of the layout of a period: "2024A", "2024B", "2025", "2026".
QString diseno303(const Periodo& periodo);

// The file: the envelope, the pages of the general regime, the page of the bank account. `datos`
// are those of the declarant and of this return by the names of their fields in the layout. With
// `volumen` the page of the year's volume is among them. Raises 5 for a value that doesn't fit and
// for a year without layout.
QByteArray fichero303(const Hoja303& hoja, const ValoresFijos& datos, bool volumen);
