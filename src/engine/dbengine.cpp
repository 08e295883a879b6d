#include "engine/dbengine.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QThread>
#include <QTimer>
#include <utility>

#include "common/rutas.h"
#include "engine/sqlite/connection.h"

namespace {

constexpr qint64 kLongWork = 200;  // milliseconds that a group of long work may hold the file
constexpr int kPause = 20;         // a tenth of it: time enough for whoever polls
constexpr int kRetry = 500;

}  // namespace

struct DBEngine::Private {
  QHash<QString, std::weak_ptr<Connection>> pool;    // by the system's path
  QHash<QString, std::weak_ptr<Connection>> byText;  // by the path as it was asked for
  std::shared_ptr<Connection::Settings> settings = std::make_shared<Connection::Settings>();
  std::unique_ptr<Workspace> workspace;
  // A file with changes to be saved stays open, whoever lets go of it.
  std::vector<std::shared_ptr<Connection>> changed;
  QTimer commitTimer;
  bool refused = false;  // another station keeps it from saving
  bool undoneAsked = false;

  std::vector<std::shared_ptr<Connection>> open() {
    std::vector<std::shared_ptr<Connection>> connections;
    for (auto it = pool.begin(); it != pool.end();) {
      if (auto connection = it->lock()) {
        connections.push_back(std::move(connection));
        ++it;
      } else {
        it = pool.erase(it);
      }
    }
    return connections;
  }
};

DBEngine::DBEngine(QObject* parent) : QObject(parent), d_(std::make_unique<Private>()) {
  d_->workspace = std::make_unique<Workspace>(*this);
  d_->settings->year = QDate::currentDate().year();
  d_->commitTimer.setSingleShot(true);
  connect(&d_->commitTimer, &QTimer::timeout, this, &DBEngine::commitFromLoop);
  d_->settings->groupOpened = [this](const std::shared_ptr<Connection>& connection) {
    if (std::find(d_->changed.begin(), d_->changed.end(), connection) == d_->changed.end())
      d_->changed.push_back(connection);
    askForCommit(0);
  };
  d_->settings->refused = [this] {
    QTimer::singleShot(0, this, [this] { d_->settings->impatient = false; });
  };
  d_->settings->undone = [this] { askForReading(0); };
  d_->settings->lost = [this](const ErrorEjecucion& e) {
    Q_EMIT commitFailed(e.numero(), e.descripcion());
  };
}

DBEngine::~DBEngine() {
  // Recordsets may outlive the engine: their groups end with their connection.
  d_->settings->groupOpened = nullptr;
  d_->settings->refused = nullptr;
  d_->settings->undone = nullptr;
  d_->settings->lost = nullptr;
  d_->settings->wait = nullptr;
  try {
    flush();
  } catch (const ErrorEjecucion&) {
    // The connection tries again when its last user goes.
  }
}

Workspace& DBEngine::Workspaces(int item) {
  if (item != 0) throw ErrorEjecucion(err::kElementoNoEncontrado, QString::number(item));
  return *d_->workspace;
}

// The soonest counts: a new action doesn't wait for the next try of an old one.
void DBEngine::askForCommit(int delay) {
  QTimer& timer = d_->commitTimer;
  if (!timer.isActive() || timer.remainingTime() > delay) timer.start(delay);
}

void DBEngine::commitFromLoop() {
  if (d_->settings->inWait) return askForCommit(kRetry);
  try {
    // Whoever is told of the first refusal isn't kept waiting by the others.
    const Brief quick(*this, d_->refused ? 0 : d_->settings->lockTimeout);
    flush();
  } catch (const ErrorEjecucion& e) {
    const bool stillOpen = e.numero() == err::kNoSePuedeGuardar;
    if (stillOpen) askForCommit(kRetry);
    Q_EMIT commitFailed(e.numero(), e.descripcion());
  }
}

void DBEngine::askForReading(int delay) {
  if (std::exchange(d_->undoneAsked, true)) return;
  QTimer::singleShot(delay, this, [this] {
    d_->undoneAsked = false;
    if (d_->settings->inWait) return askForReading(kRetry);
    Q_EMIT undone();
  });
}

