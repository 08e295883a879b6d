#include "engine/sqlite/store.h"

#include <sqlite3.h>
#include <algorithm>
#include <QFileInfo>
#include <QThread>
#include <utility>

#include "engine/sqlite/functions.h"
#include "engine/sqlite/readers.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/schema.h"

namespace {

constexpr int kPollEvery = 2;           // milliseconds
constexpr int kLookAtWorkEvery = 4000;  // steps of the library's machine
constexpr qint64 kLongWork = 500;       // milliseconds
constexpr qint64 kTellEvery = 25;       // milliseconds
constexpr int kParts = 1000;            // of a phase of long work
constexpr qint64 kLookEvery = 2'000'000;
constexpr std::size_t kPreparedKept = 256;
constexpr std::pair<const char*, int> kTriggerWords[] = {{own::kTwinRow, err::kClaveDuplicada},
                                                         {own::kTooLarge, err::kDesbordamiento}};

int brokenRule(int code) {
  switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return err::kClaveDuplicada;
    case SQLITE_CONSTRAINT_NOTNULL:
      return err::kClaveNula;
    default:
      return err::kReglaIncumplida;
  }
}

// Our own triggers refuse with words that have a number.
int refusedByTrigger(const QString& words) {
  for (const auto& [text, number] : kTriggerWords)
    if (words == QLatin1String(text)) return number;
  return err::kReglaIncumplida;
}

}  // namespace

int classicNumber(int code, Doing doing) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: {
      const bool saving = doing == Doing::Writing || doing == Doing::Committing;
      return saving ? err::kNoSePuedeGuardar : err::kRegistroBloqueado;
    }
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return err::kSoloLectura;
    case SQLITE_CANTOPEN:  // the journal beside the file, when the folder can't be written
      return doing == Doing::Reading ? err::kErrorDeDisco : err::kSoloLectura;
    case SQLITE_INTERRUPT:
      return err::kOperacionCancelada;
    case SQLITE_FULL:
      return err::kSinEspacio;
    case SQLITE_IOERR:
      return err::kErrorDeDisco;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return err::kFormatoNoReconocido;
    case SQLITE_CONSTRAINT:
      return brokenRule(code);
    case SQLITE_TOOBIG:
    case SQLITE_NOMEM:
      return err::kDesbordamiento;
    default:
      return err::kErrorDeSintaxis;
  }
}

// --- Waiting

int FileStore::onBusy(void* data, int tries) {
  auto& self = *static_cast<FileStore*>(data);
  StoreSettings& settings = *self.settings_;
  if (tries == 0) self.waitSince_.start();
  const qint64 elapsed = self.waitSince_.elapsed();
  const bool patient = !settings.impatient && elapsed < settings.lockTimeout;
  if (patient && (!settings.wait || self.goOn([&](Wait& wait) { return wait.waiting(elapsed); }))) {
    QThread::msleep(kPollEvery);
    return 1;
  }
  // One refusal ends the whole action or painting: what it asks for next isn't waited for again.
  if (!settings.impatient && settings.refused) settings.refused();
  settings.impatient = true;
  return 0;
}

int FileStore::onProgress(void* data) {
  auto& self = *static_cast<FileStore*>(data);
  if (self.longWork_) return self.longWork_->goesOn() ? 0 : 1;
  if (!self.settings_->wait || !self.stoppable_ || self.settings_->inWait) return 0;
  const qint64 elapsed = self.workSince_.elapsed();
  if (elapsed < kLongWork) return 0;
  return self.goOn([&](Wait& wait) { return wait.working(Wait::Work::Reading, elapsed); }) ? 0 : 1;
}

bool FileStore::goOn(const std::function<bool(Wait&)>& question) {
  waited_ = true;
  settings_->inWait = true;
  const bool answer = question(*settings_->wait);
  settings_->inWait = false;
  return answer;
}

void FileStore::endWait() {
  waited_ = false;
  if (settings_->wait) settings_->wait->over();
}

FileStore::LongWork::LongWork(FileStore& store, Wait::Work work, int phases)
    : store_(store), work_(work), phases_(phases) {
  store_.longWork_ = this;
  since_.start();
}

