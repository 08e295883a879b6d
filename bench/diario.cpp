// The entry line's work on journals of ten thousand, a hundred thousand and a million lines.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QFile>

#include "engine/datacontrol.h"
#include "engine/rowreader.h"
#include "journal/apunte.h"
#include "journal/totales.h"
#include "libros.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::tamanos;

QString asientoMedio(const Libros& l) {
  return QString::number(l.lineas() / 6);
}

// --- the totals
// -----------------------------------------------------------------------------------

void total_diario_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  DataControl total(l.motor());
  for (auto _ : estado) benchmark::DoNotOptimize(totalDiario(total, l.ruta()));
}

void total_cuenta_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  DataControl total(l.motor());
  for (auto _ : estado) benchmark::DoNotOptimize(totalCuenta(total, l.ruta(), banco::kSubcuenta));
}

void total_asiento_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  DataControl total(l.motor());
  const QString asiento = asientoMedio(l);
  for (auto _ : estado) benchmark::DoNotOptimize(totalAsiento(total, l.ruta(), asiento));
}

// Done directly: the lines added up by one prepared statement.
void totalDirecto(benchmark::State& estado, const char* sql, const QString& clave) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* sentencia = directo.prepara(sql);
  const QByteArray texto = clave.toUtf8();
  if (!clave.isEmpty()) sqlite3_bind_text(sentencia, 1, texto.constData(), -1, SQLITE_STATIC);
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(sentencia));
}

// --- a posted line
// ----------------------------------------------------------------------------------

// One line and the four totals that follow it, with the line on the disk.
void posteo_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  l.copia("Posteo.MDB");
  const QString ruta = l.carpeta() + "Posteo.MDB";
  DataControl diario(l.motor()), empresa(l.motor()), total(l.motor());
  diario.bind(ruta, "Select * from SqlDiarioPrincipalBlanco order by nasiento");
  diario.MoveLast();
  empresa.bind(ruta, "Select * from Empresa");
  Apunte apunte;
  apunte.NAsiento = l.lineas() / 3 + 1;
  apunte.Fecha = "15/06/2024";
  apunte.Subcuenta = banco::kSubcuenta;
  apunte.Descripcion = "Apunte de prueba";
  apunte.DH = "D";
  apunte.Importe = "123,45";
  const QString asiento = QString::number(l.lineas() / 3 + 1);
  for (auto _ : estado) {
    grabaApunte(diario, empresa, apunte);
    diario.MoveLast();
    benchmark::DoNotOptimize(totalDiario(total, ruta));
    benchmark::DoNotOptimize(totalCuenta(total, ruta, banco::kSubcuenta));
    benchmark::DoNotOptimize(totalAsiento(total, ruta, asiento));
    benchmark::DoNotOptimize(totalAsiento(total, ruta, asiento));
    l.motor().flush();
  }
}

// The bare insert of a line and the update of its counter in one commit, in a file with the key
// alone: no sums, no other index.
void posteo_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  const QString ruta = l.copia("PosteoDirecto.MDB");
  Directo directo(ruta);
  directo.ejecuta(
      "CREATE TABLE D2(NLinea INTEGER PRIMARY KEY, NAsiento INTEGER, Fecha TEXT, Subcuenta TEXT,"
      " Descripcion TEXT, DH TEXT, Importe REAL, Punteo TEXT)");
  directo.ejecuta(
      "INSERT INTO D2 SELECT NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe,Punteo"
      " FROM Diario");
  sqlite3_stmt* linea = directo.prepara(
      "INSERT INTO D2 VALUES((SELECT NLinDiario FROM Empresa),1,'2024-06-15','43000100',"
      "'Apunte de prueba','D',123.45,'')");
  sqlite3_stmt* contador = directo.prepara("UPDATE Empresa SET NLinDiario=NLinDiario+1");
  sqlite3_stmt* empieza = directo.prepara("BEGIN IMMEDIATE");
  sqlite3_stmt* acaba = directo.prepara("COMMIT");
  for (auto _ : estado) {
    Directo::recorre(empieza);
    Directo::recorre(linea);
    Directo::recorre(contador);
    Directo::recorre(acaba);
  }
}

// --- looking things up
// --------------------------------------------------------------------------------

void localiza_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  DataControl diario(l.motor());
  for (auto _ : estado) {
    diario.bind(l.ruta(),
                QString("Select * from SqlDiarioPrincipalBlanco where Subcuenta='%1' order by "
                        "NAsiento")
                    .arg(banco::kSubcuenta));
    benchmark::DoNotOptimize(diario.Fields("NAsiento").text());
  }
}

void localiza_directo(benchmark::State& estado) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* sentencia =
      directo.prepara("SELECT rowid FROM Diario WHERE Subcuenta='43000100' ORDER BY NAsiento");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(sentencia));
}

