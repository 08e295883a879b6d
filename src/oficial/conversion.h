// A company of the plan of 1990 put on that of 2007: every code of its books at once.
//
// The proposal goes subcuenta by subcuenta, for the user to decide what the plans leave open. The
// targets are often old codes too (402 to 403 to 404), so all change together, in every table that
// holds a code, and as one change: whatever happens the file is wholly of one plan.
#pragma once

#include <QList>
#include <QString>

#include "accounts/plan2007.h"
#include "journal/avance.h"

class DBEngine;

struct FilaConversion {
  QString codigo;
  QString nombre;      // of the subcuenta; empty for a code that lines have and the plan hasn't
  int lineas = 0;      // of the journal
  bool usada = false;  // by any row but its own
  double saldo = 0;
  QString nuevo;         // empty until it is decided
  bool seBorra = false;  // in its place: the company does without it from here on
  QString nota;
  bool dudosa = false;  // it is for the user to decide
  QString corriente;    // of a doubtful one, the code that most give it; may be empty

  bool decidida() const { return seBorra || !nuevo.isEmpty(); }
};

// Every code of the books in order, with what the plan makes of it. An ending that another one
// takes already is changed for the next free one, and the note says so.
QList<FilaConversion> proponeConversion(Database& empresa, Modelo2007 modelo);

// The new code of one whose cuenta becomes `destino`, of three digits or four, where the first of
// the ending gives way.
//   codigoConvertido("24000012", "2403") == "24030012"
QString codigoConvertido(const QString& codigo, const QString& destino);

// Decides those undecided that nothing uses: each takes its usual code, or goes where it has none.
// The result is how many they were.
int decideNoUsadas(QList<FilaConversion>& filas);

struct Conversion {
  Modelo2007 modelo = Modelo2007::Pymes;
  QList<FilaConversion> filas;
};

// What keeps the conversion from being made, in the order of the rows: undecided codes, such as
// have another width or no cuenta in the plan, two that become one, used ones to be deleted. Empty
// if nothing does.
QStringList faltasDeConversion(Database& empresa, const Conversion& conversion);

// A line of the trial balance on both sides of it: what the old code had, and what the file says of
// the new one afterwards.
struct SumasConversion {
  double debe = 0;
  double haber = 0;
  double saldo() const { return debe + haber; }
};
struct FilaDeSumas {
  QString codigo, nuevo, nombre;
  SumasConversion antes, despues;
};
struct Convertido {
  int subcuentas = 0;  // that changed their code
  int borradas = 0;
  int lineas = 0;             // of the journal
  QList<FilaDeSumas> sumas;   // of each code that lines have, in the order of the old ones
  FilaDeSumas total() const;  // of all of them
};

// Makes it, as one change: rows without faults, as shown. 3317 when a new code's sums aren't those
// of the old ones; then and on any failure the file is as it was.
Convertido convierteA2007(DBEngine& motor, Database& empresa, const Conversion& conversion,
                          const QDate& desde, const Avance& avance);

// A verified copy of the company's file beside it, under a name that was free; the result is its
// path.
QString copiaAntesDeConvertir(DBEngine& motor, const QString& rutaEmpresa);
// Takes that copy away again if nobody has changed the company's file since it had `commits`
// (DBEngine): then it keeps nothing that isn't there. Where that can't be told, it stays.
void retiraCopiaSobrante(DBEngine& motor, const QString& rutaEmpresa, const QString& copia,
                         qint64 commits);
