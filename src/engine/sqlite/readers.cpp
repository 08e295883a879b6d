#include "engine/sqlite/readers.h"

#include <cstring>
#include <deque>

#include "engine/lang/lookups.h"
#include "engine/lang/resolve.h"
#include "engine/sqlite/emitter.h"
#include "engine/sqlite/store.h"

using namespace lang;

Texts textsOf(const Query& query) {
  Texts texts;
  Parameters parameters(query.literals);
  const auto emitter = [&] { return Emitter(Emitter::Dialect::Plan, parameters); };
  for (const Output& output : query.outputs) texts.types.push_back(fieldType(output.expr->type));
  if (hasKeys(query)) {
    texts.keysSql = emitter().keys(query);
    if (!needless(query).empty()) texts.likelySql = emitter().likelyKeys(query);
    Parameters afterTheKey(1);
    texts.rowSql = Emitter(Emitter::Dialect::Plan, afterTheKey).row(query);
    texts.rowOwn = afterTheKey.ownValues();
  }
  texts.wholeSql = emitter().whole(query);
  texts.own = parameters.ownValues();
  return texts;
}

namespace {

// The rows of a query, read from the file at once and kept as they were there, so that the file is
// free while somebody goes through them. What was gone through is let go.
class PackedRows : public Cursor {
 public:
  explicit PackedRows(std::vector<FieldType> types) : types_(std::move(types)) {}

  void add(const Statement& row) {
    if (blocks_.empty() || blocks_.back().size() > kBlock) {
      blocks_.emplace_back();
      blocks_.back().reserve(kBlock + kLongRow);
    }
    for (std::size_t i = 0; i < types_.size(); ++i)
      add(row.raw(static_cast<int>(i)), blocks_.back());
  }

  bool next() override {
    current_.clear();
    if (!blocks_.empty() && at_ == blocks_.front().size()) {
      blocks_.pop_front();
      at_ = 0;
    }
    if (blocks_.empty()) return false;
    const std::string& block = blocks_.front();
    for (std::size_t i = 0; i < types_.size(); ++i) current_.push_back(taken(block));
    return true;
  }

  Variant value(int column) const override {
    const auto at = static_cast<std::size_t>(column);
    return valueOf(current_[at], types_[at]);
  }

 private:
  static constexpr std::size_t kBlock = 256 * 1024;
  static constexpr std::size_t kLongRow = 4 * 1024;  // few are longer
  static constexpr std::size_t kNumber = sizeof(qint64);
  static_assert(kNumber == sizeof(double));

  // A byte for the kind, and what the kind needs: a number, or a length and as many bytes.
  static void add(const RawValue& value, std::string& block) {
    char packed[1 + kNumber] = {static_cast<char>(value.kind)};
    if (value.kind == RawValue::Kind::Null) {
      block += packed[0];
      return;
    }
    const bool real = value.kind == RawValue::Kind::Real;
    std::memcpy(packed + 1, real ? static_cast<const void*>(&value.real) : &value.whole, kNumber);
    block.append(packed, sizeof packed);
    if (value.kind == RawValue::Kind::Text)
      block.append(value.text, static_cast<std::size_t>(value.whole));
  }

  RawValue taken(const std::string& block) {
    RawValue value{static_cast<RawValue::Kind>(block[at_++])};
    if (value.kind == RawValue::Kind::Null) return value;
    void* number = &value.whole;
    if (value.kind == RawValue::Kind::Real) number = &value.real;
    std::memcpy(number, block.data() + at_, kNumber);
    at_ += kNumber;
    if (value.kind == RawValue::Kind::Text) {
      value.text = block.data() + at_;
      at_ += static_cast<std::size_t>(value.whole);
    }
    return value;
  }

  std::vector<FieldType> types_;
  std::deque<std::string> blocks_;
  std::size_t at_ = 0;  // in the first block
  std::vector<RawValue> current_;
};

}  // namespace

FileReader::FileReader(FileStore& store, const Query& query)
    : store_(store), texts_(textsOf(query)) {}

std::unique_ptr<::Cursor> FileReader::run(const QList<Variant>& literals) {
  auto rows = std::make_unique<PackedRows>(texts_.types);
  const FileStore::Reading reading(store_);
  Statement statement = store_.prepare(texts_.wholeSql);
  statement.bind(literals + texts_.own);
  while (statement.step()) rows->add(statement);
  return rows;
}

std::vector<Key> FileReader::read(const QString& sql, const QList<Variant>& literals) {
  std::vector<Key> keys;
  Statement statement = store_.prepare(sql);
  statement.bind(literals + texts_.own);
  while (statement.step()) keys.push_back(statement.integer(0));
  return keys;
}

bool FileReader::allStand(const std::vector<Key>& keys) {
  std::size_t found = 0;
  rows(keys, [&found](Key, Row&&) { ++found; });
  return found == keys.size();
}

std::vector<Key> FileReader::keys(const QList<Variant>& literals, int most) {
  const FileStore::Reading reading(store_);
  if (most < 0) return read(texts_.keysSql, literals);
  const QString limit = QStringLiteral(" LIMIT ") + QString::number(most);
  // The first rows nearly always find what they look up: then it needn't be looked up for all.
  if (!texts_.likelySql.isEmpty()) {
    std::vector<Key> likely = read(texts_.likelySql + limit, literals);
    if (allStand(likely)) return likely;
  }
  return read(texts_.keysSql + limit, literals);
}

void FileReader::rows(std::span<const Key> keys, const RowTaker& take) {
  const FileStore::Reading reading(store_);
  Statement statement = store_.prepare(texts_.rowSql);
  int place = 1;
  for (const Variant& value : texts_.rowOwn) statement.bind(++place, value);
  for (const Key key : keys) {
    statement.bind(1, key);
    if (statement.step()) {
      Row row;
      row.reserve(texts_.types.size());
      for (std::size_t i = 0; i < texts_.types.size(); ++i)
        row.push_back(statement.value(static_cast<int>(i), texts_.types[i]));
      take(key, std::move(row));
    }
    statement.reset();
  }
}
