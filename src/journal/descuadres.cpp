#include "journal/descuadres.h"

#include "common/formato.h"
#include "engine/recordset.h"

namespace {

double redondeado(const Variant& valor, const QString& mascara) {
  return valor.isNull() ? 0 : ImporteDe(Format(valor, mascara), mascara).value_or(0);
}

}  // namespace

QString restoDe(const Variant& debe, const Variant& haber, const QString& mascara) {
  return Format(redondeado(debe, mascara) + redondeado(haber, mascara), mascara);
}

void recorreDescuadres(Recordset& sumas, const QString& mascara, const Avance& avance,
                       const std::function<bool(int asiento, const QString& resto)>& alEncontrar) {
  if (sumas.Eof()) return;
  const QString cero = Format(0.0, mascara);
  sumas.MoveLast();
  const int total = sumas.RecordCount();
  for (sumas.MoveFirst(); !sumas.Eof(); sumas.MoveNext()) {
    avance(sumas.AbsolutePosition(), total);
    const QString resto = restoDe(sumas.Fields(1).Value(), sumas.Fields(2).Value(), mascara);
    if (resto == cero) continue;
    if (!alEncontrar(static_cast<int>(sumas.Fields(0).toLong()), resto)) return;
  }
}
