#include "engine/sqlite/schema.h"

#include "common/errorejecucion.h"
#include "engine/sqlite/runningsums.h"
#include "engine/sqlite/store.h"

namespace {

struct TypeName {
  FieldType type;
  const char* declared;
};

constexpr TypeName kTypes[] = {{FieldType::Boolean, "BOOLEAN"},
                               {FieldType::Long, "INTEGER"},
                               {FieldType::Double, "REAL"},
                               {FieldType::Date, "DATETIME"},
                               {FieldType::Text, "TEXT"}};

// Types that other tools write.
constexpr struct {
  const char* part;
  FieldType type;
} kForeignTypes[] = {
    {"BOOL", FieldType::Boolean}, {"YES", FieldType::Boolean}, {"DATE", FieldType::Date},
    {"TIME", FieldType::Date},    {"INT", FieldType::Long},    {"LONG", FieldType::Long},
    {"REAL", FieldType::Double},  {"FLOA", FieldType::Double}, {"DOUB", FieldType::Double},
    {"NUM", FieldType::Double},   {"DEC", FieldType::Double},  {"CURR", FieldType::Double}};

QString declaredType(const Field& field) {
  for (const TypeName& t : kTypes) {
    if (t.type != field.Type) continue;
    const QString text = QString::fromLatin1(t.declared);
    const bool sized = field.Type == FieldType::Text && field.Size > 0;
    return sized ? text + QStringLiteral("(%1)").arg(field.Size) : text;
  }
  return QStringLiteral("TEXT");
}

FieldType typeOf(const QString& declared) {
  for (const auto& t : kForeignTypes)
    if (declared.contains(QLatin1String(t.part), Qt::CaseInsensitive)) return t.type;
  return FieldType::Text;
}

int sizeOf(const QString& declared) {
  const qsizetype open = declared.indexOf(u'('), close = declared.indexOf(u')');
  return open < 0 || close < open ? 0 : declared.mid(open + 1, close - open - 1).toInt();
}

// A text between quotes without them; anything else as it is.
QString unquoted(const QString& text, QChar quote) {
  if (text.size() < 2 || !text.startsWith(quote) || !text.endsWith(quote)) return text;
  return text.mid(1, text.size() - 2).replace(QString(2, quote), QString(quote));
}

QString quoted(QString text, QChar quote) {
  return quote + text.replace(quote, QString(2, quote)) + quote;
}

// A default as the definitions write it: the file has '1' where they have "1".
QString definedDefault(const QString& inFile) {
  return inFile.startsWith(u'\'') ? quoted(unquoted(inFile, u'\''), u'"') : inFile;
}

// Whether a column of an index (name, place, collation) tells the same values apart as a statement
// does.
bool comparesAlike(const TableDef& table, const Statement& column) {
  const auto place = column.integer(1);
  if (place < 0 || place >= std::ssize(table.Fields)) return false;
  const Field& field = table.Fields[static_cast<std::size_t>(place)];
  const char* const collation = field.Type == FieldType::Text ? "NOCASE" : "BINARY";
  return field.Name == column.text(0) && column.text(2) == QLatin1String(collation);
}

QString propertyKey(const QString& object, const char* property) {
  return object + u'\n' + QLatin1String(property);
}

}  // namespace

QStringList own::definitions() {
  return {
      QStringLiteral(
          "CREATE TABLE IF NOT EXISTS %1 (Objeto TEXT NOT NULL, Propiedad TEXT NOT NULL, "
          "Valor TEXT, PRIMARY KEY (Objeto, Propiedad)) WITHOUT ROWID")
          .arg(QLatin1String(kProperties)),
      QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (Orden INTEGER PRIMARY KEY, "
                     "Nombre TEXT NOT NULL UNIQUE, Texto TEXT NOT NULL)")
          .arg(QLatin1String(kQueries)),
      QStringLiteral(
          "CREATE TABLE IF NOT EXISTS %1 (Orden INTEGER PRIMARY KEY, Tabla TEXT NOT NULL, "
          "Lado TEXT NOT NULL, Importe TEXT NOT NULL, Claves TEXT NOT NULL)")
          .arg(QLatin1String(kSums)),
      QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (Tabla TEXT PRIMARY KEY, "
                     "Ultima INTEGER NOT NULL) WITHOUT ROWID")
          .arg(QLatin1String(kRows)),
  };
}

