// The dBASE tables in which other packages keep their books: read, never written.
//
// A folder is the books and a file in it a table, both found without regard to case. Texts are read
// in the code page that the table tells: those of DOS, or that of Windows. One that tells none, as
// most don't, is in the page of Windows unless its words don't read there.
//
//   TablaDbf plan(carpeta, "Subcta.dbf");
//   while (plan.siguiente()) alta(plan.valor(0), plan.valor("Titulo"));
#pragma once

#include <memory>
#include <QString>

#include "common/variant.h"

class TablaDbf {
 public:
  // `carpeta` is a text path. 53 when there is no such file; 3343 for one that is no table, or that
  // has been cut short: to take what is left of it would lose lines without a word.
  TablaDbf(const QString& carpeta, const QString& tabla);
  ~TablaDbf();

  int total() const;  // records, with the deleted ones
  // Goes on to the next record that isn't deleted, at first to the first one; false past the last.
  bool siguiente();
  int registro() const;  // of the current record, counted from 0 with the deleted ones

  // A column of the current record by its place or by its name, whose case doesn't matter. A number
  // is a double; a text comes without its blanks at the end; an empty cell is Null, and so is what
  // stands elsewhere than in the table (memos). 3265 for a column that isn't there, 3421 for a
  // number or a date that can't be one, 3021 without a record.
  Variant valor(int columna) const;
  Variant valor(const QString& nombre) const { return valor(columna(nombre)); }
  int columna(const QString& nombre) const;

 private:
  struct Privado;
  std::unique_ptr<Privado> p_;
};
