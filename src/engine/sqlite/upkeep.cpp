// Repair, compaction and copies of whole files.
#include <sqlite3.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "common/rutas.h"
#include "engine/dbengine.h"
#include "engine/sqlite/connection.h"
#include "engine/sqlite/filecopy.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"
#include "engine/sqlite/views.h"

namespace {

// The library's first complaint about the file; empty when it has none.
QString complaint(Connection& connection) {
  Statement check = connection.prepare(QStringLiteral("PRAGMA integrity_check(1)"));
  if (!check.step()) return {};
  const QString words = check.text(0);
  return words == QLatin1String("ok") ? QString() : words;
}

void rebuildSums(Connection& connection) {
  const auto schema = connection.schema();
  for (const auto* kept : {&schema->runningSums(), &schema->brokenSums()})
    for (const Catalog::RunningSums& sums : *kept)
      for (const QString& sql : sumsRebuild(sums, *schema->definition(sums.baseTable)))
        connection.execute(sql);
}

QString missing(const QString& path) {
  QString systemPath = rutaSistema(path);
  if (QFileInfo::exists(systemPath)) throw ErrorEjecucion(err::kBaseYaExiste, path);
  return systemPath;
}

}  // namespace

void DBEngine::RepairDatabase(const QString& path) {
  const auto shared = connection(path);
  guarded(*shared, [&] {
    shared->commit();
    shared->beginGroup();
    shared->execute(QStringLiteral("REINDEX"));
    rebuildSums(*shared);
    remakeViews(*shared);
    shared->noteDefinitions();
    // What can't be derived from something else is told, and nothing of it is touched.
    const QString words = complaint(*shared);
    if (!words.isEmpty()) throw ErrorEjecucion(err::kFormatoNoReconocido, path + u' ' + words);
    shared->commit();
  });
}

void DBEngine::CompactDatabase(const QString& source, const QString& destination) {
  const QString target = missing(destination);
  const auto shared = connection(source);
  guarded(*shared, [&] {
    shared->commit();
    TemporaryCopy copy(target, destination, lockTimeout());
    shared->prepare(QStringLiteral("VACUUM INTO ?1"), Doing::Writing)
        .bind(1, copy.path())
        .execute();
    copy.verify();
    forget(target);
    copy.rename();
  });
}

void DBEngine::CopyDatabase(const QString& source, const QString& destination) {
  const auto shared = connection(source);
  guarded(*shared, [&] {
    shared->commit();
    const QString target = rutaSistema(destination);
    TemporaryCopy copy(target, destination, lockTimeout());
    copy.fill(shared->handle(), source);
    copy.verify();
    if (!QFileInfo::exists(target)) {
      forget(target);
      copy.rename();
      return;
    }
    const auto live = connection(destination);
    live->commit();
    copy.writeInto(*live);
  });
}
