// The diary and the trial balance of journals of ten thousand, a hundred thousand and a million
// lines, against reading the same rows directly.
#include <benchmark/benchmark.h>

#include <QFile>

#include "libros.h"
#include "reports/informe.h"
#include "reports/pintor.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::tamanos;

std::shared_ptr<reports::Documento> abre(Libros& l, DBEngine& motor, const QString& plantilla,
                                         const QString& seleccion) {
  const Reloj reloj;
  std::shared_ptr<reports::Documento> abierto;
  Informe informe(motor, reloj,
                  {[] { return QStringList{"PDF"}; },
                   [&](auto documento, const QString&) { abierto = std::move(documento); }});
  informe.ReportFileName = LIBRANO_IMPRESOS + plantilla;
  informe.DataFiles(0) = l.ruta();
  informe.SelectionFormula = seleccion;
  informe.PrintReport();
  return abierto;
}

std::shared_ptr<reports::Documento> abreMayor(Libros& l, DBEngine& motor) {
  return abre(l, motor, "May1.rpt",
              "{SqlDiarioPrincipal.Subcuenta}>='00000000' and "
              "{SqlDiarioPrincipal.Subcuenta}<='99999999' and {SqlDiarioPrincipal.Fecha} >= "
              "date(2024,1,1) and {SqlDiarioPrincipal.Fecha} <= date(2024,12,31)");
}

std::shared_ptr<reports::Documento> abreDiario(Libros& l, DBEngine& motor) {
  return abre(l, motor, "Diario.rpt",
              "{SqlDiarioPrincipal.Fecha} >= date(2024,1,1) and {SqlDiarioPrincipal.Fecha} <= "
              "date(2024,12,31) and {SqlDiarioPrincipal.NAsiento}>=0 and "
              "{SqlDiarioPrincipal.NAsiento}<=9999999999999");
}

// Megabytes that the process keeps in memory.
double residente() {
  QFile estado("/proc/self/status");
  if (!estado.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& linea : estado.readAll().split('\n')) {
    if (linea.startsWith("VmRSS:")) return linea.mid(6).chopped(2).trimmed().toDouble() / 1024;
  }
  return 0;
}

using Abre = std::shared_ptr<reports::Documento> (*)(Libros&, DBEngine&);

void primera_librano(benchmark::State& estado, Abre abre) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    benchmark::DoNotOptimize(abre(l, motor)->pagina(1));
  }
}

void ultima_librano(benchmark::State& estado, Abre abre) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    const auto documento = abre(l, motor);
    documento->cuenta();
    benchmark::DoNotOptimize(documento->pagina(documento->paginas()));
  }
}

// A text that no page has.
void busqueda_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    reports::TareaBusqueda tarea(abreDiario(l, motor), "no está", {});
    while (tarea.paso()) continue;
    if (tarea.hallado()) estado.SkipWithError("se ha hallado");
  }
}

void pdf_librano(benchmark::State& estado) {
  constexpr double kCrecimiento = 64;  // megabytes, keys of the lines included
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    const auto documento = abreDiario(l, motor);
    reports::TareaPdf tarea(documento, l.carpeta() + "diario.pdf", "Diario", 1, INT_MAX);
    double comienzo = 0;
    while (tarea.paso()) {
      if (comienzo == 0 && tarea.hecho() > 100) comienzo = residente();
    }
    if (comienzo > 0 && residente() > comienzo + kCrecimiento)
      estado.SkipWithError("la memoria crece con las páginas");
  }
}

void directo(benchmark::State& estado, const char* sql) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    Directo base(l.rutaSistema());
    benchmark::DoNotOptimize(Directo::recorre(base.prepara(sql)));
  }
}

void sumas_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  for (auto _ : estado) {
    DBEngine motor;
    const auto documento = abre(l, motor, "SumSalN4.rpt",
                                "{Diario.Subcuenta} >= '00000000' and {Diario.Subcuenta} <= "
                                "'99999999' and {@mes} >= 01 and {@Mes} <= 12");
    documento->cuenta();
    benchmark::DoNotOptimize(documento->pagina(documento->paginas()));
  }
}

constexpr const char* kTodas =
    "SELECT NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe FROM Diario ORDER BY NAsiento, "
    "rowid";

constexpr const char* kMayor =
    "SELECT Subcuenta, Fecha, NAsiento, Descripcion, DH, Importe, Saldo FROM Diario ORDER BY "
    "Subcuenta, Fecha, NAsiento, NLinea";
constexpr const char* kPrimeraMayor =
    "SELECT Subcuenta, Fecha, NAsiento, Descripcion, DH, Importe, Saldo FROM Diario ORDER BY "
    "Subcuenta, Fecha, NAsiento, NLinea LIMIT 60";

BENCHMARK_CAPTURE(primera_librano, diario, abreDiario)
    ->Name("diario, primera página/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(
    directo, primera,
    "SELECT NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe FROM Diario ORDER BY "
    "NAsiento, rowid LIMIT 60")
    ->Name("diario, primera página/directo")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(ultima_librano, diario, abreDiario)
    ->Name("diario, última página/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(directo, ultima, kTodas)->Name("diario, última página/directo")->Apply(tamanos);
BENCHMARK(busqueda_librano)->Name("diario, búsqueda/librano")->Apply(tamanos);
BENCHMARK_CAPTURE(directo, busqueda,
                  "SELECT COUNT(*) FROM (SELECT Descripcion FROM Diario ORDER BY NAsiento, rowid) "
                  "WHERE Descripcion LIKE '%no está%'")
    ->Name("diario, búsqueda/directo")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(primera_librano, mayor, abreMayor)
    ->Name("mayor, primera página/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(directo, primeraMayor, kPrimeraMayor)
    ->Name("mayor, primera página/directo")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(ultima_librano, mayor, abreMayor)
    ->Name("mayor, última página/librano")
    ->Apply(tamanos);
BENCHMARK_CAPTURE(directo, ultimaMayor, kMayor)
    ->Name("mayor, última página/directo")
    ->Apply(tamanos);
BENCHMARK(pdf_librano)->Name("diario en PDF/librano")->Apply(tamanos)->Iterations(1);
BENCHMARK_CAPTURE(directo, pdf, kTodas)->Name("diario en PDF/directo")->Apply(tamanos);
BENCHMARK(sumas_librano)->Name("sumas y saldos/librano")->Apply(tamanos);
BENCHMARK_CAPTURE(directo, sumas,
                  "SELECT Subcuenta, SUM(CASE WHEN DH='D' THEN Importe ELSE 0 END), SUM(CASE WHEN "
                  "DH='D' THEN 0 ELSE Importe END) FROM Diario GROUP BY Subcuenta")
    ->Name("sumas y saldos/directo")
    ->Apply(tamanos);

}  // namespace
