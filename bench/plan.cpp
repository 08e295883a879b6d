// The plan browser over fifty thousand subcuentas: coming up, and following each letter.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>

#include "accounts/registro.h"
#include "engine/dbengine.h"
#include "libros.h"
#include "toolkit/cajasqt.h"
#include "toolkit/contexto.h"
#include "toolkit/formulario.h"
#include "toolkit/registro.h"

namespace {

using banco::Directo;
using banco::Libros;

constexpr int kSubcuentas = 50'000;
constexpr const char* kEmpresa = "Plan";

// Names of twelve letters that repeat from run to run.
QByteArray nombre(quint32& semilla) {
  QByteArray letras(12, 'a');
  for (char& letra : letras) {
    semilla = semilla * 1664525 + 1013904223;
    letra = static_cast<char>('a' + (semilla >> 16) % 26);
  }
  return letras;
}

// A company with so many subcuentas; the system path of its file.
const QString& fichero() {
  static QString ruta;
  if (!ruta.isEmpty()) return ruta;
  const Libros& libros = Libros::de(10'000);
  QDir(libros.carpeta()).mkpath(kEmpresa);
  ruta = libros.copia(QString(kEmpresa) + "/Conta.MDB");
  Directo directo(ruta);
  directo.ejecuta("BEGIN; DELETE FROM Subcuentas");
  sqlite3_stmt* alta = directo.prepara(
      "INSERT INTO Subcuentas (Subcuenta, Cuenta, Descripcion) VALUES (?1, substr(?1,1,3), ?2)");
  quint32 semilla = 1;
  for (int i = 0; i < kSubcuentas; ++i) {
    const QByteArray codigo = QByteArray::number(10'000'000 + i * 1'400);
    const QByteArray descripcion = nombre(semilla);
    sqlite3_bind_text(alta, 1, codigo.constData(), -1, SQLITE_STATIC);
    sqlite3_bind_text(alta, 2, descripcion.constData(), -1, SQLITE_STATIC);
    Directo::recorre(alta);
  }
  directo.ejecuta("COMMIT");
  return ruta;
}

// The browser alone, without a main window behind it.
struct Consulta {
  Consulta() {
    fichero();
    ctx.cajas = &cajas;
    ctx.formularios = &formularios;
    ctx.sesion.DirDatos = Libros::de(10'000).carpeta();
    ctx.sesion.EmpresaActual = kEmpresa;
    ctx.sesion.DigitosCuenta = 3;
    ctx.sesion.DigitosSubcuenta = 8;
    registraAccounts(formularios);
    abre();
  }
  ~Consulta() { formularios.abierto("FrmVisualizaPlan")->descargar(); }
  void abre() {
    formularios.cambiarA("FrmVisualizaPlan");
    QCoreApplication::processEvents();
  }
  void teclea(const char* texto) {
    auto* plan = formularios.abierto("FrmVisualizaPlan");
    plan->findChild<QLineEdit*>("TxtBusquedaCuentas")->setText(texto);
    QCoreApplication::processEvents();
  }

  DBEngine motor;
  Contexto ctx{motor};
  CajasQt cajas{ctx.motor};
  Registro formularios{ctx};
};

void abre_librano(benchmark::State& estado) {
  Consulta consulta;
  for (auto _ : estado) consulta.abre();
}

void abre_directo(benchmark::State& estado) {
  Directo directo(fichero());
  sqlite3_stmt* claves = directo.prepara("SELECT rowid FROM Subcuentas ORDER BY Subcuenta");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(claves));
}

// One text after another, each found, none twice in a row.
void teclea_librano(benchmark::State& estado, std::vector<const char*> textos) {
  Consulta consulta;
  consulta.teclea(textos.back());
  size_t i = 0;
  for (auto _ : estado) consulta.teclea(textos[i++ % textos.size()]);
}

void teclea_directo(benchmark::State& estado, const char* sql, std::vector<const char*> textos) {
  Directo directo(fichero());
  sqlite3_stmt* busca = directo.prepara(sql);
  size_t i = 0;
  for (auto _ : estado) {
    sqlite3_bind_text(busca, 1, textos[i++ % textos.size()], -1, SQLITE_STATIC);
    benchmark::DoNotOptimize(Directo::recorre(busca));
  }
}

void filas(benchmark::internal::Benchmark* b) {
  b->Arg(kSubcuentas)->UseRealTime();
}

const std::vector<const char*> kNombres = {"m", "ma", "mar", "marb", "zz", "zzz", "a", "abc"};
const std::vector<const char*> kCodigos = {"4", "43", "430", "4300", "7", "71", "1", "12"};
const std::vector<const char*> kOrdenes = {"m", "4"};

BENCHMARK(abre_librano)->Name("abrir el plan/librano")->Apply(filas);
BENCHMARK(abre_directo)->Name("abrir el plan/directo")->Apply(filas);
BENCHMARK_CAPTURE(teclea_librano, nombres, kNombres)
    ->Name("plan, una letra del nombre/librano")
    ->Apply(filas);
BENCHMARK_CAPTURE(teclea_directo, nombres,
                  "SELECT Subcuenta FROM Subcuentas WHERE upper(Descripcion) GLOB upper(?1) || '*' "
                  "ORDER BY Descripcion LIMIT 1",
                  kNombres)
    ->Name("plan, una letra del nombre/directo")
    ->Apply(filas);
BENCHMARK_CAPTURE(teclea_librano, codigos, kCodigos)
    ->Name("plan, una cifra del código/librano")
    ->Apply(filas);
BENCHMARK_CAPTURE(teclea_directo, codigos,
                  "SELECT Subcuenta FROM Subcuentas WHERE Subcuenta GLOB ?1 || '*' "
                  "ORDER BY Subcuenta LIMIT 1",
                  kCodigos)
    ->Name("plan, una cifra del código/directo")
    ->Apply(filas);
BENCHMARK_CAPTURE(teclea_librano, ordenes, kOrdenes)
    ->Name("plan, otro orden/librano")
    ->Apply(filas);

}  // namespace
