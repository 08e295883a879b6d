// Reconciliation: the bank's movements, kept in the company's file as they were read, and the lines
// of the bank's subcuenta that they prove.
//
// A movement remembers the line that it was accepted with. One whose line is gone is pending again.
// Each change here is one: what fails leaves nothing of itself.
#pragma once

#include <optional>

#include "oficial/norma43.h"

class Database;
class DBEngine;

struct MovimientoGuardado : MovimientoBanco {
  int numero = 0;
  int apunte = 0;    // NLinea of its line; 0 while pending
  int guardado = 0;  // the same as the file has it, even if the line is gone
  // One of no amount only carries text: there is nothing to prove.
  bool pendiente() const { return apunte == 0 && centimos != 0; }
};

struct ApunteBanco {
  int linea = 0;  // NLinea
  int asiento = 0;
  QDate fecha;
  QString concepto;
  qint64 centimos = 0;  // debe positive
  QString punteo;
  int movimiento = 0;  // the one that proved it; 0 without one
};

// What a file has brought.
struct Importacion {
  int nuevos = 0, repetidos = 0;
  QStringList avisos;
};

// Keeps the movements that aren't kept yet. What is alike in all, ordinal included, is the same
// movement. 5, and nothing kept, for a reading with errors.
Importacion importaNorma43(DBEngine& motor, Database& empresa, const LecturaNorma43& leido);

// The accounts that were ever read, and the subcuenta of each; empty until it is told.
QList<QPair<QString, QString>> cuentasDeBanco(Database& empresa);
// 5 for a subcuenta that isn't in the plan or is another account's.
void ponSubcuentaDeBanco(DBEngine& motor, Database& empresa, const QString& ccc,
                         const QString& subcuenta);

// The bank's side and the books', both by date.
struct Conciliacion {
  QString ccc, subcuenta;
  std::vector<MovimientoGuardado> movimientos;
  std::vector<ApunteBanco> apuntes;
};
Conciliacion leeConciliacion(Database& empresa, const QString& ccc);

// One movement and one line by their places in a Conciliacion.
struct Pareja {
  int movimiento = 0;
  int apunte = 0;
};
// The pending ones of each side that have the same amount and lie at most so many days apart, by
// the day of the operation or that of its value; the nearest first.
constexpr int kDiasDeTolerancia = 5;
std::vector<Pareja> empareja(const Conciliacion& conciliacion, int dias = kDiasDeTolerancia);

// How the accepted lines are marked: a letter, and the day that the movement keeps.
struct Punteo {
  QString marca;
  QDate fecha;
};
// 5 when one of them is no longer as it was read.
void aceptaParejas(DBEngine& motor, Database& empresa, const Conciliacion& conciliacion,
                   const std::vector<Pareja>& parejas, const Punteo& punteo);
// Takes the mark off again.
void deshaceConciliacion(DBEngine& motor, Database& empresa, const MovimientoGuardado& movimiento);

// An asiento of two lines for each movement, at its day, and the movement accepted with its line. 5
// for a subcuenta that isn't in the plan, a movement that is no longer pending or one of another
// year than the company's.
struct Contrapartida {
  int movimiento = 0;  // its place
  QString subcuenta;
};
void asientaMovimientos(DBEngine& motor, Database& empresa, const Conciliacion& conciliacion,
                        const std::vector<Contrapartida>& contrapartidas, const Punteo& punteo);

// What is remembered of concepts: all the words of a rule stand in them. The rule with most letters
// wins.
QString subcuentaPorRegla(Database& empresa, const QString& concepto);
void recuerdaRegla(DBEngine& motor, Database& empresa, const QString& palabras,
                   const QString& subcuenta);
// The first words of a concept that aren't its numbers: what a rule may well be made of.
QString palabrasDeConcepto(const QString& concepto);

// The balance at the bank's last day beside that of the books.
struct CuadreBanco {
  QDate desde;  // the first statement's first day
  QDate hasta;
  qint64 banco = 0, libros = 0;
  qint64 soloBanco = 0;   // movements without a line
  qint64 soloLibros = 0;  // lines up to that day without a movement, since the first one
  qint64 diferencia() const { return banco - libros; }
};
// Nothing for an account without a statement.
std::optional<CuadreBanco> cuadreDe(Database& empresa, const Conciliacion& conciliacion);
