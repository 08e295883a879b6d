// The running sums of a long group of updates, brought up once for all its rows.
//
// The file's own triggers bring them up row by row. That is right whatever program writes, but it
// takes most of the time of a tool that goes through the whole journal. So, once a group has
// written many rows, this connection lets those triggers rest; others, which only this connection
// has and which go with it, tell here what each row counted for and what it counts for now. What
// that makes for each combination of keys is added to the sums before anybody can see them: before
// the commit, before a statement that reads them, and before any statement that writes and isn't
// the writer's own, which then finds the file's triggers at work. Nothing of it stands in the file,
// so a program that dies leaves it as it was.
#pragma once

#include <QList>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/variant.h"

class FileStore;

class GroupSums {
 public:
  explicit GroupSums(FileStore& store) : store_(store) {}
  void registerFunction();  // in each connection of the library that the store opens

  bool gathering() const { return gathering_; }
  // To be called before a row is written, from which on it is gathered. Nothing is gathered in a
  // file whose tables have triggers of others, since those would rest too.
  void gather();
  // The writer's statement is done, or was undone with all that its rows told. Neither runs
  // another.
  void rowWritten();
  void rowFailed() { told_.clear(); }
  // Adds what was gathered. What couldn't be added when an error is raised stays gathered.
  void bringUp();
  // The same, and the file's triggers work again.
  void stop();
  // The library has undone the group.
  void forget();

  // What one row counts for in the sums that are at `sums` in the list of the file's.
  struct Count {
    int sums = 0;
    qint64 lines = 0;
    qint64 debit = 0;
    qint64 credit = 0;
    QList<Variant> keys;
  };
  void tell(Count count);

 private:
  void release();

  FileStore& store_;
  bool gathering_ = false;
  bool much_ = false;        // is gathered: more could pass the integers' end
  std::vector<Count> told_;  // by the statement that is running
  std::unordered_map<std::string, Count> gathered_;
};
