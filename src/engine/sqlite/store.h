// Books in a file of the library, which this process has open once.
//
// It keeps the file's definitions and the prepared statements, tells whether rows read earlier may
// still be trusted, and holds the group of updates. Nothing outside this folder uses it.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <QElapsedTimer>
#include <QHash>
#include <unordered_map>
#include <vector>

#include "common/errorejecucion.h"
#include "engine/sqlite/groupsums.h"
#include "engine/sqlite/statement.h"
#include "engine/wait.h"

class GroupSums;
class Schema;
struct sqlite3;

// The number of a failure of the library.
int classicNumber(int code, Doing doing);

class FileStore : public Store {
 public:
  // `systemPath` must be a file (3024 otherwise) and a database (3343); `path` is its name as the
  // program writes it.
  FileStore(const QString& systemPath, const QString& path,
            std::shared_ptr<StoreSettings> settings);
  // Makes the file, with the engine's own tables and the locale noted in it. 3026, 75.
  static void create(const QString& systemPath, const QString& path, const QString& locale);
  ~FileStore() override;
  FileStore(const FileStore&) = delete;
  FileStore& operator=(const FileStore&) = delete;

  QString path() const { return path_; }
  QString systemPath() const { return systemPath_; }
  int lockTimeout() const { return settings_->lockTimeout; }
  sqlite3* handle() const { return db_; }
  // Of the last statement that wrote.
  qint64 lastRowNumber() const;
  qint64 changedRows() const;

  // A statement for each text is kept prepared. 3075 with the library's words if it can't be.
  Statement prepare(const QString& sql, Doing doing = Doing::Reading);
  void execute(const QString& sql, Doing doing = Doing::Writing) { prepare(sql, doing).execute(); }
  // The same for the writer and what belongs to it, which know that sums may be gathering.
  Statement prepareOwn(const QString& sql, Doing doing);

  // The group of updates holds the file's write lock. A commit waits for those who are reading.
  void begin(Doing doing) override;
  void commit() override;
  void discard() override;
  bool inGroup() const override { return inGroup_; }

  // Which file of its name it is. 3024 when there is none any more.
  quint64 edition() override {
    lookAtFile();
    return edition_;
  }

  qint64 commits() override;
  // The same for who has the file locked already, and runs no statement.
  qint64 commitsWhileLocked() const;

  // Notes that rows of a table were changed by this process.
  void touched(const QString& table);
  Stamp stamp(const QStringList& tables) override;
  // Looks whether another station has written, if that wasn't looked at a moment ago.
  void freshen();

  Key insert(const QString& table, const Values& values) override;
  bool update(const QString& table, Key key, const Values& values) override;
  bool remove(const QString& table, Key key) override;

  std::shared_ptr<const Definitions> definitions() override;
  void define(const Change& change) override;
  std::shared_ptr<const Schema> schema();
  void definitionsChanged();  // by this process
  void noteDefinitions();     // the same, and in the file, so that other stations notice

  std::shared_ptr<Reader> compile(const lang::Query& query) override;

  // Lets go of every prepared statement; before another file is written over this one.
  void forgetStatements();

  // Raises the number of a failure of the library.
  [[noreturn]] void fail(int code, Doing doing, const QString& words);
  // After each call of the library that may have waited or worked long.
  void returned() {
    if (waited_ && !longWork_) endWait();
  }

  // Work of the library's that isn't one statement, told as one: a copy, a repair. Made of several
  // phases it counts them as equally long. Whoever asked for it with an advance is told how far it
  // is, and it can't be stopped; otherwise whoever shows windows.
  class LongWork {
   public:
    LongWork(FileStore& store, Wait::Work work, int phases);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;
    // To be asked every now and then, by each handle that works; false stops it. So far `done` of
    // `total` parts of this phase, or as far as before.
    bool goesOn(int done, int total);
    bool goesOn();
    void nextPhase();
    void lookAfter(sqlite3* handle);  // asks by itself while that one works
    // This phase is as far as a file has grown to so many bytes.
    void follow(std::function<qint64()> size, qint64 bytes);

   private:
    void tell();

    FileStore& store_;
    Wait::Work work_;
    int phases_;
    int phase_ = 0;
    int part_ = 0;
    std::function<qint64()> size_;
    qint64 bytes_ = 0;
    QElapsedTimer since_;
    qint64 told_ = 0;
  };

  // Holds the file's read lock while rows are read one by one, so that it is taken once for all of
  // them, and looks whether another station has written.
  class Reading : public Hold {
   public:
    explicit Reading(FileStore& store);
    ~Reading() override;

   private:
    FileStore& store_;
    std::optional<Statement> lock_;
  };
  std::unique_ptr<Hold> hold() override { return std::make_unique<Reading>(*this); }

 private:
  // The text of the last writing of its kind, and what it was for.
  struct Written {
    QString table;
    QStringList columns;
    QString sql;
    QString nextRowSql;  // of an insertion, where the engine deals out the row numbers
    std::shared_ptr<const Schema> schema;
    QStringList primary;  // columns of the table's key

    bool serves(const QString& other, const Values& values, const Schema& now) const {
      return schema.get() == &now && other == table && values.areOf(columns);
    }
  };

  static int onBusy(void* store, int tries);
  static int onProgress(void* store);
  bool goOn(const std::function<bool(Wait&)>& question);
  void endWait();
  void gotLock() { settings_->impatient = false; }
  void forgetGroup();  // it has been undone

  void open();
  void configure();
  void close();
  bool hasMoved() const;
  void lookAtFile();
  void mendSums();
  void lookAtDataVersion(Statement& statement);
  Prepared* known(const QString& sql);
  void dropOldestPrepared();
  void write(const QString& sql, std::optional<Key> key, const Values& values);
  const Written& inserting(const QString& table, const Values& values);
  Key nextRow(const Written& written);
  const Written& updating(const QString& table, const Values& values);
  void checkKey(const Written& written, Key key, const Values& values);
  void checkTwin(const QString& table, const QString& column, const QString& value, Key key);

  sqlite3* db_ = nullptr;
  QString path_;
  QString systemPath_;
  std::shared_ptr<StoreSettings> settings_;

  QElapsedTimer waitSince_;  // for a lock
  QElapsedTimer workSince_;  // at the statement taken last
  bool stoppable_ = false;   // that one, without harm
  bool waited_ = false;
  LongWork* longWork_ = nullptr;

  quint64 edition_ = 0;
  QElapsedTimer fileLooked_;
  qint64 lookAtFileEvery_ = 0;  // nanoseconds

  bool inGroup_ = false;
  int groupChanges_ = 0;
  int readers_ = 0;

  qint64 dataVersion_ = -1;
  qint64 definitionsVersion_ = -1;
  bool sumsLookedAt_ = false;  // since the definitions changed
  qint64 generation_ = 0;
  qint64 allChanges_ = 0;
  QHash<QString, qint64> tableChanges_;
  QElapsedTimer looked_;
  qint64 lookEvery_ = 0;  // nanoseconds

  Written updating_, inserting_;
  std::pair<QString, Key> nextRow_;  // of the table that the group has added a row to last

  std::shared_ptr<const Schema> schema_;
  GroupSums sums_{*this};
  std::unordered_map<QString, Prepared> prepared_;
  quint64 uses_ = 0;
  // Those asked for lately, known again by the place of their text, which stays theirs while it is
  // kept here: a tool asks for the same few with each row.
  struct Recent {
    QString sql;
    Prepared* prepared = nullptr;
  };
  std::array<Recent, 8> recent_;
  std::size_t nextRecent_ = 0;
};
