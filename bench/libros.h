// Journals of any length to measure on, and the same file seen without the program.
#pragma once

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <QList>
#include <QString>

#include "engine/dbengine.h"

namespace banco {

// A company in a folder of its own, with `lineas` lines of a year in asientos of three that square,
// dealt out among its subcuentas. Made once for each length and kept for the whole run; with
// LIBRANO_LIBROS, an existing folder, its journals are kept there for other runs too.
class Libros {
 public:
  static Libros& de(int lineas, int subcuentas = 600);

  DBEngine& motor() { return motor_; }
  QString carpeta() const { return carpeta_; }  // data folder, with its final separator
  QString ruta() const { return carpeta_ + "Banco\\Conta.MDB"; }
  QString rutaSistema() const { return carpeta_ + "Banco/Conta.MDB"; }
  int lineas() const { return lineas_; }

  // A copy of the file for measures that change it.
  QString copia(const QString& nombre) const;

 private:
  Libros(int lineas, int subcuentas);
  void llena();

  int lineas_;
  int subcuentas_;
  QString carpeta_;
  DBEngine motor_;
};

// The lengths of a measure, those of one that changes its journal and so runs once on a copy of its
// own, and the journal of the one that is running.
void tamanos(benchmark::internal::Benchmark* b);
void unaVez(benchmark::internal::Benchmark* b);
Libros& libros(const benchmark::State& estado);

// The other side of each measure: the library alone, with statements prepared once.
class Directo {
 public:
  explicit Directo(const QString& rutaSistema);
  ~Directo();
  Directo(const Directo&) = delete;
  Directo& operator=(const Directo&) = delete;

  sqlite3* db() { return db_; }
  sqlite3_stmt* prepara(const char* sql);  // lives as long as this
  void ejecuta(const char* sql);
  // Runs a statement to its end; the number of rows.
  static int recorre(sqlite3_stmt* sentencia);

 private:
  sqlite3* db_ = nullptr;
};

// The file of a new company with the usual settings, in place of one that may be there.
void creaFichero(DBEngine& motor, const QString& ruta);
// The statements that write a file's tables and rows anew, views and triggers last.
QList<QByteArray> volcado(const QString& rutaSistema);

constexpr const char* kEmpresa = "Banco";
// The first of the subcuentas.
constexpr const char* kSubcuenta = "43000100";

}  // namespace banco