bool own::isOwn(const QString& name) {
  return name.startsWith(QLatin1String("librano_"), Qt::CaseInsensitive) ||
         name.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive);
}

Schema::Schema(FileStore& store) {
  QStringList names;
  {
    Statement all = store.prepare(
        QStringLiteral("SELECT type, name, sql FROM sqlite_schema WHERE type IN ('table', "
                       "'trigger', 'view') ORDER BY rowid"));
    while (all.step()) {
      const QString name = all.text(1);
      if (all.text(0) == QLatin1String("view")) {
        views_ += name.toCaseFolded();
      } else if (all.text(0) == QLatin1String("trigger")) {
        triggers_.insert(all.text(2), name);
        foreignTriggers_ += name;  // until it turns out to be as the engine makes it
      } else if (name == QLatin1String(own::kProperties)) {
        hasOwn_ = true;
      } else if (own::isOwn(name)) {
        ownTables_ += name;
      } else {
        names += name;
      }
    }
  }
  if (hasOwn_) {
    Statement all = store.prepare(QStringLiteral("SELECT Objeto, Propiedad, Valor FROM %1")
                                      .arg(QLatin1String(own::kProperties)));
    while (all.step()) properties_.insert(all.text(0) + u'\n' + all.text(1), all.text(2));
  }
  for (const QString& name : std::as_const(names)) readTable(store, name);
  if (!hasOwn_) return;
  readQueries(store);
  readSums(store);
}

void Schema::readTable(FileStore& store, const QString& name) {
  TableDef def;
  def.Name = name;
  Statement columns = store.prepare(
      QStringLiteral("SELECT name, type, dflt_value, pk FROM pragma_table_info(?1) ORDER BY cid"));
  columns.bind(1, name);
  int keyColumns = 0;
  bool wholeKey = false;
  Keys keys;
  while (columns.step()) {
    Field field;
    field.Name = columns.text(0);
    const QString declared = columns.text(1);
    field.Type = typeOf(declared);
    field.Size = field.Type == FieldType::Text ? sizeOf(declared) : 0;
    field.DefaultValue = columns.isNull(2) ? QString() : definedDefault(columns.text(2));
    if (field.Type == FieldType::Boolean && field.DefaultValue == u'0') field.DefaultValue.clear();
    field.AllowZeroLength =
        !properties_.contains(propertyKey(name + u'.' + field.Name, "SinTextoVacio"));
    if (columns.integer(3) > 0) {
      ++keyColumns;
      wholeKey = declared.compare(QLatin1String("INTEGER"), Qt::CaseInsensitive) == 0;
    }
    if (declaredType(field).compare(declared, Qt::CaseInsensitive) != 0)
      keys.foreign.push_back(static_cast<int>(def.Fields.size()));
    def.Fields.push_back(std::move(field));
  }
  if (keyColumns == 1 && wholeKey) rowNumberTables_ += name.toCaseFolded();
  readIndexes(store, def, keys);
  add(std::move(def), std::move(keys));
}

