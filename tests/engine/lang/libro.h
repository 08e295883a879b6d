// The small company of the statement tests: its tables, rows and stored queries in a real file, and
// what comes out of the statements that the language makes for it.
#pragma once

#include "engine/libroendisco.h"
#include "engine/sqlite/connection.h"
#include "engine/sqlite/schema.h"

class Libro : public BaseEnDisco {
 public:
  explicit Libro(bool withSums = true);

  static constexpr int kAno = 2003;

  Plan planOf(const QString& source) const { return compile(source, *connection->schema(), kAno); }
  // The rows of a statement of the file's own engine, each with its values between " | ".
  QStringList rows(const QString& sql, const QList<Variant>& params = {}) const;
  // The rows of a source of the language, read whole.
  QStringList read(const QString& source) const;

  const std::shared_ptr<Connection> connection = db->connection();

 private:
  void readLine(const QString& line);
  void createTable(const QString& name, const QString& columns);
};
