// The small company of the statement tests: a file as the program makes it, with the rows and the
// queries of tests/datos/sentencias/libro.txt, and what comes out of the statements that the
// language makes for it.
#pragma once

#include "engine/connection.h"
#include "engine/lang/resolve.h"
#include "engine/libroendisco.h"
#include "engine/sqlite/readers.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"

// A source in the words of the file's own engine, with all that its parameters need.
struct Written : Texts {
  explicit Written(const lang::Query& query, const QList<Variant>& literals = {});
  QList<Variant> params;
  QStringList columns;
  bool keys = false;
};

class Libro : public FicheroEnDisco {
 public:
  // Without sums every query reads the lines.
  explicit Libro(bool withSums = true);

  static constexpr int kAno = 2003;

  Written planOf(const QString& source) const;
  // The first keys of a source that has them.
  std::vector<Key> firstKeys(const QString& source, int most) const;
  // The keys of the rows of a source that meet a criterion, or else their places in order. Keys are
  // those of the places too.
  QStringList matching(const QString& source, const QString& criterion) const;
  // The rows of a statement of the file's own engine, each with its values between " | ".
  QStringList rows(const QString& sql, const QList<Variant>& params = {}) const;
  // The rows of a source of the language, read whole.
  QStringList read(const QString& source) const;

  std::unique_ptr<Database> db;
  std::shared_ptr<Connection> connection;
  FileStore& store() const { return dynamic_cast<FileStore&>(connection->store()); }

 private:
  void readLine(const QString& line);
  void insertRow(const QStringList& cells);

  QString table_, columns_;  // of the rows being read
};
