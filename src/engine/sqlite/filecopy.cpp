#include "engine/sqlite/filecopy.h"

#include <sqlite3.h>
#include <QFile>
#include <QFileInfo>

#include "common/errorejecucion.h"

namespace {

using LongWork = FileStore::LongWork;

constexpr int kPagesAtOnce = 256;  // of 4 KiB
constexpr QLatin1String kJournal("-journal");

struct Closer {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

// Pages from one open file to another, which is left as it was unless all of them came: in one
// transaction of each side, and what locks them is waited for by their own connections. `mayBegin`
// is asked once `to` is nobody else's any more.
template <class MayBegin>
int copyPages(sqlite3* to, sqlite3* from, LongWork& work, const MayBegin& mayBegin) {
  sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
  if (!backup) return sqlite3_extended_errcode(to);
  int code = sqlite3_backup_step(backup, 0);
  if (code == SQLITE_OK && !mayBegin()) code = SQLITE_BUSY;
  while (code == SQLITE_OK) {
    const int pages = sqlite3_backup_pagecount(backup);
    const bool goesOn = work.goesOn(pages - sqlite3_backup_remaining(backup), pages);
    code = goesOn ? sqlite3_backup_step(backup, kPagesAtOnce) : SQLITE_INTERRUPT;
  }
  const int finished = sqlite3_backup_finish(backup);
  return code == SQLITE_DONE ? finished : code;
}

}  // namespace

TemporaryCopy::TemporaryCopy(const QString& target, const QString& path, FileStore& source)
    : target_(target), path_(path), temporary_(target), source_(source) {}

sqlite3* TemporaryCopy::open(int flags) const {
  sqlite3* db = nullptr;
  const int code =
      sqlite3_open_v2(file().toUtf8().constData(), &db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code == SQLITE_OK) return db;
  sqlite3_close_v2(db);
  throw ErrorEjecucion(err::kErrorDeRuta, path_);
}

void TemporaryCopy::fill(LongWork& work, Use use) {
  const FileStore::Reading whole(source_);  // one state, whoever waits to write the next
  const Handle to(open(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
  if (use == Use::Passing)
    sqlite3_exec(to.get(), "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
  const int code = copyPages(to.get(), source_.handle(), work, [] { return true; });
  if (code != SQLITE_OK) throw ErrorEjecucion(classicNumber(code, Doing::Reading), source_.path());
}

void TemporaryCopy::verify(LongWork& work, const char* pragma) {
  const Handle db(open(SQLITE_OPEN_READONLY));
  work.lookAfter(db.get());
  QString words;
  const auto first = [](void* data, int, char** values, char**) {
    *static_cast<QString*>(data) = QString::fromUtf8(values[0]);
    return 0;
  };
  const int code =
      work.goesOn() ? sqlite3_exec(db.get(), pragma, first, &words, nullptr) : SQLITE_INTERRUPT;
  if (code == SQLITE_INTERRUPT) throw ErrorEjecucion(err::kOperacionCancelada);
  if (code != SQLITE_OK || words != QLatin1String("ok"))
    throw ErrorEjecucion(err::kFormatoNoReconocido, path_ + u' ' + words);
}

void TemporaryCopy::verify() {
  LongWork work(source_, Wait::Work::Copying, 1);
  verify(work, "PRAGMA quick_check(1)");
}

void TemporaryCopy::rename() {
  // A journal without its file would be taken for this one's and written back into it.
  QFile::remove(target_ + kJournal);
  if (!temporary_.ocupaSuSitio()) throw ErrorEjecucion(err::kErrorDeRuta, path_);
}

void writeInto(FileStore& live, FileStore& from, std::optional<qint64> asRead, LongWork& work) {
  live.forgetStatements();
  const int code = copyPages(live.handle(), from.handle(), work,
                             [&] { return !asRead || live.commitsWhileLocked() == *asRead; });
  live.returned();
  live.definitionsChanged();
  if (code != SQLITE_OK)
    live.fail(code, Doing::Writing, QString::fromUtf8(sqlite3_errmsg(live.handle())));
}
