#include "engine/rowreader.h"

#include <QHash>

#include "engine/dbengine.h"
#include "engine/rowset.h"
#include "engine/sqlite/connection.h"

namespace {

constexpr int kWindow = 512;

// A source without keys can't be taken up again where it was left without running it from the
// start, so a long one is laid down in a temporary table, which holds no lock on the file.
class Laid {
 public:
  Laid(Connection& connection, const Compiled& compiled) : connection_(connection) {
    static quint64 number = 0;
    name_ = QStringLiteral("temp.lectura_%1").arg(++number);
    QStringList columns;
    for (std::size_t i = 0; i < compiled.plan->columns.size(); ++i)
      columns += QStringLiteral("c%1").arg(i);
    connection_.execute(QStringLiteral("CREATE TABLE ") + name_ + QStringLiteral(" (") +
                        columns.join(QStringLiteral(", ")) + u')');
    connection_
        .prepare(QStringLiteral("INSERT INTO ") + name_ + u' ' + compiled.plan->wholeSql,
                 Doing::Writing)
        .bind(compiled.params)
        .execute();
    windowSql_ = QStringLiteral("SELECT ") + columns.join(QStringLiteral(", ")) +
                 QStringLiteral(" FROM ") + name_ +
                 QStringLiteral(" WHERE rowid > ?1 ORDER BY rowid LIMIT ?2");
  }
  ~Laid() {
    try {
      connection_.execute(QStringLiteral("DROP TABLE ") + name_);
    } catch (const ErrorEjecucion&) {
      // It goes with the connection.
    }
  }
  Laid(const Laid&) = delete;
  Laid& operator=(const Laid&) = delete;

  QString windowSql() const { return windowSql_; }

 private:
  Connection& connection_;
  QString name_;
  QString windowSql_;
};

}  // namespace

struct RowReader::Private {
  std::shared_ptr<Connection> connection;
  Compiled compiled;
  QHash<QString, int> ordinals;
  KeySet keys;
  std::unique_ptr<Laid> laid;
  bool ended = false;
  qint64 read = 0;  // rows, or keys, taken so far
  std::vector<Row> window;
  std::size_t at = 0;  // the row after the current one

  const Plan& plan() const { return *compiled.plan; }
  const Variant& value(int ordinal) const {
    if (at == 0) throw ErrorEjecucion(err::kSinRegistroActivo);
    if (ordinal < 0 || ordinal >= static_cast<int>(plan().columns.size()))
      throw ErrorEjecucion(err::kElementoNoEncontrado, QString::number(ordinal));
    return window[at - 1][static_cast<std::size_t>(ordinal)];
  }

  void readByKey();
  void readFirstWhole();
  void readLaid();
};

void RowReader::Private::readByKey() {
  const Connection::Reading reading(*connection);
  Statement statement = connection->prepare(plan().rowSql);
  const auto end = std::min<qint64>(read + kWindow, static_cast<qint64>(keys->size()));
  for (; read < end; ++read) {
    statement.bind(1, (*keys)[static_cast<std::size_t>(read)]);
    if (statement.step()) window.push_back(rowOf(statement, plan().columns));
    statement.reset();
  }
  ended = read == static_cast<qint64>(keys->size());
}

void RowReader::Private::readFirstWhole() {
  {
    const Connection::Reading reading(*connection);
    Statement statement = connection->prepare(plan().wholeSql);
    statement.bind(compiled.params);
    while (static_cast<int>(window.size()) < kWindow && !ended) {
      ended = !statement.step();
      if (!ended) window.push_back(rowOf(statement, plan().columns));
    }
  }
  if (ended) return;
  window.clear();
  laid = std::make_unique<Laid>(*connection, compiled);
}

void RowReader::Private::readLaid() {
  Statement statement = connection->prepare(laid->windowSql());
  statement.bind({read, kWindow});
  while (statement.step()) window.push_back(rowOf(statement, plan().columns));
  read += static_cast<qint64>(window.size());
  ended = static_cast<int>(window.size()) < kWindow;
}

RowReader::RowReader(Database& database, const QString& source) : d_(std::make_unique<Private>()) {
  d_->connection = database.connection();
  guarded(*d_->connection, [&] {
    const Connection::Reading reading(*d_->connection);
    d_->compiled = d_->connection->compiled(source);
    if (d_->plan().updatable) d_->keys = d_->connection->keys(d_->compiled);
  });
  if (!d_->keys) guarded(*d_->connection, [&] { d_->readFirstWhole(); });
  const auto& columns = d_->plan().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    d_->ordinals.insert(columns[i].name.toCaseFolded(), static_cast<int>(i));
}

RowReader::~RowReader() = default;

int RowReader::columnCount() const {
  return static_cast<int>(d_->plan().columns.size());
}

QString RowReader::columnName(int ordinal) const {
  return d_->plan().columns.at(static_cast<std::size_t>(ordinal)).name;
}

FieldType RowReader::columnType(int ordinal) const {
  return d_->plan().columns.at(static_cast<std::size_t>(ordinal)).type;
}

int RowReader::ordinal(const QString& name) const {
  return d_->ordinals.value(name.toCaseFolded(), -1);
}

bool RowReader::next() {
  return guarded(*d_->connection, [&] {
    while (d_->at == d_->window.size()) {
      if (d_->ended) {
        d_->window.clear();
        d_->at = 0;
        return false;
      }
      d_->window.clear();
      d_->at = 0;
      d_->laid ? d_->readLaid() : d_->readByKey();
    }
    ++d_->at;
    return true;
  });
}

Variant RowReader::value(int ordinal) const {
  return d_->value(ordinal);
}
bool RowReader::isNull(int ordinal) const {
  return d_->value(ordinal).isNull();
}
QString RowReader::text(int ordinal) const {
  return d_->value(ordinal).display();
}

double RowReader::number(int ordinal) const {
  const Variant& value = d_->value(ordinal);
  return value.isNull() ? 0 : value.number();
}
