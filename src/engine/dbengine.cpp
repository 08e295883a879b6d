#include "engine/dbengine.h"

#include <algorithm>
#include <QDate>
#include <QElapsedTimer>
#include <QHash>
#include <QScopedValueRollback>
#include <QThread>
#include <QTimer>
#include <utility>

#include "engine/connection.h"

namespace {

// Milliseconds that a group of long work may hold the file. Where a commit is dear, over a network
// or on a busy disk, it isn't made so often, but nobody is kept waiting for more than the longest.
constexpr qint64 kLongWork = 200;
constexpr qint64 kLongestWork = 1000;
constexpr qint64 kWorkPerCommit = 8;  // times what the last one took
constexpr int kPause = 20;            // time enough for whoever polls
constexpr int kRetry = 500;

}  // namespace

struct DBEngine::Private {
  std::unique_ptr<Driver> driver;
  QHash<QString, std::weak_ptr<Connection>> pool;    // by the driver's identity
  QHash<QString, std::weak_ptr<Connection>> byText;  // by the path as it was asked for
  std::shared_ptr<Connection::Settings> settings = std::make_shared<Connection::Settings>();
  std::shared_ptr<StoreSettings> storeSettings = std::make_shared<StoreSettings>();
  std::unique_ptr<Workspace> workspace;
  // A file with changes to be saved stays open, whoever lets go of it.
  std::vector<std::shared_ptr<Connection>> changed;
  QTimer commitTimer;
  qint64 longWork = kLongWork;  // of the group at hand
  bool refused = false;         // another station keeps it from saving
  bool undoneAsked = false;
  std::function<void()> saver;
  bool saving = false;  // it has been asked
  int longWorks = 0;
  bool partlySaved = false;  // the long work of which the rest is pending
  QElapsedTimer putOff;      // since another station kept long work from saving

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

DBEngine::DBEngine(QObject* parent) : DBEngine(defaultDriver(), parent) {}

DBEngine::DBEngine(std::unique_ptr<Driver> driver, QObject* parent)
    : QObject(parent), d_(std::make_unique<Private>()) {
  d_->driver = std::move(driver);
  d_->workspace = std::make_unique<Workspace>(*this);
  d_->settings->year = QDate::currentDate().year();
  d_->commitTimer.setSingleShot(true);
  connect(&d_->commitTimer, &QTimer::timeout, this, &DBEngine::commitFromLoop);
  d_->settings->groupOpened = [this](const std::shared_ptr<Connection>& connection) {
    if (std::find(d_->changed.begin(), d_->changed.end(), connection) == d_->changed.end())
      d_->changed.push_back(connection);
    askForCommit(0);
  };
  d_->storeSettings->refused = [this] {
    // Whatever was refused, what the action leaves to be saved isn't waited for once more.
    d_->refused = d_->refused || pending();
    waitNoMore();
  };
  d_->storeSettings->undone = [this] { askForReading(0); };
  d_->settings->lost = [this](const ErrorEjecucion& e) {
    Q_EMIT commitFailed(e.numero(), e.descripcion());
  };
}

DBEngine::~DBEngine() {
  // Recordsets may outlive the engine: their groups end with their connection.
  d_->settings->groupOpened = nullptr;
  d_->storeSettings->refused = nullptr;
  d_->storeSettings->undone = nullptr;
  d_->settings->lost = nullptr;
  d_->storeSettings->wait = nullptr;
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

// What the action at hand still asks for is refused at once if it isn't free.
void DBEngine::waitNoMore() {
  d_->storeSettings->impatient = true;
  QTimer::singleShot(0, this, [this] { d_->storeSettings->impatient = false; });
}

void DBEngine::commitFromLoop() {
  const bool inWork = d_->settings->whole || (d_->longWorks > 0 && !d_->saving);
  if (d_->storeSettings->inWait || inWork) return askForCommit(kRetry);
  try {
    // Whoever is told of the first refusal isn't kept waiting by the others.
    const Brief quick(*this, d_->refused ? 0 : d_->storeSettings->lockTimeout);
    flush();
  } catch (const ErrorEjecucion& e) {
    if (e.numero() == err::kNoSePuedeGuardar) {
      askForCommit(kRetry);
      waitNoMore();  // whoever is told looks whether it has been saved by now
    }
    Q_EMIT commitFailed(e.numero(), e.descripcion());
  }
}

void DBEngine::askForReading(int delay) {
  if (std::exchange(d_->undoneAsked, true)) return;
  QTimer::singleShot(delay, this, [this] {
    d_->undoneAsked = false;
    if (d_->storeSettings->inWait) return askForReading(kRetry);
    Q_EMIT undone();
  });
}

void DBEngine::flush() {
  if (d_->settings->whole) return;
  // One file that can't be written doesn't keep the others from it.
  std::exception_ptr first;
  const auto changed = std::exchange(d_->changed, {});
  for (const auto& connection : changed) {
    try {
      connection->commit();
    } catch (const ErrorEjecucion& e) {
      if (first) continue;
      // Whoever gives up the rest knows that it is only the rest.
      const bool rest = d_->partlySaved && e.numero() == err::kNoSePuedeGuardar;
      first = rest ? std::make_exception_ptr(ErrorEjecucion(
                         e.numero(),
                         connection->path() +
                             QStringLiteral(". La primera parte de este trabajo ya está guardada")))
                   : std::current_exception();
    }
  }
  for (const auto& connection : changed)
    if (connection->inGroup()) d_->changed.push_back(connection);
  d_->partlySaved = d_->partlySaved && !d_->changed.empty();
  const bool wasRefused = std::exchange(d_->refused, !d_->changed.empty());
  if (first) std::rethrow_exception(first);
  if (wasRefused) Q_EMIT saved();
}

void DBEngine::setSaver(const std::function<void()>& saver) {
  d_->saver = saver;
}

void DBEngine::save() {
  if (!d_->saver) return flush();
  const QScopedValueRollback<bool> asked(d_->saving, true);
  d_->saver();
}

bool DBEngine::pending() const {
  return !d_->changed.empty();
}

void DBEngine::discard() {
  const auto changed = std::exchange(d_->changed, {});
  for (const auto& connection : changed) connection->discard();
  d_->refused = d_->partlySaved = false;
}

DBEngine::LongWork::LongWork(DBEngine& engine) : engine_(engine) {
  if (engine_.d_->longWorks++ > 0) return;
  engine_.d_->putOff.invalidate();
  engine_.d_->partlySaved = false;
}

DBEngine::LongWork::~LongWork() {
  if (--engine_.d_->longWorks > 0) return;
  engine_.d_->putOff.invalidate();
  if (engine_.pending()) engine_.askForCommit(0);
}

void DBEngine::breathe() {
  if (isWaiting() || d_->settings->whole) return;
  if (d_->putOff.isValid() && d_->putOff.elapsed() < kRetry) return;
  try {
    // It has been waited for once; afterwards it is only asked.
    const Brief quick(*this, d_->putOff.isValid() ? 0 : lockTimeout());
    commitLongWork();
    d_->putOff.invalidate();
  } catch (const ErrorEjecucion& e) {
    if (d_->longWorks == 0 || e.numero() != err::kNoSePuedeGuardar) throw;
    d_->putOff.start();
  }
}

void DBEngine::commitLongWork() {
  bool committed = false;
  for (const auto& connection : d_->open()) {
    if (!connection->inGroup() || connection->groupAge() < d_->longWork) continue;
    QElapsedTimer cost;
    cost.start();
    connection->commit();
    d_->longWork = std::clamp(kWorkPerCommit * cost.elapsed(), kLongWork, kLongestWork);
    committed = true;
  }
  if (!committed) return;
  d_->partlySaved = d_->longWorks > 0;
  QThread::msleep(kPause);
}

std::shared_ptr<Connection> DBEngine::connection(const QString& path) {
  // Looking for a file costs more than reading a total from it.
  if (auto known = d_->byText.value(path).lock()) return known;
  const QString identity = d_->driver->identity(path);
  if (identity.isEmpty()) throw ErrorEjecucion(err::kBaseNoEncontrada, path);
  auto connection = d_->pool.value(identity).lock();
  if (!connection)
    connection =
        std::make_shared<Connection>(d_->driver->open(path, d_->storeSettings), path, d_->settings);
  d_->pool.insert(identity, connection);
  d_->byText.insert(path, connection);
  return connection;
}

// Books that were removed while something had them open live on for their readers. Whoever asks for
// those made in their place must not get the old ones.
void DBEngine::forget(const QString& identity) {
  const auto gone = d_->pool.take(identity).lock();
  d_->byText.removeIf([&](const auto& known) { return known.value().lock() == gone; });
}

bool DBEngine::exists(const QString& path) const {
  return !d_->driver->identity(path).isEmpty();
}

void DBEngine::DeleteDatabase(const QString& path) {
  const QString identity = d_->driver->identity(path);
  if (const auto open = d_->pool.value(identity).lock()) open->commit();
  d_->driver->erase(path);
  forget(identity);
}

QStringList DBEngine::filesOf(const QString& path) const {
  return d_->driver->files(path);
}

namespace {

// Whoever asked for work on whole books is told how far it is, as long as this stands.
class Telling {
 public:
  Telling(StoreSettings& settings, const Advance& advance) : settings_(settings) {
    settings_.advance = advance;
  }
  ~Telling() { settings_.advance = nullptr; }
  Telling(const Telling&) = delete;
  Telling& operator=(const Telling&) = delete;

 private:
  StoreSettings& settings_;
};

// It tells the waits of its books, which stay open for it.
class HeldSnapshot : public Snapshot {
 public:
  HeldSnapshot(std::shared_ptr<Connection> books, std::unique_ptr<Snapshot> copy)
      : books_(std::move(books)), copy_(std::move(copy)) {}
  QString file() const override { return copy_->file(); }
  void verify() override { copy_->verify(); }

 private:
  std::shared_ptr<Connection> books_;
  std::unique_ptr<Snapshot> copy_;
};

}  // namespace

void DBEngine::RepairDatabase(const QString& path, const Advance& advance) {
  const Telling telling(*d_->storeSettings, advance);
  const auto shared = connection(path);
  guarded(*shared, [&] {
    shared->commit();
    shared->begin(Doing::Locking);
    d_->driver->check(shared->store());
    shared->commit();
  });
}

void DBEngine::CompactDatabase(const QString& source, const QString& destination,
                               const Advance& advance) {
  const Telling telling(*d_->storeSettings, advance);
  const QString place = d_->driver->identity(destination);
  const bool itself = !place.isEmpty() && place == d_->driver->identity(source);
  if (!place.isEmpty() && !itself) throw ErrorEjecucion(err::kBaseYaExiste, destination);
  const auto shared = connection(source);
  guarded(*shared, [&] {
    shared->commit();
    d_->driver->compact(shared->store(), destination);
    if (!itself) forget(d_->driver->identity(destination));
  });
}

void DBEngine::CopyDatabase(const QString& source, const QString& destination,
                            const Advance& advance) {
  const Telling telling(*d_->storeSettings, advance);
  copy(source, destination, std::nullopt);
}

void DBEngine::ReplaceDatabase(const QString& source, const QString& destination, qint64 asRead,
                               const Advance& advance) {
  const Telling telling(*d_->storeSettings, advance);
  copy(source, destination, asRead);
}

qint64 DBEngine::commits(const QString& path) {
  const auto shared = connection(path);
  return guarded(*shared, [&] {
    shared->commit();
    return shared->store().commits();
  });
}

void DBEngine::copy(const QString& source, const QString& destination,
                    std::optional<qint64> asRead) {
  const auto shared = connection(source);
  guarded(*shared, [&] {
    shared->commit();
    std::shared_ptr<Connection> live;
    try {
      if (exists(destination)) live = connection(destination);
    } catch (const ErrorEjecucion& e) {
      if (e.numero() != err::kFormatoNoReconocido) throw;
    }
    if (live == shared) return;
    if (live) {
      live->commit();
      d_->driver->overwrite(shared->store(), live->store(), asRead);
    } else {
      d_->driver->copy(shared->store(), destination);
      forget(d_->driver->identity(destination));
    }
  });
}

std::unique_ptr<Snapshot> DBEngine::snapshot(const QString& path, const Advance& advance) {
  const Telling telling(*d_->storeSettings, advance);
  const auto shared = connection(path);
  return guarded(*shared, [&] {
    shared->commit();
    return std::make_unique<HeldSnapshot>(shared, d_->driver->snapshot(shared->store()));
  });
}

void DBEngine::setLockTimeout(int milliseconds) {
  d_->storeSettings->lockTimeout = milliseconds;
}
int DBEngine::lockTimeout() const {
  return d_->storeSettings->lockTimeout;
}

void DBEngine::setWait(Wait* wait) {
  d_->storeSettings->wait = wait;
}

bool DBEngine::isWaiting() const {
  return d_->storeSettings->inWait;
}

DBEngine::Brief::Brief(DBEngine& engine, int milliseconds)
    : engine_(engine),
      timeout_(engine.lockTimeout()),
      impatient_(engine.d_->storeSettings->impatient) {
  engine_.setLockTimeout(std::min(timeout_, milliseconds));
}

// What was refused here in haste may be waited for elsewhere.
DBEngine::Brief::~Brief() {
  const bool hasty = engine_.lockTimeout() < timeout_;
  engine_.setLockTimeout(timeout_);
  if (hasty) engine_.d_->storeSettings->impatient = impatient_;
}

DBEngine::Whole::Whole(DBEngine& engine) : engine_(engine) {
  engine_.save();
  engine_.d_->settings->whole = true;
}

DBEngine::Whole::~Whole() {
  engine_.d_->settings->whole = false;
  if (done_) return;
  try {
    engine_.discard();
  } catch (const ErrorEjecucion& e) {
    Q_EMIT engine_.commitFailed(e.numero(), e.descripcion());
  }
}

void DBEngine::Whole::commit() {
  engine_.d_->settings->whole = false;
  engine_.save();
  done_ = true;
}

void DBEngine::setYear(int year) {
  d_->settings->year = year;
}

std::unique_ptr<Database> Workspace::CreateDatabase(const QString& path, const QString& locale) {
  engine_.d_->driver->create(path, locale);
  engine_.forget(engine_.d_->driver->identity(path));
  return OpenDatabase(path);
}

std::unique_ptr<Database> Workspace::OpenDatabase(const QString& path) {
  return std::make_unique<Database>(engine_.connection(path));
}
