// The rows of an opened source: their keys in order, and those rows that were looked at lately.
//
// A source that looks rows up in other tables is read by its keys only when it is opened by its
// first rows: read whole it is all of one state.
//
// Positions count from zero and never move while the set is open: a row added stands at the end, a
// deleted one leaves its place empty. A set opened by its first rows reads the other keys when it
// is asked for them; what others wrote meanwhile may be among them.
#pragma once

#include <optional>
#include <QSet>
#include <unordered_map>

#include "engine/connection.h"
#include "engine/recordset.h"

class RowSet {
 public:
  // Runs the source. 3061, 3075, 3078.
  RowSet(std::shared_ptr<Connection> connection, const QString& source, Opening opening);

  Connection& connection() const { return *connection_; }
  const Plan& plan() const { return *compiled_.plan; }
  // The rows known so far, and all of them, for which the keys left are read.
  int known() const;
  int total();
  // Whether there is a row at the position; reads on only beyond the known ones.
  bool has(int position) { return position < known() || position < total(); }
  // The row's key: the file's row number, or the position where rows have no number.
  Key key(int position) const;
  int positionOf(Key key);  // -1 if it isn't in the set

  // The row as the file has it now, read with its neighbours; nullptr if it is gone. It stands
  // until the next call.
  const Row* row(int position);
  // The row as it was read last, without a look at the file; nullptr if it isn't kept.
  const Row* shown(int position) const;
  // The same for a row that is about to be changed, within a group: nobody else can have written
  // it since what is kept was looked at, and its neighbours are of no use.
  const Row* rowToChange(int position);
  void checkFile() const;  // 3197 if the keys are those of books that have been replaced
  // Whether the row was deleted through this set.
  bool isDeleted(int position) const { return deleted_.contains(position); }
  int deletedCount() const { return static_cast<int>(deleted_.size()); }

  // One change of the table through this set: made before the store is told, and told after it
  // what became of the rows. What else was kept then stays good, unless it was old already; a
  // change that failed tells nothing.
  //   Change change(rows);
  //   if (store.update(...)) change.written(position);
  class Change {
   public:
    explicit Change(RowSet& rows) : rows_(rows), wasCurrent_(rows.isCurrent()) {}
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    void written(int position);
    int added(Key key);  // its position
    void deleted(int position);

   private:
    RowSet& rows_;
    bool wasCurrent_;
  };

  // The first position from `from` on that meets a criterion; -1 if none does.
  int findFirst(const QString& criterion);
  int findNext(const QString& criterion, int from);

 private:
  Stamp stamp() const { return connection_->store().stamp(plan().tables); }
  bool isCurrent();
  void noteCurrent();
  void readWhole();
  void readOtherKeys();
  void discardOld();
  void readWindow(int position);
  void readRows(int first, int end);
  std::vector<int> matches(const QString& criterion);

  std::shared_ptr<Connection> connection_;
  QString source_;
  Compiled compiled_;
  bool byKeys_ = false;  // or read whole
  KeySet keys_;          // shared with other sets of the same source
  bool allKeys_ = true;
  std::vector<Key> tail_;  // rows added through this set
  QSet<int> deleted_;
  std::vector<Row> whole_;  // of a source without keys

  Stamp stamp_;
  Stamp moment_;  // of all tables, when the stamp was seen to be that of these rows
  quint64 edition_ = 0;
  std::unordered_map<int, std::optional<Row>> near_;
  int windowFirst_ = -1;
  int windowEnd_ = -1;

  QString criterion_;
  Stamp criterionStamp_;
  std::vector<int> matches_;
};
