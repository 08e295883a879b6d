#include "engine/sqlite/driver.h"

#include <sqlite3.h>
#include <QFile>
#include <QFileInfo>

#include "common/rutas.h"
#include "engine/sqlite/filecopy.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/store.h"
#include "engine/sqlite/views.h"

namespace {

constexpr QLatin1String kJournal("-journal");  // beside a file that is being changed

// Raises the library's first complaint about the file.
void complain(FileStore& store) {
  Statement check = store.prepare(QStringLiteral("PRAGMA integrity_check(1)"));
  const QString words = check.step() ? check.text(0) : QString();
  if (words != QLatin1String("ok"))
    throw ErrorEjecucion(err::kFormatoNoReconocido, store.path() + u' ' + words);
}

void rebuildSums(FileStore& store) {
  const auto schema = store.schema();
  for (const auto* kept : {&schema->runningSums(), &schema->brokenSums()})
    for (const Catalog::RunningSums& sums : *kept)
      for (const QString& sql : sumsRebuild(sums, *schema->definition(sums.baseTable)))
        store.execute(sql);
}

// The system's path of a location that must be free.
QString freePath(const QString& location) {
  QString systemPath = rutaSistema(location);
  if (QFileInfo::exists(systemPath)) throw ErrorEjecucion(err::kBaseYaExiste, location);
  return systemPath;
}

FileStore& fileOf(Store& store) {
  return static_cast<FileStore&>(store);
}

class FileDriver : public Driver {
 public:
  QString identity(const QString& location) const override {
    const QFileInfo file(rutaSistema(location));
    return file.isFile() ? file.canonicalFilePath() : QString();
  }

  std::unique_ptr<Store> open(const QString& location,
                              std::shared_ptr<StoreSettings> settings) override {
    return std::make_unique<FileStore>(identity(location), location, std::move(settings));
  }

  void create(const QString& location, const QString& locale) override {
    FileStore::create(freePath(location), location, locale);
  }

  void erase(const QString& location) override {
    const QString file = rutaSistema(location);
    if (QFileInfo(file).isFile() && !QFile::remove(file))
      throw ErrorEjecucion(err::kPermisoDenegado, location);
    QFile::remove(file + kJournal);
  }

  QStringList files(const QString& location) const override {
    const QString name = QFileInfo(rutaSistema(location)).fileName();
    return {name, name + kJournal};
  }

  std::unique_ptr<Snapshot> snapshot(Store& from) override {
    FileStore& file = fileOf(from);
    auto copy = std::make_unique<TemporaryCopy>(file.systemPath(), file.path(), file);
    FileStore::LongWork work(file, Wait::Work::Copying, 1);
    copy->fill(work, TemporaryCopy::Use::Passing);
    return copy;
  }

  void copy(Store& from, const QString& to) override {
    TemporaryCopy copy(rutaSistema(to), to, fileOf(from));
    FileStore::LongWork work(fileOf(from), Wait::Work::Copying, 2);
    copy.fill(work);
    work.nextPhase();
    copy.verify(work);
    copy.rename();
  }

  void overwrite(Store& from, Store& to, std::optional<qint64> asRead) override {
    FileStore& source = fileOf(from);
    FileStore::LongWork work(source, Wait::Work::Copying, 2);
    // What is found sound is what will be written.
    const FileStore::Reading still(source);
    complain(source);
    work.nextPhase();
    writeInto(fileOf(to), source, asRead, work);
  }

  void compact(Store& from, const QString& to) override {
    FileStore& file = fileOf(from);
    FileStore::LongWork work(file, Wait::Work::Copying, 2);
    if (identity(to) == file.systemPath()) return file.execute(QStringLiteral("VACUUM"));
    TemporaryCopy copy(freePath(to), to, file);
    work.follow([&] { return QFileInfo(copy.file()).size(); }, QFileInfo(file.systemPath()).size());
    file.prepare(QStringLiteral("VACUUM INTO ?1"), Doing::Locking).bind(1, copy.file()).execute();
    work.nextPhase();
    copy.verify(work);
    copy.rename();
  }

  void check(Store& store) override {
    FileStore& file = fileOf(store);
    FileStore::LongWork work(file, Wait::Work::Repairing, 3);
    file.execute(QStringLiteral("REINDEX"));
    work.nextPhase();
    rebuildSums(file);
    remakeViews(file);
    file.noteDefinitions();
    work.nextPhase();
    // What can't be derived from something else is told, and nothing of it is touched.
    complain(file);
  }
};

}  // namespace

std::unique_ptr<Driver> fileDriver() {
  // The library's account of the memory that it takes costs a lock at each piece; nobody asks it.
  // It has to be told before its first call; later it doesn't listen.
  static const int told = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  static_cast<void>(told);
  return std::make_unique<FileDriver>();
}
