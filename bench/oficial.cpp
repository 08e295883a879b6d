// The worksheet of a quarter's 303 and the list of the year's 347 over journals of up to a million
// lines, with a row of the registers for each five of them, dealt out over the year; beside it, the
// same rows only read.
#include <benchmark/benchmark.h>

#include "libros.h"
#include "oficial/modelo303.h"
#include "oficial/modelo347fichero.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::tamanos;

// A copy of the journal with both registers full: a sale for each purchase, of three rates.
QString conRegistros(const Libros& l, const char* nombre) {
  const QString ruta = l.copia(QLatin1String(nombre));
  Directo directo(ruta);
  const QByteArray filas = QByteArray::number(l.lineas() / 5);
  const QByteArray llena =
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + filas +
      "), f AS (SELECT i, i%2 AS venta, CASE i%3 WHEN 0 THEN 21 WHEN 1 THEN 10 ELSE 4 END AS tipo,"
      " date('2024-01-01','+'||(i%366)||' days') AS dia FROM n) "
      "INSERT INTO RSIVA(Codigo,CliPro,Factura,Base,TipoIVA,Asiento,CtaIVA,FechaC,Fecha,CtaRE,"
      "CtaCon,IVA,Recargo,PorcenIVA,PorcenREC,Neto) SELECT printf('%s%010d',"
      "CASE venta WHEN 1 THEN 'R' ELSE 'S' END,i),CASE venta WHEN 1 THEN '43000100' ELSE "
      "'40000001' END,'F-'||i,CASE venta WHEN 1 THEN -100 ELSE 100 END,'03',i,"
      "CASE venta WHEN 1 THEN '47700001' ELSE '47200001' END,dia,dia,'47500001','60000001',"
      "CASE venta WHEN 1 THEN -tipo ELSE tipo END,0,tipo,0,0 FROM f";
  directo.ejecuta(llena.constData());
  return ruta;
}

void hoja303_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  conRegistros(l, "Modelo303.MDB");
  const auto empresa = l.motor().Workspaces(0).OpenDatabase(l.carpeta() + "Modelo303.MDB");
  for (auto _ : estado) {
    const Hoja303 hoja(*empresa, {2024, QStringLiteral("2T")});
    benchmark::DoNotOptimize(hoja.resultado());
    benchmark::DoNotOptimize(hoja.descuadres(*empresa));
  }
}

void hoja303_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistros(l, "Modelo303Directo.MDB"));
  sqlite3_stmt* const filas = directo.prepara(
      "SELECT Codigo, CliPro, Factura, TipoIVA, Asiento, CtaIVA, CtaRE, CtaCon, FechaC, Fecha, "
      "Base, IVA, Recargo, PorcenIVA, PorcenREC FROM RSIVA WHERE Fecha >= '2024-04-01' AND Fecha "
      "<= '2024-06-30'");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(filas));
}

void lista347_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  conRegistros(l, "Modelo347.MDB");
  const auto empresa = l.motor().Workspaces(0).OpenDatabase(l.carpeta() + "Modelo347.MDB");
  for (auto _ : estado) benchmark::DoNotOptimize(Modelo347(*empresa, 2024).importe());
}

void lista347_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistros(l, "Modelo347Directo.MDB"));
  sqlite3_stmt* const filas = directo.prepara(
      "SELECT CliPro, (CAST(strftime('%m',Fecha) AS INTEGER)+2)/3, SUM(Base+IVA+Recargo) FROM "
      "RSIVA "
      "GROUP BY 1, 2");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(filas));
}

BENCHMARK(hoja303_librano)->Name("hoja del 303/librano")->Apply(tamanos);
BENCHMARK(hoja303_directo)->Name("hoja del 303/directo")->Apply(tamanos);
BENCHMARK(lista347_librano)->Name("lista del 347/librano")->Apply(tamanos);
BENCHMARK(lista347_directo)->Name("lista del 347/directo")->Apply(tamanos);

}  // namespace
