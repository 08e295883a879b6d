// Queries of the statement language as statements of the file's own engine, and the reading of
// their rows.
#pragma once

#include "engine/lang/query.h"
#include "engine/store.h"

class FileStore;

// A query in the words of the file's engine.
//
// The texts number their parameters (?1, ?2...): first the literals of the statement, whose values
// come when it is run, then `own`. Each uses only some of them: bind no more than it counts.
// Nothing that a user typed ever stands in the texts.
struct Texts {
  std::vector<FieldType> types;  // of the columns
  // Rows that can be read by their key, the file's row number:
  //   keysSql    SELECT rowid FROM ... WHERE ... ORDER BY ...
  //   rowSql     SELECT <columns> FROM ... WHERE rowid = ?1         (and then `rowOwn`)
  //   likelySql  the same as keysSql, with rows that don't find what they look up among them
  // Empty for others, and the last one where nothing is looked up that hasn't to be read anyway.
  QString keysSql;
  QString likelySql;
  QString rowSql;
  QList<Variant> rowOwn;
  QString wholeSql;  // SELECT <columns> FROM ... ORDER BY ...
  QList<Variant> own;
};

Texts textsOf(const lang::Query& query);

class FileReader : public Reader {
 public:
  FileReader(FileStore& store, const lang::Query& query);
  std::unique_ptr<Cursor> run(const QList<Variant>& literals) override;
  std::vector<Key> keys(const QList<Variant>& literals, int most) override;
  void rows(std::span<const Key> keys, const RowTaker& take) override;
  const Texts& texts() const { return texts_; }

 private:
  std::vector<Key> read(const QString& sql, const QList<Variant>& literals);
  bool allStand(const std::vector<Key>& keys);

  FileStore& store_;
  Texts texts_;
};
