#include "engine/sqlite/filecopy.h"

#include <fcntl.h>
#include <signal.h>
#include <sqlite3.h>
#include <unistd.h>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include "common/errorejecucion.h"

namespace {

constexpr int kPagesAtOnce = 256;  // of 4 KiB
constexpr QLatin1String kJournal("-journal");

struct Closer {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

// What was written reaches the disk before the name does.
void synchronize(const QString& systemPath) {
  const int file = ::open(systemPath.toUtf8().constData(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return;
  ::fsync(file);
  ::close(file);
}

const QLatin1String kEnding(".tmp");

QString temporaryName(const QString& target) {
  return target + QStringLiteral(".%1@").arg(QCoreApplication::applicationPid()) +
         QSysInfo::machineHostName() + kEnding;
}

// Whether nobody is at work on it any more. Who works on another machine can't be asked.
bool isAbandoned(const QFileInfo& copy, const QString& process) {
  constexpr int kDaysOfOthers = 1;
  const QString host = process.section(u'@', 1);
  if (!host.isEmpty() && host != QSysInfo::machineHostName())
    return copy.lastModified().daysTo(QDateTime::currentDateTime()) > kDaysOfOthers;
  const auto pid = static_cast<pid_t>(process.section(u'@', 0, 0).toInt());
  return pid <= 0 || (::kill(pid, 0) != 0 && errno == ESRCH);
}

// What copies to the same place have left when they were broken off.
void removeAbandoned(const QString& target) {
  const QString start = QFileInfo(target).fileName() + u'.';
  const QFileInfoList files = QFileInfo(target).dir().entryInfoList(QDir::Files);
  for (const QFileInfo& file : files) {
    const QString name = file.fileName();
    const qsizetype end = name.indexOf(kEnding, start.size());
    if (!name.startsWith(start) || end < 0) continue;
    if (isAbandoned(file, name.mid(start.size(), end - start.size())))
      QFile::remove(file.filePath());
  }
}

}  // namespace

TemporaryCopy::TemporaryCopy(const QString& target, const QString& path, FileStore& source)
    : target_(target),
      path_(path),
      temporary_(temporaryName(target)),
      source_(source),
      work_(source, Wait::Work::Copying) {
  remove();
  removeAbandoned(target);
}

TemporaryCopy::~TemporaryCopy() {
  remove();
}

// With the journal that a disk which failed leaves beside it.
void TemporaryCopy::remove() const {
  QFile::remove(temporary_);
  QFile::remove(temporary_ + kJournal);
}

sqlite3* TemporaryCopy::open(int flags) const {
  sqlite3* db = nullptr;
  const int code =
      sqlite3_open_v2(temporary_.toUtf8().constData(), &db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code == SQLITE_OK) return db;
  sqlite3_close_v2(db);
  throw ErrorEjecucion(err::kErrorDeRuta, path_);
}

// In one transaction of each side: what locks them is waited for by their own connections.
int TemporaryCopy::copyPages(sqlite3* to, sqlite3* from) {
  sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
  if (!backup) return sqlite3_extended_errcode(to);
  int code = SQLITE_OK;
  while (code == SQLITE_OK)
    code = work_.goesOn() ? sqlite3_backup_step(backup, kPagesAtOnce) : SQLITE_INTERRUPT;
  const int finished = sqlite3_backup_finish(backup);
  return code == SQLITE_DONE ? finished : code;
}

void TemporaryCopy::fill() {
  const FileStore::Reading whole(source_);  // one state, whoever waits to write the next
  const Handle to(open(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE));
  const int code = copyPages(to.get(), source_.handle());
  if (code != SQLITE_OK) throw ErrorEjecucion(classicNumber(code, Doing::Reading), source_.path());
}

void TemporaryCopy::verify() {
  const Handle db(open(SQLITE_OPEN_READONLY));
  work_.lookAfter(db.get());
  QString words;
  const auto first = [](void* data, int, char** values, char**) {
    *static_cast<QString*>(data) = QString::fromUtf8(values[0]);
    return 0;
  };
  const int code = work_.goesOn()
                       ? sqlite3_exec(db.get(), "PRAGMA integrity_check(1)", first, &words, nullptr)
                       : SQLITE_INTERRUPT;
  if (code == SQLITE_INTERRUPT) throw ErrorEjecucion(err::kOperacionCancelada);
  if (code != SQLITE_OK || words != QLatin1String("ok"))
    throw ErrorEjecucion(err::kFormatoNoReconocido, path_ + u' ' + words);
}

void TemporaryCopy::rename() {
  synchronize(temporary_);
  // A journal without its file would be taken for this one's and written back into it.
  if (QFile::remove(target_ + kJournal)) synchronize(QFileInfo(target_).path());
  if (!QFile::rename(temporary_, target_)) throw ErrorEjecucion(err::kErrorDeRuta, path_);
  synchronize(QFileInfo(target_).path());
}

void TemporaryCopy::writeInto(FileStore& live) {
  const Handle from(open(SQLITE_OPEN_READONLY));
  live.forgetStatements();
  const int code = copyPages(live.handle(), from.get());
  live.returned();
  live.definitionsChanged();
  if (code != SQLITE_OK)
    live.fail(code, Doing::Writing, QString::fromUtf8(sqlite3_errmsg(live.handle())));
}
