// The one connection of this process to one file, shared by everything that works on it.
//
// It keeps the file's definitions, the compiled plans and the prepared statements, tells whether
// rows read earlier may still be trusted, and groups the single-row updates of one user action.
// Nothing outside this folder uses it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <QElapsedTimer>
#include <QHash>
#include <unordered_map>
#include <vector>

#include "common/errorejecucion.h"
#include "engine/sources.h"
#include "engine/sqlite/statement.h"
#include "engine/wait.h"

class Schema;
struct sqlite3;

class Connection : public Store, public std::enable_shared_from_this<Connection> {
 public:
  // What the connections of a process share: the wait for locks, and who is to be told that a group
  // was opened and will have to be committed, that a wait ended in a refusal, or that what was read
  // is no longer so because a group was undone.
  struct Settings {
    int lockTimeout = 5000;  // milliseconds
    int year = 0;            // of the company at hand
    Wait* wait = nullptr;
    bool inWait = false;     // `wait` is at work: nothing may be asked of a connection
    bool impatient = false;  // a lock was refused: no other is waited for until one is got
    std::function<void(const std::shared_ptr<Connection>&)> groupOpened;
    std::function<void()> refused;
    std::function<void()> undone;
    std::function<void(const ErrorEjecucion&)> lost;  // at the closing of a file
  };

  // `systemPath` must be a file (3024 otherwise) and a database (3343); `path` is its name as the
  // program writes it.
  Connection(const QString& systemPath, const QString& path, std::shared_ptr<Settings> settings);
  // Makes the file, with the engine's own tables and the locale noted in it. 3026, 75.
  static void create(const QString& systemPath, const QString& path, const QString& locale);
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  QString path() const { return path_; }
  QString systemPath() const { return systemPath_; }
  sqlite3* handle() const { return db_; }
  // Of the last statement that wrote.
  qint64 lastRowNumber() const;
  qint64 changedRows() const;

  // A statement for each text is kept prepared. 3075 with the library's words if it can't be.
  Statement prepare(const QString& sql, Doing doing = Doing::Reading);
  void execute(const QString& sql, Doing doing = Doing::Writing) { prepare(sql, doing).execute(); }

  // The group of updates. Opening takes the file's write lock (3260, or 3186 when it is taken to
  // write at once; 3027); what is read afterwards
  // is fresh and nobody else's. commit() raises 3186 while others are reading beyond the wait, and
  // then the group is still open; 3026 and 3043 when it has been undone.
  void beginGroup(Doing doing = Doing::Locking);
  void begin(Doing doing) override { beginGroup(doing); }
  void commit() override;
  void discard();  // undoes the open group, if any
  bool inGroup() const override { return inGroup_; }
  qint64 groupAge() const { return groupClock_.elapsed(); }  // milliseconds
  // Commits before an error goes up to whoever called: what was done before a failure stays. If the
  // group turns out to be lost, that is the error that must go up, and is raised here.
  void settle();

  // Which file of its name it is.
  quint64 edition() const override { return edition_; }

  // Notes that rows of a table were changed by this process.
  void touched(const QString& table);
  Stamp stamp(const QString& table) override;
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
  Sources& sources() { return sources_; }

  // Lets go of every prepared statement; before another file is written over this one.
  void forgetStatements();

  // Raises the number of a failure of the library.
  [[noreturn]] void fail(int code, Doing doing, const QString& words);
  // After each call of the library that may have waited or worked long.
  void returned() {
    if (waited_) endWait();
  }

  // Holds the file's read lock while rows are read one by one, so that it is taken once for all of
  // them, and looks whether another station has written.
  class Reading : public Hold {
   public:
    explicit Reading(Connection& connection);
    ~Reading() override;

   private:
    Connection& connection_;
    std::optional<Statement> lock_;
  };
  std::unique_ptr<Hold> hold() override { return std::make_unique<Reading>(*this); }

 private:
  static int onBusy(void* connection, int tries);
  static int onProgress(void* connection);
  bool goOn(bool (Wait::*question)(qint64), qint64 elapsed);
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
  void dropOldestPrepared();
  void checkKey(const QString& table, Key key, const Values& values);
  void checkTwin(const QString& table, const QString& column, const QString& value, Key key);

  sqlite3* db_ = nullptr;
  QString path_;
  QString systemPath_;
  std::shared_ptr<Settings> settings_;

  QElapsedTimer waitSince_;  // for a lock
  QElapsedTimer workSince_;  // at the statement taken last
  bool stoppable_ = false;   // that one, without harm
  bool waited_ = false;

  quint64 edition_ = 0;
  QElapsedTimer fileLooked_;
  qint64 lookAtFileEvery_ = 0;  // nanoseconds

  bool inGroup_ = false;
  QElapsedTimer groupClock_;
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

  std::shared_ptr<const Schema> schema_;
  Sources sources_;
  std::unordered_map<QString, Prepared> prepared_;
  quint64 uses_ = 0;
};

// Runs something for a caller outside the engine; on an error the group is committed before it goes
// up.
template <typename F>
auto guarded(Connection& connection, F&& what) -> decltype(what()) {
  try {
    return what();
  } catch (const ErrorEjecucion&) {
    connection.settle();
    throw;
  }
}