void Schema::readIndexes(FileStore& store, TableDef& table, Keys& keys) {
  Statement list = store.prepare(QStringLiteral(
      "SELECT name, \"unique\", partial FROM pragma_index_list(?1) ORDER BY seq DESC"));
  list.bind(1, table.Name);
  while (list.step()) {
    const QString full = list.text(0);
    const bool kept = full.startsWith(QLatin1String(own::kKept));
    if (own::isOwn(full) && !kept) continue;
    Index index;
    const QString prefix = table.Name + u'.';
    index.Name = full.startsWith(prefix) ? full.mid(prefix.size()) : full;
    index.Unique = list.integer(1) != 0;
    index.Primary = properties_.contains(propertyKey(full, "Principal"));
    const bool partial = list.integer(2) != 0;
    Statement columns = store.prepare(QStringLiteral(
        "SELECT name, cid, coll FROM pragma_index_xinfo(?1) WHERE key ORDER BY seqno"));
    columns.bind(1, full);
    std::vector<int> key;
    bool whole = index.Unique && !partial;
    while (columns.step()) {
      index.Fields += columns.text(0);
      key.push_back(static_cast<int>(columns.integer(1)));
      whole = whole && comparesAlike(table, columns);
    }
    if (whole) keys.unique.push_back(std::move(key));
    if (kept) {
      add(table.Name, KeptIndex{index.Fields, partial});
    } else {
      table.Indexes.push_back(std::move(index));
    }
  }
}

void Schema::readQueries(FileStore& store) {
  Statement all = store.prepare(QStringLiteral("SELECT Nombre, Texto FROM %1 ORDER BY Orden")
                                    .arg(QLatin1String(own::kQueries)));
  while (all.step()) add(QueryDef{all.text(0), all.text(1)});
}

void Schema::readSums(FileStore& store) {
  Statement all = store.prepare(QStringLiteral("SELECT Orden, Tabla, Lado, Importe, Claves FROM %1 "
                                               "ORDER BY Orden")
                                    .arg(QLatin1String(own::kSums)));
  const auto refuse = [&] {
    throw ErrorEjecucion(err::kFormatoNoReconocido,
                         store.path() + u' ' + QLatin1String(own::kSums));
  };
  while (all.step()) {
    const qint64 order = all.integer(0);
    const QString table = all.text(1);
    const TableDef* base = definition(table);
    if (!base) {
      if (order <= 0 || table.isEmpty()) refuse();
      continue;  // another tool has taken the table away
    }
    const auto sums = describeSums(order, table, all.text(2), all.text(3), sumKeys(all.text(4)));
    const auto has = [&](const QString& column) {
      return std::any_of(base->Fields.begin(), base->Fields.end(),
                         [&](const Field& field) { return field.Name == column; });
    };
    const bool whole = std::all_of(sums.keys.begin(), sums.keys.end(),
                                   [&](const SumKey& key) { return has(key.column); });
    if (order <= 0 || !whole || !has(sums.sideColumn) || !has(sums.amountColumn)) refuse();
    if (stand(sums, *base)) {
      add(sums);
    } else {
      brokenSums_.push_back(sums);
    }
  }
}

// Triggers are known by all that they say: a name is no proof.
bool Schema::stand(const RunningSums& sums, const TableDef& base) {
  if (!ownTables_.contains(sums.sumsTable)) return false;
  QStringList names;
  for (const QString& sql : sumsDefinition(sums, base) + replaceGuards(base) + amountGuards(sums)) {
    if (!sql.startsWith(QLatin1String("CREATE TRIGGER"))) continue;
    if (!triggers_.contains(sql)) return false;
    names += triggers_[sql];
  }
  for (const QString& name : std::as_const(names)) foreignTriggers_.removeOne(name);
  return true;
}

bool Schema::rowNumberIsColumn(const QString& table) const {
  return rowNumberTables_.contains(table.toCaseFolded());
}

QString createTableSql(const TableDef& table) {
  QStringList columns;
  for (const Field& field : table.Fields) {
    QString column = bracketed(field.Name) + u' ' + declaredType(field);
    if (field.Type == FieldType::Text) column += QStringLiteral(" COLLATE NOCASE");
    const Variant value = defaultValue(field);
    if (value.isText()) {
      column += QStringLiteral(" DEFAULT ") + quoted(value.text(), u'\'');
    } else if (!value.isNull()) {
      column += QStringLiteral(" DEFAULT %1").arg(value.number(), 0, 'g', 15);
    }
    columns += column;
  }
  return QStringLiteral("CREATE TABLE %1 (%2)")
      .arg(bracketed(table.Name), columns.join(QStringLiteral(", ")));
}

QString indexName(const QString& table, const QString& index) {
  return table + u'.' + index;
}
