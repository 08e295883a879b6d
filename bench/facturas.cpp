// An invoice accepted over journals of ten thousand, a hundred thousand and a million lines, with
// a row of the register for each five of them; the register numbered anew, and its book. What the
// disk takes to commit is left out on both sides.
#include <benchmark/benchmark.h>

#include "engine/datacontrol.h"
#include "iva/grabaiva.h"
#include "iva/mantenimientoiva.h"
#include "journal/totales.h"
#include "libros.h"
#include "reports/informe.h"
#include "reports/pintor.h"

namespace {

using banco::Directo;
using banco::Libros;
using banco::libros;
using banco::tamanos;

const char* const kMascara = "#,##0.00 ;-#,##0.00";
const char* const kDiario = "Select * from SqlDiarioPrincipalBlanco ";

// A copy of the journal with its register full.
QString conRegistro(const Libros& l, const char* nombre) {
  const QString ruta = l.copia(QLatin1String(nombre));
  Directo directo(ruta);
  const QByteArray filas = QByteArray::number(l.lineas() / 5);
  const QByteArray llena =
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + filas +
      ") INSERT INTO RSIVA(Codigo,CliPro,Factura,Base,TipoIVA,Asiento,CtaIVA,FechaC,Fecha,CtaRE,"
      "CtaCon,IVA,Recargo,PorcenIVA,PorcenREC,Neto) SELECT printf('S%010d',i),'40000001','F-'||i,"
      "100,'03',i,'47200001','2024-03-15','2024-03-15','47500001','60000001',16,0,16,0,116 FROM n";
  const QByteArray contador = "UPDATE Empresa SET NLinIVAS=" + filas;
  directo.ejecuta(llena.constData());
  directo.ejecuta(contador.constData());
  return ruta;
}

FacturaIVA factura(int orden) {
  FacturaIVA f;
  f.NOrden = QString::number(orden);
  f.CodigoProveedor = banco::kSubcuenta;
  f.NombreProveedor = "Titular de prueba";
  f.NumFactura = "F-7";
  f.Fecha = f.FechaContable = "15/03/2024";
  f.AsientoContable = "Auto--";
  f.Base = "100,00 ";
  f.Iva = "03";
  f.CuentaIva = "47200001";
  f.CuentaRecargo = "47500001";
  f.Contrapartida = "60000001";
  f.PorcenIVA = 16;
  calculaDesdeBase(f, kMascara);
  return f;
}

// What the accept button sets going: the row, the lines, the asiento on show and the totals.
void acepta_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  conRegistro(l, "Facturas.MDB");
  const QString ruta = l.carpeta() + "Facturas.MDB";
  DataControl diario(l.motor()), empresa(l.motor()), registro(l.motor()), total(l.motor());
  empresa.bind(ruta, "Select * from Empresa");
  registro.setDatabaseName(ruta);
  int orden = l.lineas() / 5;
  for (auto _ : estado) {
    estado.PauseTiming();
    diario.bind(ruta, QLatin1String(kDiario) + "order by nasiento");
    diario.MoveLast();
    estado.ResumeTiming();
    GrabadoIVA grabado;
    grabaFactura(factura(++orden), {LibroIVA::Soportado, false}, kMascara,
                 {registro, diario, empresa}, grabado);
    diario.bind(ruta, QLatin1String(kDiario) + "where Nasiento =" + grabado.asiento);
    diario.MoveLast();
    benchmark::DoNotOptimize(totalDiario(total, ruta));
    benchmark::DoNotOptimize(totalCuenta(total, ruta, banco::kSubcuenta));
    benchmark::DoNotOptimize(totalAsiento(total, ruta, grabado.asiento));
    estado.PauseTiming();
    l.motor().flush();
    estado.ResumeTiming();
  }
}