void sumas_n4_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  const auto empresa = l.motor().Workspaces(0).OpenDatabase(l.ruta());
  for (auto _ : estado) {
    RowReader filas(*empresa, "Select * from SqlSumasSaldosN4");
    int n = 0;
    while (filas.next()) ++n;
    benchmark::DoNotOptimize(n);
  }
}

// The same balances added up from the lines.
void sumas_n4_directo(benchmark::State& estado) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* sentencia = directo.prepara(
      "SELECT Diario.Subcuenta, Subcuentas.Descripcion, SUM(CASE WHEN DH='D' THEN Importe ELSE 0 "
      "END), SUM(CASE WHEN DH='D' THEN 0 ELSE Importe END), CAST(substr(Fecha,6,2) AS INTEGER) AS "
      "Mes FROM Diario JOIN Subcuentas ON Diario.Subcuenta=Subcuentas.Subcuenta "
      "GROUP BY Diario.Subcuenta, Subcuentas.Descripcion, Mes");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(sentencia));
}

// What they are made of: the kept sums by subcuenta and month, each value taken.
void sumas_guardadas_directo(benchmark::State& estado) {
  Directo directo(libros(estado).rutaSistema());
  sqlite3_stmt* sentencia = directo.prepara("SELECT * FROM librano_sumas_3");
  for (auto _ : estado) {
    while (sqlite3_step(sentencia) == SQLITE_ROW) {
      for (int c = 0; c < sqlite3_column_count(sentencia); ++c)
        benchmark::DoNotOptimize(sqlite3_column_text(sentencia, c));
    }
    sqlite3_reset(sentencia);
  }
}

// --- the whole journal on show
// ------------------------------------------------------------------------

void abre_diario_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    // A motor of its own, so that nothing is remembered from the run before.
    DBEngine motor;
    DataControl diario(motor);
    diario.bind(l.ruta(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    diario.MoveLast();
    benchmark::DoNotOptimize(diario.Fields("Descripcion").text());
  }
}

void abre_diario_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    Directo directo(l.rutaSistema());
    benchmark::DoNotOptimize(
        Directo::recorre(directo.prepara("SELECT rowid FROM Diario ORDER BY NAsiento, rowid")));
  }
}

BENCHMARK(abre_diario_librano)->Name("abrir el diario/librano")->Apply(tamanos);
BENCHMARK(abre_diario_directo)->Name("abrir el diario/directo")->Apply(tamanos);
BENCHMARK(posteo_librano)->Name("asentar y cuatro totales/librano")->Apply(tamanos);
BENCHMARK(posteo_directo)->Name("asentar y cuatro totales/directo")->Apply(tamanos);
BENCHMARK(total_diario_librano)->Name("total del diario/librano")->Apply(tamanos);
BENCHMARK_CAPTURE(totalDirecto, diario,
                  "SELECT SUM(CASE WHEN DH='D' THEN Importe ELSE 0 END), SUM(CASE WHEN DH='D' THEN "
                  "0 ELSE Importe END) FROM Diario",
                  QString())
    ->Name("total del diario/directo")
    ->Apply(tamanos);
BENCHMARK(total_cuenta_librano)->Name("total de la cuenta/librano")->Apply(tamanos);
BENCHMARK_CAPTURE(totalDirecto, cuenta,
                  "SELECT SUM(CASE WHEN DH='D' THEN Importe ELSE 0 END), SUM(CASE WHEN DH='D' THEN "
                  "0 ELSE Importe END) FROM Diario WHERE Subcuenta=?1",
                  QString(banco::kSubcuenta))
    ->Name("total de la cuenta/directo")
    ->Apply(tamanos);
BENCHMARK(total_asiento_librano)->Name("total del asiento/librano")->Apply(tamanos);
BENCHMARK_CAPTURE(totalDirecto, asiento,
                  "SELECT SUM(CASE WHEN DH='D' THEN Importe ELSE 0 END), SUM(CASE WHEN DH='D' THEN "
                  "0 ELSE Importe END) FROM Diario WHERE NAsiento=CAST(?1 AS INTEGER)",
                  QString("1000"))
    ->Name("total del asiento/directo")
    ->Apply(tamanos);
BENCHMARK(localiza_librano)->Name("localizar una subcuenta/librano")->Apply(tamanos);
BENCHMARK(localiza_directo)->Name("localizar una subcuenta/directo")->Apply(tamanos);
BENCHMARK(sumas_n4_librano)->Name("sumas y saldos N4/librano")->Apply(tamanos);
BENCHMARK(sumas_n4_directo)->Name("sumas y saldos N4/directo")->Apply(tamanos);
BENCHMARK(sumas_guardadas_directo)->Name("sumas guardadas/directo")->Apply(tamanos);

}  // namespace
