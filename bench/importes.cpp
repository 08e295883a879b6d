// The journal of another package brought into a new company, next to the same rows written by one
// prepared statement into a table with the same indexes and sums.
#include <benchmark/benchmark.h>

#include <QFile>

#include "libros.h"
#include "soporte/tabladbf.h"
#include "transfer/importarcontanet.h"
#include "transfer/importarcontaplus.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::unaVez;

// The lines of the measures' journal, by the columns that are brought in.
constexpr const char* kLineas =
    "SELECT NAsiento, strftime('%Y%m%d', Fecha), Subcuenta, Descripcion, "
    "CASE WHEN DH='D' THEN Importe ELSE 0 END, CASE WHEN DH='D' THEN 0 ELSE -Importe END "
    "FROM Diario ORDER BY NLinea";

// Writes the journal as ContaPlus keeps it; the folder.
QString carpetaContaplus(const Libros& l) {
  const QString carpeta = l.carpeta() + "Plus" + QString::number(l.lineas());
  EscritorDbf tabla(columnasDeDiario());
  Directo directo(l.rutaSistema());
  sqlite3_stmt* lineas = directo.prepara(kLineas);
  const auto texto = [&](int columna) {
    return QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(lineas, columna)));
  };
  const auto importe = [&](int columna) {
    return QByteArray::number(sqlite3_column_double(lineas, columna), 'f', 2);
  };
  while (sqlite3_step(lineas) == SQLITE_ROW)
    tabla.registro({texto(0),
                    texto(1),
                    texto(2),
                    {},
                    {},
                    texto(3),
                    {},
                    {},
                    {},
                    {},
                    {},
                    {},
                    {},
                    {},
                    {},
                    {},
                    importe(4),
                    importe(5)});
  tabla.graba(carpeta + "/Diario.dbf");
  return carpeta;
}

template <class Importa>
void importa(benchmark::State& estado, Importa&& trae) {
  const QString ruta = libros(estado).carpeta() + "Importada.MDB";
  DBEngine motor;
  for (auto _ : estado) {
    estado.PauseTiming();
    banco::creaFichero(motor, ruta);
    const auto empresa = motor.Workspaces(0).OpenDatabase(ruta);
    estado.ResumeTiming();
    trae(*empresa, [&motor](int, int) { motor.breathe(); });
    motor.flush();
  }
}

void contaplus_librano(benchmark::State& estado) {
  const QString carpeta = carpetaContaplus(libros(estado));
  importa(estado, [&](Database& empresa, const Avance& avance) {
    contaplus::importaDiario(empresa, carpeta, avance);
  });
}

// The same lines as ContaNet exports them; the file.
QString ficheroContanet(const Libros& l) {
  const QString ruta = l.carpeta() + "Diario" + QString::number(l.lineas()) + ".csv";
  QFile fichero(ruta);
  if (!fichero.open(QIODevice::WriteOnly)) qFatal("%s", qPrintable(ruta));
  Directo directo(l.rutaSistema());
  sqlite3_stmt* lineas = directo.prepara(
      "SELECT strftime('%d/%m/%Y', Fecha)||','||Subcuenta||',,,1,'||NAsiento||',\"'||Descripcion||"
      "'\",'||(DH='D')||','||printf('%.2f',Importe)||',,,,,,,,,,,,,' FROM Diario ORDER BY NLinea");
  while (sqlite3_step(lineas) == SQLITE_ROW) {
    fichero.write(reinterpret_cast<const char*>(sqlite3_column_text(lineas, 0)));
    fichero.write("\r\n");
  }
  return ruta;
}

void contanet_librano(benchmark::State& estado) {
  const QString fichero = ficheroContanet(libros(estado));
  importa(estado, [&](Database& empresa, const Avance& avance) {
    contanet::importa(empresa, {{}, fichero, {}, {}}, {3, 8, "#,##0.00 ;-#,##0.00"}, avance);
  });
}

// In the order in which the file's own statements would be run by any tool.
void importa_directo(benchmark::State& estado) {
  const QString ruta = libros(estado).carpeta() + "ImportadaDirecto.MDB";
  for (auto _ : estado) {
    estado.PauseTiming();
    DBEngine motor;
    banco::creaFichero(motor, ruta);
    motor.flush();
    Directo directo(QString(ruta).replace('\\', '/'));
    const QByteArray otra = "ATTACH '" + libros(estado).rutaSistema().toUtf8() + "' AS origen";
    directo.ejecuta(otra.constData());
    estado.ResumeTiming();
    directo.ejecuta(
        "INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe) "
        "SELECT NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe FROM origen.Diario "
        "ORDER BY NLinea");
  }
}

BENCHMARK(contaplus_librano)->Name("importar ContaPlus/librano")->Apply(unaVez);
BENCHMARK(contanet_librano)->Name("importar ContaNet/librano")->Apply(unaVez);
BENCHMARK(importa_directo)->Name("importar ContaNet/directo")->Apply(unaVez);
BENCHMARK(importa_directo)->Name("importar ContaPlus/directo")->Apply(unaVez);

}  // namespace
