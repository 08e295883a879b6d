// Statements that people type into searches or that other programs store in the file: whatever they
// say, they are refused with a number or become statements that the file's engine accepts.
#include <sqlite3.h>

#include <cstdlib>
#include <iostream>

#include "common/errorejecucion.h"
#include "engine/lang/statementkey.h"
#include "engine/sqlite/functions.h"
#include "engine/sqlite/plan.h"

namespace {

class Libro : public Catalog {
 public:
  Libro() {
    const auto column = [](const char* name, FieldType type) {
      return Column{QString::fromUtf8(name), type, type == FieldType::Text ? 50 : 0};
    };
    tables_ = {{QStringLiteral("Diario"),
                {column("NLinea", FieldType::Long), column("NAsiento", FieldType::Long),
                 column("Fecha", FieldType::Date), column("Subcuenta", FieldType::Text),
                 column("DH", FieldType::Text), column("Importe", FieldType::Double)}},
               {QStringLiteral("Subcuentas"),
                {column("Subcuenta", FieldType::Text), column("Descripcion", FieldType::Text)}},
               {QStringLiteral("Empresa"),
                {column("Año", FieldType::Long), column("Limpiar", FieldType::Boolean)}}};
    sums_ = {{QStringLiteral("sumas"),
              QStringLiteral("Diario"),
              QStringLiteral("DH"),
              QStringLiteral("Importe"),
              {{QStringLiteral("Subcuenta")}, {QStringLiteral("Fecha"), SumKey::Part::Month}},
              {QStringLiteral("Subcuenta"), QStringLiteral("Mes")},
              QStringLiteral("n"),
              QStringLiteral("d"),
              QStringLiteral("h")}};
    sqlite3_open(":memory:", &db_);
    registerFunctions(db_);
    sqlite3_exec(db_,
                 "CREATE TABLE Diario(NLinea,NAsiento,Fecha,Subcuenta COLLATE NOCASE,DH,Importe);"
                 "CREATE TABLE Subcuentas(Subcuenta COLLATE NOCASE,Descripcion);"
                 "CREATE TABLE Empresa([Año],Limpiar);"
                 "CREATE TABLE sumas(Subcuenta COLLATE NOCASE,Mes,n,d,h)",
                 nullptr, nullptr, nullptr);
  }

  const Table* table(const QString& name) const override {
    for (const Table& table : tables_) {
      if (table.name.compare(name, Qt::CaseInsensitive) == 0) return &table;
    }
    return nullptr;
  }
  std::optional<QString> queryText(const QString& name) const override {
    static const struct {
      const char* name;
      const char* text;
    } kQueries[] = {
        {"Lineas",
         "SELECT NLinea, NAsiento, Fecha, Subcuenta, IIf([DH]='D',[Importe],0) AS Debe, "
         "IIf([DH]='D',0,[Importe]) AS Haber, IIf([DH]='D',[Importe],'') AS Blanco FROM Diario;"},
        {"Saldos",
         "SELECT Subcuenta, Month([Fecha]) AS Mes, Sum(Debe) AS D, Sum(Haber) AS H FROM Lineas "
         "GROUP "
         "BY Subcuenta, Month([Fecha]);"},
        {"Distintas", "SELECT DISTINCT Fecha FROM Diario ORDER BY Fecha;"}};
    for (const auto& query : kQueries) {
      if (name.compare(QLatin1String(query.name), Qt::CaseInsensitive) == 0) {
        return QString::fromUtf8(query.text);
      }
    }
    return std::nullopt;
  }
  const std::vector<RunningSums>& runningSums() const override { return sums_; }

  void mustAccept(const QString& sql) const {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
      std::cerr << sqlite3_errmsg(db_) << '\n' << sql.toStdString() << '\n';
      std::abort();
    }
    sqlite3_finalize(statement);
  }

 private:
  std::vector<Table> tables_;
  std::vector<RunningSums> sums_;
  sqlite3* db_ = nullptr;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const Libro libro;
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  try {
    const Plan plan = compile(text, libro, 2003);
    if (statementKey(text, 2003).literals !=
        plan.params.first(statementKey(text, 2003).literals.size()))
      std::abort();
    libro.mustAccept(plan.wholeSql);
    if (plan.updatable) libro.mustAccept(plan.keysSql);
    if (plan.updatable) libro.mustAccept(plan.rowSql);
  } catch (const ErrorEjecucion&) {
  }
  for (const char* source : {"Lineas", "Saldos", "Distintas"}) {
    try {
      libro.mustAccept(compileCriterion(QString::fromUtf8(source), text, libro, 2003).sql);
    } catch (const ErrorEjecucion&) {
      continue;
    }
  }
  return 0;
}
