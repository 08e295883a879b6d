// What stands in a file: its tables, stored queries, indexes and running sums, as the engine reads
// them.
//
// Tables that any tool made are understood by their declared types. What the declared types can't
// say (the sort order, primary indexes, texts that may not be empty, the queries word for word,
// which sums are kept) stands in tables of the engine's own, which nobody else is shown.
#pragma once

#include <QHash>
#include <QSet>

#include "engine/definitions.h"

class FileStore;

// The engine's own tables.
namespace own {
inline constexpr char kProperties[] = "librano_propiedades";  // Objeto, Propiedad, Valor
inline constexpr char kQueries[] = "librano_consultas";       // Orden, Nombre, Texto
inline constexpr char kSums[] = "librano_sumas";              // Orden, Tabla, Lado, Importe, Claves
inline constexpr char kKept[] = "librano_";       // begins the names of indexes that nobody sees
inline constexpr char kRows[] = "librano_filas";  // Tabla, Ultima: row numbers used up
// What our own triggers refuse with: a row in place of another (3022), an amount beyond what sums
// hold (6).
inline constexpr char kTwinRow[] = "clave duplicada";
inline constexpr char kTooLarge[] = "importe demasiado grande";
// The statements that make them where they are missing.
QStringList definitions();
bool isOwn(const QString& name);
}  // namespace own

class Schema : public Definitions {
 public:
  // Reads the file; one made by another tool may lack the engine's own tables.
  explicit Schema(FileStore& store);

  // Sums that can't be trusted, because their triggers or table aren't as they were made: they are
  // to be made anew, and until then there are none.
  const std::vector<RunningSums>& brokenSums() const { return brokenSums_; }
  bool hasView(const QString& query) const { return views_.contains(query.toCaseFolded()); }
  bool hasOwnTables() const { return hasOwn_; }
  // The names of the triggers that aren't word for word what the engine would make.
  const QStringList& foreignTriggers() const { return foreignTriggers_; }
  // Whether one of the columns is the row number itself, in a file of another tool.
  bool rowNumberIsColumn(const QString& table) const;

 private:
  void readTable(FileStore& store, const QString& name);
  void readIndexes(FileStore& store, TableDef& table, Keys& keys);
  void readQueries(FileStore& store);
  void readSums(FileStore& store);
  bool stand(const RunningSums& sums, const TableDef& base);

  std::vector<RunningSums> brokenSums_;
  QSet<QString> ownTables_;
  QHash<QString, QString> triggers_;  // name by the whole statement
  QStringList foreignTriggers_;
  QStringList views_;                   // folded names
  QStringList rowNumberTables_;         // folded names
  QHash<QString, QString> properties_;  // "Objeto\nPropiedad"
  bool hasOwn_ = false;
};

// The definition of a table as the file's own statement.
QString createTableSql(const TableDef& table);
// The index's name in the file, where names are common to all tables.
QString indexName(const QString& table, const QString& index);
