// The objects that build and open the database files.
//
// A DBEngine holds one connection per file for the whole process: every control on a file shares
// it. The program has no transactions of its own; the engine groups the single-row updates of one
// user action and writes them when control returns to the event loop, before a box is shown, before
// an error is raised, and every 200 milliseconds of long work.
#pragma once

#include <functional>
#include <memory>
#include <QObject>
#include <QStringList>
#include <vector>

#include "common/errorejecucion.h"
#include "engine/advance.h"
#include "engine/lang/catalog.h"
#include "engine/recordset.h"
#include "engine/tabledef.h"

class Connection;
class Database;
class DBEngine;
class Driver;
class Hold;
class Snapshot;
class Wait;
struct Stamp;

class Database {
 public:
  explicit Database(std::shared_ptr<Connection> connection);
  ~Database();

  // Tables. Appending one that exists is 3010; indexes may follow with appendIndex.
  void appendTable(const TableDef& table);
  void appendIndex(const QString& table, const Index& index);
  QStringList TableDefs() const;  // names in order of creation; the engine's own are not shown
  TableDef tableDef(const QString& name) const;  // 3265
  void deleteTable(const QString& name);

  // What keeps the totals instant on a journal of any length, unseen by TableDefs: indexes of a
  // table, and sums kept beside it by triggers of built-in functions, so that they stay exact
  // whatever tool writes. The indexes take the place of those kept before; where they are just
  // those nothing is written, nor waited for. The sums are those of `amount` on each side of `side`
  // ("D" is the debit, anything else the credit), one row for each combination of `keys`; no keys
  // for the one row of the whole table.
  void keepIndexes(const QString& table, const QList<KeptIndex>& indexes);
  void keepSums(const QString& table, const QString& side, const QString& amount,
                const QList<SumKey>& keys);

  // Stored queries. The text is kept word for word and not looked at: names are resolved when it
  // runs.
  void CreateQueryDef(const QString& name, const QString& statement);  // 3012 if it exists
  QStringList QueryDefs() const;                                       // names in order of creation
  void deleteQuery(const QString& name);

  // A table, query or statement. 3061 unknown field, 3075 syntax, 3078 unknown source.
  std::unique_ptr<Recordset> OpenRecordset(const QString& source, Opening opening = Opening::Whole);

  // The state of the file's rows as it is now, whoever changed them; and one kept for some reads
  // that follow each other at once. 3260 while another station locks the file.
  Stamp state() const;
  std::unique_ptr<Hold> hold() const;
  // The columns of a source, without reading any row.
  std::vector<Catalog::Column> columns(const QString& source) const;
  // Whether what a source adds up and counts is read from kept sums: exact to the millionth, and
  // not at the cost of the lines.
  bool readsKeptSums(const QString& source) const;

  QString path() const;  // as given
  std::shared_ptr<Connection> connection() const { return connection_; }

 private:
  std::shared_ptr<Connection> connection_;
};

class Workspace {
 public:
  explicit Workspace(DBEngine& engine) : engine_(engine) {}
  // `locale` is the general sort order; it is noted in the file. 3204 if the file exists.
  std::unique_ptr<Database> CreateDatabase(const QString& path, const QString& locale);
  std::unique_ptr<Database> OpenDatabase(const QString& path);  // 3024, 3343

 private:
  DBEngine& engine_;
};

class DBEngine : public QObject {
  Q_OBJECT
 public:
  explicit DBEngine(QObject* parent = nullptr);
  // Over other books than the program's own.
  explicit DBEngine(std::unique_ptr<Driver> driver, QObject* parent = nullptr);
  ~DBEngine() override;

  Workspace& Workspaces(int item);  // only 0

  // Whether there is a file at a path; it needn't be one that can be opened.
  bool exists(const QString& path) const;
  // Removes a file with all that is kept beside it; what is already gone is no failure. What still
  // has it open keeps reading the rows that it had, and a file made later in its place is another
  // one. 70 when it can't be removed, 3186 while it has changes that can't be committed.
  void DeleteDatabase(const QString& path);
  // The names of what DeleteDatabase removes from the file's folder, whether it is there or not.
  QStringList filesOf(const QString& path) const;
  // Checks the file, rebuilds what can be derived (indexes, running sums) and puts it right in
  // place. 3343 for a file that is no database.
  void RepairDatabase(const QString& path, const Advance& advance = {});
  // A compacted copy under another name; `destination` must not exist (3204). Under its own, the
  // file itself is compacted.
  void CompactDatabase(const QString& source, const QString& destination,
                       const Advance& advance = {});

