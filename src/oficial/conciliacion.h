// Reconciliation: the bank's movements, kept in the company's file as they were read, and the lines
// of the bank's subcuenta that they prove.
//
// A movement remembers the line that it was accepted with. One whose line is gone, or no longer has
// its amount, is pending again. Each change here is one: what fails leaves nothing of itself.
#pragma once

#include <optional>

#include "oficial/norma43.h"

class Database;
class DBEngine;

// Lines count from 0.
constexpr int kSinApunte = -1;

struct MovimientoGuardado : MovimientoBanco {
  int numero = 0;             // from 1
  int apunte = kSinApunte;    // NLinea of its line
  int guardado = kSinApunte;  // the same as the file has it, even if the line is gone
  bool deOtroAno = false;     // it is posted in another company's books
  // One of no amount only carries text: there is nothing to prove.
  bool pendiente() const { return apunte == kSinApunte && centimos != 0; }
  bool sinAsentar() const { return pendiente() && !deOtroAno; }
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

// The days that the statements of an account cover, and their last balance.
struct PeriodoBanco {
  QDate desde, hasta;
  qint64 saldo = 0;
};

// The bank's side and the books', both by date.
struct Conciliacion {
  QString ccc, subcuenta;
  std::optional<PeriodoBanco> periodo;  // nothing without a statement
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
// 5 when one of them is no longer as it was read. What was read is brought up to date.
void aceptaParejas(DBEngine& motor, Database& empresa, Conciliacion& conciliacion,
                   const std::vector<Pareja>& parejas, const Punteo& punteo);
// Takes the mark of a movement's line off again; `movimiento` is its place.
void deshaceConciliacion(DBEngine& motor, Database& empresa, Conciliacion& conciliacion,
                         int movimiento);

// An asiento of two lines for each movement, at its day, and the movement accepted with its line. 5
// for a subcuenta that isn't in the plan or is the bank's own, a movement that is no longer pending
// or one of another year than the company's.
struct Contrapartida {
  int movimiento = 0;  // its place
  QString subcuenta;
};
void asientaMovimientos(DBEngine& motor, Database& empresa, const Conciliacion& conciliacion,
                        const std::vector<Contrapartida>& contrapartidas, const Punteo& punteo);

// What is remembered of concepts: all the words of a rule stand in them. The rule with most letters
// wins.
struct ReglaBanco {
  QString palabras, subcuenta;
};
class ReglasBanco {
 public:
  ReglasBanco() = default;
  explicit ReglasBanco(Database& empresa);
  std::optional<ReglaBanco> para(const QString& concepto) const;

 private:
  std::vector<ReglaBanco> reglas_;  // the longest first
};
// 5 for a rule without words or a subcuenta that isn't in the plan.
void recuerdaRegla(DBEngine& motor, Database& empresa, const ReglaBanco& regla);
void olvidaRegla(DBEngine& motor, Database& empresa, const QString& palabras);
constexpr int kLargoDeRegla = 60;
// The first words of a concept that aren't its numbers: what a rule may well be made of.
QString palabrasDeConcepto(const QString& concepto);

// The balance at the bank's last day beside that of the books.
struct CuadreBanco {
  qint64 banco = 0, libros = 0;
  qint64 soloBanco = 0;   // movements of the year without a line
  qint64 soloLibros = 0;  // lines of those days without a movement
  qint64 diferencia() const { return banco - libros; }
};
// Nothing for an account without a statement.
std::optional<CuadreBanco> cuadreDe(const Conciliacion& conciliacion);