// The same rows by prepared statements, with the sums and indexes that the file keeps.
void acepta_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistro(l, "FacturasDirecto.MDB"));
  sqlite3_stmt* const ordenes[] = {
      directo.prepara("UPDATE Empresa SET NLinIVAS=NLinIVAS+1, Asiento=Asiento+1"),
      directo.prepara(
          "INSERT INTO RSIVA(Codigo,CliPro,Factura,Base,TipoIVA,Asiento,CtaIVA,FechaC,Fecha,CtaRE,"
          "CtaCon,IVA,Recargo,PorcenIVA,PorcenREC,Neto) SELECT printf('S%010d',NLinIVAS),"
          "'43000100','F-7',100,'03',Asiento,'47200001','2024-03-15','2024-03-15','47500001',"
          "'60000001',16,0,16,0,116 FROM Empresa")};
  const struct {
    const char *subcuenta, *lado, *importe;
  } partes[] = {
      {"60000001", "D", "100"}, {"47200001", "D", "16"}, {banco::kSubcuenta, "H", "-116"}};
  std::vector<sqlite3_stmt*> lineas;
  for (const auto& [subcuenta, lado, importe] : partes) {
    const QByteArray linea =
        QByteArray(
            "INSERT INTO Diario(NLinea,NAsiento,Fecha,Subcuenta,Descripcion,DH,Importe,"
            "ApunteIVA,FacturaZuri,EmpresaZuri) SELECT NLinDiario,Asiento,'2024-03-15','") +
        subcuenta + "','De su fra.F-7 Titular de prueba','" + lado + "'," + importe +
        ",printf('S%010d',NLinIVAS),'','' FROM Empresa";
    lineas.push_back(directo.prepara(linea.constData()));
    lineas.push_back(directo.prepara("UPDATE Empresa SET NLinDiario=NLinDiario+1"));
  }
  for (auto _ : estado) {
    estado.PauseTiming();
    directo.ejecuta("BEGIN IMMEDIATE");
    estado.ResumeTiming();
    for (sqlite3_stmt* orden : ordenes) Directo::recorre(orden);
    for (sqlite3_stmt* linea : lineas) Directo::recorre(linea);
    estado.PauseTiming();
    directo.ejecuta("COMMIT");
    estado.ResumeTiming();
  }
}

// What comes up when a line of an invoice is opened: its row and its asiento.
void abre_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  conRegistro(l, "Facturas.MDB");
  const QString ruta = l.carpeta() + "Facturas.MDB";
  DataControl diario(l.motor()), registro(l.motor());
  const QString asiento = QString::number(l.lineas() / 6);
  for (auto _ : estado) {
    registro.bind(ruta, "select * from RSIVA where asiento=" + asiento);
    diario.bind(ruta, QLatin1String(kDiario) + "where Nasiento =" + asiento);
    benchmark::DoNotOptimize(leeFila(registro.Recordset()));
  }
}

void abre_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistro(l, "FacturasDirecto.MDB"));
  const QByteArray asiento = QByteArray::number(l.lineas() / 6);
  sqlite3_stmt* fila =
      directo.prepara(("SELECT * FROM RSIVA WHERE Asiento=" + asiento).constData());
  sqlite3_stmt* lineas =
      directo.prepara(("SELECT * FROM Diario WHERE NAsiento=" + asiento).constData());
  for (auto _ : estado) {
    benchmark::DoNotOptimize(Directo::recorre(fila));
    benchmark::DoNotOptimize(Directo::recorre(lineas));
  }
}

// The register numbered anew, with the code on all the lines of each asiento.
void renumera_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  conRegistro(l, "Facturas.MDB");
  const auto empresa = l.motor().Workspaces(0).OpenDatabase(l.carpeta() + "Facturas.MDB");
  for (auto _ : estado) {
    renumeraIVA(*empresa, {.repercutido = true, .soportado = true},
                [&](int, int) { l.motor().breathe(); });
    l.motor().flush();
  }
}