  // A copy of a file as it stands, verified before it takes its name. A destination that exists, in
  // use or not, is written over as one change: it is left wholly old or wholly new, and what is
  // open on it shows the new rows. One that is no database (any more) gives way to the copy. 3024,
  // 3343, 3026.
  void CopyDatabase(const QString& source, const QString& destination, const Advance& advance = {});
  // The same for what was made from the destination's own rows. `asRead` are its commits() from
  // before they were read: 3186, with nothing written, if anybody has changed it since.
  void ReplaceDatabase(const QString& source, const QString& destination, qint64 asRead,
                       const Advance& advance = {});
  // Moves with each change of a file by anybody, and stands in it.
  qint64 commits(const QString& path);
  // A file as it stands, for those who read files and not books; it lies beside it.
  std::unique_ptr<Snapshot> snapshot(const QString& path, const Advance& advance = {});

  // Commits every open group now. Whatever hands control to somebody else calls it: boxes,
  // dialogs, the event loop, external programs.
  void flush();
  // The same for work that goes on afterwards, or ends with it: where another station is in the way
  // the saver is asked, who lets the user choose. 3059 if he gives it up; without one, as flush().
  void save();
  // Who is asked, from then on; it runs flush() until nothing is pending, or discard().
  void setSaver(const std::function<void()>& saver);
  bool pending() const;  // changes wait to be written
  // Gives up what is pending: every open group is undone.
  void discard();
  // To be called inside loops of long work: commits when 200 milliseconds have passed since the
  // group opened, or up to a second where committing takes long, leaving a short pause for other
  // stations. 3186 unless it is put off.
  void breathe();

  // As long as it stands, a commit that another station keeps waiting is put off: long work isn't
  // left half done for that. Whoever ends it commits, or has it committed by the event loop.
  class LongWork {
   public:
    explicit LongWork(DBEngine& engine);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

   private:
    DBEngine& engine_;
  };

  // The shared connection of a file, opened if needed.
  std::shared_ptr<Connection> connection(const QString& path);
  // How long a lock of another station is waited for; five seconds unless a test says otherwise.
  void setLockTimeout(int milliseconds);
  int lockTimeout() const;
  // Who is told while it waits or works long, from then on; null for nobody. It must outlive the
  // engine's work.
  void setWait(Wait* wait);
  bool isWaiting() const;  // `wait` is at work, and everything is refused
  // As long as it stands no lock is waited for longer than so many milliseconds: for painting, and
  // for what is tried again anyway.
  class Brief {
   public:
    Brief(DBEngine& engine, int milliseconds);
    ~Brief();
    Brief(const Brief&) = delete;
    Brief& operator=(const Brief&) = delete;

   private:
    DBEngine& engine_;
    int timeout_;
    bool impatient_;
  };
  // A change of many rows that is made whole or not at all: as long as it stands nothing else
  // commits what is written, no error and no breath, and unless commit() has succeeded it is undone
  // when it goes. Other stations can't write meanwhile, so it is for work of seconds that shows no
  // box. What was pending before is committed when it begins.
  //
  //   DBEngine::Whole change(engine);
  //   ...                             // whatever fails in here leaves the files as they were
  //   change.commit();
  class Whole {
   public:
    explicit Whole(DBEngine& engine);
    ~Whole();
    Whole(const Whole&) = delete;
    Whole& operator=(const Whole&) = delete;
    void commit();  // as save(); undone if it fails

   private:
    DBEngine& engine_;
    bool done_ = false;
  };
  // The accounting year of the company at hand: date literals with a two-digit year fall nearest
  // to it. Until it is told, the year of today.
  void setYear(int year);

 Q_SIGNALS:
  // A commit at the return to the event loop failed, where no caller is left to catch it. With 3186
  // the changes are kept and it is tried again every half second, now without waiting, until
  // saved() or discard(); with 3026 or 3043 they have been undone, as the text says.
  void commitFailed(int numero, const QString& descripcion);
  void saved();  // what a commit had failed to save
  // Changes that had been shown were undone, by the library or by discard(): whatever shows rows or
  // totals reads them again. It comes from the event loop.
  void undone();

 private:
  friend class Workspace;
  void forget(const QString& identity);
  void copy(const QString& source, const QString& destination, std::optional<qint64> asRead);
  void askForCommit(int delay);
  void waitNoMore();
  void askForReading(int delay);
  void commitFromLoop();
  void commitLongWork();

  struct Private;
  std::unique_ptr<Private> d_;
};
