#include "cartera/recibos.h"

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "engine/datacontrol.h"
#include "engine/filas.h"
#include "journal/apunte.h"

namespace {

// In the order in which they are written.
constexpr struct {
  const char* nombre;
  Variant Recibo::*valor;
} kCampos[] = {
    {"Vencimiento", &Recibo::Vencimiento},
    {"Subcuenta", &Recibo::Subcuenta},
    {"Titulo", &Recibo::Titulo},
    {"Factura", &Recibo::Factura},
    {"Tipo", &Recibo::Tipo},
    {"Banco", &Recibo::Banco},
    {"CA", &Recibo::CA},
    {"Importe", &Recibo::Importe},
};
const QString kFraZuri = QStringLiteral("FraZuri");

void escribe(DataControl& recibos, const Recibo& recibo) {
  completa(recibos, [&] {
    for (const auto& campo : kCampos)
      recibos.Fields(QLatin1String(campo.nombre)) = recibo.*campo.valor;
  });
}

// Those of one customer or supplier: as many as a posting needs to look at.
void abreLosDe(DataControl& recibos, const Variant& subcuenta) {
  recibos.setRecordSource(QStringLiteral("Select * from Recibos where Subcuenta=") +
                          nombreEntreComillas(subcuenta.display()));
  recibos.Refresh();
}

}  // namespace

Recibo leeRecibo(Recordset& filas) {
  Recibo recibo;
  for (const auto& campo : kCampos)
    recibo.*campo.valor = filas.Fields(QLatin1String(campo.nombre)).Value();
  recibo.FraZuri = filas.Fields(kFraZuri).Value();
  return recibo;
}

void situaEn(DataControl& recibos, const Recibo& recibo) {
  abreLosDe(recibos, recibo.Subcuenta);
  for (; !recibos.Eof(); recibos.MoveNext()) {
    if (leeRecibo(recibos.Recordset()) == recibo) return;
  }
  throw ErrorEjecucion(err::kRegistroEliminado);
}

void altaRecibo(DataControl& recibos, const Recibo& recibo) {
  abreLosDe(recibos, recibo.Subcuenta);
  recibos.AddNew();
  escribe(recibos, recibo);
}

void cambiaRecibo(DataControl& recibos, const Recibo& recibo) {
  recibos.Edit();
  escribe(recibos, recibo);
}

QString cargoAbono(const QString& subcuenta, const QString& cuentaProveedores) {
  return subcuenta.startsWith(cuentaProveedores) ? QStringLiteral("C") : QStringLiteral("A");
}

// Kept: the lines stand on the day that the recibo is due, whenever it is posted: that is the day
// of the bank's own statement.
void contabilizaRecibo(const ReciboTecleado& recibo, const QString& mascara,
                       const TablasRecibo& tablas, AsientoGrabado& grabado) {
  const bool cargo = recibo.CA == QLatin1String("C");
  grabado.asiento = QString::number(proximoAsiento(tablas.empresa));
  Apunte apunte;
  apunte.NAsiento = grabado.asiento;
  apunte.Fecha = recibo.Vencimiento;
  apunte.Descripcion = recibo.Titulo;
  apunte.FacturaZuri = tablas.recibos.Fields(kFraZuri).Value();
  apunte.TipoFactura = recibo.CA;
  const struct {
    const QString& subcuenta;
    const char* lado;
    Variant importe;
  } lineas[] = {
      {cargo ? recibo.Subcuenta : recibo.Banco, "D", importeEscrito(recibo.Importe, mascara)},
      {cargo ? recibo.Banco : recibo.Subcuenta, "H", importeAlHaber(recibo.Importe, mascara)}};
  for (const auto& linea : lineas) {
    apunte.Subcuenta = linea.subcuenta;
    apunte.DH = linea.lado;
    apunte.Importe = linea.importe;
    grabado.apunta(grabaApunte(tablas.diario, tablas.empresa, apunte));
  }
  tomaAsiento(tablas.empresa);
  tablas.recibos.Delete();
}

QString textoDeFallo(const ErrorEjecucion& error, Database& empresa,
                     const AsientoGrabado& grabado) {
  const bool estan =
      grabado.apuntes == 2 && quedaAlgo(error, [&] { return quedanApuntes(empresa, grabado); });
  if (!estan)
    return textoDeFallo(error, empresa, grabado, QStringLiteral("El recibo no está entero"));
  return error.descripcion() + QStringLiteral(
                                   " El recibo está en el diario, en el asiento %1, y "
                                   "sigue en la cartera: elimínelo de ella.")
                                   .arg(grabado.asiento);
}
