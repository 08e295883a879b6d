#include "yearend/ejercicio.h"

#include "common/formato.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "journal/apunte.h"

namespace {

std::unique_ptr<Recordset> abreContadores(Database& empresa) {
  return empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
}

// Lines are only added, so that those which are there needn't be read.
std::unique_ptr<Recordset> abreDiario(Database& empresa) {
  return empresa.OpenRecordset(
      QStringLiteral("Select * from SqlDiarioPrincipalBlanco where NAsiento = 0"));
}

Variant redondeado(double importe, const QString& mascara) {
  return importeEscrito(Format(importe, mascara), mascara);
}

// A set without rows raises 3021 before anything is done.
template <class PorFila>
void recorre(Recordset& filas, const Avance& avance, PorFila&& porFila) {
  filas.MoveLast();
  const int total = filas.RecordCount();
  int fila = 0;
  for (filas.MoveFirst(); !filas.Eof(); filas.MoveNext()) {
    avance(fila++, total);
    porFila();
  }
}

// The balances of the journal that meet a condition.
std::unique_ptr<Recordset> abreSaldos(Database& empresa, const QString& condicion) {
  return empresa.OpenRecordset(
      QStringLiteral("Select * from SqlDiarioSaldosCuentasTotal where SubcuentaDos") + condicion);
}

// The line that brings a subcuenta of this balance to zero.
Apunte contraSaldo(double saldo, const PasoAnual& paso) {
  Apunte apunte;
  apunte.NAsiento = paso.asiento;
  apunte.Fecha = paso.fecha;
  apunte.Descripcion = paso.descripcion;
  apunte.DH = saldo < 0 ? "D" : "H";
  apunte.Importe = redondeado(0 - saldo, paso.mascara);
  return apunte;
}

}  // namespace

// --- stocks -------------------------------------------------------------------------------------

// Kept: lines of one subcuenta, side and amount are one row there, and count once.
double valorDeExistencias(Database& empresa) {
  const auto filas = empresa.OpenRecordset(QStringLiteral("Select * from SqlRegularizaStock"));
  double valor = 0;
  for (; !filas->Eof(); filas->MoveNext()) {
    const Variant importe = filas->Fields(QStringLiteral("Importe")).Value();
    if (!importe.isNull()) valor += importe.number();
  }
  return valor;
}

void regularizaStocks(Database& empresa, const RegularizacionStocks& stocks, const PasoAnual& paso,
                      AsientoGrabado& grabado) {
  const auto contadores = abreContadores(empresa);
  const auto diario = abreDiario(empresa);
  const struct {
    QString subcuenta;
    const char* lado;
    Variant importe;
  } lineas[] = {
      {stocks.compras, "D", importeEscrito(stocks.iniciales, paso.mascara)},
      {stocks.existencias, "H", importeAlHaber(stocks.iniciales, paso.mascara)},
      {stocks.existencias, "D", importeEscrito(stocks.finales, paso.mascara)},
      {stocks.compras, "H", importeAlHaber(stocks.finales, paso.mascara)},
  };
  grabado.asiento = QString::number(proximoAsiento(*contadores));
  for (const auto& linea : lineas) {
    Apunte apunte;
    apunte.NAsiento = grabado.asiento;
    apunte.Fecha = paso.fecha;
    apunte.Subcuenta = linea.subcuenta;
    apunte.Descripcion = paso.descripcion;
    apunte.DH = linea.lado;
    apunte.Importe = linea.importe;
    apunte.TipoDiario = "R";
    grabado.apunta(grabaApunte(*diario, *contadores, apunte));
  }
  tomaAsiento(*contadores);
}

// --- result -------------------------------------------------------------------------------------

void barreGrupo(Database& empresa, QChar grupo, const QString& resultado, const PasoAnual& paso,
                const Avance& avance) {
  const auto contadores = abreContadores(empresa);
  const auto diario = abreDiario(empresa);
  const auto saldos = abreSaldos(empresa, QStringLiteral("='%1'").arg(grupo));
  recorre(*saldos, avance, [&] {
    const QString subcuenta = saldos->Fields(QStringLiteral("Subcuenta")).text();
    const double saldo = saldos->Fields(QStringLiteral("SaldoFinal")).number();
    Apunte apunte = contraSaldo(saldo, paso);
    apunte.Subcuenta = subcuenta;
    apunte.TipoDiario = "B";
    grabaApunte(*diario, *contadores, apunte);
    apunte.Subcuenta = resultado;
    apunte.Descripcion = paso.descripcion + u' ' + subcuenta;
    apunte.DH = saldo < 0 ? "H" : "D";
    apunte.Importe = redondeado(saldo, paso.mascara);
    grabaApunte(*diario, *contadores, apunte);
  });
}

// --- closing and opening ------------------------------------------------------------------------

void cierraEjercicio(Database& empresa, int ano, const PasoAnual& paso, const Avance& avance) {
  const auto contadores = abreContadores(empresa);
  const auto diario = abreDiario(empresa);
  const auto saldos = abreSaldos(empresa, QStringLiteral("<='5'"));
  const QString cero = Format(QStringLiteral("0"), paso.mascara);
  recorre(*saldos, avance, [&] {
    const double saldo = saldos->Fields(QStringLiteral("SaldoFinal")).number();
    if (Format(saldo, paso.mascara) == cero) return;
    Apunte apunte = contraSaldo(saldo, paso);
    apunte.Subcuenta = saldos->Fields(QStringLiteral("Subcuenta")).text();
    apunte.TipoDiario = "C";
    grabaApunte(*diario, *contadores, apunte);
  });
  ponFechaDeCierre(empresa, QStringLiteral("31/12/%1").arg(ano));
}

void abreEjercicio(Database& cerrada, Database& empresa, const PasoAnual& paso,
                   const Avance& avance, AsientoGrabado& grabado) {
  grabado.asiento = paso.asiento;
  const auto cierre = cerrada.OpenRecordset(
      QStringLiteral("Select * from SqlDiarioPrincipalBlanco where TipoDiario='C'"));
  if (cierre->Eof()) return;
  const auto contadores = abreContadores(empresa);
  const auto diario = abreDiario(empresa);
  const auto campo = [&](const char* nombre) {
    return cierre->Fields(QLatin1String(nombre)).Value();
  };
  recorre(*cierre, avance, [&] {
    const double importe = campo("Importe").number();
    Apunte apunte;
    apunte.NAsiento = paso.asiento;
    apunte.Fecha = paso.fecha;
    apunte.Subcuenta = campo("Subcuenta");
    apunte.Descripcion = paso.descripcion;
    apunte.DH = importe < 0 ? "D" : "H";
    apunte.Importe = redondeado(0 - importe, paso.mascara);
    apunte.Punteo = campo("Punteo");
    apunte.ApunteIVA = campo("ApunteIVA");
    apunte.ApunteCartera = campo("ApunteCartera");
    apunte.FacturaZuri = campo("FacturaZuri");
    apunte.EmpresaZuri = campo("EmpresaZuri");
    apunte.TipoFactura = campo("TipoFactura");
    apunte.TipoDiario = "A";
    grabado.apunta(grabaApunte(*diario, *contadores, apunte));
  });
}

QString fechaDeCierre(Database& empresa) {
  return abreContadores(empresa)->Fields(QStringLiteral("NoModificar")).display();
}

void ponFechaDeCierre(Database& empresa, const QString& fecha) {
  const auto fila = abreContadores(empresa);
  fila->Edit();
  completa(*fila, [&] {
    fila->Fields(QStringLiteral("NoModificar")) = fecha.isEmpty() ? Variant() : Variant(fecha);
  });
}