void renumera_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistro(l, "FacturasDirecto.MDB"));
  sqlite3_stmt* filas = directo.prepara("SELECT rowid, Asiento FROM RSIVA ORDER BY Fecha");
  sqlite3_stmt* paso = directo.prepara("UPDATE RSIVA SET Codigo=?1 WHERE rowid=?2");
  sqlite3_stmt* lineas = directo.prepara("UPDATE Diario SET ApunteIVA=?1 WHERE NAsiento=?2");
  const auto pon = [](sqlite3_stmt* orden, const QByteArray& codigo, sqlite3_int64 clave) {
    sqlite3_bind_text(orden, 1, codigo.constData(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int64(orden, 2, clave);
    Directo::recorre(orden);
  };
  for (auto _ : estado) {
    std::vector<std::pair<sqlite3_int64, sqlite3_int64>> registro;
    while (sqlite3_step(filas) == SQLITE_ROW)
      registro.emplace_back(sqlite3_column_int64(filas, 0), sqlite3_column_int64(filas, 1));
    sqlite3_reset(filas);
    directo.ejecuta("BEGIN IMMEDIATE");
    int numero = l.lineas();
    for (const auto& [fila, asiento] : registro) pon(paso, QByteArray::number(++numero), fila);
    numero = 0;
    for (const auto& [fila, asiento] : registro) {
      const QByteArray codigo = "S" + QByteArray::number(++numero).rightJustified(10, '0');
      pon(paso, codigo, fila);
      pon(lineas, codigo, asiento);
    }
    directo.ejecuta("COMMIT");
  }
}

// The first page of the book of a year.
void libro_librano(benchmark::State& estado) {
  Libros& l = libros(estado);
  const Reloj reloj;
  conRegistro(l, "Facturas.MDB");
  for (auto _ : estado) {
    DBEngine motor;
    std::shared_ptr<reports::Documento> abierto;
    Informe informe(motor, reloj,
                    {[] { return QStringList{"PDF"}; },
                     [&](auto documento, const QString&) { abierto = std::move(documento); }});
    informe.ReportFileName = LIBRANO_IMPRESOS "IVALibro.rpt";
    informe.DataFiles(0) = l.carpeta() + "Facturas.MDB";
    informe.SelectionFormula = "{SqlIva.TipoSR}='S' and {@Mes}>=1 and {@Mes}<=12";
    informe.PrintReport();
    benchmark::DoNotOptimize(abierto->pagina(1));
  }
}

void libro_directo(benchmark::State& estado) {
  Libros& l = libros(estado);
  Directo directo(conRegistro(l, "FacturasDirecto.MDB"));
  sqlite3_stmt* filas = directo.prepara(
      "SELECT * FROM RSIVA WHERE substr(Codigo,1,1)='S' AND substr(Fecha,6,2) BETWEEN '01' AND "
      "'12' ORDER BY Codigo");
  for (auto _ : estado) benchmark::DoNotOptimize(Directo::recorre(filas));
}

BENCHMARK(acepta_librano)->Name("aceptar una factura/librano")->Apply(tamanos)->Iterations(30);
BENCHMARK(acepta_directo)->Name("aceptar una factura/directo")->Apply(tamanos)->Iterations(30);
BENCHMARK(abre_librano)->Name("abrir una factura/librano")->Apply(tamanos);
BENCHMARK(abre_directo)->Name("abrir una factura/directo")->Apply(tamanos);
BENCHMARK(renumera_librano)->Name("renumerar IVA/librano")->Apply(tamanos)->Iterations(1);
BENCHMARK(renumera_directo)->Name("renumerar IVA/directo")->Apply(tamanos)->Iterations(1);
BENCHMARK(libro_librano)->Name("libro de IVA, primera/librano")->Apply(tamanos);
BENCHMARK(libro_directo)->Name("libro de IVA, primera/directo")->Apply(tamanos);

}  // namespace
