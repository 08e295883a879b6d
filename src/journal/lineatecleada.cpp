#include "journal/lineatecleada.h"

#include <cmath>

#include "common/errorejecucion.h"
#include "common/formato.h"

namespace {
constexpr double kDemasiado = 1e12;
}

bool faltanDatos(const LineaTecleada& linea, const QString& mascara) {
  for (const QString& dato :
       {linea.asiento, linea.fecha, linea.subcuenta, linea.concepto, linea.importe})
    if (dato.isEmpty()) return true;
  return ImporteDe(linea.importe, mascara) == 0.0;
}

bool esDemasiado(double importe) {
  return std::fabs(importe) >= kDemasiado;
}

void compruebaImporte(double importe) {
  if (esDemasiado(importe)) throw ErrorEjecucion(err::kDesbordamiento, QStringLiteral("importe"));
}

Apunte apunteEn(QChar lado, const LineaTecleada& linea, const QString& mascara) {
  const bool haber = lado == u'H';
  Apunte apunte;
  apunte.NAsiento = linea.asiento;
  apunte.Fecha = linea.fecha;
  apunte.Subcuenta = linea.subcuenta;
  apunte.Descripcion = linea.concepto;
  apunte.DH = QString(lado);
  const auto importe = ImporteDe(linea.importe, mascara);
  if (importe) compruebaImporte(*importe);
  if (!importe || (haber && *importe < 0)) {
    apunte.Importe = (haber ? QStringLiteral("-") : QString()) + linea.importe;
  } else {
    apunte.Importe = haber ? -*importe : *importe;
  }
  return apunte;
}
