// Statements that people type into searches or that other programs store in the file: whatever they
// say, they are refused with a number or become statements that the file's engine accepts.
#include <sqlite3.h>

#include <cstdlib>
#include <iostream>

#include "common/errorejecucion.h"
#include "engine/lang/resolve.h"
#include "engine/sqlite/functions.h"
#include "engine/sqlite/readers.h"

namespace {

constexpr int kAno = 2003;

class Libro : public Catalog {
 public:
  Libro() {
    const auto column = [](const char* name, FieldType type) {
      return Column{QString::fromUtf8(name), type, type == FieldType::Text ? 50 : 0};
    };
    tables_ = {{QStringLiteral("Diario"),
                {column("NLinea", FieldType::Long), column("NAsiento", FieldType::Long),
                 column("Fecha", FieldType::Date), column("Subcuenta", FieldType::Text),
                 column("DH", FieldType::Text), column("Importe", FieldType::Double)},
                {}},
               {QStringLiteral("Subcuentas"),
                {column("Subcuenta", FieldType::Text), column("Descripcion", FieldType::Text)},
                {{0}}},
               {QStringLiteral("Empresa"),
                {column("Año", FieldType::Long), column("Limpiar", FieldType::Boolean)},
                {}}};
    sums_ = {{QStringLiteral("sumas"),
              QStringLiteral("Diario"),
              QStringLiteral("DH"),
              QStringLiteral("Importe"),
              {{QStringLiteral("Subcuenta")}, {QStringLiteral("Fecha"), SumKey::Part::Month}},
              {QStringLiteral("Subcuenta"), QStringLiteral("Mes")},
              QStringLiteral("n"),
              QStringLiteral("d"),
              QStringLiteral("h"),
              QStringLiteral("nd"),
              QStringLiteral("nh")}};
    sqlite3_open(":memory:", &db_);
    registerFunctions(db_);
    sqlite3_exec(db_,
                 "CREATE TABLE Diario(NLinea,NAsiento,Fecha,Subcuenta COLLATE NOCASE,DH,Importe);"
                 "CREATE TABLE Subcuentas(Subcuenta COLLATE NOCASE,Descripcion);"
                 "CREATE TABLE Empresa([Año],Limpiar);"
                 "CREATE TABLE sumas(Subcuenta COLLATE NOCASE,Mes,n,d,h,nd,nh)",
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
    const lang::Parsed parsed(text, kAno);
    const auto query = lang::resolved(parsed, libro, kAno);
    lang::eachExpr(std::as_const(*query), [&](const lang::Expr& expr) {
      lang::anyPart(expr, [&](const lang::Expr& part) {
        if (part.place == lang::Expr::Place::Statement && part.parameter >= query->literals)
          std::abort();
        return false;
      });
    });
    const Texts texts = textsOf(*query);
    libro.mustAccept(texts.wholeSql);
    if (lang::hasKeys(*query)) libro.mustAccept(texts.keysSql);
    if (lang::hasKeys(*query)) libro.mustAccept(texts.rowSql);
    if (!texts.likelySql.isEmpty()) libro.mustAccept(texts.likelySql);
  } catch (const ErrorEjecucion&) {
  }
  for (const char* source : {"Lineas", "Saldos", "Distintas"}) {
    try {
      const lang::Parsed parsed(QString::fromUtf8(source), kAno);
      if (lang::hasKeys(*lang::resolved(parsed, libro, kAno)))
        libro.mustAccept(textsOf(*lang::matching(parsed, text, true, libro, kAno)).keysSql);
      libro.mustAccept(textsOf(*lang::matching(parsed, text, false, libro, kAno)).wholeSql);
    } catch (const ErrorEjecucion&) {
      continue;
    }
  }
  return 0;
}
