// The small company of the statement tests: its tables and stored queries in an SQLite file held in
// memory, and the catalog that tells the language of them.
#pragma once

#include <sqlite3.h>

#include <map>
#include <QStringList>

#include "foundation/data/lang/plan.h"

class Libro : public Catalog {
 public:
  explicit Libro(bool withSums = true);
  ~Libro() override;
  Libro(const Libro&) = delete;
  Libro& operator=(const Libro&) = delete;

  const Table* table(const QString& name) const override;
  std::optional<QString> queryText(const QString& name) const override;
  const std::vector<RunningSums>& runningSums() const override { return sums_; }
  QStringList queryNames() const { return queryNames_; }

  // The rows of a statement of the file's engine, each with its values between " | "; the first
  // failure of the engine in place of rows.
  QStringList rows(const QString& sql, const QList<Variant>& params = {}) const;
  // How the file's engine would read it.
  QString explained(const QString& sql) const;
  // The rows of a source of the language, read whole.
  QStringList read(const QString& source) const;
  void run(const QString& sql) const;
  // Brings the sums up to date with the journal.
  void sum() const;

  static constexpr int kAno = 2003;

 private:
  void readLine(const QString& line);
  void createTable(const QString& definition);
  void addSums();
  sqlite3_stmt* prepared(const QString& sql, const QList<Variant>& params, QString& failure) const;

  sqlite3* db_ = nullptr;
  std::map<QString, Table> tables_;
  std::map<QString, QString> queries_;
  QStringList queryNames_;
  QString filling_;
  std::vector<RunningSums> sums_;
};
