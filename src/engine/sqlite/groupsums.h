// The running sums of a long group of updates, brought up once for all its rows.
//
// The file's own triggers bring them up row by row. That is right whatever program writes, but it
// takes most of the time of a tool that goes through the whole journal. So, once a group has
// written many rows, this connection lets those triggers rest, and the writer looks itself what
// each row counted for and what it counts for now. What that makes for each combination of keys is
// added to the sums before anybody can see them: before the commit, before a statement that reads
// them, and before any statement that writes and isn't the writer's own, which then finds the
// file's triggers at work. Nothing of it stands in the file, so a program that dies leaves it as it
// was.
#pragma once

#include <array>
#include <QVarLengthArray>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/sqlite/runningsums.h"
#include "engine/store.h"

class GroupSums {
 public:
  explicit GroupSums(FileStore& store) : store_(store) {}

  bool gathering() const { return gathering_; }
  // To be called before a row is written, from which on it is gathered. Nothing is gathered in a
  // file whose tables have triggers of others, since those would rest too.
  void gather();

  // What one row counts for in the sums that are at `sums` in the list of the file's.
  struct Count {
    int sums = 0;
    // Lines, debit, credit, lines with a debit, lines with a credit.
    std::array<qint64, 5> figures{};
    QVarLengthArray<Variant, 2> keys;
  };
  // What a row of a table counts for in the sums that depend on some of the columns, or in all
  // without any. Nothing unless sums are gathered.
  std::vector<Count> countsOf(const QString& table, Key key, const QStringList& columns = {});
  // The same for a row that has just been added with these values, and for one that counted for
  // `before` until these were written. The row is only read where its values don't tell.
  std::vector<Count> countsAdded(const QString& table, Key key, const Values& values);
  std::vector<Count> countsWritten(const QString& table, Key key, const Values& values,
                                   const std::vector<Count>& before);
  // The row has been written: what it counted for, and what it counts for now. Either is empty
  // where there was no row, or there is none any more.
  void moved(const std::vector<Count>& before, const std::vector<Count>& now);
  // 6 for an amount that sums don't hold: the file's trigger that refuses it rests too.
  void refuseTooLarge(const QString& table, const Values& values) const;

  // Adds what was gathered. What couldn't be added when an error is raised stays gathered.
  void bringUp();
  // The same, and the file's triggers work again.
  void stop();
  // The library has undone the group.
  void forget();

 private:
  // How the counts of a table's rows are read, when some of its columns are written.
  struct Reading {
    QString table;
    QStringList columns;
    std::vector<int> sums;
    QStringList watched;  // columns that these depend on
    QString sql;
  };
  const Reading& reading(const QString& table, const QStringList& columns);
  bool tells(const Values& values, Count& count) const;
  void add(const Count& count, int sign);
  void release();

  FileStore& store_;
  bool gathering_ = false;
  bool much_ = false;  // is gathered: more could pass the integers' end
  std::vector<Reading> readings_;
  std::vector<SumsChange> changes_;  // of each of the file's sums
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, Count, Hash, std::equal_to<>> gathered_;
  std::string sought_;  // in it
};
