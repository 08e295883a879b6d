// One set of books as this process has it open, shared by everything that works on it: its store,
// its compiled sources, and the group of updates of one user action.
#pragma once

#include <QElapsedTimer>

#include "common/errorejecucion.h"
#include "engine/sources.h"

class Connection : public std::enable_shared_from_this<Connection> {
 public:
  // What the connections of a process share, and who is to be told that a group was opened and will
  // have to be committed.
  struct Settings {
    int year = 0;        // of the company at hand
    bool whole = false;  // what is being written is committed by DBEngine::Whole alone
    std::function<void(const std::shared_ptr<Connection>&)> groupOpened;
    std::function<void(const ErrorEjecucion&)> lost;  // at the closing of the books
  };

  // `path` is the location as the program writes it.
  Connection(std::unique_ptr<Store> store, const QString& path, std::shared_ptr<Settings> settings);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  QString path() const { return path_; }
  Store& store() const { return *store_; }
  Sources& sources() { return sources_; }

  // The store's group, with those who must know told of it.
  void begin(Doing doing);
  void commit() { store_->commit(); }
  void discard() { store_->discard(); }
  bool inGroup() const { return store_->inGroup(); }
  qint64 groupAge() const { return groupClock_.elapsed(); }  // milliseconds
  // Commits before an error goes up to whoever called: what was done before a failure stays. If the
  // group turns out to be lost, that is the error that must go up, and is raised here.
  void settle();

 private:
  QString path_;
  std::shared_ptr<Settings> settings_;
  std::unique_ptr<Store> store_;
  Sources sources_;
  QElapsedTimer groupClock_;
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
