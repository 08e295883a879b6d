#include "reports/extracto.h"

#include "foundation/data/recordset.h"
#include "foundation/formato.h"

QString sentenciaExtracto(const QString& subcuenta) {
  return "Select * from SqlDiarioPrincipal where subcuenta ='" + subcuenta +
         "' order by Fecha, NAsiento,Nlinea";
}

void escribeSaldos(Recordset& lineas, const QString& mascara) {
  const int debe = lineas.Ordinal("Debe");
  const int haber = lineas.Ordinal("Haber");
  const int columna = lineas.Ordinal("Saldo");
  double saldo = 0;
  for (; !lineas.Eof(); lineas.MoveNext()) {
    const Variant d = lineas.Fields(debe).Value();
    const Variant h = lineas.Fields(haber).Value();
    const double importe = (d.isNull() ? 0 : d.number()) + (h.isNull() ? 0 : h.number());
    saldo += mascara.isEmpty() ? importe : Variant(Format(importe, mascara)).number();
    // A balance that stands already isn't written again: most lines of a ledger never change.
    if (lineas.Fields(columna).Value() == Variant(saldo)) continue;
    lineas.Edit();
    lineas.Fields(columna) = saldo;
    lineas.Update();
  }
}
