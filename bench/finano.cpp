// The year's end of a company with very many subcuentas, with its window open: the closing and the
// opening, each next to the same lines written by one loop of prepared statements.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include "journal/apunte.h"
#include "toolkit/principal.h"
#include "ventana.h"
#include "yearend/ejercicio.h"
#include "yearend/widgets/pasoanual.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::unaVez;
using banco::Ventana;

constexpr int kLineasPorSubcuenta = 20;

Libros& libros(const benchmark::State& estado) {
  const int lineas = static_cast<int>(estado.range(0));
  return Libros::de(lineas, lineas / kLineasPorSubcuenta);
}

const PasoAnual kCierre = {"99999999", "31/12/2024", "Asiento de cierre", "#,##0.00 ;-#,##0.00"};
const PasoAnual kApertura = {"0", "01/01/2025", "Asiento de apertura", "#,##0.00 ;-#,##0.00"};

// A company beside the one of the books, with the same lines.
QString copiaDeEmpresa(const Libros& l, const QString& nombre) {
  QDir(l.carpeta()).mkpath(nombre);
  return l.copia(nombre + "/Conta.MDB");
}

void cierra(const QString& ruta, const Avance& avance, DBEngine& motor) {
  const auto empresa = motor.Workspaces(0).OpenDatabase(ruta);
  cierraEjercicio(*empresa, 2024, kCierre, avance);
}

// Runs a step in the window of a company as its screen does, and tells the longest time for which
// the window was left alone: neither painted nor answering the system.
template <class Paso>
void enVentana(benchmark::State& estado, const QString& nombre, Paso&& paso) {
  Ventana ventana(libros(estado), nombre);
  qint64 pausa = 0;
  int latidos = 0;
  for (auto _ : estado) {
    QElapsedTimer reloj;
    QTimer latido;
    reloj.start();
    QObject::connect(&latido, &QTimer::timeout, [&] {
      pausa = std::max(pausa, reloj.restart());
      ++latidos;
    });
    latido.start(1);
    trabajaPasoAnual(ventana.ctx, {}, [&](const Avance& avance) { paso(ventana, avance); });
    pausa = std::max(pausa, reloj.elapsed());
  }
  fprintf(stderr, "  la ventana responde %d veces; lo más que espera: %lld ms\n", latidos, pausa);
}

void cierreLibrano(benchmark::State& estado) {
  copiaDeEmpresa(libros(estado), "Cierre");
  enVentana(estado, "Cierre", [](Ventana& ventana, const Avance& avance) {
    cierra(ventana.ctx.sesion.rutaEmpresa(), avance, ventana.motor);
  });
}

void aperturaLibrano(benchmark::State& estado) {
  const QString cerrada = copiaDeEmpresa(libros(estado), "Cerrada");
  {
    DBEngine motor;
    cierra(
        cerrada, [](int, int) {}, motor);
    motor.flush();
  }
  copiaDeEmpresa(libros(estado), "Apertura");
  enVentana(estado, "Apertura", [](Ventana& ventana, const Avance& avance) {
    Workspace& area = ventana.motor.Workspaces(0);
    const auto vieja = area.OpenDatabase(ventana.ctx.sesion.rutaEmpresa("Cerrada"));
    AsientoGrabado grabado;
    const auto nueva = area.OpenDatabase(ventana.ctx.sesion.rutaEmpresa());
    abreEjercicio(*vieja, *nueva, kApertura, avance, grabado);
  });
}

// One line for each balance, with its counter, in one commit.
void directo(benchmark::State& estado) {
  Directo d(copiaDeEmpresa(libros(estado), "Directo"));
  d.ejecuta("PRAGMA temp_store=MEMORY");
  sqlite3_stmt* saldos = d.prepara(
      "SELECT Subcuenta, round(SUM(Importe),2) FROM Diario WHERE Subcuenta<'6' GROUP BY Subcuenta");
  sqlite3_stmt* linea = d.prepara(
      "INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe,TipoDiario) "
      "SELECT NLinDiario,99999999,'2024-12-31',?1,'Asiento de cierre',?2,?3,'C' FROM Empresa");
  sqlite3_stmt* contador = d.prepara("UPDATE Empresa SET NLinDiario=NLinDiario+1");
  for (auto _ : estado) {
    d.ejecuta("BEGIN IMMEDIATE");
    while (sqlite3_step(saldos) == SQLITE_ROW) {
      const double saldo = sqlite3_column_double(saldos, 1);
      if (saldo == 0) continue;
      sqlite3_bind_value(linea, 1, sqlite3_column_value(saldos, 0));
      sqlite3_bind_text(linea, 2, saldo < 0 ? "D" : "H", -1, SQLITE_STATIC);
      sqlite3_bind_double(linea, 3, -saldo);
      Directo::recorre(linea);
      Directo::recorre(contador);
    }
    sqlite3_reset(saldos);
    d.ejecuta("COMMIT");
  }
}

BENCHMARK(cierreLibrano)->Name("cerrar el ejercicio/librano")->Apply(unaVez);
BENCHMARK(aperturaLibrano)->Name("abrir el ejercicio/librano")->Apply(unaVez);
BENCHMARK(directo)->Name("cerrar el ejercicio/directo")->Apply(unaVez);

}  // namespace