void DBEngine::flush() {
  // One file that can't be written doesn't keep the others from it.
  std::exception_ptr first;
  const auto changed = std::exchange(d_->changed, {});
  for (const auto& connection : changed) {
    try {
      connection->commit();
    } catch (const ErrorEjecucion&) {
      if (!first) first = std::current_exception();
    }
    if (connection->inGroup()) d_->changed.push_back(connection);
  }
  const bool wasRefused = std::exchange(d_->refused, !d_->changed.empty());
  if (first) std::rethrow_exception(first);
  if (wasRefused) Q_EMIT saved();
}

bool DBEngine::pending() const {
  return !d_->changed.empty();
}

void DBEngine::discard() {
  const auto changed = std::exchange(d_->changed, {});
  for (const auto& connection : changed) connection->discard();
  d_->refused = false;
}

void DBEngine::breathe() {
  bool committed = false;
  for (const auto& connection : d_->open()) {
    if (!connection->inGroup() || connection->groupAge() < kLongWork) continue;
    connection->commit();
    committed = true;
  }
  if (committed) QThread::msleep(kPause);
}

std::shared_ptr<Connection> DBEngine::connection(const QString& path) {
  // Looking for a file costs more than reading a total from it.
  if (auto known = d_->byText.value(path).lock()) return known;
  const QString file = QFileInfo(rutaSistema(path)).canonicalFilePath();
  if (file.isEmpty()) throw ErrorEjecucion(err::kBaseNoEncontrada, path);
  auto connection = d_->pool.value(file).lock();
  if (!connection) connection = std::make_shared<Connection>(file, path, d_->settings);
  d_->pool.insert(file, connection);
  d_->byText.insert(path, connection);
  return connection;
}

// A file that was removed while something had it open lives on for its readers. Whoever asks for
// the one made in its place must not get the old one.
void DBEngine::forget(const QString& systemPath) {
  const QFileInfo file(systemPath);
  const auto gone =
      d_->pool.take(QFileInfo(file.path()).canonicalFilePath() + u'/' + file.fileName()).lock();
  d_->byText.removeIf([&](const auto& known) { return known.value().lock() == gone; });
}

bool DBEngine::exists(const QString& path) const {
  return QFileInfo(rutaSistema(path)).isFile();
}

void DBEngine::DeleteDatabase(const QString& path) {
  const QString file = rutaSistema(path);
  if (!exists(path)) throw ErrorEjecucion(err::kBaseNoEncontrada, path);
  if (const auto open = d_->pool.value(QFileInfo(file).canonicalFilePath()).lock()) open->commit();
  if (!QFile::remove(file)) throw ErrorEjecucion(err::kPermisoDenegado, path);
  QFile::remove(file + QStringLiteral("-journal"));
  forget(file);
}

void DBEngine::setLockTimeout(int milliseconds) {
  d_->settings->lockTimeout = milliseconds;
}
int DBEngine::lockTimeout() const {
  return d_->settings->lockTimeout;
}

void DBEngine::setWait(Wait* wait) {
  d_->settings->wait = wait;
}

bool DBEngine::isWaiting() const {
  return d_->settings->inWait;
}

DBEngine::Brief::Brief(DBEngine& engine, int milliseconds)
    : engine_(engine), timeout_(engine.lockTimeout()), impatient_(engine.d_->settings->impatient) {
  engine_.setLockTimeout(std::min(timeout_, milliseconds));
}

// What was refused here in haste may be waited for elsewhere.
DBEngine::Brief::~Brief() {
  const bool hasty = engine_.lockTimeout() < timeout_;
  engine_.setLockTimeout(timeout_);
  if (hasty) engine_.d_->settings->impatient = impatient_;
}

void DBEngine::setYear(int year) {
  if (year == d_->settings->year) return;
  d_->settings->year = year;
  // Stored queries may hold such literals.
  for (const auto& connection : d_->open()) connection->definitionsChanged();
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString& path, const QString& locale) {
  const QString systemPath = rutaSistema(path);
  if (QFileInfo::exists(systemPath)) throw ErrorEjecucion(err::kBaseYaExiste, path);
  engine_.forget(systemPath);
  Connection::create(systemPath, path, locale);
  return OpenDatabase(path);
}

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& path) {
  return std::make_unique<Database>(engine_.connection(path));
}
