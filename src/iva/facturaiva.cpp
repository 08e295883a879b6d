#include "iva/facturaiva.h"

#include "common/formato.h"
#include "journal/lineatecleada.h"

namespace {

const QString kSoportado = QStringLiteral("Asiento de IVA Soportado ");
const QString kRepercutido = QStringLiteral("Asiento de IVA Repercutido ");
const QString kAlta = QStringLiteral("(Alta)");
const QString kModificacion = QStringLiteral("(Modificación)");
constexpr int kLetraDelLibro = 15;

}  // namespace

ClaseDeFactura claseDe(const QString& titulo) {
  ClaseDeFactura clase;
  if (titulo.mid(kLetraDelLibro, 1) == letraDe(LibroIVA::Soportado))
    clase.libro = LibroIVA::Soportado;
  clase.modificacion = titulo.right(kModificacion.size()).trimmed() == kModificacion;
  return clase;
}

QString tituloDe(const ClaseDeFactura& clase) {
  return (clase.libro == LibroIVA::Soportado ? kSoportado : kRepercutido) +
         (clase.modificacion ? kModificacion : kAlta);
}

void calculaDesdeBase(FacturaIVA& factura, const QString& mascara) {
  const auto valor = [&](const QString& importe) {
    return ImporteDe(importe, mascara).value_or(0);
  };
  const double base = valor(factura.Base);
  if (esDemasiado(base)) return;
  factura.ImporteIva = Format(base / 100 * factura.PorcenIVA, mascara);
  factura.Recargo = Format(base / 100 * factura.PorcenREC, mascara);
  factura.Total = Format(valor(factura.Recargo) + valor(factura.ImporteIva) + base, mascara);
}

void calculaDesdeTotal(FacturaIVA& factura, const QString& mascara) {
  const double enBase = 100 + factura.PorcenIVA + factura.PorcenREC;
  const double total = ImporteDe(factura.Total, mascara).value_or(0);
  if (esDemasiado(total)) return;
  factura.Base = Format(total / enBase * 100, mascara);
  calculaDesdeBase(factura, mascara);
}

QString opuesto(const QString& importe, const QString& mascara) {
  return opuestoSegunBase(importe, importe, mascara);
}

// Kept: the register's four amounts follow the sign of the base alone. An invoice and its quota
// have one sign; where somebody types two, the row shows it instead of hiding it.
QString opuestoSegunBase(const QString& importe, const QString& base, const QString& mascara) {
  if (importe.isEmpty()) return importe;  // a zero that the mask shows as nothing
  if (base.startsWith(u'-')) return importe.mid(1);
  if (ImporteDe(base, mascara).value_or(0) >= 0) return u'-' + importe;
  return Format(0 - ImporteDe(importe, mascara).value_or(0), mascara);
}

bool esCero(const QString& importe, const QString& mascara) {
  return importe == Format(QStringLiteral("0"), mascara);
}
