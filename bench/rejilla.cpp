// The journal on the screen: shown, paged through and taken to its end, at any length.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>

#include "engine/datacontrol.h"
#include "libros.h"
#include "toolkit/rejilla.h"

namespace {

using banco::Libros;
using banco::tamanos;

// The main window's grid over its source.
struct Pantalla {
  explicit Pantalla(int lineas) : libros(Libros::de(lineas)), diario(libros.motor()) {
    rejilla.setMascara("#,##0.00 ;-#,##0.00");
    rejilla.enlazar(diario,
                    {{.campo = "Punteo", .titulo = "Punteo"},
                     {.campo = "Subcuenta", .titulo = "Subcuenta"},
                     {.campo = "Fecha", .titulo = "Fecha", .tipo = Columna::Tipo::Fecha},
                     {.campo = "NAsiento", .titulo = "NAsiento"},
                     {.campo = "Descripcion", .titulo = "Descripción", .ancho = 40},
                     {.campo = "Debe", .titulo = "Debe", .tipo = Columna::Tipo::Importe},
                     {.campo = "Haber", .titulo = "Haber", .tipo = Columna::Tipo::Importe}});
    rejilla.resize(1000, 500);
    rejilla.show();
    recarga();
  }
  void recarga() {
    diario.bind(libros.ruta(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    pinta();
  }
  void pinta() {
    QApplication::processEvents();
    rejilla.grab();
  }

  Libros& libros;
  DataControl diario;
  Rejilla rejilla;
};

void muestra(benchmark::State& estado) {
  Pantalla pantalla(static_cast<int>(estado.range(0)));
  for (auto _ : estado) pantalla.recarga();
}

void pagina(benchmark::State& estado) {
  Pantalla pantalla(static_cast<int>(estado.range(0)));
  for (auto _ : estado) {
    QKeyEvent tecla(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(&pantalla.rejilla, &tecla);
    pantalla.pinta();
  }
}

void fin(benchmark::State& estado) {
  Pantalla pantalla(static_cast<int>(estado.range(0)));
  for (auto _ : estado) {
    pantalla.diario.MoveFirst();
    pantalla.pinta();
    pantalla.diario.MoveLast();
    pantalla.pinta();
  }
}

// A process that moves over rows of the journal on show must hardly notice the grid.
void recorre(benchmark::State& estado) {
  Pantalla pantalla(static_cast<int>(estado.range(0)));
  for (auto _ : estado) {
    pantalla.diario.MoveFirst();
    for (int i = 0; i < 5000; ++i) pantalla.diario.MoveNext();
    pantalla.pinta();
  }
}

BENCHMARK(muestra)->Name("mostrar el diario/librano")->Apply(tamanos);
BENCHMARK(pagina)->Name("pasar una pagina/librano")->Apply(tamanos);
BENCHMARK(fin)->Name("al principio y al fin/librano")->Apply(tamanos);
BENCHMARK(recorre)->Name("recorrer 5000 lineas/librano")->Apply(tamanos);

}  // namespace
