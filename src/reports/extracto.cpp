#include "reports/extracto.h"

#include "common/comillas.h"
#include "common/formato.h"
#include "engine/dbengine.h"

namespace {

QString sentencia(const char* columnas, const QString& subcuenta) {
  return QStringLiteral(
             "Select %1 from SqlDiarioPrincipal where subcuenta =%2 "
             "order by Fecha, NAsiento,Nlinea")
      .arg(QLatin1String(columnas), entreComillas(subcuenta));
}

}  // namespace

QString sentenciaExtracto(const QString& subcuenta) {
  return sentencia("*", subcuenta);
}

void escribeSaldos(Database& empresa, const QString& subcuenta, const QString& mascara) {
  // No more than is added and written: a busy subcuenta has a hundred thousand lines, and the
  // screen waits for them.
  const auto lineas = empresa.OpenRecordset(sentencia("Debe, Haber, Saldo", subcuenta));
  enum Columnas { Debe, Haber, Saldo };
  double saldo = 0;
  for (; !lineas->Eof(); lineas->MoveNext()) {
    const Variant debe = lineas->Fields(Debe).Value();
    const Variant haber = lineas->Fields(Haber).Value();
    const double importe =
        (debe.isNull() ? 0 : debe.number()) + (haber.isNull() ? 0 : haber.number());
    saldo += mascara.isEmpty() ? importe
                               : ImporteDe(Format(importe, mascara), mascara).value_or(importe);
    // A balance that stands already isn't written again: most lines of a ledger never change.
    if (lineas->Fields(Saldo).Value() == Variant(saldo)) continue;
    lineas->Edit();
    lineas->Fields(Saldo) = saldo;
    lineas->Update();
  }
}
