// The main window: opening a company, a line posted by its keys and redrawn, and what it holds in
// memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include "common/rutas.h"
#include "common/version.h"
#include "engine/dbengine.h"
#include "journal/registro.h"
#include "toolkit/formulario.h"
#include "toolkit/principal.h"
#include "ventana.h"

namespace banco {

void CajasVistas::ensenaModal(QDialog& dialogo) {
  dialogo.show();
  QApplication::processEvents();
  dialogo.grab();
  dialogo.done(0);
}

Ventana::Ventana(const Libros& libros, const QString& empresa) : cajas(ctx.motor), registro(ctx) {
  ctx.reloj = &reloj;
  ctx.cajas = &cajas;
  ctx.formularios = &registro;
  ctx.carpetaPrograma = rutaPrograma(libros.carpeta());
  ctx.terminar = [] {};
  ctx.sesion.DirDatos = ctx.carpetaPrograma;
  ctx.sesion.EmpresaActual = empresa;
  ctx.sesion.VersionPrograma = ctx.sesion.VersionConfig = versionDelPrograma();
  ctx.sesion.DecimalOrigen = ".";
  ctx.sesion.DecimalDestino = ",";
  registraJournal(registro);
  registro.cambiarA("FrmMenu");
  QApplication::processEvents();
}

Ventana::~Ventana() {
  registro.abierto("FrmMenu")->descargar();
}

}  // namespace banco

namespace {

using banco::Libros;
using banco::libros;
using banco::tamanos;
using banco::Ventana;

void abrirEmpresa(benchmark::State& estado) {
  const Libros& l = libros(estado);
  for (auto _ : estado) {
    const Ventana ventana(l);
    benchmark::DoNotOptimize(ventana.ctx.principal);
  }
}

// From the key Enter in the amount to the line on the disk, the totals and the grid redrawn.
void asentarConTeclas(benchmark::State& estado) {
  const Ventana ventana(libros(estado));
  Principal& menu = *ventana.ctx.principal;
  menu.TxtAsiento().setText(QString::number(libros(estado).lineas() / 3 + 1));
  menu.TxtSubcuenta().setText(banco::kSubcuenta);
  menu.ventana()->findChild<QLineEdit*>("TxtFecha")->setText("15/06/2024");  // of the year at hand
  menu.ventana()->findChild<QComboBox*>("TxtConcepto")->setEditText("Apunte de prueba");
  auto* importe = menu.ventana()->findChild<QLineEdit*>("TxtDebeHaber");
  for (auto _ : estado) {
    importe->setFocus();
    importe->setText("123,45");
    QTest::keyClick(importe, Qt::Key_Return);
    QApplication::processEvents();
  }
}

long residente() {
  QFile f("/proc/self/statm");
  if (!f.open(QIODevice::ReadOnly)) return 0;
  return f.readAll().split(' ').value(1).toLong() * sysconf(_SC_PAGESIZE) / 1024 / 1024;
}

// What the open journal adds to the program's memory, in MB.
void memoria(benchmark::State& estado) {
  Libros& l = libros(estado);
  const long antes = residente();
  long despues = antes;
  for (auto _ : estado) {
    const Ventana ventana(l);
    despues = residente();
  }
  fprintf(stderr, "  memoria con %d lineas abiertas: %ld MB, %ld mas que antes\n", l.lineas(),
          despues, despues - antes);
}

BENCHMARK(abrirEmpresa)->Name("abrir la empresa/librano")->Apply(tamanos);
BENCHMARK(asentarConTeclas)->Name("asentar con teclas/librano")->Apply(tamanos);
BENCHMARK(memoria)->Name("memoria/librano")->Apply(tamanos)->Iterations(1);

// A new company's file, beside the same objects and rows written from a dump in one commit.
void crearEmpresa(benchmark::State& estado) {
  const Libros& l = Libros::de(10'000);
  DBEngine motor;
  for (auto _ : estado) banco::creaFichero(motor, l.carpeta() + "Nueva.MDB");
}

void crearEmpresaDirecto(benchmark::State& estado) {
  const Libros& l = Libros::de(10'000);
  DBEngine motor;
  banco::creaFichero(motor, l.carpeta() + "Modelo.MDB");
  const QList<QByteArray> ordenes = banco::volcado(l.carpeta() + "Modelo.MDB");
  const QString destino = l.carpeta() + "Volcado.MDB";
  for (auto _ : estado) {
    QFile::remove(destino);
    banco::Directo directo(destino);
    directo.ejecuta("BEGIN");
    for (const QByteArray& orden : ordenes) directo.ejecuta(orden.constData());
    directo.ejecuta("COMMIT");
  }
}

BENCHMARK(crearEmpresa)
    ->Name("crear la empresa/librano")
    ->Arg(0)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(crearEmpresaDirecto)
    ->Name("crear la empresa/directo")
    ->Arg(0)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
