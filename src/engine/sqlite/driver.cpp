#include "engine/sqlite/driver.h"

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

// The library's first complaint about the file; empty when it has none.
QString complaint(FileStore& store) {
  Statement check = store.prepare(QStringLiteral("PRAGMA integrity_check(1)"));
  if (!check.step()) return {};
  const QString words = check.text(0);
  return words == QLatin1String("ok") ? QString() : words;
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

  void copy(Store& from, const QString& to) override {
    TemporaryCopy copy(freePath(to), to, fileOf(from));
    copy.fill();
    copy.verify();
    copy.rename();
  }

  void overwrite(Store& from, Store& to) override {
    TemporaryCopy copy(fileOf(to).systemPath(), fileOf(to).path(), fileOf(from));
    copy.fill();
    copy.verify();
    copy.writeInto(fileOf(to));
  }

  void compact(Store& from, const QString& to) override {
    TemporaryCopy copy(freePath(to), to, fileOf(from));
    fileOf(from)
        .prepare(QStringLiteral("VACUUM INTO ?1"), Doing::Locking)
        .bind(1, copy.path())
        .execute();
    copy.verify();
    copy.rename();
  }

  void check(Store& store) override {
    FileStore& file = fileOf(store);
    const FileStore::LongWork work(file, Wait::Work::Repairing);
    file.execute(QStringLiteral("REINDEX"));
    rebuildSums(file);
    remakeViews(file);
    file.noteDefinitions();
    // What can't be derived from something else is told, and nothing of it is touched.
    const QString words = complaint(file);
    if (!words.isEmpty())
      throw ErrorEjecucion(err::kFormatoNoReconocido, file.path() + u' ' + words);
  }
};

}  // namespace

std::unique_ptr<Driver> fileDriver() {
  return std::make_unique<FileDriver>();
}
