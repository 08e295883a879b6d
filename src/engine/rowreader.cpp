#include "engine/rowreader.h"

#include <QHash>

#include "engine/dbengine.h"
#include "engine/rowset.h"

namespace {

constexpr std::size_t kWindow = 512;

}  // namespace

struct RowReader::Private {
  std::shared_ptr<Connection> connection;
  Compiled compiled;
  QHash<QString, int> ordinals;
  // A source with keys is read in windows of rows, any other through its cursor.
  KeySet keys;
  quint64 edition = 0;   // of the books that they are of
  std::size_t read = 0;  // keys taken so far
  std::vector<Row> window;
  std::size_t at = 0;  // the row after the current one
  std::unique_ptr<Cursor> cursor;
  bool standing = false;

  const Plan& plan() const { return *compiled.plan; }
  Variant value(int ordinal) const {
    if (!standing) throw ErrorEjecucion(err::kSinRegistroActivo);
    if (ordinal < 0 || ordinal >= static_cast<int>(plan().columns.size()))
      throw ErrorEjecucion(err::kElementoNoEncontrado, QString::number(ordinal));
    return cursor ? cursor->value(ordinal) : window[at - 1][static_cast<std::size_t>(ordinal)];
  }
  bool next();
};

bool RowReader::Private::next() {
  if (cursor) return cursor->next();
  while (at == window.size()) {
    window.clear();
    at = 0;
    if (read == keys->size()) return false;
    const std::size_t count = std::min(kWindow, keys->size() - read);
    const auto hold = connection->store().hold();
    if (edition != connection->store().edition())
      throw ErrorEjecucion(err::kFicheroSustituido, connection->path());
    plan().reader->rows(std::span(*keys).subspan(read, count),
                        [&](Key, Row&& row) { window.push_back(std::move(row)); });
    read += count;
  }
  ++at;
  return true;
}

RowReader::RowReader(Database& database, const QString& source) : d_(std::make_unique<Private>()) {
  d_->connection = database.connection();
  guarded(*d_->connection, [&] {
    const auto hold = d_->connection->store().hold();
    d_->compiled = d_->connection->sources().compiled(source);
    if (d_->plan().updatable) {
      d_->keys = d_->connection->sources().keys(d_->compiled);
      d_->edition = d_->connection->store().edition();
    } else {
      d_->cursor = d_->plan().reader->run(d_->compiled.literals);
    }
  });
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
  return guarded(*d_->connection, [&] { return d_->standing = d_->next(); });
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
  const Variant value = d_->value(ordinal);
  return value.isNull() ? 0 : value.number();
}
