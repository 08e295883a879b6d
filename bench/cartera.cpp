// The list of recibos: opened, looked through by each of its buttons, and read to its end, beside
// the first rows of the same join read directly.
#include <benchmark/benchmark.h>

#include "engine/datacontrol.h"
#include "engine/recordset.h"
#include "libros.h"

namespace {

using banco::Directo;
using banco::Libros;

constexpr int kSubcuentas = 5000;
constexpr int kFilasALaVista = 30;
const char* const kTodos = "Select * from SQLRecibos order by vencimiento";

// A company with so many recibos, a third of them to be paid.
QString conRecibos(const Libros& l, int cuantos) {
  const QString ruta = l.copia("Recibos.MDB");
  Directo directo(ruta);
  const QByteArray llena =
      "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i+1<" +
      QByteArray::number(cuantos) +
      "), s AS (SELECT row_number() OVER (ORDER BY Subcuenta)-1 AS k, Subcuenta FROM Subcuentas),"
      " c AS (SELECT count(*) AS t FROM Subcuentas)"
      " INSERT INTO Recibos(Vencimiento,Subcuenta,Titulo,Factura,Tipo,Banco,Importe,CA)"
      " SELECT date('2024-01-01','+'||(i*7919%366)||' days'), s.Subcuenta,"
      " 'Recibo De su Fra.F-'||i, 'F-'||i, CASE i%2 WHEN 0 THEN 'Recibo' ELSE 'Pagaré' END,"
      " '43000100', 10+i%997+(i%100)/100.0, CASE i%3 WHEN 0 THEN 'C' ELSE 'A' END"
      " FROM n, c JOIN s ON s.k = i*31%c.t";
  directo.ejecuta(llena.constData());
  return ruta;
}

// As the grid shows it: the rows on its first page, painted before the others are looked for.
void muestra(DataControl& recibos) {
  const Recordset& filas = recibos.Recordset();
  for (int fila = 0; fila < std::min(kFilasALaVista, filas.rowsKnown()); ++fila)
    for (int campo = 0; campo < filas.FieldCount(); ++campo)
      benchmark::DoNotOptimize(filas.cell(fila, campo));
}

// With an engine of its own each time, so that nothing is known from the time before.
void lista_librano(benchmark::State& estado, const char* fuente, bool hastaElFin) {
  const QString ruta = conRecibos(Libros::de(10'000, kSubcuentas), int(estado.range(0)));
  for (auto _ : estado) {
    estado.PauseTiming();
    auto motor = std::make_unique<DBEngine>();
    auto recibos = std::make_unique<DataControl>(*motor);
    recibos->bind(ruta, "Select * from Empresa");
    estado.ResumeTiming();
    recibos->bind(ruta, fuente);
    muestra(*recibos);
    if (hastaElFin) recibos->MoveLast();
    estado.PauseTiming();
    recibos.reset();
    motor.reset();
    estado.ResumeTiming();
  }
}

void lista_directo(benchmark::State& estado, const char* resto) {
  Directo directo(conRecibos(Libros::de(10'000, kSubcuentas), int(estado.range(0))));
  const QByteArray sql =
      QByteArray(
          "SELECT r.*, s.Descripcion, b.Descripcion FROM Recibos r JOIN Subcuentas s ON "
          "r.Subcuenta = s.Subcuenta JOIN Subcuentas b ON r.Banco = b.Subcuenta ") +
      resto + " LIMIT 30";
  sqlite3_stmt* filas = directo.prepara(sql.constData());
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(filas));
}

struct Busqueda {
  const char* nombre;
  const char* librano;
  const char* directo;
};

constexpr Busqueda kBusquedas[] = {
    {"recibos por vencimiento",
     "Select * from SQLRecibos where vencimiento >= #6-15-24# order by vencimiento",
     "WHERE r.Vencimiento >= '2024-06-15' ORDER BY r.Vencimiento"},
    {"recibos por cliente",
     "Select * from SQLRecibos where Subcuentas.Descripcion like '*77*' order by "
     "Subcuentas.Descripcion",
     "WHERE s.Descripcion LIKE '%77%' ORDER BY s.Descripcion"},
    {"recibos por titulo", "Select * from SQLRecibos where Titulo like '*77*' order by Titulo",
     "WHERE r.Titulo LIKE '%77%' ORDER BY r.Titulo"},
    {"recibos por factura", "Select * from SQLRecibos where Factura like 'F-77*' order by Factura",
     "WHERE r.Factura LIKE 'F-77%' ORDER BY r.Factura"},
    {"recibos por tipo", "Select * from SQLRecibos where Tipo like 'recibo' order by Tipo",
     "WHERE r.Tipo LIKE 'recibo' ORDER BY r.Tipo"},
    {"recibos por banco", "Select * from SQLRecibos where Banco like '43*' order by Banco",
     "WHERE r.Banco LIKE '43%' ORDER BY r.Banco"},
    {"recibos por importe", "Select * from SQLRecibos where Importe >=500 order by Importe",
     "WHERE r.Importe >= 500 ORDER BY r.Importe"},
    {"recibos de cargo", "Select * from SQLRecibos where CA like 'C' order by CA",
     "WHERE r.CA LIKE 'C' ORDER BY r.CA"},
};

void mide(benchmark::internal::Benchmark* b) {
  b->Arg(50'000)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(10);
}

const bool kRegistradas = [] {
  const auto registra = [](const std::string& trabajo, const char* librano, bool hastaElFin,
                           const char* directo) {
    mide(benchmark::RegisterBenchmark((trabajo + "/librano").c_str(), lista_librano, librano,
                                      hastaElFin));
    if (directo)
      mide(benchmark::RegisterBenchmark((trabajo + "/directo").c_str(), lista_directo, directo));
  };
  registra("abrir los recibos", kTodos, false, "ORDER BY r.Vencimiento");
  registra("recibos hasta el ultimo", kTodos, true, nullptr);
  for (const auto& [nombre, librano, directo] : kBusquedas)
    registra(nombre, librano, false, directo);
  return true;
}();

}  // namespace
