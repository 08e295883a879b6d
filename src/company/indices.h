// The indexes of a company's file that are there for quickness alone.
#pragma once

#include <QList>
#include <QStringList>

#include "engine/definitions.h"

class DBEngine;
class Database;

// Gives the open file those that a new one has, in the place of the ones that it was made with.
void ponIndices(Database& empresa);
// Takes the journal's away from a file that is about to be filled, and that nobody else uses yet.
void quitaIndices(Database& empresa);
// The same for the file of a company that stands. Where it has them already this takes no time. One
// that can't be written now, or that another station holds, stays as it is and is only slower to
// search.
void cuidaIndices(DBEngine& motor, const QString& ruta);

// Puts the journal's indexes away while a great part of its lines is written: making them again at
// the end takes less than keeping them up line by line. Until then the journal must not be searched
// by whoever writes; other stations only find it slower. What a program that dies leaves without
// them gets them when the company is opened.
//
//   IndicesAparte aparte(empresa, lineas);
//   for (...) { ... }
//   aparte.repone();
class IndicesAparte {
 public:
  // `lineas` are about to be added, or changed in some columns. Fewer than half of the lines that
  // there will be don't pay, and nothing is put away.
  IndicesAparte(Database& empresa, int lineas);
  IndicesAparte(Database& empresa, int lineas, const QStringList& columnas);
  ~IndicesAparte();  // after a failure, as far as it can
  IndicesAparte(const IndicesAparte&) = delete;
  IndicesAparte& operator=(const IndicesAparte&) = delete;
  // Makes them again. Raises what writing to the file does.
  void repone();

  // The fewest lines for which it may pay; a test may say otherwise.
  static int desde;

 private:
  Database& empresa_;
  bool aparte_ = false;
};
