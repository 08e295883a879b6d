#include "iva/facturaiva.h"

#include "common/formato.h"

namespace {

const QString kSoportado = QStringLiteral("Asiento de IVA Soportado ");
const QString kRepercutido = QStringLiteral("Asiento de IVA Repercutido ");
const QString kAlta = QStringLiteral("(Alta)");
const QString kModificacion = QStringLiteral("(Modificación)");
constexpr int kLetraDelLibro = 15;

double valor(const QString& importe) {
  return importe.isEmpty() ? 0 : Variant(importe).number();
}

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
  const double base = valor(factura.Base);
  factura.ImporteIva = Format(base / 100 * factura.PorcenIVA, mascara);
  factura.Recargo = Format(base / 100 * factura.PorcenREC, mascara);
  factura.Total =
      Format(valor(factura.Recargo) + valor(factura.ImporteIva) + valor(factura.Base), mascara);
}

void calculaDesdeTotal(FacturaIVA& factura, const QString& mascara) {
  const double enBase = 100 + factura.PorcenIVA + factura.PorcenREC;
  factura.Base = Format(valor(factura.Total) / enBase * 100, mascara);
  calculaDesdeBase(factura, mascara);
}

QString opuesto(const QString& importe) {
  return opuestoSegunBase(importe, importe);
}

// Kept: the register's four amounts follow the sign of the base alone. An invoice and its quota
// have one sign; where somebody types two, the row shows it instead of hiding it.
QString opuestoSegunBase(const QString& importe, const QString& base) {
  if (importe.isEmpty()) return importe;  // a zero that the mask shows as nothing
  return base.startsWith(u'-') ? importe.mid(1) : u'-' + importe;
}

bool esCero(const QString& importe, const QString& mascara) {
  return importe == Format(QStringLiteral("0"), mascara);
}

Variant importeEscrito(const QString& importe) {
  return importe.isEmpty() ? Variant(0) : Variant(importe);
}
