// Sources as callers write them (a table, a stored query, a statement), compiled for one store.
#pragma once

#include <QHash>

#include "engine/store.h"

// A column of what a source gives. A computed one of a number type may be a text in some rows (a
// blank instead of a zero): the value of such a row is given as it is.
// Its name is "Importe", or "Subcuentas.Descripcion" where two columns share a name.
struct OutputColumn : Catalog::Column {
  QString baseColumn;  // column of Plan::baseTable that it shows; empty when computed
};

// How a source is read, shared by the statements that differ only in their literals.
struct Plan {
  std::vector<OutputColumn> columns;
  // Each row is one row of one table, and may be read by its key.
  bool keyed = false;
  // The same of a table that stands alone: it is always read so, and may be written.
  bool updatable = false;
  bool keptSums = false;  // read from kept sums
  QString baseTable;
  QStringList tables;  // of a keyed source: those that its rows show
  std::shared_ptr<Reader> reader;
};

// A source ready to run.
struct Compiled {
  std::shared_ptr<const Plan> plan;
  QList<Variant> literals;
};

using KeySet = std::shared_ptr<const std::vector<Key>>;

class Sources {
 public:
  // `year` is the company's as it stands at each call: stored queries may hold date literals with a
  // two-digit year.
  Sources(Store& store, const int& year) : store_(store), year_(year) {}

  // 3061, 3075, 3078, 3464.
  Compiled compiled(const QString& source);
  // Which rows of a source meet a criterion: their keys, of a keyed one, or all its rows in order
  // with one column, whether the row meets it.
  Compiled matching(const QString& source, const QString& criterion, bool byKeys);
  // The keys of a keyed source, shared between recordsets while its rows stay the same. With a
  // limit only the first ones may come; as many as it says means that there may be more.
  KeySet keys(const Compiled& compiled, int limit = -1);

 private:
  struct Keys {
    std::shared_ptr<Reader> reader;
    QList<Variant> literals;
    Stamp stamp;
    KeySet keys;
  };

  void follow();

  Store& store_;
  const int& year_;
  std::shared_ptr<const Definitions> definitions_;  // of the plans kept
  int plansYear_ = 0;
  QHash<QString, std::shared_ptr<const Plan>> plans_;
  std::vector<Keys> keySets_;  // the latest first
};