FileStore::LongWork::~LongWork() {
  store_.longWork_ = nullptr;
  store_.returned();
}

void FileStore::LongWork::nextPhase() {
  ++phase_;
  part_ = 0;
  size_ = nullptr;
}

bool FileStore::LongWork::goesOn(int done, int total) {
  part_ = total > 0 ? static_cast<int>(qint64{kParts} * done / total) : 0;
  return goesOn();
}

bool FileStore::LongWork::goesOn() {
  const qint64 elapsed = since_.elapsed();
  StoreSettings& settings = *store_.settings_;
  if (settings.inWait || elapsed - told_ < kTellEvery) return true;
  told_ = elapsed;
  bool answer = true;
  if (settings.advance) {
    tell();
  } else if (settings.wait && elapsed >= kLongWork) {
    answer = store_.goOn([&](Wait& wait) { return wait.working(work_, elapsed); });
  }
  told_ = since_.elapsed();  // what was painted took its time too
  return answer || work_ == Wait::Work::Repairing || work_ == Wait::Work::Indexing;
}

void FileStore::LongWork::tell() {
  if (size_) part_ = static_cast<int>(std::min<qint64>(kParts, kParts * size_() / bytes_));
  StoreSettings& settings = *store_.settings_;
  settings.inWait = true;
  settings.advance(phase_ * kParts + part_, phases_ * kParts);
  settings.inWait = false;
}

void FileStore::LongWork::follow(std::function<qint64()> size, qint64 bytes) {
  size_ = std::move(size);
  bytes_ = std::max<qint64>(1, bytes);
}

void FileStore::LongWork::lookAfter(sqlite3* handle) {
  const auto ask = [](void* work) { return static_cast<LongWork*>(work)->goesOn() ? 0 : 1; };
  sqlite3_progress_handler(handle, kLookAtWorkEvery, ask, this);
}

// --- The file

FileStore::FileStore(const QString& systemPath, const QString& path,
                     std::shared_ptr<StoreSettings> settings)
    : path_(path), systemPath_(systemPath), settings_(std::move(settings)) {
  const QFileInfo file(systemPath);
  if (!file.isFile()) throw ErrorEjecucion(err::kBaseNoEncontrada, path);
  if (file.size() == 0) throw ErrorEjecucion(err::kFormatoNoReconocido, path);
  open();
  try {
    freshen();
  } catch (...) {
    close();
    throw;
  }
}

// Either it is open and set up afterwards, or all is as before.
void FileStore::open() {
  sqlite3* const before = db_;
  const int code = sqlite3_open_v2(systemPath_.toUtf8().constData(), &db_,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  try {
    if (code != SQLITE_OK) throw ErrorEjecucion(err::kPermisoDenegado, path_);
    configure();
  } catch (const ErrorEjecucion& e) {
    close();
    db_ = before;
    if (e.numero() != err::kFormatoNoReconocido) throw;
    throw ErrorEjecucion(err::kFormatoNoReconocido, path_);
  }
  sqlite3_close_v2(before);
}

bool FileStore::hasMoved() const {
  int moved = 0;
  sqlite3_file_control(db_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

// Over a network a look is dear: it may take a hundredth of the time at most.
void FileStore::lookAtFile() {
  if (inGroup_ || readers_ > 0 || settings_->inWait) return;
  if (fileLooked_.isValid() && fileLooked_.nsecsElapsed() < lookAtFileEvery_) return;
  fileLooked_.start();
  const bool moved = hasMoved();
  lookAtFileEvery_ = std::max(kLookEvery, 100 * fileLooked_.nsecsElapsed());
  if (!moved) return;
  if (!QFileInfo::exists(systemPath_)) {
    fileLooked_.invalidate();
    throw ErrorEjecucion(err::kBaseNoEncontrada, path_);
  }
  forgetStatements();
  open();
  dataVersion_ = definitionsVersion_ = -1;
  ++edition_;
  forgetGroup();
}

void FileStore::create(const QString& systemPath, const QString& path, const QString& locale) {
  sqlite3* db = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
  int code = sqlite3_open_v2(systemPath.toUtf8().constData(), &db, flags, nullptr);
  const auto run = [&](const QString& sql) {
    if (code == SQLITE_OK)
      code = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
  };
  run(
      QStringLiteral("PRAGMA page_size=4096; PRAGMA encoding='UTF-8'; "
                     "PRAGMA journal_mode=DELETE; PRAGMA synchronous=EXTRA; BEGIN IMMEDIATE"));
  const QStringList definitions = own::definitions();
  for (const QString& sql : definitions) run(sql);
  QString text = locale;
  run(QStringLiteral("INSERT INTO %1 VALUES ('', 'Locale', '")
          .arg(QLatin1String(own::kProperties)) +
      text.replace(u'\'', QStringLiteral("''")) + QStringLiteral("'); COMMIT"));
  sqlite3_close_v2(db);
  if (code == SQLITE_OK) return;
  const int number = classicNumber(code, Doing::Writing);
  throw ErrorEjecucion(number == err::kSinEspacio ? number : err::kErrorDeRuta, path);
}

FileStore::~FileStore() {
  try {
    // An empty journal isn't left beside the file. It isn't worth waiting for.
    sqlite3_busy_handler(db_, nullptr, nullptr);
    if (!sqlite3_db_readonly(db_, "main")) execute(QStringLiteral("PRAGMA journal_mode=DELETE"));
  } catch (const ErrorEjecucion&) {
    // Another station is using it.
  }
  close();
}

qint64 FileStore::lastRowNumber() const {
  return sqlite3_last_insert_rowid(db_);
}

qint64 FileStore::changedRows() const {
  return sqlite3_changes64(db_);
}

void FileStore::forgetStatements() {
  recent_ = {};
  std::erase_if(prepared_, [](const auto& entry) {
    if (!entry.second.busy) sqlite3_finalize(entry.second.handle);
    return !entry.second.busy;
  });
}

void FileStore::close() {
  forgetStatements();
  sqlite3_close_v2(db_);
}

void FileStore::configure() {
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_handler(db_, onBusy, this);
  sqlite3_progress_handler(db_, kLookAtWorkEvery, onProgress, this);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  registerFunctions(db_);
  static const char* const kPragmas[] = {
      "PRAGMA journal_mode=TRUNCATE",  // data folders are shared over networks: never a WAL
      "PRAGMA synchronous=EXTRA",      // a posted line outlives a power cut
      "PRAGMA mmap_size=0",            // a folder that goes away is an error, not a signal
      "PRAGMA temp_store=MEMORY",      // nothing of a company is left on other disks
      "PRAGMA secure_delete=FAST",     // pages given up aren't written once more to blank them
      "PRAGMA cache_size=-65536",      // in KiB: the keys of a million lines stay at hand
  };
  for (const char* pragma : kPragmas) execute(QString::fromLatin1(pragma), Doing::Reading);
}

// What reads the sums finds them brought up; what writes finds the file's triggers at work.
Statement FileStore::prepare(const QString& sql, Doing doing) {
  Statement statement = prepareOwn(sql, doing);
  if (statement.writes()) nextRow_ = {};
  if (!sums_.gathering()) return statement;
  if (statement.writes()) {
    sums_.stop();
  } else if (sql.contains(QLatin1String(own::kSums))) {
    sums_.bringUp();
  }
  return statement;
}

Statement FileStore::prepareOwn(const QString& sql, Doing doing) {
  if (settings_->inWait) throw ErrorEjecucion(err::kRegistroBloqueado, path_);
  // The library undoes a whole group when it is stopped in the middle of a change.
  stoppable_ = doing == Doing::Reading || !inGroup_;
  workSince_.start();
  Prepared* const found = known(sql);
  if (found && !found->busy) {
    found->busy = true;
    found->lastUse = ++uses_;
    return Statement(*this, found->handle, doing, found);
  }
  sqlite3_stmt* handle = nullptr;
  const QByteArray utf8 = sql.toUtf8();
  const int code = sqlite3_prepare_v3(db_, utf8.constData(), static_cast<int>(utf8.size()),
                                      SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
  returned();
  if (code != SQLITE_OK) fail(code, doing, QString::fromUtf8(sqlite3_errmsg(db_)));
  if (found) return Statement(*this, handle, doing, nullptr);
  if (prepared_.size() >= kPreparedKept) dropOldestPrepared();
  Prepared& entry = prepared_[sql];
  entry = {handle, true, ++uses_};
  return Statement(*this, handle, doing, &entry);
}

Prepared* FileStore::known(const QString& sql) {
  for (const Recent& recent : recent_)
    if (recent.prepared && recent.sql.constData() == sql.constData() &&
        recent.sql.size() == sql.size())
      return recent.prepared;
  const auto found = prepared_.find(sql);
  if (found == prepared_.end()) return nullptr;
  recent_[nextRecent_++ % recent_.size()] = {sql, &found->second};
  return &found->second;
}

void FileStore::dropOldestPrepared() {
  auto oldest = prepared_.end();
  for (auto it = prepared_.begin(); it != prepared_.end(); ++it)
    if (!it->second.busy &&
        (oldest == prepared_.end() || it->second.lastUse < oldest->second.lastUse))
      oldest = it;
  if (oldest == prepared_.end()) return;
  recent_ = {};
  sqlite3_finalize(oldest->second.handle);
  prepared_.erase(oldest);
}

void FileStore::fail(int code, Doing doing, const QString& words) {
  const int number =
      code == SQLITE_CONSTRAINT_TRIGGER ? refusedByTrigger(words) : classicNumber(code, doing);
  const bool undone = inGroup_ && sqlite3_get_autocommit(db_) != 0;
  if (!undone) {
    const bool saysWhat = number == err::kErrorDeSintaxis || number == err::kErrorDeDisco ||
                          number == err::kReglaIncumplida;
    if (saysWhat) throw ErrorEjecucion(number, words);
    const bool ofTheFile = number != err::kClaveDuplicada && number != err::kClaveNula &&
                           number != err::kDesbordamiento;
    throw ErrorEjecucion(number, ofTheFile ? path_ : QString());
  }
  const int lost = groupChanges_;
  forgetGroup();
  throw ErrorEjecucion(
      number, QStringLiteral("%1. Se ha deshecho lo último anotado, que no llegó a guardarse "
                             "(cambios deshechos: %2)")
                  .arg(path_)
                  .arg(lost));
}

void FileStore::begin(Doing doing) {
  if (inGroup_) return;
  fileLooked_.invalidate();
  const quint64 file = edition_;
  lookAtFile();
  if (file != edition_) throw ErrorEjecucion(err::kFicheroSustituido, path_);
  // The library itself would only complain at the first row.
  if (sqlite3_db_readonly(db_, "main")) throw ErrorEjecucion(err::kSoloLectura, path_);
  execute(QStringLiteral("BEGIN IMMEDIATE"), doing);
  gotLock();
  inGroup_ = true;
  groupChanges_ = 0;
  nextRow_ = {};
  Statement version = prepare(QStringLiteral("PRAGMA data_version"), doing);
  lookAtDataVersion(version);
  version.reset();
}

void FileStore::commit() {
  if (!inGroup_) return;
  if (hasMoved()) {
    // It would be written where nobody sees it.
    discard();
    const bool gone = !QFileInfo::exists(systemPath_);
    throw ErrorEjecucion(gone ? err::kBaseNoEncontrada : err::kFicheroSustituido, path_);
  }
  sums_.stop();
  execute(QStringLiteral("COMMIT"), Doing::Committing);
  gotLock();
  inGroup_ = false;
}

void FileStore::discard() {
  if (!inGroup_) return;
  execute(QStringLiteral("ROLLBACK"), Doing::Committing);
  forgetGroup();
}

void FileStore::forgetGroup() {
  inGroup_ = false;
  sums_.forget();
  definitionsChanged();
  if (settings_->undone) settings_->undone();
}

void FileStore::touched(const QString& table) {
  ++groupChanges_;
  ++allChanges_;
  ++tableChanges_[table];
}

Stamp FileStore::stamp(const QStringList& tables) {
  freshen();
  // Moved by other stations; by definitions and what the library undid; by this process.
  qint64 changes = tables.isEmpty() ? allChanges_ : 0;
  for (const QString& table : tables) changes += tableChanges_.value(table);
  return {{dataVersion_, generation_, changes}};
}

qint64 FileStore::commits() {
  const Reading look(*this);
  return commitsWhileLocked();
}

// The file's own counter, which its library moves with each change. It is read from the file: what
// the library remembers of it may be of an earlier lock.
qint64 FileStore::commitsWhileLocked() const {
  constexpr int kPlace = 24;
  sqlite3_file* file = nullptr;
  sqlite3_file_control(db_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  unsigned char counter[4] = {};
  if (!file || file->pMethods->xRead(file, counter, sizeof counter, kPlace) != SQLITE_OK) return -1;
  return (qint64{counter[0]} << 24) | (counter[1] << 16) | (counter[2] << 8) | counter[3];
}

void FileStore::freshen() {
  if (inGroup_ || readers_ > 0) return;
  if (looked_.isValid() && looked_.nsecsElapsed() < lookEvery_) return;
  QElapsedTimer cost;
  cost.start();
  lookAtFile();
  { const Reading reading(*this); }
  // Over a network a look is dear: it may take a tenth of the time at most.
  lookEvery_ = std::max(kLookEvery, 10 * cost.nsecsElapsed());
  mendSums();
}

FileStore::Reading::Reading(FileStore& store) : store_(store) {
  store_.lookAtFile();
  if (store_.readers_++ > 0 || store_.inGroup_) return;
  try {
    lock_.emplace(store_.prepare(QStringLiteral("PRAGMA data_version")));
    store_.lookAtDataVersion(*lock_);
  } catch (...) {
    --store_.readers_;
    throw;
  }
}

FileStore::Reading::~Reading() {
  --store_.readers_;
}

void FileStore::lookAtDataVersion(Statement& statement) {
  statement.step();
  gotLock();
  looked_.start();
  const qint64 version = statement.integer(0);
  if (version == dataVersion_) return;
  dataVersion_ = version;
  // Stored queries may change without the library's own definitions changing, so each change of
  // ours moves the user version too.
  Statement definitions = prepare(QStringLiteral(
      "SELECT schema_version * 4294967296 + user_version FROM pragma_schema_version, "
      "pragma_user_version"));
  definitions.step();
  const qint64 now = definitions.integer(0);
  if (now == definitionsVersion_) return;
  definitionsVersion_ = now;
  sumsLookedAt_ = false;
  schema_.reset();
  ++generation_;
}

std::shared_ptr<const Schema> FileStore::schema() {
  if (!schema_) schema_ = std::make_shared<const Schema>(*this);
  return schema_;
}

std::shared_ptr<const Definitions> FileStore::definitions() {
  freshen();
  return schema();
}

void FileStore::definitionsChanged() {
  schema_.reset();
  ++generation_;
}

void FileStore::noteDefinitions() {
  qint64 version = 0;
  {
    Statement current = prepare(QStringLiteral("PRAGMA user_version"));
    current.step();
    version = current.integer(0);
  }
  execute(QStringLiteral("PRAGMA user_version=%1").arg((version + 1) % 0x40000000));
  definitionsChanged();
}

// Sums whose triggers went with a table that another tool made anew would stand still.
void FileStore::mendSums() {
  if (inGroup_ || readers_ > 0 || std::exchange(sumsLookedAt_, true)) return;
  const auto before = schema();
  if (before->brokenSums().empty() || sqlite3_db_readonly(db_, "main")) return;
  try {
    begin(Doing::Locking);
    for (const Catalog::RunningSums& sums : before->brokenSums())
      for (const QString& sql : sumsRebuild(sums, *before->definition(sums.baseTable)))
        execute(sql);
    noteDefinitions();
    commit();
  } catch (const ErrorEjecucion&) {
    // Until they can be made anew the rows themselves are added up.
    if (inGroup_) discard();
  }
}

std::shared_ptr<Reader> FileStore::compile(const lang::Query& query) {
  return std::make_shared<FileReader>(*this, query);
}
